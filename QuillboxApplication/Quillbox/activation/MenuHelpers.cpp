#include "Quillbox/activation/MenuHelpers.h"

#include <utility>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr double titleSize = 14;
/// What a tile adds to its image, and the grid to the tile.
constexpr Size tileMargins{20, 16};
constexpr Size gridMargins{50, 30};
constexpr Size labelSize{100, 20};
constexpr double tileCornerRadius = 10;
constexpr double tileBorderWidth = 3;
constexpr Color tileColor =
    Color::colorWithCalibratedRed(0.7764705882352941, 0.8627450980392157, 0.9215686274509803, 0.5);
constexpr Color tileBorderColor =
    Color::colorWithCalibratedRed(0.0196078431372549, 0.6968627450980391, 0.9764705882352941, 1.0);
/// Until the closing of the menu has settled.
constexpr TimeInterval delayOfTileAction = 0.5;
/// Below the top of the window a menu keeps away.
constexpr double roomAtTop = 110;

Size sum(Size a, Size b) { return {a.width + b.width, a.height + b.height}; }

}  // namespace

MenuHelpers::MenuHelpers(const TextMeasurer& measurer)
    : measurer_(measurer), tileDelegate_(std::make_shared<TileDelegate>()) {}

AttributedString MenuHelpers::menuTitleWithBeginning(const std::string& beginning,
                                                     const std::string& applicationName,
                                                     const std::string& ending) {
  AttributedString title;
  title.append(beginning, Font::systemFontOfSize(titleSize));
  title.append(applicationName, Font::boldSystemFontOfSize(titleSize));
  title.append(ending, Font::systemFontOfSize(titleSize));
  return title;
}

std::shared_ptr<MenuItem> MenuHelpers::customMenuItemWithImage(const Image& image,
                                                               const std::string& label,
                                                               MenuItem::Action action) const {
  const Size tile = sum(image.size(), tileMargins);
  auto item = MenuItem::create("", std::move(action));
  auto grid = std::make_shared<GridView>(Rect{{0, 0}, sum(tile, gridMargins)});
  grid->setGeometry({.rowCount = 1,
                     .columnCount = 1,
                     .leftMargin = static_cast<std::int64_t>(gridMargins.width / 2),
                     .topMargin = static_cast<std::int64_t>(gridMargins.height / 2),
                     .highlightViewOffset = {}});
  grid->setDelegate(tileDelegate_);
  grid->setUserInfo(label);
  grid->setOwningMenuItem(item);
  auto picture = std::make_shared<ImageView>(Rect{{0, 0}, tile});
  picture->setImage(image);
  grid->setContentItems({std::make_shared<GridViewItem>(GridViewItem{picture, {}})},
                        createHighlightView(tile, label));
  item->setView(grid);
  item->setRepresentedObject(grid);
  return item;
}

std::shared_ptr<View> MenuHelpers::createHighlightView(Size tile, const std::string& label) const {
  const Rect all{{0, 0}, tile};
  auto highlight = std::make_shared<RoundedRectangleView>(all);
  highlight->setRenderBackground(false);
  highlight->addSubview(createHighlightFrame(tile));
  if (!label.empty()) {
    auto text = std::make_shared<LabelView>(
        measurer_, Rect::make((tile.width - labelSize.width) / 2, tile.height - labelSize.height,
                              labelSize.width, labelSize.height));
    text->setRenderBackground(false);
    text->setTextColor(Color::black());
    text->setText(label);
    highlight->addSubview(text);
  }
  return highlight;
}

std::shared_ptr<RoundedRectangleView> MenuHelpers::createHighlightFrame(Size size) {
  auto frame = std::make_shared<RoundedRectangleView>(Rect{{0, 0}, size});
  frame->setCornerRadius(tileCornerRadius);
  frame->setBackgroundColor(tileColor);
  frame->setRenderBorder(true);
  frame->setBorderWidth(tileBorderWidth);
  frame->setBorderColor(tileBorderColor);
  return frame;
}

void MenuHelpers::TileDelegate::itemWasSelected(GridViewItem&, GridView& grid) {
  const auto item = grid.owningMenuItem();
  if (!item) return;
  const MenuItem::Action action = item->action();
  const auto menu = item->menu() ? item->menu()->shared_from_this() : nullptr;
  if (menu) menu->cancelTracking();
  executeBlockAfterDelay(
      [item, perform = action.perform] {
        if (perform) perform(*item);
      },
      delayOfTileAction);
}

Point adjustedMenuLocation(Point location, double menuHeight, const View* view) {
  if (view == nullptr) return location;
  double top = location.y + menuHeight + roomAtTop;
  for (const View* each = view; each != nullptr; each = each->superview()) {
    top += each->frame().y();
  }
  const Window* const window = view->window();
  if (top > (window ? window->frame().maxY() : 0)) {
    location.y = menuHeight + view->frame().height();
  }
  return location;
}

}  // namespace qb
