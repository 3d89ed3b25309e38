#include "Quillbox/rows/HostView.h"

#include <cmath>

#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/ApplicationManager.h"
#include "Quillbox/providers/ActiveApplicationsProvider.h"
#include "Quillbox/providers/ProviderCatalogue.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/DefaultTabRows.h"
#include "Quillbox/rows/SelectorMenu.h"
#include "Quillbox/rows/TabRow.h"
#include "Quillbox/rows/TabRowFitNotice.h"
#include "Quillbox/rows/TabRowMove.h"
#include "QuillboxCommon/views/Animation.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr TimeInterval createRowsDelay = 0.001;
constexpr TimeInterval mouseMonitorInterval = 0.05;
constexpr TimeInterval saveStateDelay = 1;
constexpr double verticalScrollThreshold = 12;
constexpr double horizontalScrollThreshold = 10;

}  // namespace

std::shared_ptr<HostView> HostView::create(const Rect& maximumFrame) {
  std::shared_ptr<HostView> host(new HostView(maximumFrame));
  RunLoop::main().performAfterDelay(host.get(), "createInitialTabRows", createRowsDelay,
                                    [view = host.get()] { view->createInitialTabRows(); });
  return host;
}

HostView::HostView(const Rect& maximumFrame)
    : View(maximumFrame),
      providerInformations_(tabRowProviderCatalogue()),
      tabRowMove_(std::make_unique<TabRowMove>(*this)),
      fitNotice_(std::make_unique<TabRowFitNotice>(*this)),
      defaultTabRows_(std::make_unique<DefaultTabRows>(*this)),
      selectorMenu_(std::make_unique<SelectorMenu>(*this)) {}

HostView::~HostView() {
  RunLoop::main().cancelPreviousPerformRequests(this);
  if (mouseMonitorTimer_) mouseMonitorTimer_->invalidate();
}

void HostView::createInitialTabRows() {
  createDefaultTabRows();
  arrangeTabRowsWithAnimate(false);
}

void HostView::createDefaultTabRows() {
  const auto row = createTabRowAtIndex(0, std::make_shared<ActiveApplicationsProvider>(), false);
  row->setIsDefaultCommandTabRow(true);
  row->setIsDefaultOptionTabRow(true);
}

std::shared_ptr<TabRowProvider> HostView::createTabRowProviderWithInformation(
    const TabRowProviderInformation& information) const {
  return information.createProvider();
}

TabRow* HostView::getActiveApplicationsTabRow() const {
  for (const auto& row : tabRows_) {
    if (row->provider() && row->provider()->isActiveApplicationsProvider()) return row.get();
  }
  return nullptr;
}

void HostView::windowWillBeDisplayed(Window& window, const PropertyList& environment,
                                     std::int32_t applicationActivationMethod) {
  activationMethod_ = applicationActivationMethod;
  accumulatedScrollAmount_ = {};
  tabRowUnderMouse_.reset();
  activeTabRow_.reset();
  lastMouseLocation_ = mouseLocationInWindow();
  if (mouseMonitorTimer_) mouseMonitorTimer_->invalidate();
  mouseMonitorTimer_ = RunLoop::main().scheduleTimer(mouseMonitorInterval, true,
                                                     [this](RunLoopTimer&) { monitorMouse(); });
  mouseMovementThreshold_ =
      applicationActivationMethod == ActivationMethodCorner ? anyMovement : significantMovement;
  quillbox->applicationManager().windowWillBeDisplayed(window, environment,
                                                       applicationActivationMethod);
  for (const auto& row : tabRows_) row->noteEnvironment(environment);
  arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(false);

  const bool byCommandTab = applicationActivationMethod == ActivationMethodCommandTab;
  const bool byOptionTab = applicationActivationMethod == ActivationMethodOptionTab;
  for (const auto& row : tabRows_) {
    row->hostViewWillBeDisplayed();
    if ((byCommandTab && row->isDefaultCommandTabRow()) ||
        (byOptionTab && row->isDefaultOptionTabRow())) {
      setActiveTabRow(row, true);
    }
  }
  if (!activeTabRow_ && !tabRows_.empty()) setActiveTabRow(tabRows_.front(), true);
  if ((byCommandTab || byOptionTab) && activeTabRow_) activeTabRow_->selectInitialItem();
}

void HostView::windowWasDisplayed(Window& window) {
  for (const auto& row : tabRows_) row->hostViewWasDisplayed();
  window.makeFirstResponder(this);
}

void HostView::windowWillBeDismissed(Window& window) {
  tabRowMove_->end();
  quillbox->applicationManager().windowWillBeDismissed(window);
  for (const auto& row : tabRows_) row->hostViewWillBeDismissed();
  if (mouseMonitorTimer_) mouseMonitorTimer_->invalidate();
  mouseMonitorTimer_.reset();
}

void HostView::windowWasDismissed(Window& /*window*/) {
  quillbox->deregisterDragOperation();
  quillbox->dismissPopUpViewsForAllItems();
  for (const auto& row : tabRows_) row->hostViewWasDismissed();
  if (activeTabRow_) activeTabRow_->relinquishActiveStatus();
}

void HostView::tabRowItemsHaveChanged(TabRow& tabRow) {
  if (tabRowUnderMouse_.get() == &tabRow && activeTabRow_.get() == &tabRow) {
    forceMouseMovedMessageToBeSent();
  }
  const AnimationGroup group;
  arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(true);
  saveState();
}

void HostView::settingsChanged() {
  for (const auto& row : tabRows_) row->settingsChanged();
  arrangeTabRowsWithAnimate(false);
  manageTabRowFitIssues();
}

void HostView::manageTabRowFitIssues() { fitNotice_->manage(); }

void HostView::augmentProviderSelectorMenu(Menu& menu, TabRow& tabRow, const Event& event) {
  selectorMenu_->augment(menu, tabRow, event);
}

void HostView::saveStateCoallesced() {
  if (stateWillBeSaved_) return;
  stateWillBeSaved_ = true;
  executeBlockAfterDelay(
      [weakSelf = std::weak_ptr<HostView>(sharedFrom(*this))] {
        const auto self = weakSelf.lock();
        if (!self) return;
        self->saveState();
        self->stateWillBeSaved_ = false;
      },
      saveStateDelay);
}

void HostView::setActiveTabRow(std::shared_ptr<TabRow> tabRow, bool asDefault) {
  if (activeTabRow_) {
    activeTabRow_->relinquishActiveStatus();
    lastActiveTabRow_ = activeTabRow_;
  }
  activeTabRow_ = std::move(tabRow);
  if (activeTabRow_) activeTabRow_->gainActiveStatusAsDefault(asDefault);
}

void HostView::activateLastActiveTabRowIfNoneIs() {
  if (!activeTabRow_) setActiveTabRow(lastActiveTabRow_, false);
}

void HostView::selectNextTabRow() { selectNeighbourTabRow(1); }

void HostView::selectPreviousTabRow() { selectNeighbourTabRow(-1); }

void HostView::selectNeighbourTabRow(std::int64_t step) {
  if (!activeTabRow_) activeTabRow_ = lastActiveTabRow_;
  if (!activeTabRow_) return;
  const std::int64_t column =
      activeTabRow_->indexOfSelectedItem() + activeTabRow_->indexScrollOffset();
  const auto count = static_cast<std::int64_t>(tabRows_.size());
  const auto start = static_cast<std::int64_t>(activeTabRow_->index());
  for (std::int64_t away = 1; away < count; ++away) {
    const auto& row = tabRows_[static_cast<std::size_t>((start + step * away + count) % count)];
    if (row->numberOfItems() <= 0) continue;
    setActiveTabRow(row, false);
    row->selectItemAtIndexOrNearest(column - row->indexScrollOffset());
    return;
  }
}

void HostView::handleAction(const QuillboxAction& action) {
  if (action.code == QuillboxActionPreviousTabRow) {
    selectPreviousTabRow();
  } else if (action.code == QuillboxActionNextTabRow) {
    selectNextTabRow();
  } else {
    activateLastActiveTabRowIfNoneIs();
    if (const auto row = activeTabRow_) row->handleAction(action);
  }
}

void HostView::keyDown(const Event& event) {
  activateLastActiveTabRowIfNoneIs();
  if (const auto row = activeTabRow_) row->keyDown(event);
}

void HostView::scrollWheel(const Event& event) {
  accumulatedScrollAmount_.x += event.deltaX;
  accumulatedScrollAmount_.y += event.deltaY;
  if (accumulatedScrollAmount_.y < -verticalScrollThreshold) {
    upAction();
    accumulatedScrollAmount_.y = 0;
  } else if (accumulatedScrollAmount_.y > verticalScrollThreshold) {
    downAction();
    accumulatedScrollAmount_.y = 0;
  }
  if (std::abs(accumulatedScrollAmount_.x) > horizontalScrollThreshold) {
    accumulatedScrollAmount_.x = 0;
  }
}

void HostView::hiliteTabRow(TabRow* tabRow, bool exclusively) {
  if (exclusively) {
    for (const auto& row : tabRows_) row->setHilited(false);
  }
  if (tabRow != nullptr) tabRow->setHilited(true);
}

}  // namespace qb
