// The places where the user changes what the program may do.

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PreferencePanesTest : public ActivationFixture {
 protected:
  const std::vector<std::string>& scripts() { return platform.scripts().executed(); }
  const SimulatedDialogs::ShownAlert& alert() { return platform.dialogs().shownAlerts().back(); }
};

TEST_F(PreferencePanesTest, WithoutADelayTheSettingsOpenAtOnce) {
  quillbox->openQuillboxSettingsAfterDelay(0);
  EXPECT_THAT(platform.applicationControl().openedFiles(),
              ElementsAre("/Library/PreferencePanes/QuillboxPrefrences.prefPane",
                          "~/Library/PreferencePanes/QuillboxPrefrences.prefPane"));
}

TEST_F(PreferencePanesTest, WithADelayTheSettingsOpenAfterIt) {
  quillbox->openQuillboxSettingsAfterDelay(2);
  platform.runFor(1.9);
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
  platform.runFor(0.2);
  EXPECT_THAT(platform.applicationControl().openedFiles(), SizeIs(2));
}

TEST_F(PreferencePanesTest, NothingOpensForAProgramThatHasGone) {
  quillbox->openQuillboxSettingsAfterDelay(2);
  quillbox->openAccessibilitySettingsWithOption(1);
  row().setProvider(nullptr);
  appDelegate.reset();
  platform.runFor(3);
  EXPECT_THAT(scripts(), IsEmpty());
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
  appDelegate = AppDelegate::create(platform);
  appDelegate->applicationDidFinishLaunching();
}

TEST_F(PreferencePanesTest, PaneOpensByItsIdentifierHalfASecondLater) {
  platform.workspace().install({"org.sound", "Sound", "/panes/Sound.prefPane"});
  quillbox->openPreferencePaneAtPath("/panes/Sound.prefPane");
  platform.runFor(0.49);
  EXPECT_THAT(scripts(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(scripts(),
              ElementsAre("tell application \"System Preferences\"\r set current pane to pane "
                          "\"org.sound\"\r activate\rend tell\r"));
}

constexpr const char* privacyScript =
    "tell application \"System Preferences\"\ractivate\rset the securityPane to pane id "
    "\"com.apple.preference.security\"\rtell securityPane to reveal anchor \"Privacy\"\rend tell";

TEST_F(PreferencePanesTest, AccessSettingsOpenAQuarterOfASecondLaterWithoutHelp) {
  quillbox->openAccessibilitySettingsWithOption(0);
  platform.runFor(0.24);
  EXPECT_THAT(scripts(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(scripts(), ElementsAre(privacyScript));
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

TEST_F(PreferencePanesTest, HelpTellsHowToGrant) {
  platform.dialogs().answerAlert("OK");
  quillbox->openAccessibilitySettingsWithOption(1);
  platform.runFor(0.3);
  EXPECT_THAT(scripts(), ElementsAre(privacyScript));
  EXPECT_EQ(alert().messageText, "Enable Access");
  EXPECT_EQ(alert().informativeText,
            "Please grant acccess to \"Quillbox.app\" in the Security & Privacy settings (which "
            "has been opened for you in the window beneath this window).\r\r1.  Click the "
            "\"Privacy\" Tab.\r2.  Click \"Accessibility\".\r3.  If it is locked, click the lock "
            "in the lower left, then enter your credentials.\r4.  Check the box next to "
            "\"Quillbox.app\"\r\rExample:");
  EXPECT_THAT(alert().buttons, ElementsAre("OK"));
  EXPECT_TRUE(alert().accessoryView.ends_with(" of AssistiveDevicesMavericks"));
}

TEST_F(PreferencePanesTest, HelpTellsHowToGrantAnew) {
  platform.dialogs().answerAlert("OK");
  quillbox->openAccessibilitySettingsWithOption(2);
  platform.runFor(0.3);
  EXPECT_EQ(alert().informativeText,
            "Please re-grant acccess to \"Quillbox.app\" in the Security & Privacy settings (which "
            "has been opened for you in the window beneath this window).\r\r1.  Click the "
            "\"Privacy\" Tab.\r2.  Click \"Accessibility\".\r3.  If it is locked, click the lock "
            "in the lower left, then enter your credentials.\r4.  UN-check the box next to "
            "\"Quillbox.app\"\r5.  RE-check the box next to \"Quillbox.app\"\r\rExample:");
}

class EarlySystemPanesTest : public PreferencePanesTest {
 protected:
  EarlySystemPanesTest() {
    platform.applicationControl().setOperatingSystemVersionString("Version 10.8.5 (Build 12F45)");
  }
};

TEST_F(EarlySystemPanesTest, HelpSpeaksOfAssistiveDevices) {
  platform.dialogs().answerAlert("OK");
  quillbox->openAccessibilitySettingsWithOption(2);
  platform.runFor(0.3);
  EXPECT_THAT(scripts(),
              ElementsAre("tell application \"System Preferences\"\ractivate\rset the current pane "
                          "to pane id \"com.apple.preference.universalaccess\"\rend tell"));
  EXPECT_EQ(alert().informativeText,
            "Please check \"Enable access for assistive devices\" in the Accessibility settings "
            "(which has been opened for you in the window beneath this window).\r\rExample:");
  EXPECT_TRUE(alert().accessoryView.ends_with(" of AssistiveDevicesMountainLion"));
}

}  // namespace
}  // namespace qb::test
