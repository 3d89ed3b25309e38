// What becomes of presses at the tap.

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

class TappedMouseTest : public ActivationFixture {
 protected:
  void SetUp() override {
    open(ActivationMethodCommandTab);
    keyboard().press(KeyCodeLeftCommand);
  }
  /// A point from the top left inside the row.
  Point pointInRow() {
    const Rect frame = row().convertRectToView(row().bounds(), nullptr);
    return platform.displays().flipped(frame.center());
  }
  /// Shows the press to the tap only, as when another program's window gets it.
  bool pressAtTap(Point location, EventType type = EventTypeLeftMouseDown) {
    TappedEvent event;
    event.type = type;
    event.location = location;
    event.unflippedLocation = platform.displays().flipped(location);
    return appDelegate->tappedEventOccured(event);
  }
  /// Lays the row across the top of the screen, where the menu bar's strip is.
  void putRowAtTop() {
    host().setMaximumFrame(Rect::make(0, 0, 1440, 900));
    row().setFrame(Rect::make(0, 0, 1440, 100), {50, 50}, false);
  }
};

TEST_F(TappedMouseTest, PressInTheMenuBarIsSwallowedAndDismisses) {
  putRowAtTop();
  for (const double y : {0.0, 10.0, 22.0}) {
    EXPECT_FALSE(pressAtTap({700, y})) << y;
    EXPECT_TRUE(isActive());
    platform.runPending();
    EXPECT_FALSE(isActive()) << y;
    open(ActivationMethodCommandTab);
    putRowAtTop();
  }
}

TEST_F(TappedMouseTest, PressJustBelowTheMenuBarIsNotInIt) {
  putRowAtTop();
  EXPECT_TRUE(pressAtTap({700, 22.5}));
  platform.runPending();
  EXPECT_TRUE(isActive());
}

TEST_F(TappedMouseTest, MenuBarIsOnThePrimaryScreenOnly) {
  putRowAtTop();
  host().setFrameSize({3000, 900});
  row().setFrame(Rect::make(0, 0, 3000, 100), {50, 50}, false);
  EXPECT_TRUE(pressAtTap({1440, 10}));
}

TEST_F(TappedMouseTest, ClickOnEmptyPanelIsSwallowedAndDismissesAtOnce) {
  for (const Point point : {Point{720, 100}, Point{2, 890}}) {
    ASSERT_TRUE(isActive());
    pointer().moveToFlipped(point);
    pointer().press();
    EXPECT_FALSE(platform.eventTap().answers().back().passedOn);
    platform.runPending();
    EXPECT_FALSE(isActive());
    pointer().release();
    open(ActivationMethodCommandTab);
  }
}

TEST_F(TappedMouseTest, RightClickOnEmptyPanelDismissesToo) {
  EXPECT_FALSE(pressAtTap({720, 100}, EventTypeRightMouseDown));
  platform.runPending();
  EXPECT_FALSE(isActive());
}

TEST_F(TappedMouseTest, DismissalByAPressNeitherInvokesNorReactivates) {
  const auto before = frontProcessRequests();
  pressAtTap({720, 100});
  platform.runFor(1);
  EXPECT_EQ(countOf(*provider->itemLog, "item0: invoke"), 0);
  EXPECT_EQ(frontProcessRequests(), before);
}

TEST_F(TappedMouseTest, ClickOnARowPassesAndItsArrivalCancelsTheDismissal) {
  pointer().moveToFlipped(pointInRow());
  pointer().press();
  EXPECT_TRUE(platform.eventTap().answers().back().passedOn);
  platform.runFor(0.2);
  EXPECT_TRUE(isActive());
}

TEST_F(TappedMouseTest, PressOnARowThatGoesElsewhereDismissesAfterATenthOfASecond) {
  EXPECT_TRUE(pressAtTap(pointInRow()));
  platform.runFor(0.099);
  EXPECT_TRUE(isActive());
  platform.runFor(0.001);
  EXPECT_FALSE(isActive());
}

TEST_F(TappedMouseTest, WhileAPopUpMenuIsOpenAPressNeitherDismissesNorIsSwallowed) {
  bool menuHasOpened = false;
  platform.menuPresenter().whenMenuOpens([&](SimulatedMenuUser& user) {
    menuHasOpened = true;
    EXPECT_TRUE(pressAtTap({720, 100}));
    EXPECT_TRUE(pressAtTap({720, 10}));
    user.rest(0.2);
    EXPECT_TRUE(isActive());
    user.escape();
  });
  const auto menu = std::make_shared<Menu>();
  menu->addItem(MenuItem::create("entry"));
  quillbox->popUpMenu(menu, nullptr, {100, 100}, nullptr, nullptr);
  EXPECT_TRUE(menuHasOpened);
  platform.runPending();
  EXPECT_TRUE(isActive());
  EXPECT_FALSE(pressAtTap({720, 100}));
}

TEST_F(TappedMouseTest, DuringUserInteractionPressesPass) {
  appDelegate->beginUserInteraction();
  EXPECT_TRUE(pressAtTap({720, 100}));
  platform.runFor(0.2);
  EXPECT_TRUE(isActive());
}

TEST_F(TappedMouseTest, WhileInactivePressesPass) {
  close();
  EXPECT_TRUE(pressAtTap({720, 10}));
  EXPECT_TRUE(pressAtTap({720, 100}));
}

TEST_F(TappedMouseTest, EveryMaskLetsAPressOutsideDismiss) {
  close();
  for (const std::int32_t method : {ActivationMethodCommandDoubleTap, ActivationMethodCommandTab,
                                    ActivationMethodOptionTab, ActivationMethodCorner}) {
    open(method);
    EXPECT_FALSE(pressAtTap({720, 100})) << method;
    platform.runPending();
    EXPECT_FALSE(isActive()) << method;
  }
}

}  // namespace
}  // namespace qb::test
