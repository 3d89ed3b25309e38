// Where things stand in a row.

#include <cmath>

#include "Quillbox/Item/Item.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/ConfigureTip.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

/// What the halo is larger than the icon.
constexpr double haloExcess = 8;
/// The first item stands in from the left by this part of the row's height.
constexpr double indentPart = 0.2;
constexpr double selectorY = 2;
constexpr double selectorHeight = 20;
constexpr TimeInterval selectionPause = 0.25;

}  // namespace

void TabRow::setFrame(const Rect& frame, Size haloSize, bool animate) {
  const Rect before = selfBounds_;
  if (animate) {
    animator().setFrame(frame);
  } else {
    setFrame(frame);
  }
  selfBounds_ = {{0, 0}, frame.size};
  if (selfBounds_ == before) return;
  haloSize_ = haloSize;
  selectionViews_.setLookForHaloHeight(haloSize.height);
  itemSize_ = {haloSize.width - haloExcess, haloSize.height - haloExcess};
  distanceBetweenItems_ = static_cast<std::int64_t>(haloSize.width);
  if (instructionalMessageLabel_) instructionalMessageLabel_->setFrame(selfBounds_);
  arrangeItemsWithMaintainScrollOffset(false, animate);
  arrangeButtons();
  arrangeProviderSelector();
  arrangeMoreIndicators();
}

void TabRow::arrangeButtons() { rowButtons_.arrange(selfBounds_.size); }

void TabRow::arrangeItemsWithMaintainScrollOffset(bool maintainScrollOffset, bool animate) {
  if (animate) {
    // What glides past under a resting pointer is not meant.
    setSelectedItem(nullptr, SelectionMethodProgram);
    itemSelectionEnabled_ = false;
    executeBlockAfterDelay(
        [weakSelf = std::weak_ptr<TabRow>(sharedFrom(*this))] {
          if (const auto self = weakSelf.lock()) self->enableItemSelection();
        },
        selectionPause);
  }
  const std::int64_t shift = maintainScrollOffset ? indexScrollOffset_ * distanceBetweenItems_ : 0;
  double x = std::trunc(indentPart * selfBounds_.height()) + static_cast<double>(shift);
  const double y = selfBounds_.height() / 2 - itemSize_.height / 2;
  for (const auto& item : items_) {
    const Rect frame = integral({{x, y}, itemSize_});
    source().setItem(*item, frame, animate);
    x = frame.x() + static_cast<double>(distanceBetweenItems_);
  }
  adjustItemsVisibility();
}

void TabRow::scrollItemsBy(std::int64_t delta) {
  indexScrollOffset_ += delta;
  const auto distance = static_cast<double>(distanceBetweenItems_ * delta);
  for (const auto& item : items_) {
    source().setItem(*item, offset(item->viewFrame(), distance, 0), false);
  }
  adjustItemsVisibility();
}

void TabRow::adjustItemsVisibility() {
  indexOfLeftMostVisibleItem_ = -1;
  indexOfRightMostVisibleItem_ = -1;
  bool moreOnTheLeft = false, moreOnTheRight = false;
  std::int64_t position = 0;
  for (const auto& item : items_) {
    const Rect& frame = item->viewFrame();
    const bool inside = contains(selfBounds_, frame);
    item->view()->setHidden(!inside);
    if (inside) {
      if (indexOfLeftMostVisibleItem_ < 0) indexOfLeftMostVisibleItem_ = position;
      indexOfRightMostVisibleItem_ = position;
    } else {
      if (frame.x() <= selfBounds_.x()) moreOnTheLeft = true;
      if (frame.maxX() >= selfBounds_.maxX()) moreOnTheRight = true;
    }
    ++position;
  }
  leftMoreIndicator_.show(moreOnTheLeft);
  rightMoreIndicator_.show(moreOnTheRight);
}

void TabRow::arrangeMoreIndicators() {
  leftMoreIndicator_.arrange(selfBounds_.size);
  rightMoreIndicator_.arrange(selfBounds_.size);
}

void TabRow::arrangeProviderSelector() {
  const double width = providerSelector_->naturalWidth();
  providerSelector_->setFrame(
      Rect::make(selfBounds_.width() / 2 - width / 2, selectorY, width, selectorHeight));
}

View* TabRow::hitTest(Point point) {
  if (View* const hit = RoundedRectangleView::hitTest(point)) return hit;
  const ConfigureTip* const tip = providerSelector_->configureTip();
  if (tip == nullptr || isHidden()) return nullptr;
  return tip->view()->hitTest({point.x - frame().x(), point.y - frame().y()});
}

}  // namespace qb
