#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/EventTap.h"
#include "Quillbox/activation/QuillboxAction.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Menu.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class DefaultTabRows;
class SelectorMenu;
class TabRow;
class TabRowFitNotice;
class TabRowMove;
class TabRowProvider;
class TabRowProviderInformation;
class Window;

/// Where a new row goes, seen from the row that asks for it.
enum TabRowPlacement : std::int32_t {
  TabRowPlacementAbove = 0,
  TabRowPlacementBelow = 1,
};

/// The content of the panel: the stack of Tab Rows. It fits the rows to the screen, decides which
/// of them is active, and feeds them the pointer, which it polls. Flipped. Main thread.
///
/// Icons shrink point by point from the upper halo height of the settings, down to the lower one,
/// until the longest row and all the rows fit. What does not fit then sticks out.
class HostView : public View, public MenuItemTarget {
 public:
  /// Makes its rows in the next pass of the run loop, when the service objects exist.
  static std::shared_ptr<HostView> create(const Rect& maximumFrame);
  ~HostView() override;

  void setMaximumFrame(const Rect& frame);
  void windowWillBeDisplayed(Window& window, const PropertyList& environment,
                             std::int32_t applicationActivationMethod);
  void windowWasDisplayed(Window& window);
  void windowWillBeDismissed(Window& window);
  void windowWasDismissed(Window& window);
  void handleAction(const QuillboxAction& action);
  void keyDown(const Event& event) override;
  void scrollWheel(const Event& event) override;
  /// Whether a press at the tap falls on a row: on neither the empty panel nor nothing at all.
  bool mouseDownEventIsWithinTabRow(const TappedEvent& event);
  void mouseUpEventMonitored(const Event& event);
  void settingsChanged();
  /// See TabRowFitNotice.
  void manageTabRowFitIssues();
  /// The code of the present opening, or of the last one.
  std::int32_t activationMethod() const { return activationMethod_; }

  /// Top row first.
  const std::vector<std::shared_ptr<TabRow>>& tabRows() const { return tabRows_; }
  TabRow* activeTabRow() const { return activeTabRow_.get(); }
  /// The row that was active before the present one, which the keys go to when none is.
  TabRow* lastActiveTabRow() const { return lastActiveTabRow_.get(); }
  TabRow* tabRowUnderMouse() const { return tabRowUnderMouse_.get(); }
  /// The row under the drag button while that is held, or null.
  TabRow* tabRowBeingMoved() const;
  /// The first row of running applications, or null.
  TabRow* getActiveApplicationsTabRow() const;

  /// All that a row can show, in the order in which it is offered.
  const std::vector<std::shared_ptr<TabRowProviderInformation>>& tabRowProviderInformations()
      const {
    return providerInformations_;
  }
  std::shared_ptr<TabRowProvider> createTabRowProviderWithInformation(
      const TabRowProviderInformation& information) const;
  std::shared_ptr<TabRow> createTabRowAtIndex(std::size_t index,
                                              std::shared_ptr<TabRowProvider> provider,
                                              bool arrangeTabRows);
  /// A row's items are others now: the rows are sized anew.
  void tabRowItemsHaveChanged(TabRow& tabRow);
  /// No row is active after null. The row that was active loses its selection.
  void setActiveTabRow(std::shared_ptr<TabRow> tabRow, bool asDefault);
  /// The next row that has items, round the end, with the selection in the same column on screen.
  void selectNextTabRow();
  void selectPreviousTabRow();
  void upAction() { selectPreviousTabRow(); }
  void downAction() { selectNextTabRow(); }
  void hiliteTabRow(TabRow* tabRow, bool exclusively);

  // Changes to the stack.
  /// Fades the row out and closes the gap. Nests a run of the loop for as long as the fading takes.
  /// Nothing for a row that is fading already, nor for the last one that is not.
  void deleteTabRow(TabRow& tabRow);
  /// Fades in a row without a provider beside `tabRow`; anything but `TabRowPlacementBelow` places
  /// it above. Nests a run of the loop while the others make room. Null, after a message, when no
  /// more rows fit the screen.
  std::shared_ptr<TabRow> addTabRowRelativeToTabRow(TabRow& tabRow, std::int32_t relativePlacement);
  /// From here on the row goes with the pointer. Nothing with fewer than two rows, and while
  /// another row is moving.
  void beginMovingTabRow(TabRow& tabRow, const Event& event);
  /// Positive is downward. Rows whose middle the moved row's middle passes change places with it.
  void moveTabRowBy(double deltaY);
  void endMovingTabRow(TabRow& tabRow, const Event& event);
  /// Gives the row another place in the order; where it stands on the screen is left as it is.
  void placeTabRowAtIndex(const std::shared_ptr<TabRow>& tabRow, std::size_t index);

  // The selector menu.
  /// Appends what every row's menu has: the defaults, for a row with a provider, and the program's
  /// own entries. Restart and quit are for those who open it with the right button or Control.
  void augmentProviderSelectorMenu(Menu& menu, TabRow& tabRow, const Event& event);
  DefaultTabRows& defaultTabRows() { return *defaultTabRows_; }

  // What is to be kept of the rows.
  /// It has changed: whoever keeps it is told at once.
  void saveState() { stateChanged_.signal(); }
  /// The same a second later, once for all calls until then.
  void saveStateCoallesced();
  ChangeNotice& stateChanged() { return stateChanged_; }

  // The arithmetic of the stack. Heights in points.
  std::int64_t heightOfAllTabRowsWithTabRowHeight(std::int64_t height) const;
  /// The height of a row that is as tall as the settings want it, if the stack then fits the view.
  std::int64_t naturalFrameHeightOfTabRows() const;
  std::int64_t naturalHaloHeight() const;
  void arrangeTabRowsWithAnimate(bool animate);
  /// All rows are as wide as the one with the most items needs, counting as many as fit.
  Rect frameForTabRowAtIndex(std::size_t index, Size haloSize) const;
  /// Never under 2, also where fewer fit.
  std::int64_t calculateMaximumTabRowsSupportedByMainScreen();
  /// Moves nothing unless the largest count has changed.
  void arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(bool animate);
  std::int64_t largestNumberOfTabRowItems() const { return largestNumberOfTabRowItems_; }
  std::int64_t tabRowHeight() const { return tabRowHeight_; }
  Size haloSize() const { return haloSize_; }

  /// Makes the next poll count as a movement of the pointer.
  void forceMouseMovedMessageToBeSent() { lastMouseLocation_ = {}; }
  /// How far the pointer has to go, on one axis at least, before it counts.
  double mouseMovementThreshold() const { return mouseMovementThreshold_; }

  bool isFlipped() const override { return true; }
  bool acceptsFirstResponder() const override { return true; }
  void setFrame(const Rect& frame) override;

 private:
  /// Pushing into a corner is a use of the pointer already; after a key, a trembling hand must not
  /// take the selection.
  static constexpr double anyMovement = 1, significantMovement = 20;

  explicit HostView(const Rect& maximumFrame);

  void createInitialTabRows();
  void createDefaultTabRows();
  void normalizeTabRows();
  bool haloHeightFits(std::int64_t haloHeight) const;
  bool isBeingDeleted(const TabRow& tabRow) const;
  /// No key goes to the row any more.
  void takeActiveStatusFrom(TabRow& tabRow);
  void activateLastActiveTabRowIfNoneIs();
  /// `step` is 1 for the next row and -1 for the previous one.
  void selectNeighbourTabRow(std::int64_t step);
  Point mouseLocationInWindow() const;
  void monitorMouse();
  /// Tells the rows of the movement, and answers the one under the pointer, or null.
  std::shared_ptr<TabRow> noteMouseMovedTo(Point location);
  void noteTabRowUnderMouse(const std::shared_ptr<TabRow>& tabRow);

  std::vector<std::shared_ptr<TabRowProviderInformation>> providerInformations_;
  std::vector<std::shared_ptr<TabRow>> tabRows_;
  std::shared_ptr<TabRow> activeTabRow_, lastActiveTabRow_, tabRowUnderMouse_;
  std::vector<std::weak_ptr<TabRow>> tabRowsBeingDeleted_;
  std::unique_ptr<TabRowMove> tabRowMove_;
  std::unique_ptr<TabRowFitNotice> fitNotice_;
  std::unique_ptr<DefaultTabRows> defaultTabRows_;
  std::unique_ptr<SelectorMenu> selectorMenu_;
  ChangeNotice stateChanged_;
  bool stateWillBeSaved_ = false;
  std::int32_t activationMethod_ = 0;
  std::int64_t largestNumberOfTabRowItems_ = 0;
  std::int64_t tabRowHeight_ = 0;
  Size haloSize_;
  std::shared_ptr<RunLoopTimer> mouseMonitorTimer_;
  double mouseMovementThreshold_ = 0;
  Point lastMouseLocation_, accumulatedScrollAmount_;
};

}  // namespace qb
