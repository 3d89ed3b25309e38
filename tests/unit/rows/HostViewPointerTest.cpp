#include "Platform/KeyCodes.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

class HostViewPointerTest : public HostViewFixture {
 protected:
  void poll() { platform.runFor(0.051); }
  /// The panel by its true road, so that its window is on the screen.
  void openPanel(std::int32_t method) {
    open(method);
    platform.runFor(0.01);
  }
  TappedEvent pressAt(Point point) const {
    TappedEvent event;
    event.type = EventTypeLeftMouseDown;
    event.unflippedLocation = point;
    event.location = {point.x, 900 - point.y};
    return event;
  }
};

TEST_F(HostViewPointerTest, PointerOverAnItemSelectsItAndActivatesItsRow) {
  makeRows({3, 3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(1, 2));
  poll();
  EXPECT_EQ(host().tabRowUnderMouse(), rows[1].get());
  EXPECT_EQ(host().activeTabRow(), rows[1].get());
  EXPECT_EQ(selectedName(1), "item2");
  EXPECT_EQ(countOf(providers[1]->log, "mouseEntered"), 1);
}

TEST_F(HostViewPointerTest, AfterAKeyAMovementOf19PointsChangesNothingAnd20OpensPointerUse) {
  makeRows({3, 3});
  makeDefaults(0, 0);
  platform.pointer().moveTo({10, 10});
  openPanel(ActivationMethodCommandTab);
  const Point start = onItem(1, 2);
  platform.pointer().moveTo(start);
  dismiss();
  present(ActivationMethodCommandTab);
  EXPECT_EQ(host().mouseMovementThreshold(), 20);
  platform.pointer().moveTo({start.x + 19, start.y + 19});
  poll();
  EXPECT_EQ(host().mouseMovementThreshold(), 20);
  EXPECT_EQ(host().activeTabRow(), rows[0].get());
  EXPECT_EQ(selectedName(0), "item0");
  platform.pointer().moveTo({start.x + 20, start.y});
  poll();
  EXPECT_EQ(host().mouseMovementThreshold(), 1);
  EXPECT_EQ(host().activeTabRow(), rows[1].get());
}

TEST_F(HostViewPointerTest, FromThenOnEveryPointCounts) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 0));
  poll();
  ASSERT_EQ(selectedName(0), "item0");
  rows[0]->setSelectedItem(nullptr, SelectionMethodProgram);
  Point point = onItem(0, 0);
  point.x += 0.9;
  platform.pointer().moveTo(point);
  poll();
  EXPECT_EQ(selectedName(0), "none");
  point.x += 0.1;
  platform.pointer().moveTo(point);
  poll();
  EXPECT_EQ(selectedName(0), "item0");
}

TEST_F(HostViewPointerTest, TheFirstRealMovementIsTold) {
  makeRows({3});
  makeDefaults(0, 0);
  platform.keyboard().press(KeyCodeLeftCommand);
  openPanel(ActivationMethodCommandTab);
  platform.runFor(0.4);
  const std::int32_t before = appDelegate->allowableDismissalMethods();
  platform.pointer().moveTo({700, 100});
  poll();
  EXPECT_NE(appDelegate->allowableDismissalMethods(), before);
}

TEST_F(HostViewPointerTest, FromACornerEveryPointCountsAtOnceAndNothingIsTold) {
  makeRows({3});
  openPanel(ActivationMethodCorner);
  EXPECT_EQ(host().mouseMovementThreshold(), 1);
  const std::int32_t before = appDelegate->allowableDismissalMethods();
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  EXPECT_EQ(selectedName(0), "item1");
  EXPECT_EQ(appDelegate->allowableDismissalMethods(), before);
}

TEST_F(HostViewPointerTest, ARestingPointerLeavesTheSelectionToTheKeys) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  host().handleAction(QuillboxAction::actionWithCode(QuillboxActionNextItem));
  platform.runFor(1.0);
  EXPECT_EQ(selectedName(0), "item2");
}

TEST_F(HostViewPointerTest, LeavingAllRowsLeavesNoneActive) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  platform.pointer().moveTo({5, 5});
  poll();
  EXPECT_EQ(host().tabRowUnderMouse(), nullptr);
  EXPECT_EQ(host().activeTabRow(), nullptr);
  EXPECT_EQ(host().lastActiveTabRow(), rows[0].get());
  EXPECT_EQ(selectedName(0), "none");
  EXPECT_EQ(countOf(providers[0]->log, "mouseExited"), 1);
}

TEST_F(HostViewPointerTest, MovingFromRowToRowLeavesOneAndEntersTheOther) {
  makeRows({3, 3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  platform.pointer().moveTo(onItem(1, 1));
  poll();
  EXPECT_EQ(countOf(providers[0]->log, "mouseExited"), 1);
  EXPECT_EQ(countOf(providers[1]->log, "mouseEntered"), 1);
  EXPECT_EQ(selectedName(0), "none");
  EXPECT_EQ(selectedName(1), "item1");
}

TEST_F(HostViewPointerTest, PolledEveryTwentiethOfASecondWhileThePanelIsUp) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  platform.runFor(0.039);
  EXPECT_EQ(selectedName(0), "none");
  platform.runFor(0.002);
  EXPECT_EQ(selectedName(0), "item1");
}

TEST_F(HostViewPointerTest, ClosedPanelDoesNotWatchThePointer) {
  makeRows({3});
  present(ActivationMethodCommandDoubleTap);
  dismiss();
  platform.pointer().moveTo({700, 400});
  platform.runFor(0.5);
  EXPECT_EQ(host().tabRowUnderMouse(), nullptr);
}

TEST_F(HostViewPointerTest, AForcedMovementCountsWithoutOne) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  rows[0]->setSelectedItem(nullptr, SelectionMethodProgram);
  host().forceMouseMovedMessageToBeSent();
  poll();
  EXPECT_EQ(selectedName(0), "item1");
}

TEST_F(HostViewPointerTest, ChangedItemsUnderThePointerAreLookedAtAnew) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  rows[0]->itemsHaveChangedWithMaintainSelection(false, false);
  platform.runFor(0.03);
  EXPECT_EQ(selectedName(0), "none");
  poll();
  EXPECT_EQ(selectedName(0), "item1");
}

TEST_F(HostViewPointerTest, APressOnARowIsWithinIt) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  EXPECT_TRUE(host().mouseDownEventIsWithinTabRow(pressAt(onItem(0, 1))));
  EXPECT_TRUE(host().mouseDownEventIsWithinTabRow(pressAt(onScreen(*rows[0], {2, 2}))));
}

TEST_F(HostViewPointerTest, APressBesideTheRowsIsNot) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  EXPECT_FALSE(host().mouseDownEventIsWithinTabRow(pressAt(onScreen(*rows[0], {-3, 20}))));
  EXPECT_FALSE(host().mouseDownEventIsWithinTabRow(pressAt({2, 2})));
  EXPECT_FALSE(host().mouseDownEventIsWithinTabRow(pressAt({-400, 2})));
}

TEST_F(HostViewPointerTest, AClickOnAnIconInvokesIt) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  platform.pointer().click();
  platform.runFor(0.05);
  EXPECT_EQ(countOf(*providers[0]->itemLog, "item1: invoke"), 1);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
}

TEST_F(HostViewPointerTest, AReleaseAnywhereReachesTheActiveRow) {
  makeRows({3});
  openPanel(ActivationMethodCommandDoubleTap);
  providers[0]->items()[1]->setDragability(DragabilityMovesOutOfRow);
  platform.pointer().moveTo(onItem(0, 1));
  poll();
  platform.pointer().press();
  platform.pointer().moveTo(onItem(0, 2));
  poll();
  EXPECT_EQ(selectedName(0), "item1");
  Event release;
  release.type = EventTypeLeftMouseUp;
  host().mouseUpEventMonitored(release);
  host().forceMouseMovedMessageToBeSent();
  poll();
  EXPECT_EQ(selectedName(0), "item2");
}

TEST_F(HostViewPointerTest, RowsMayComeWhileTheyHearOfTheMovement) {
  /// Answers the first movement over its row with many rows above it.
  class GrowingProvider : public TestProvider {
   public:
    bool mouseMovedFromLocation(Point, Point) override {
      for (; rowsToAdd > 0; --rowsToAdd) {
        view->createTabRowAtIndex(0, TestProvider::withItems(0), false);
      }
      return false;
    }
    HostView* view = nullptr;
    int rowsToAdd = 40;
  };
  const auto growing = std::make_shared<GrowingProvider>();
  growing->names = {"item0"};
  growing->view = &host();
  providers.push_back(growing);
  rows.push_back(host().createTabRowAtIndex(0, growing, false));
  openPanel(ActivationMethodCommandDoubleTap);
  platform.pointer().moveTo(onItem(0, 0));
  poll();
  EXPECT_EQ(host().tabRows().size(), 42U);
  EXPECT_EQ(host().tabRowUnderMouse(), rows[0].get());
  EXPECT_EQ(selectedName(0), "item0");
}

}  // namespace
}  // namespace qb::test
