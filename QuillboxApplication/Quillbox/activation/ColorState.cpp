#include "Quillbox/activation/ColorState.h"

#include <string_view>

namespace qb {

namespace {

constexpr std::string_view redKey = "RedColorComponent";
constexpr std::string_view greenKey = "GreenColorComponent";
constexpr std::string_view blueKey = "BlueColorComponent";
constexpr std::string_view alphaKey = "AlphaComponent";

}  // namespace

PropertyList state(const Color& color) {
  const bool gray = color.numberOfComponents() < 4;
  const double white = color.whiteComponent();
  PropertyList state = PropertyList::dictionary();
  state.setObject(gray ? white : color.red(), redKey);
  state.setObject(gray ? white : color.green(), greenKey);
  state.setObject(gray ? white : color.blue(), blueKey);
  state.setObject(color.alpha(), alphaKey);
  return state;
}

Color colorFromState(const PropertyList& state) {
  return Color::colorWithCalibratedRed(state.floatForKey(redKey), state.floatForKey(greenKey),
                                       state.floatForKey(blueKey), state.floatForKey(alphaKey));
}

}  // namespace qb
