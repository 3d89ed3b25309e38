// The pointer over the panel, polled while it is up.

#include <cmath>

#include "Platform/Pointer.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

Point HostView::mouseLocationInWindow() const {
  const Point location = quillbox->platform().pointer().mouseLocation();
  const Window* panel = window();
  if (panel == nullptr) return location;
  return {location.x - panel->frame().x(), location.y - panel->frame().y()};
}

void HostView::monitorMouse() {
  const Point location = mouseLocationInWindow();
  if (std::abs(location.x - lastMouseLocation_.x) < mouseMovementThreshold_ &&
      std::abs(location.y - lastMouseLocation_.y) < mouseMovementThreshold_) {
    return;
  }
  if (mouseMovementThreshold_ == significantMovement) {
    quillbox->noteMouseHasMovedSignificatly();
    mouseMovementThreshold_ = anyMovement;
  }
  if (tabRowBeingMoved() != nullptr) {
    moveTabRowBy(lastMouseLocation_.y - location.y);
    lastMouseLocation_ = location;
    return;
  }
  const auto row = noteMouseMovedTo(location);
  lastMouseLocation_ = location;
  noteTabRowUnderMouse(row);
}

std::shared_ptr<TabRow> HostView::noteMouseMovedTo(Point location) {
  std::shared_ptr<TabRow> found;
  // Whoever hears of the movement may add or remove rows: the list is read anew at each step, and
  // the row at hand is held. Copying the list would allocate at every poll.
  for (std::size_t index = 0; index < tabRows_.size(); ++index) {
    const auto row = tabRows_[index];
    const Point inRow = row->convertPointFromView(location, nullptr);
    if (!contains(row->bounds(), inRow)) continue;
    found = row;
    row->mouseMovedWithinViewFromLocation(row->convertPointFromView(lastMouseLocation_, nullptr),
                                          inRow);
  }
  return found;
}

void HostView::noteTabRowUnderMouse(const std::shared_ptr<TabRow>& tabRow) {
  if (const auto former = tabRowUnderMouse_; former && former != tabRow) {
    former->mouseExited();
    tabRowUnderMouse_.reset();
  }
  if (tabRow && !tabRowUnderMouse_) {
    tabRowUnderMouse_ = tabRow;
    tabRow->mouseEntered();
  }
  if (tabRowUnderMouse_ != activeTabRow_ && activeTabRow_) setActiveTabRow(nullptr, false);
  if (tabRowUnderMouse_ && tabRowUnderMouse_ != activeTabRow_) {
    setActiveTabRow(tabRowUnderMouse_, false);
  }
}

bool HostView::mouseDownEventIsWithinTabRow(const TappedEvent& event) {
  Point location = event.unflippedLocation;
  if (const Window* panel = window()) {
    location = {location.x - panel->frame().x(), location.y - panel->frame().y()};
  }
  const View* hit = hitTest(location);
  return hit != nullptr && hit != this;
}

void HostView::mouseUpEventMonitored(const Event& event) {
  if (const auto row = activeTabRow_) row->mouseUpEventMonitored(event);
}

}  // namespace qb
