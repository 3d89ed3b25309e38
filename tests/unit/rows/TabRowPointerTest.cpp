#include "Platform/KeyCodes.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowPointerTest : public TabRowFixture {
 protected:
  Event mouseEvent(EventType type, EventFlags flags = 0) {
    Event event;
    event.type = type;
    event.flags = flags;
    return event;
  }
  /// On item 1.
  void press() {
    Event event = mouseEvent(EventTypeLeftMouseDown);
    event.location = row->convertPointToView({87, 40}, nullptr);
    row->mouseDownInEventCaptureView(event, row->selectionViews().eventCaptureView());
  }
  void release(EventFlags flags = 0) {
    row->mouseUpInEventCaptureView(mouseEvent(EventTypeLeftMouseUp, flags),
                                   row->selectionViews().eventCaptureView());
  }
  std::int64_t invocations() const { return countOf(*provider->itemLog, "item1: invoke"); }
};

TEST_F(TabRowPointerTest, AnItemIsHitInItsCell) {
  struct Case {
    Point point;
    const char* selected;
  };
  // Item n's view begins at 16 + 50 n and is 42 by 42, from y 19: its cell is 58 wide, 4 to the
  // left of that.
  const Case cases[] = {
      {{37, 40}, "item0"},   {{12, 40}, "item0"}, {{11.9, 40}, "none"},   {{61.9, 40}, "item0"},
      {{62, 40}, "item1"},   {{69, 40}, "item1"}, {{37, 19}, "item0"},    {{37, 18.9}, "none"},
      {{37, 60.9}, "item0"}, {{37, 61}, "none"},  {{169.9, 40}, "item2"}, {{170, 40}, "none"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(testing::Message() << one.point.x << " " << one.point.y);
    makeOpenRow(3);
    moveTo(one.point);
    EXPECT_EQ(selectedName(), one.selected);
  }
}

TEST_F(TabRowPointerTest, WhereCellsOverlapTheLastOneWins) {
  makeOpenRow(3);
  // 62 to 70 belongs to the cells of both.
  moveTo({65, 40});
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowPointerTest, LeavingAllItemsTakesTheSelectionAway) {
  makeOpenRow(3);
  moveTo({37, 40});
  moveTo({400, 40});
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowPointerTest, AnItemBeyondTheVisibleOnesLeavesTheSelectionWhereItWas) {
  platform.graphics().setImageSize("RightIndicator", {12, 24});
  makeRow(10);
  row->setFrame(Rect::make(0, 0, 172, 80), {50, 50}, false);
  openRow();
  ASSERT_EQ(row->indexOfRightMostVisibleItem(), 2);
  select(1);
  // In the cell of the hidden item 3, above the indicator's reach.
  moveTo({165, 20});
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowPointerTest, ItemsThatCannotBeInvokedAreHitAllTheSame) {
  makeOpenRow(3);
  provider->item(1).setInvokable(false);
  moveTo({87, 40});
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowPointerTest, AProviderMayTakeTheMovement) {
  makeOpenRow(3);
  provider->takesMouseMoved = true;
  moveTo({37, 40});
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowPointerTest, MovementSelectsNothingWhileItemsMove) {
  makeOpenRow(3);
  row->arrangeItemsWithMaintainScrollOffset(false, true);
  moveTo({37, 40});
  EXPECT_EQ(selectedName(), "none");
  platform.runFor(0.26);
  moveTo({38, 40});
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(TabRowPointerTest, ProviderHearsOfEnteringAndLeaving) {
  makeOpenRow(1);
  provider->log.clear();
  row->mouseEntered();
  row->mouseExited();
  EXPECT_EQ(provider->log, (CallLog{"mouseEntered", "mouseExited"}));
}

TEST_F(TabRowPointerTest, AClickInvokesTheSelectedItem) {
  makeOpenRow(3);
  select(1);
  press();
  EXPECT_EQ(invocations(), 0);
  release();
  EXPECT_EQ(invocations(), 1);
}

TEST_F(TabRowPointerTest, AClickWithControlDoesNotInvoke) {
  makeOpenRow(3);
  select(1);
  press();
  release(EventFlagControl);
  EXPECT_EQ(invocations(), 0);
}

TEST_F(TabRowPointerTest, AProviderMayTakeTheClick) {
  makeOpenRow(3);
  select(1);
  provider->takesMouseUp = true;
  press();
  release();
  EXPECT_EQ(invocations(), 0);
}

TEST_F(TabRowPointerTest, ADraggableItemHoldsTheSelectionWhileItIsPressed) {
  makeOpenRow(3);
  provider->item(1).setDragability(DragabilityMovesOutOfRow);
  select(1);
  press();
  moveTo({137, 40});
  EXPECT_EQ(selectedName(), "item1");
  release();
  moveTo({138, 40});
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowPointerTest, AnItemThatCannotBeDraggedLetsThePointerHover) {
  makeOpenRow(3);
  select(1);
  press();
  moveTo({137, 40});
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowPointerTest, APressThatTheProviderTookHoldsNothing) {
  makeOpenRow(3);
  provider->item(1).setDragability(DragabilityMovesOutOfRow);
  provider->takesMouseDown = true;
  select(1);
  press();
  moveTo({137, 40});
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowPointerTest, AReleaseAnywhereEndsThePress) {
  makeOpenRow(3);
  provider->item(1).setDragability(DragabilityMovesOutOfRow);
  select(1);
  press();
  row->mouseUpEventMonitored(mouseEvent(EventTypeLeftMouseUp));
  moveTo({137, 40});
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowPointerTest, LeavingTheRowEndsThePress) {
  makeOpenRow(3);
  provider->item(1).setDragability(DragabilityMovesOutOfRow);
  select(1);
  press();
  row->mouseExited();
  moveTo({137, 40});
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowPointerTest, ClicksReachTheRowThroughTheCaptureView) {
  makeOpenRow(3);
  select(1);
  auto& capture = row->selectionViews().eventCaptureView();
  EXPECT_EQ(capture.delegate(), row.get());
  capture.mouseDown(mouseEvent(EventTypeLeftMouseDown));
  capture.mouseUp(mouseEvent(EventTypeLeftMouseUp));
  EXPECT_EQ(invocations(), 1);
}

TEST_F(TabRowPointerTest, TheClickThatClosesAMenuInvokesNothing) {
  makeOpenRow(3);
  select(1);
  auto& capture = row->selectionViews().eventCaptureView();
  EventCaptureView::notePopUpMenuDidClose();
  platform.runFor(0.49);
  capture.mouseUp(mouseEvent(EventTypeLeftMouseUp));
  EXPECT_EQ(invocations(), 0);
  platform.runFor(0.02);
  capture.mouseUp(mouseEvent(EventTypeLeftMouseUp));
  EXPECT_EQ(invocations(), 1);
}

TEST_F(TabRowPointerTest, APressBecomesADragAtEightPoints) {
  struct Case {
    Point to;
    bool drags;
  };
  // The press is at 87, 40 of the row, which is 80 high.
  const Case cases[] = {{{94, 40}, false}, {{80, 47}, false}, {{94.9, 32.1}, false},
                        {{95, 40}, true},  {{79, 40}, true},  {{87, 48}, true},
                        {{87, 32}, true},  {{60, 10}, true}};
  for (const Case& one : cases) {
    SCOPED_TRACE(testing::Message() << one.to.x << " " << one.to.y);
    makeOpenRow(3);
    provider->item(1).setDragability(DragabilityMovesOutOfRow);
    select(1);
    press();
    moveTo(one.to);
    EXPECT_EQ(countOf(provider->log, "drag item1"), one.drags ? 1 : 0);
    EXPECT_EQ(selectedName(), "item1");
  }
}

TEST_F(TabRowPointerTest, ADragBeginsOnceAndItsReleaseIsNoClick) {
  makeOpenRow(3);
  provider->item(1).setDragability(DragabilityDimsInRow);
  select(1);
  press();
  moveTo({87, 60});
  moveTo({87, 20});
  moveTo({87, 40});
  EXPECT_EQ(countOf(provider->log, "drag item1"), 1);
  release();
  EXPECT_EQ(invocations(), 0);
  press();
  release();
  EXPECT_EQ(invocations(), 1);
}

TEST_F(TabRowPointerTest, AnItemThatIsNotDraggableIsNotDragged) {
  makeOpenRow(3);
  provider->item(1).setArrangeable(true);
  select(1);
  press();
  moveTo({87, 60});
  EXPECT_EQ(countOf(provider->log, "drag item1"), 0);
}

}  // namespace
}  // namespace qb::test
