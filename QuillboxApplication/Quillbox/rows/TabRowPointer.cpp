// What the pointer does in a row. The host view polls it, so all of it is told by points.

#include "Platform/Keyboard.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

/// An item's cell: its view's frame, moved and widened by these, so that cells meet.
constexpr double cellShift = -4;
constexpr double cellExcess = 16;

}  // namespace

void TabRow::mouseEntered() { source().mouseEnteredTabRow(); }

void TabRow::mouseExited() {
  leftMoreIndicator_.exitHoverState();
  rightMoreIndicator_.exitHoverState();
  handlingMouseDownEvent_ = false;
  source().mouseExitedTabRow();
}

void TabRow::mouseMovedWithinViewFromLocation(Point from, Point to) {
  if (source().mouseMovedFromLocation(from, to) || pressHoldsDraggableItem()) return;
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

bool TabRow::pressHoldsDraggableItem() const {
  if (!handlingMouseDownEvent_) return false;
  const auto item = itemUnderMouseDownEvent_.lock();
  return item && item->dragability() != 0;
}

std::shared_ptr<Item> TabRow::itemUnderPoint(Point point) const {
  const std::shared_ptr<Item>* hit = nullptr;
  for (const auto& item : items_) {
    Rect cell = offset(item->view()->frame(), cellShift, 0);
    cell.size.width += cellExcess;
    if (contains(cell, point)) hit = &item;
  }
  return hit != nullptr ? *hit : nullptr;
}

void TabRow::mouseUpEventMonitored(const Event& /*event*/) { handlingMouseDownEvent_ = false; }

void TabRow::mouseDownInEventCaptureView(const Event& event, EventCaptureView& /*view*/) {
  if (source().mouseDown(event)) return;
  handlingMouseDownEvent_ = true;
  itemUnderMouseDownEvent_ = selectedItem_;
}

void TabRow::mouseUpInEventCaptureView(const Event& event, EventCaptureView& view) {
  handlingMouseDownEvent_ = false;
  if (source().mouseUp(event)) return;
  if ((event.flags & EventFlagControl) != 0) {
    rightMouseUpInEventCaptureView(event, view);
    return;
  }
  const bool handled = handleAction(QuillboxAction::actionWithCode(QuillboxActionInvoke));
  const bool shiftIsDown = (quillbox->platform().keyboard().modifierFlags() & EventFlagShift) != 0;
  if (!handled && !shiftIsDown) quillbox->dismissQuillbox();
}

}  // namespace qb
