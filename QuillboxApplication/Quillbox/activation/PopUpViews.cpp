#include "Quillbox/activation/PopUpViews.h"

#include <algorithm>

#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

namespace {

/// Between the frame and the view in it.
constexpr double padding = 12;
constexpr double cornerRadius = 8;
/// What stays free of the room on either side.
constexpr double clearanceBelow = 120, clearanceAbove = 160;
/// For what a row shows outside of itself.
constexpr double rowOverhang = 24;
constexpr double gapBelow = 10, gapAbove = 8;

/// The region below unless the pop-up fits into the one above only, or into neither and that is
/// the taller one. "Below" is towards y 0.
Rect regionFor(double height, const PopUpViewPlaces& places) {
  const Rect& row = places.tabRowFrame;
  const Rect below = Rect::make(0, 0, places.hostSize.width, row.y());
  const Rect above = Rect::make(0, row.maxY() + rowOverhang, places.hostSize.width,
                                places.hostSize.height - row.maxY());
  if (height <= below.height()) return below;
  if (height <= above.height()) return above;
  return above.height() > below.height() ? above : below;
}

}  // namespace

Rect popUpViewFrame(Size wanted, const PopUpViewPlaces& places) {
  const Rect region = regionFor(wanted.height, places);
  Size size = wanted;
  if (size.height > region.height()) {
    size.width *= region.height() / size.height;
    size.height = region.height();
  }
  double x = places.itemOrigin.x + places.itemFrame.width() / 2 - size.width / 2;
  // Intended: the item's place in its row against the region's place in the panel.
  const bool goesBelow = places.itemFrame.y() > region.y();
  const double y = goesBelow
                       ? places.itemOrigin.y - size.height - gapBelow
                       : places.itemOrigin.y + places.itemFrame.height() + gapAbove + rowOverhang;
  x = std::max(x, 0.0);
  x -= std::max(x + size.width - places.hostSize.width, 0.0);
  return integral(Rect{{x, y}, size});
}

Size PopUpViews::maximumSizeForItem(const Item& item) const {
  const HostView* const host = facade_.hostView();
  const View& view = *item.view();
  if (host == nullptr || !view.isDescendantOf(*host) || view.superview() == nullptr) return {};
  const double originY = view.superview()->convertPointToView(view.frame().origin, host).y;
  const Point farCorner{view.frame().width(), view.frame().height()};
  const double below = originY - clearanceBelow;
  const double above =
      host->frame().height() - view.convertPointToView(farCorner, host).y - clearanceAbove;
  return {host->frame().width(), std::max(below, above)};
}

void PopUpViews::present(const std::shared_ptr<View>& view, Item& item) {
  HostView* const host = facade_.hostView();
  const auto tabRow = item.tabRow();
  if (!view || view->frame().isEmpty() || host == nullptr || !tabRow) return;
  const Rect itemFrame = item.view()->frame();
  const Rect frame = popUpViewFrame(
      inset(view->frame(), -padding, -padding).size,
      {.hostSize = host->frame().size,
       .tabRowFrame = tabRow->frame(),
       .itemFrame = itemFrame,
       .itemOrigin = tabRow->convertPointToView(itemFrame.origin, tabRow->superview())});
  dismissForItem(item);

  const auto container = std::make_shared<RoundedRectangleView>(frame);
  container->setCornerRadius(cornerRadius);
  container->setBorderWidth(1);
  container->setBackgroundColor(facade_.settings().tabRowColor());
  container->setBorderColor(Color::black());
  view->setFrame(
      Rect::make(padding, padding, frame.width() - 2 * padding, frame.height() - 2 * padding));
  container->addSubview(view);
  item.setPopUpView(container);
  host->addSubview(container);
}

void PopUpViews::dismissForItem(Item& item) {
  if (!item.popUpView()) return;
  item.popUpView()->removeFromSuperview();
  item.setPopUpView(nullptr);
}

void PopUpViews::dismissForAllItems() {
  for (Item* const item : facade_.registeredItems()) dismissForItem(*item);
}

}  // namespace qb
