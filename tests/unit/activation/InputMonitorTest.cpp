#include "Quillbox/activation/InputMonitor.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

/// Every test begins on a tick of the monitor, with none before the interval has passed.
class InputMonitorTest : public ActivationFixture {
 protected:
  void SetUp() override { appDelegate->settingsChanged(); }
  void holdCommandTab() {
    hold({KeyCodeLeftCommand, KeyCodeTab});
    keyboard().release(KeyCodeTab);
  }
  TimeInterval untilNextWakeUp() {
    return platform.runLoop().nextDeadline() - platform.runLoop().now();
  }
};

TEST_F(InputMonitorTest, WithoutTheDoubleTapALiftedKeyIsNoticedAtTheQuarterSecond) {
  holdCommandTab();
  platform.runFor(0.1);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.149);
  EXPECT_TRUE(isActive());
  platform.runFor(0.001);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, WithTheDoubleTapALiftedKeyIsNoticedAtTheTwentiethSecond) {
  settings().setApplicationActivatesOnCommandKeyDoubleTap(true);
  holdCommandTab();
  platform.runFor(0.11);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.039);
  EXPECT_TRUE(isActive());
  platform.runFor(0.001);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, TicksKeepTheirGridThroughALongRest) {
  platform.runFor(10.1);
  holdCommandTab();
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.149);
  EXPECT_TRUE(isActive());
  platform.runFor(0.001);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, AKeyPressedBeforeTheLiftIsActedOnFirst) {
  const struct {
    std::vector<std::uint16_t> keyCodes;
    const char* invoked;
  } rows[] = {{{KeyCodeTab}, "item1: invoke"},
              {{KeyCodeLeftShift, KeyCodeTab}, "item4: invoke"},
              {{KeyCodeLeft}, "item4: invoke"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.invoked);
    provider->itemLog->clear();
    holdCommandTab();
    ASSERT_EQ(selectedName(), "item0");
    // All of it in the very moment of the tick.
    platform.schedule(0.25, [&] {
      for (const auto keyCode : row.keyCodes) keyboard().press(keyCode);
      for (const auto keyCode : row.keyCodes) keyboard().release(keyCode);
      keyboard().release(KeyCodeLeftCommand);
    });
    platform.runFor(0.25);
    EXPECT_FALSE(isActive());
    EXPECT_THAT(*provider->itemLog, testing::Contains(row.invoked));
    platform.runFor(1);
  }
}

TEST_F(InputMonitorTest, RightHandCommandKeyAloneDoesNotHoldThePanel) {
  hold({KeyCodeRightCommand, KeyCodeTab});
  ASSERT_TRUE(isActive());
  platform.runFor(0.25);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, RightHandOptionKeyAloneDoesNotHoldThePanel) {
  hold({KeyCodeRightOption, KeyCodeTab});
  ASSERT_TRUE(isActive());
  platform.runFor(0.25);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, PanelOutlivesAKeyLiftedUnderAMenu) {
  holdCommandTab();
  {
    const RunLoop::ModeScope menu(platform.runLoop(), RunLoopMode::EventTracking);
    keyboard().release(KeyCodeLeftCommand);
    platform.runFor(2);
    EXPECT_TRUE(isActive());
  }
  platform.runFor(0.25);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, CommandTapIsTestedBeforeTheCorner) {
  settings().setApplicationActivatesViaTopLeftCorner(true);
  pointer().moveTo({0, 900});
  platform.runFor(0.25);
  ASSERT_TRUE(isActive());
  pointer().moveTo({100, 800});
  platform.runFor(0.25);
  appDelegate->setAllowableDismissalMethodsForPersistingUserInterface();
  pointer().moveTo({0, 900});
  platform.runFor(0.25);
  ASSERT_FALSE(isActive());
  // The look that found the pointer in the corner has also seen that Command was up, so a press
  // counts again.
  pointer().moveTo({700, 450});
  keyboard().press(KeyCodeLeftCommand);
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(0.25);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, CancelledItNoticesNothing) {
  holdCommandTab();
  appDelegate->cancelInputMonitor();
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(2);
  EXPECT_TRUE(isActive());
}

TEST_F(InputMonitorTest, InstalledAgainWithTheSameIntervalItKeepsItsGrid) {
  platform.runFor(0.2);
  appDelegate->installInputMonitor();
  holdCommandTab();
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.05);
  EXPECT_FALSE(isActive());
}

TEST_F(InputMonitorTest, ChangedSettingsStartANewGrid) {
  platform.runFor(0.2);
  settings().setMaxHostViewWidthPercent(70);
  holdCommandTab();
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.249);
  EXPECT_TRUE(isActive());
  platform.runFor(0.001);
  EXPECT_FALSE(isActive());
}

// Rest.

TEST_F(InputMonitorTest, IdleProcessDoesNotWake) {
  platform.runFor(5);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
}

TEST_F(InputMonitorTest, KeysDoNotWakeAnIdleProcessWithoutTheDoubleTap) {
  platform.runFor(5);
  keyboard().press(KeyCodeS);
  keyboard().press(KeyCodeLeftCommand);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
}

TEST_F(InputMonitorTest, WithTheDoubleTapAChangedKeyIsLookedAtOnce) {
  settings().setApplicationActivatesOnCommandKeyDoubleTap(true);
  platform.runFor(5);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
  keyboard().press(KeyCodeLeftCommand);
  EXPECT_LE(untilNextWakeUp(), 0.05);
  platform.runFor(0.05);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
}

TEST_F(InputMonitorTest, WithCornersInPlayThePointerIsPolled) {
  settings().setApplicationActivatesViaTopLeftCorner(true);
  platform.runFor(5);
  EXPECT_LE(untilNextWakeUp(), 0.25);
}

TEST_F(InputMonitorTest, ValuesReadWithoutNoticeToTheDelegateAreSeenToo) {
  platform.runFor(5);
  platform.fileSystem().putPropertyList(
      settings().pathToSettingsFile(),
      PropertyList::dictionary({{"ActivatesViaTopLeftCorner", true}}));
  pointer().moveTo({0, 900});
  settings().load();
  platform.runFor(0.25);
  EXPECT_TRUE(isActive());
}

TEST_F(InputMonitorTest, StaleKeyStateIsLookedAtAfterADismissal) {
  // Command goes down for Tab and comes up as the dismissal: the tick after that still sees it as
  // the end of a tap.
  settings().setApplicationActivatesOnCommandKeyDoubleTap(true);
  keyboard().press(KeyCodeLeftCommand);
  platform.runFor(0.05);
  tap(KeyCodeTab);
  ASSERT_TRUE(isActive());
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.05);
  ASSERT_FALSE(isActive());
  platform.runFor(0.05);
  keyboard().press(KeyCodeLeftCommand);
  platform.runFor(0.05);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(0.05);
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCommandDoubleTap);
}

}  // namespace
}  // namespace qb::test
