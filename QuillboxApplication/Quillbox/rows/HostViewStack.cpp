// The rows' order, and what comes to it and goes from it.

#include <algorithm>

#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "Quillbox/rows/TabRowMove.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr Rect newRowFrame = Rect::make(0, 0, 100, 100);
constexpr TimeInterval fadeDuration = 0.25;
constexpr TimeInterval makingRoomDuration = 0.25;

constexpr const char* maximumMessage =
    "You have reached the maximum number of Tab Rows that can currently fit your screen.\r\rYou "
    "may be able to fit more Tab Rows if you reduce the minimum icon size in the Quillbox "
    "Settings.";

void runLoopFor(TimeInterval duration) {
  RunLoop::main().runUntilDate(RunLoop::main().now() + duration);
}

}  // namespace

void HostView::normalizeTabRows() {
  const bool severalRows = tabRows_.size() > 1;
  for (std::size_t index = 0; index < tabRows_.size(); ++index) {
    tabRows_[index]->setIndex(index);
    tabRows_[index]->setCanBeDeleted(severalRows);
    tabRows_[index]->setCanBeMoved(severalRows);
  }
}

std::shared_ptr<TabRow> HostView::createTabRowAtIndex(std::size_t index,
                                                      std::shared_ptr<TabRowProvider> provider,
                                                      bool arrangeTabRows) {
  auto row = TabRow::create(sharedFrom(*this), newRowFrame, std::move(provider));
  tabRows_.insert(tabRows_.begin() + static_cast<std::ptrdiff_t>(index), row);
  normalizeTabRows();
  addSubview(row);
  if (arrangeTabRows) arrangeTabRowsWithAnimate(false);
  return row;
}

std::shared_ptr<TabRow> HostView::addTabRowRelativeToTabRow(TabRow& tabRow,
                                                            std::int32_t relativePlacement) {
  if (static_cast<std::int64_t>(tabRows_.size()) >=
      calculateMaximumTabRowsSupportedByMainScreen()) {
    quillbox->displayMessage(maximumMessage, "Maximum Tab Rows");
    return nullptr;
  }
  const std::size_t below = relativePlacement == TabRowPlacementBelow ? 1 : 0;
  auto row = createTabRowAtIndex(tabRow.index() + below, nullptr, false);
  row->setAlphaValue(0);
  // A row that joins an open panel takes part from now on.
  if (mouseMonitorTimer_) {
    row->hostViewWillBeDisplayed();
    row->hostViewWasDisplayed();
  }
  arrangeTabRowsWithAnimate(true);
  runLoopFor(makingRoomDuration);
  {
    const AnimationGroup group(fadeDuration);
    row->animator().setAlphaValue(1);
  }
  normalizeTabRows();
  forceMouseMovedMessageToBeSent();
  saveState();
  return row;
}

bool HostView::isBeingDeleted(const TabRow& tabRow) const {
  return std::any_of(tabRowsBeingDeleted_.begin(), tabRowsBeingDeleted_.end(),
                     [&](const auto& leaving) { return leaving.lock().get() == &tabRow; });
}

void HostView::takeActiveStatusFrom(TabRow& tabRow) {
  if (activeTabRow_.get() == &tabRow) {
    activeTabRow_->relinquishActiveStatus();
    activeTabRow_.reset();
  }
  if (lastActiveTabRow_.get() == &tabRow) lastActiveTabRow_.reset();
}

void HostView::deleteTabRow(TabRow& tabRow) {
  if (isBeingDeleted(tabRow) || tabRowsBeingDeleted_.size() + 1 >= tabRows_.size()) return;
  const auto row = sharedFrom(tabRow);
  tabRowsBeingDeleted_.push_back(row);
  if (tabRowBeingMoved() == row.get()) tabRowMove_->end();
  takeActiveStatusFrom(*row);
  {
    const AnimationGroup group(fadeDuration);
    row->animator().setAlphaValue(0);
  }
  runLoopFor(fadeDuration);
  // The pointer may have given it the keys again while it faded.
  takeActiveStatusFrom(*row);
  row->removeFromSuperview();
  std::erase(tabRows_, row);
  std::erase_if(tabRowsBeingDeleted_, [&](const auto& leaving) { return leaving.lock() == row; });
  // Unlike any count, so that the rows are arranged whatever the largest one is now.
  largestNumberOfTabRowItems_ = -1;
  {
    const AnimationGroup group(fadeDuration);
    arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(true);
  }
  normalizeTabRows();
  forceMouseMovedMessageToBeSent();
  saveState();
}

TabRow* HostView::tabRowBeingMoved() const { return tabRowMove_->tabRow(); }

void HostView::beginMovingTabRow(TabRow& tabRow, const Event& /*event*/) {
  tabRowMove_->begin(tabRow);
}

void HostView::moveTabRowBy(double deltaY) { tabRowMove_->moveBy(deltaY); }

void HostView::endMovingTabRow(TabRow& /*tabRow*/, const Event& /*event*/) { tabRowMove_->end(); }

void HostView::placeTabRowAtIndex(const std::shared_ptr<TabRow>& tabRow, std::size_t index) {
  std::erase(tabRows_, tabRow);
  tabRows_.insert(tabRows_.begin() + static_cast<std::ptrdiff_t>(std::min(index, tabRows_.size())),
                  tabRow);
  normalizeTabRows();
}

}  // namespace qb
