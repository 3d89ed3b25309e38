// What the user is told at the first run, after an upgrade and at the first activation.

#include "Quillbox/activation/Welcome.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WelcomeTest : public testing::Test {
 protected:
  void launch() {
    appDelegate = AppDelegate::create(platform);
    appDelegate->applicationDidFinishLaunching();
    platform.runFor(3.01);
  }
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
  const std::string settingsFile = "~/Library/Preferences/com.vorlane.quillbox.settings";
};

TEST_F(WelcomeTest, FirstRunWithAccessShowsOneAlert) {
  platform.dialogs().answerAlert("OK");
  launch();
  ASSERT_THAT(alerts(), SizeIs(1));
  const auto& alert = alerts().front();
  EXPECT_EQ(alert.messageText, "Quillbox Installed");
  EXPECT_EQ(alert.informativeText,
            "Welcome to Quillbox!\r\rYou will now be able to Invoke Quillbox by pressing "
            "Command-Tab or Option-Tab.\r\rYou can further configure Quillbox and learn more about "
            "it in the Quillbox Preferences...");
  EXPECT_THAT(alert.buttons, ElementsAre("OK", "Open Quillbox Preferences"));
  EXPECT_EQ(alert.accessoryView, "spacer 380x20");
  EXPECT_EQ(alert.mode, RunLoopMode::ModalPanel);
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(WelcomeTest, FirstRunWithoutAccessOffersToGrantIt) {
  platform.accessibility().setTrusted(false);
  platform.dialogs().answerAlert("OK");
  launch();
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts().front().informativeText,
            "Welcome to Quillbox!\r\rYou will now be able to invoke Quillbox by pressing "
            "Option-Command.  To invoke Quillbox by pressing Command-Tab, however, you need to "
            "grant Quillbox certain access in the System Preferences.\r\rGranting this access also "
            "unlocks additional Quillbox features and is highly recommended.");
  EXPECT_THAT(alerts().front().buttons, ElementsAre("OK", "Grant Quillbox Access"));
}

TEST_F(WelcomeTest, SecondButtonOpensThePreferencesHalfASecondLater) {
  platform.dialogs().answerAlert("Open Quillbox Preferences");
  appDelegate = AppDelegate::create(platform);
  appDelegate->applicationDidFinishLaunching();
  platform.runFor(0.49);
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(platform.applicationControl().openedFiles(),
              ElementsAre("/Library/PreferencePanes/QuillboxPrefrences.prefPane",
                          "~/Library/PreferencePanes/QuillboxPrefrences.prefPane"));
}

TEST_F(WelcomeTest, EngineStandsAsideWhileTheGreetingIsUp) {
  platform.dialogs().answerAlert([](AlertOnScreen& alert) {
    EXPECT_EQ(quillbox->appDelegate().userInteractionLevel(), 1);
    alert.press("OK");
  });
  launch();
  ASSERT_THAT(alerts(), SizeIs(1));
}

TEST_F(WelcomeTest, FirstRunIsSavedBeforeItsAlert) {
  platform.dialogs().answerAlert([this](AlertOnScreen& alert) {
    const auto saved = platform.fileSystem().propertyList(settingsFile);
    EXPECT_TRUE(saved && saved->boolForKey("HasPerformedOneTimeStartUp"));
    alert.press("OK");
  });
  launch();
  EXPECT_EQ(platform.fileSystem().numberOfWrites(settingsFile), 1);
}

TEST_F(WelcomeTest, FirstRunAddsOneLoginItemForThisCopy) {
  platform.applicationControl().setBundlePath("/opt/new/quillbox");
  platform.loginItems().insertItemLast("/opt/new/quillbox");
  platform.loginItems().insertItemLast("/usr/bin/other");
  platform.loginItems().insertItemLast("/opt/new/quillbox");
  platform.dialogs().answerAlert("OK");
  launch();
  EXPECT_THAT(platform.loginItems().paths(), ElementsAre("/usr/bin/other", "/opt/new/quillbox"));
}

TEST_F(WelcomeTest, LoginItemThatCannotBeAddedGoesUnreported) {
  platform.loginItems().setInsertionsFail(true);
  platform.dialogs().answerAlert("OK");
  launch();
  EXPECT_THAT(platform.loginItems().paths(), IsEmpty());
  EXPECT_EQ(platform.log(), std::vector<std::string>{"Quillbox is launching..."});
}

TEST_F(WelcomeTest, FirstRunThatCannotBeSavedGreetsOnceAndWorks) {
  platform.fileSystem().setWritesFail(true);
  platform.dialogs().answerAlert("OK");
  launch();
  EXPECT_THAT(titles(), ElementsAre("Quillbox Installed"));
  EXPECT_FALSE(platform.fileSystem().propertyList(settingsFile));
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(appDelegate->state(), ActivationStateActive);
}

TEST_F(WelcomeTest, SecondRunGreetsNobody) {
  platform.dialogs().answerAlert("OK");
  launch();
  appDelegate.reset();
  launch();
  EXPECT_THAT(alerts(), SizeIs(1));
  EXPECT_THAT(platform.loginItems().paths(), SizeIs(1));
}

TEST_F(WelcomeTest, DateOfTheFirstLaunchIsKept) {
  constexpr const char* key = "kInitialApplicationLaunchVersionTwoKey";
  platform.dialogs().answerAlert("OK");
  platform.runLoopHost().setDate(500);
  launch();
  EXPECT_EQ(platform.userDefaults().objectForKey(key), PropertyList(PropertyList::Date{500}));
  EXPECT_EQ(appDelegate->launchDate(), 500);
  appDelegate.reset();
  platform.runLoopHost().setDate(900);
  launch();
  EXPECT_EQ(platform.userDefaults().objectForKey(key), PropertyList(PropertyList::Date{500}));
  EXPECT_EQ(appDelegate->launchDate(), 900);
}

TEST_F(WelcomeTest, SaysThatItIsRunningForTwoSeconds) {
  noteLaunchedBefore(platform);
  appDelegate = AppDelegate::create(platform);
  appDelegate->applicationDidFinishLaunching();
  platform.runFor(0.01);
  const auto shown = [this] { return platform.windowServer().visibleWindows().size(); };
  EXPECT_EQ(shown(), 1U);
  platform.runFor(2.98);
  EXPECT_EQ(shown(), 1U);
  platform.runFor(0.02);
  EXPECT_EQ(shown(), 0U);
}

// The tips.

TEST_F(WelcomeTest, TipsShowHalfASecondAfterTheFirstActivationOnly) {
  platform.dialogs().answerAlert("OK");
  launch();
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  platform.runFor(0.49);
  EXPECT_THAT(alerts(), SizeIs(1));
  platform.dialogs().answerAlert("OK");
  platform.runFor(0.02);
  ASSERT_THAT(alerts(), SizeIs(2));
  const auto& alert = alerts()[1];
  EXPECT_EQ(alert.messageText, "Quillbox Introduction");
  EXPECT_EQ(alert.informativeText,
            "Quillbox comes with a default configuration of Tab Rows.  However, you can customize "
            "this configuration by re-ordering existing Tab Rows, deleting any Tab Rows you don't "
            "want, or creating new ones.  As well, you can choose the type of contents that any "
            "new or existing Tab Row will display.\r\rTo do so, mouse over any Tab Row and its "
            "controls will appear.  Use these controls as shown below.\r\rWe also suggest you view "
            "the Quillbox QuickStart Guide to learn more.");
  EXPECT_THAT(alert.buttons, ElementsAre("OK", "Show QuickStart Guide"));
  const Size picture = platform.graphics().imageNamed("Quintro").size();
  EXPECT_EQ(alert.accessoryView, "image " + std::to_string(static_cast<int>(picture.width + 80)) +
                                     "x" + std::to_string(static_cast<int>(picture.height)) +
                                     " of Quintro");
  EXPECT_THAT(platform.log(), Contains("showUserTips: 1"));
  EXPECT_EQ(appDelegate->state(), ActivationStateActive);

  appDelegate->dismissApplicationWithInvocation(false, false);
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  platform.runFor(1);
  EXPECT_THAT(alerts(), SizeIs(2));
  EXPECT_THAT(platform.applicationControl().openedURLs(), IsEmpty());
}

TEST_F(WelcomeTest, TwoQuickActivationsShowTheTipsOnce) {
  platform.dialogs().answerAlert("OK");
  launch();
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  appDelegate->dismissApplicationWithInvocation(false, false);
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  platform.dialogs().answerAlert("OK");
  platform.runFor(1);
  EXPECT_THAT(alerts(), SizeIs(2));
  EXPECT_THAT(platform.log(), Contains("showUserTips: 0"));
}

TEST_F(WelcomeTest, QuickStartGuideDismissesThePanelAndOpensTheBrowser) {
  platform.userDefaults().setObject("https://product.test", "ProductWebSite");
  platform.dialogs().answerAlert("OK");
  launch();
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  platform.dialogs().answerAlert("Show QuickStart Guide");
  platform.runFor(1);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_THAT(platform.applicationControl().openedURLs(),
              ElementsAre("https://product.test/QuickStart.html"));
}

// A new version.

class UpgradeTest : public WelcomeTest {
 protected:
  UpgradeTest() {
    noteLaunchedBefore(platform);
    platform.applicationControl().setShortVersionString("2.5.1");
    platform.userDefaults().setObject("https://product.test", "ProductWebSite");
  }
};

TEST_F(UpgradeTest, IsAnnouncedOnce) {
  platform.dialogs().answerAlert("OK");
  platform.dialogs().answerAlert("Not Now");
  launch();
  ASSERT_THAT(titles(), ElementsAre("Quillbox Upgrade", "IMPORTANT: Quillbox System Access"));
  const auto& alert = alerts().front();
  EXPECT_EQ(alert.informativeText,
            "Thank you for upgrading Quillbox to version 2.5.1.\r\rThis version contains several "
            "fixes and enhancements that make Quillbox better than ever.\r\rTo learn more visit: "
            "https://product.test/ReleaseHistory.html.");
  EXPECT_THAT(alert.buttons, ElementsAre("OK"));
  EXPECT_EQ(platform.userDefaults().objectForKey("2.5.1"), PropertyList("Welcomed"));
  appDelegate.reset();
  launch();
  EXPECT_THAT(alerts(), SizeIs(2));
}

TEST_F(UpgradeTest, AnyValueUnderTheVersionMarksItAsWelcomed) {
  platform.userDefaults().setObject(false, "2.5.1");
  launch();
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(UpgradeTest, AsksForTheAccessAnew) {
  platform.dialogs().answerAlert("OK");
  platform.dialogs().answerAlert("Not Now");
  launch();
  const auto& alert = alerts().at(1);
  EXPECT_EQ(alert.informativeText,
            "\rIf you previously granted System access to Quillbox to enable all of its "
            "functionality, you may need to do so again."
            "\r\rEven though you have properly upgraded Quillbox, sometimes the Mac Operating "
            "System does not recognize the new version of Quillbox as the \"same\" application as "
            "the previously installed version."
            "\r\rTo be certain that Quillbox operates properly, we recommend that you re-grant "
            "this System access now.  This will guarnatee Quillbox is fully functional."
            "\r\rThe Security & Privacy Preference Pane will be opened with further instructions."
            "\r\rIMPORTANT: Note that you will need to UN-check Quillbox.app and then RE-check it "
            "to properly re-grant it System access.");
  EXPECT_THAT(alert.buttons, ElementsAre("Grant Quillbox Access", "Not Now"));
  EXPECT_EQ(alert.accessoryView, "spacer 460x20");
  EXPECT_EQ(alert.escapeButton, "Not Now");
  EXPECT_THAT(platform.scripts().executed(), IsEmpty());
}

TEST_F(UpgradeTest, GrantOpensThePrivacySettingsWithHelp) {
  platform.dialogs().answerAlert("OK");
  platform.dialogs().answerAlert("Grant Quillbox Access");
  platform.dialogs().answerAlert("OK");
  launch();
  EXPECT_THAT(titles(), ElementsAre("Quillbox Upgrade", "IMPORTANT: Quillbox System Access",
                                    "Enable Access"));
  EXPECT_THAT(platform.scripts().executed(), SizeIs(1));
}

TEST_F(UpgradeTest, EarlySystemDoesNotAskForTheAccessAnew) {
  platform.applicationControl().setOperatingSystemVersionString("Version 10.8.5 (Build 12F45)");
  platform.dialogs().answerAlert("OK");
  launch();
  EXPECT_THAT(titles(), ElementsAre("Quillbox Upgrade"));
}

}  // namespace
}  // namespace qb::test
