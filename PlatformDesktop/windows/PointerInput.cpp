#include "PlatformDesktop/windows/PointerInput.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <cmath>

namespace qb {

namespace {

bool isPress(EventType type) {
  return type == EventTypeLeftMouseDown || type == EventTypeRightMouseDown;
}

/// What scrolls in steps takes one when a little more than 12 has come together: a notch is a step,
/// and the finer turns of a touchpad add up to one.
constexpr double distancePerNotch = 13;

bool isTapped(EventType type) { return isPress(type) || type == EventTypeScrollWheel; }

}  // namespace

std::optional<Event> PointerInput::process(const PixelEvent& event) {
  if (userTimeObserver_ && isPress(event.type) && event.time != 0) userTimeObserver_(event.time);
  const DisplayMap& map = displays_.map();
  const Point location = map.pointForPixel(event.x, event.y);
  if (isTapped(event.type) && tap_) {
    const TappedEvent tapped{.type = event.type,
                             .flags = event.flags,
                             .location = map.flipped(location),
                             .unflippedLocation = location};
    if (!tap_(tapped)) return std::nullopt;
  }
  Event result;
  result.type = event.type;
  result.flags = event.flags;
  if (isPress(event.type) && (event.flags & EventFlagControl) != 0 && controlIsLeft_ &&
      controlIsLeft_()) {
    result.flags |= EventFlagLeftControl;
  }
  result.location = location;
  result.deltaX = -event.deltaX * distancePerNotch;
  result.deltaY = -event.deltaY * distancePerNotch;
  result.clickCount = event.type == EventTypeScrollWheel ? 0 : countClick(event);
  return result;
}

int PointerInput::countClick(const PixelEvent& event) {
  if (!isPress(event.type)) return clicks_;
  const QStyleHints& hints = *QGuiApplication::styleHints();
  const double distance =
      std::max(std::abs(event.x - lastPress_.x), std::abs(event.y - lastPress_.y));
  const bool again =
      clicks_ > 0 && event.type == lastPress_.type &&
      distance <= hints.mouseDoubleClickDistance() &&
      event.time - lastPress_.time <= static_cast<std::uint32_t>(hints.mouseDoubleClickInterval());
  clicks_ = again ? clicks_ + 1 : 1;
  lastPress_ = event;
  return clicks_;
}

}  // namespace qb
