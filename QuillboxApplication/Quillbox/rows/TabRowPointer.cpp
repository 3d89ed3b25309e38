// What the pointer does in a row. The host view polls it, so all of it is told by points.

#include <cmath>
#include <utility>

#include "Platform/Keyboard.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/ItemMenu.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

/// An item's cell: its view's frame, moved and widened by these, so that cells meet.
constexpr double cellShift = -4;
constexpr double cellExcess = 16;
/// A hand trembles: only from here on a press becomes a drag.
constexpr double dragThreshold = 8;
/// Of the menu that a click on the background opens, from the click, in window coordinates.
constexpr double menuShiftX = -60, menuShiftY = -15;

}  // namespace

void TabRow::mouseEntered() {
  rowButtons_.showDeleteButton(canBeDeleted_, true);
  rowButtons_.showDragButton(canBeMoved_, true);
  source().mouseEnteredTabRow();
}

void TabRow::mouseExited() {
  rowButtons_.fadeOut(true);
  exitMoreIndicatorHoverStates();
  noteMouseWithinProviderSelector(false);
  handlingMouseDownEvent_ = false;
  draggingItem_ = false;
  source().mouseExitedTabRow();
}

void TabRow::noteMouseWithinProviderSelector(bool within) {
  if (within == mouseWithinProviderSelector_) return;
  mouseWithinProviderSelector_ = within;
  if (within) {
    providerSelector_->mouseEntered();
  } else {
    providerSelector_->mouseExited();
  }
}

void TabRow::exitMoreIndicatorHoverStates() {
  leftMoreIndicator_.exitHoverState();
  rightMoreIndicator_.exitHoverState();
}

void TabRow::mouseMovedWithinViewFromLocation(Point from, Point to) {
  if (source().mouseMovedFromLocation(from, to) || noteMouseDraggedTo(to)) return;
  rowButtons_.noteMouseAt(to.y);
  noteMouseWithinProviderSelector(contains(providerSelector_->frame(), to));
  for (MoreIndicator* indicator : {&leftMoreIndicator_, &rightMoreIndicator_}) {
    if (indicator->isHitBy(to)) {
      indicator->enterHoverState();
      return;
    }
    indicator->exitHoverState();
  }
  auto item = itemUnderPoint(to);
  if (item && (item->index() < indexOfLeftMostVisibleItem_ ||
               item->index() > indexOfRightMostVisibleItem_)) {
    return;
  }
  setSelectedItem(std::move(item), SelectionMethodPointer);
}

bool TabRow::noteMouseDraggedTo(Point point) {
  if (!handlingMouseDownEvent_ || draggingItem_) return false;
  const auto item = itemUnderMouseDownEvent_.lock();
  if (!item || item->dragability() == 0) return false;
  const Point press = convertPointFromView(mouseDownEvent_.location, nullptr);
  if (std::abs(point.x - press.x) >= dragThreshold ||
      std::abs(point.y - press.y) >= dragThreshold) {
    dragItem(item);
  }
  return true;
}

std::shared_ptr<Item> TabRow::itemUnderPoint(Point point) const {
  const std::shared_ptr<Item>* hit = nullptr;
  for (const auto& item : items_) {
    Rect cell = offset(item->view()->frame(), cellShift, 0);
    cell.size.width += cellExcess;
    const bool onButtons =
        item == selectedItem_ && item->configurable() && selectionViews_.buttonsAreHitBy(point);
    if (onButtons || contains(cell, point)) hit = &item;
  }
  return hit != nullptr ? *hit : nullptr;
}

void TabRow::mouseUpEventMonitored(const Event& /*event*/) {
  handlingMouseDownEvent_ = false;
  draggingItem_ = false;
}

void TabRow::mouseDownInEventCaptureView(const Event& event, EventCaptureView& /*view*/) {
  if (source().mouseDown(event)) return;
  handlingMouseDownEvent_ = true;
  itemUnderMouseDownEvent_ = selectedItem_;
  mouseDownEvent_ = event;
}

void TabRow::mouseUpInEventCaptureView(const Event& event, EventCaptureView& view) {
  handlingMouseDownEvent_ = false;
  // What began as a press on an item and became its drag is no click.
  if (std::exchange(draggingItem_, false)) return;
  if (source().mouseUp(event)) return;
  if ((event.flags & EventFlagControl) != 0) {
    rightMouseUpInEventCaptureView(event, view);
    return;
  }
  const bool handled = handleAction(QuillboxAction::actionWithCode(QuillboxActionInvoke));
  const bool shiftIsDown = (quillbox->platform().keyboard().modifierFlags() & EventFlagShift) != 0;
  if (!handled && !shiftIsDown) quillbox->dismissQuillbox();
}

void TabRow::rightMouseUpInEventCaptureView(const Event& /*event*/, EventCaptureView& /*view*/) {
  if (selectedItem_ && selectedItem_->configurable()) {
    configureSelectedItemWithMethod(ItemMenuMethodRightClick);
  }
}

void TabRow::mouseUp(const Event& event) {
  if ((event.flags & EventFlagControl) != 0) rightMouseUp(event);
}

void TabRow::rightMouseUp(const Event& event) {
  if (selectedItem_ || !provider_) return;
  popUpProviderConfigureMenuAtLocation(
      {event.location.x + menuShiftX, event.location.y + menuShiftY});
}

void TabRow::deleteTabButtonPressed() {
  const auto self = sharedFrom(*this);
  if (provider_ && !provider_->confirmDeletion()) return;
  rowButtons_.fadeOut(false);
  rowButtons_.addButton().setHidden(true);
  if (const auto host = hostView()) host->deleteTabRow(*this);
}

void TabRow::addButtonPressed() {
  const auto self = sharedFrom(*this);
  rowButtons_.fadeOut(false);
  if (const auto host = hostView()) host->addTabRowRelativeToTabRow(*this, TabRowPlacementBelow);
}

void TabRow::mouseDownInButton(const Event& event) {
  exitMoreIndicatorHoverStates();
  if (const auto host = hostView()) host->beginMovingTabRow(*this, event);
}

void TabRow::mouseUpForButton(const Event& event) {
  if (const auto host = hostView()) host->endMovingTabRow(*this, event);
}

}  // namespace qb
