// Access that is granted or taken back while the program runs.

#include "Platform/Archiver.h"
#include "Platform/Pasteboards.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AccessibilityTransitionsTest : public testing::Test {
 protected:
  void launch(bool trusted) {
    noteLaunchedBefore(platform);
    platform.accessibility().setTrusted(trusted);
    appDelegate = AppDelegate::create(platform);
    appDelegate->applicationDidFinishLaunching();
    platform.runFor(5.5);
  }
  void setTrusted(bool trusted) { platform.accessibility().setTrusted(trusted); }
  const std::vector<SimulatedDialogs::ShownAlert>& alerts() {
    return platform.dialogs().shownAlerts();
  }
  std::vector<std::string> titles() {
    std::vector<std::string> all;
    for (const auto& alert : alerts()) all.push_back(alert.messageText);
    return all;
  }

  SimulatedPlatform platform;
  std::shared_ptr<AppDelegate> appDelegate;
};

TEST_F(AccessibilityTransitionsTest, StartWithAccessThanksNobody) {
  launch(true);
  EXPECT_THAT(alerts(), IsEmpty());
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 0);
}

TEST_F(AccessibilityTransitionsTest, StartWithoutAccessRegretsNothing) {
  launch(false);
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(AccessibilityTransitionsTest, GrantIsThankedForAndTheProgramStartsAnew) {
  launch(false);
  platform.dialogs().answerAlert([this](AlertOnScreen& alert) {
    EXPECT_TRUE(platform.eventTap().isEnabled());
    EXPECT_EQ(appDelegate->userInteractionLevel(), 1);
    EXPECT_THAT(platform.applicationControl().launches(), IsEmpty());
    alert.press("OK");
  });
  setTrusted(true);
  platform.runFor(1);
  ASSERT_THAT(titles(), ElementsAre("Quillbox Fully Functional"));
  EXPECT_EQ(alerts().front().informativeText,
            "Thank you for granting access to Quillbox.  As a result, all of Quillbox's features "
            "are now functional.");
  EXPECT_THAT(alerts().front().buttons, ElementsAre("OK"));
  EXPECT_THAT(platform.applicationControl().openedFiles(),
              ElementsAre("/Library/PreferencePanes/QuillboxPrefrences.prefPane",
                          "~/Library/PreferencePanes/QuillboxPrefrences.prefPane"));
  EXPECT_THAT(
      platform.applicationControl().launches(),
      ElementsAre(SimulatedApplicationControl::Launch{"vorlane.Quillbox-Relauncher", 0x100200}));
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 1);
  EXPECT_THAT(platform.log(), Contains("Quillbox is relaunching itself..."));
}

TEST_F(AccessibilityTransitionsTest, GrantOnAnEarlySystemDoesNotStartAnew) {
  platform.applicationControl().setOperatingSystemVersionString("Version 10.8.5 (Build 12F45)");
  launch(false);
  platform.dialogs().answerAlert("OK");
  setTrusted(true);
  platform.runFor(1);
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts().front().informativeText,
            "Thank you for enabling access to assistive devices.  As a result, all of Quillbox's "
            "features are now functional.");
  EXPECT_THAT(platform.applicationControl().launches(), IsEmpty());
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 0);
}

TEST_F(AccessibilityTransitionsTest, LossIsRegretted) {
  launch(true);
  platform.dialogs().answerAlert("OK");
  setTrusted(false);
  platform.runFor(1);
  ASSERT_THAT(titles(), ElementsAre("Quillbox Loss in Functionality"));
  EXPECT_EQ(alerts().front().informativeText,
            "Some of Quillbox's functionality requires that you grant it certain access in the "
            "System Preferences.  By revoking this access, these features of Quillbox have become "
            "inactive.\r\rRe-grant this access to regain full Quillbox functionality.");
  EXPECT_THAT(alerts().front().buttons, ElementsAre("OK"));
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 0);
}

TEST_F(AccessibilityTransitionsTest, LossOnAnEarlySystemSpeaksOfAssistiveDevices) {
  platform.applicationControl().setOperatingSystemVersionString("Version 10.8.5 (Build 12F45)");
  launch(true);
  platform.dialogs().answerAlert("OK");
  setTrusted(false);
  platform.runFor(1);
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts().front().informativeText,
            "Some of Quillbox's functionality relies on access to assistive devices.  By disabling "
            "this access, these features of Quillbox have become inactive.\r\rRe-enable access to "
            "assistive devices to regain full Quillbox functionality.");
}

TEST_F(AccessibilityTransitionsTest, GrantWhileTheLossIsRegrettedClosesThatAlert) {
  launch(true);
  platform.dialogs().leaveAlertUp();
  platform.dialogs().answerAlert("OK");
  platform.schedule(3, [this] {
    EXPECT_THAT(platform.dialogs().alertsOnScreen(), SizeIs(1));
    setTrusted(true);
  });
  setTrusted(false);
  platform.runFor(5);
  ASSERT_THAT(titles(), ElementsAre("Quillbox Loss in Functionality", "Quillbox Fully Functional"));
  EXPECT_EQ(alerts().front().response, ModalResponseAbort);
  EXPECT_EQ(alerts()[1].response, AlertDefaultReturn);
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 1);
}

TEST_F(AccessibilityTransitionsTest, LossWhileTheGrantIsThankedForClosesThatAlert) {
  launch(false);
  platform.dialogs().leaveAlertUp();
  platform.dialogs().answerAlert("OK");
  platform.schedule(3, [this] { setTrusted(false); });
  setTrusted(true);
  platform.runFor(4.5);
  ASSERT_THAT(titles(), ElementsAre("Quillbox Fully Functional", "Quillbox Loss in Functionality"));
  EXPECT_EQ(alerts().front().response, ModalResponseAbort);
}

TEST_F(AccessibilityTransitionsTest, EachAlertShowsOnceInARun) {
  launch(true);
  platform.dialogs().setUser([](AlertOnScreen& alert) { alert.press("OK"); });
  for (int round = 0; round < 3; ++round) {
    setTrusted(false);
    platform.runFor(2);
    setTrusted(true);
    platform.runFor(2);
  }
  EXPECT_THAT(titles(), ElementsAre("Quillbox Loss in Functionality", "Quillbox Fully Functional"));
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 1);
}

TEST_F(AccessibilityTransitionsTest, AlertOfATickWaitsForTheDefaultMode) {
  launch(true);
  setTrusted(false);
  {
    const RunLoop::ModeScope scope(platform.runLoop(), RunLoopMode::EventTracking);
    platform.runFor(2);
    EXPECT_THAT(alerts(), IsEmpty());
  }
  platform.dialogs().answerAlert("OK");
  platform.runFor(0.1);
  EXPECT_THAT(alerts(), SizeIs(1));
}

TEST_F(AccessibilityTransitionsTest, TimerRestsAfterTheLossHasBeenRegretted) {
  launch(true);
  platform.dialogs().answerAlert("OK");
  setTrusted(false);
  platform.runFor(5);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
}

TEST_F(AccessibilityTransitionsTest, ProgramEndsEvenWithoutTheHelper) {
  launch(true);
  platform.applicationControl().removeHelper("vorlane.Quillbox-Relauncher");
  quillbox->relaunchQuillbox();
  EXPECT_EQ(platform.applicationControl().numberOfTerminations(), 1);
}

// What the preference program reads.

class PublishedAccessTest : public AccessibilityTransitionsTest {
 protected:
  std::shared_ptr<Pasteboard> pasteboard() {
    return platform.pasteboards().pasteboardWithName("QuillboxInformation");
  }
  std::optional<PropertyList> published() {
    const auto data = pasteboard()->dataForType("QuillboxInformationType");
    return data ? platform.archiver().unarchiveObjectWithData(*data) : std::nullopt;
  }
  static PropertyList answer(bool access) {
    return PropertyList::dictionary({{"QuillboxInformationHasAccessibilityAccessKey", access}});
  }
};

TEST_F(PublishedAccessTest, FirstAnswerIsPublished) {
  launch(false);
  EXPECT_EQ(published(), answer(false));
  EXPECT_EQ(pasteboard()->changeCount(), 1);
}

TEST_F(PublishedAccessTest, SameAnswerIsNotPublishedAgain) {
  launch(true);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(quillbox->hasAccessibilityAccess());
  EXPECT_EQ(pasteboard()->changeCount(), 1);
}

TEST_F(PublishedAccessTest, ChangeReplacesAllContent) {
  launch(true);
  pasteboard()->setData({1}, "other");
  platform.dialogs().answerAlert("OK");
  setTrusted(false);
  platform.runFor(1);
  EXPECT_EQ(published(), answer(false));
  EXPECT_EQ(pasteboard()->changeCount(), 2);
  EXPECT_EQ(pasteboard()->dataForType("other"), std::nullopt);
}

}  // namespace
}  // namespace qb::test
