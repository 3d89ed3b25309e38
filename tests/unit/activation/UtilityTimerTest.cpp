#include "Quillbox/activation/UtilityTimer.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::Not;

constexpr const char* reinstalled = "Re-installing event taps after Accessibilty Enabled";

class UtilityTimerTest : public ActivationFixture {
 protected:
  SimulatedEventTap& tap() { return platform.eventTap(); }
};

TEST_F(UtilityTimerTest, TapDisabledByTheSystemIsEnabledAgainWithinASecond) {
  platform.runFor(5);
  tap().disableBySystem();
  platform.runFor(1);
  EXPECT_TRUE(tap().isEnabled());
  EXPECT_EQ(tap().numberOfCreations(), 1);
}

TEST_F(UtilityTimerTest, WorksUnderAMenuAndAnAlert) {
  for (const RunLoopMode mode : {RunLoopMode::EventTracking, RunLoopMode::ModalPanel}) {
    const RunLoop::ModeScope scope(platform.runLoop(), mode);
    tap().disableBySystem();
    platform.runFor(1);
    EXPECT_TRUE(tap().isEnabled());
  }
}

TEST_F(UtilityTimerTest, TapMissingFromAModeIsMadeAnew) {
  for (const RunLoopMode mode :
       {RunLoopMode::Default, RunLoopMode::EventTracking, RunLoopMode::Graphics,
        RunLoopMode::ModalPanel, RunLoopMode::EventOnly}) {
    const int before = tap().numberOfCreations();
    tap().removeFromRunLoop(mode);
    tap().stateChanged().signal();
    platform.runFor(1);
    EXPECT_TRUE(tap().runLoopContains(mode));
    EXPECT_EQ(tap().numberOfCreations(), before + 1);
  }
}

TEST_F(UtilityTimerTest, StartWithAccessSaysNothing) {
  platform.runFor(5);
  EXPECT_THAT(platform.log(), Not(Contains(reinstalled)));
  EXPECT_EQ(tap().numberOfCreations(), 1);
}

TEST_F(UtilityTimerTest, RevokedAccessLeavesTheTapDeadUntilItIsGrantedAgain) {
  platform.runFor(5);
  platform.dialogs().answerAlert("OK");
  platform.accessibility().setTrusted(false);
  EXPECT_FALSE(quillbox->hasAccessibilityAccess());
  platform.runFor(5);
  EXPECT_FALSE(tap().isEnabled());
  EXPECT_THAT(platform.log(), Not(Contains(reinstalled)));
  platform.dialogs().answerAlert("OK");
  platform.accessibility().setTrusted(true);
  platform.runFor(1);
  EXPECT_TRUE(tap().isEnabled());
  EXPECT_THAT(platform.log(), Contains(reinstalled));
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_TRUE(isActive());
}

TEST_F(UtilityTimerTest, GrantTakenBackAndGivenWithinASecondIsNotSeenAsOne) {
  platform.runFor(5);
  platform.accessibility().setTrusted(false);
  platform.accessibility().setTrusted(true);
  platform.runFor(1);
  EXPECT_TRUE(tap().isEnabled());
  EXPECT_THAT(platform.log(), Not(Contains(reinstalled)));
}

TEST_F(UtilityTimerTest, RestsWhileAllIsWell) {
  platform.runFor(5);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
}

TEST_F(UtilityTimerTest, TerminationGivesTheTapBackForGood) {
  appDelegate->applicationWillTerminate();
  EXPECT_FALSE(tap().exists());
  platform.runFor(5);
  EXPECT_FALSE(tap().exists());
}

// A process that has no access at its start.

class WithoutAccessTest : public testing::Test {
 protected:
  WithoutAccessTest() {
    platform.accessibility().setTrusted(false);
    noteLaunchedBefore(platform);
    appDelegate = AppDelegate::create(platform);
    appDelegate->applicationDidFinishLaunching();
    platform.runFor(0.01);
  }
  SimulatedPlatform platform;
  std::shared_ptr<AppDelegate> appDelegate;
};

TEST_F(WithoutAccessTest, HasNoTapAndSaysNothing) {
  EXPECT_FALSE(platform.eventTap().exists());
  platform.runFor(5);
  EXPECT_EQ(platform.log(), std::vector<std::string>{"Quillbox is launching..."});
}

TEST_F(WithoutAccessTest, OptionTabWorksAndCommandTabStaysWithTheDesktop) {
  const auto editor = platform.processes().launchInFront({"org.editor", "Editor"});
  platform.keyboard().type(KeyCodeTab, {KeyCodeLeftCommand});
  platform.runPending();
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_EQ(platform.keyboard().frontApplicationReceived().front().process, editor);
  platform.keyboard().press(KeyCodeLeftOption);
  platform.keyboard().press(KeyCodeTab);
  platform.runPending();
  EXPECT_EQ(appDelegate->state(), ActivationStateActive);
}

TEST_F(WithoutAccessTest, GrantIsNoticedWithinASecond) {
  platform.runFor(3.5);
  platform.dialogs().answerAlert("OK");
  platform.accessibility().setTrusted(true);
  platform.runFor(1);
  EXPECT_TRUE(platform.eventTap().isEnabled());
  EXPECT_EQ(platform.eventTap().numberOfCreations(), 1);
  EXPECT_EQ(platform.log(),
            (std::vector<std::string>{"Quillbox is launching...",
                                      "Re-installing event taps after Accessibilty Enabled",
                                      "Quillbox is relaunching itself..."}));
}

}  // namespace
}  // namespace qb::test
