// The launch, and the end.

#include "Quillbox/activation/PanelWindow.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

class LaunchTest : public testing::Test {
 protected:
  void launch() {
    noteLaunchedBefore(platform);
    appDelegate = AppDelegate::create(platform);
    appDelegate->applicationDidFinishLaunching();
  }
  SimulatedPlatform platform;
  std::shared_ptr<AppDelegate> appDelegate;
};

TEST_F(LaunchTest, SaysSo) {
  launch();
  EXPECT_EQ(platform.log(), std::vector<std::string>{"Quillbox is launching..."});
}

TEST_F(LaunchTest, NoticeOfTwoSecondsSaysThatItRuns) {
  launch();
  platform.runFor(1.9);
  const auto visible = platform.windowServer().visibleWindows();
  ASSERT_EQ(visible.size(), 1U);
  const auto texts = platform.windowServer().paint(*visible[0]).texts();
  EXPECT_THAT(texts, testing::SizeIs(2)) << "the text and its shadow";
  EXPECT_THAT(texts, testing::Each(std::string("Quillbox is Running...")));
  platform.runFor(1.2);
  EXPECT_TRUE(platform.windowServer().visibleWindows().empty());
}

TEST_F(LaunchTest, GlobalFacadeLivesAsLongAsTheDelegate) {
  EXPECT_EQ(quillbox, nullptr);
  launch();
  ASSERT_NE(quillbox, nullptr);
  EXPECT_EQ(&quillbox->appDelegate(), appDelegate.get());
  EXPECT_EQ(&quillbox->platform(), &platform);
  EXPECT_EQ(quillbox->hostView(), appDelegate->hostView());
  appDelegate.reset();
  EXPECT_EQ(quillbox, nullptr);
}

TEST_F(LaunchTest, ObservesTheSettings) {
  launch();
  appDelegate->settings().setMaxHostViewWidthPercent(100);
  EXPECT_EQ(appDelegate->hostView()->frame(), Rect::make(20, 20, 1400, 840));
}

TEST_F(LaunchTest, AppliesTheSettingsOfTheFile) {
  platform.fileSystem().putPropertyList(
      "~/Library/Preferences/com.vorlane.quillbox.settings",
      PropertyList::dictionary({{"ActivatesOnOptionTab", false}, {"ActivatesOnCommandTab", true}}));
  launch();
  EXPECT_FALSE(platform.hotKeys().isRegistered(KeyCodeTab, HotKeyModifierOption));
  EXPECT_EQ(platform.eventTap().rules().chords.size(), 2U);
}

TEST_F(LaunchTest, WritesNothing) {
  launch();
  platform.runFor(10);
  EXPECT_EQ(platform.fileSystem().numberOfWrites(), 0);
}

TEST_F(LaunchTest, TapIsServedInAllModes) {
  launch();
  for (const RunLoopMode mode :
       {RunLoopMode::Default, RunLoopMode::EventTracking, RunLoopMode::Graphics,
        RunLoopMode::ModalPanel, RunLoopMode::EventOnly}) {
    EXPECT_TRUE(platform.eventTap().runLoopContains(mode));
  }
}

TEST_F(LaunchTest, TerminationGivesBackWhatIsHeld) {
  launch();
  appDelegate->applicationWillTerminate();
  EXPECT_FALSE(platform.eventTap().exists());
  EXPECT_FALSE(platform.hotKeys().isRegistered(KeyCodeH, HotKeyModifierCommand));
  platform.displays().setScreens({{Rect::make(0, 0, 800, 600), {}, 1}});
  EXPECT_EQ(appDelegate->panelWindow().notedPrimaryScreenFrame(), Rect::make(0, 0, 1440, 900));
}

TEST_F(LaunchTest, DelegateThatGoesWhileThePanelIsUpLeavesNothingBehind) {
  launch();
  // Until the word that it is running has left the screen.
  platform.runFor(3.01);
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandTab);
  appDelegate->dismissQuillbox();
  appDelegate.reset();
  EXPECT_TRUE(platform.hotKeys().registered().empty());
  EXPECT_FALSE(platform.hotKeys().hasEventHandler());
  EXPECT_TRUE(platform.windowServer().windows().empty());
  EXPECT_FALSE(platform.eventTap().exists());
  platform.runFor(5);
  EXPECT_EQ(platform.runLoop().nextDeadline(), distantFuture);
}

TEST_F(LaunchTest, WholeRoadOfACommandTabPress) {
  launch();
  const SimulatedApplication viewerApplication{"org.viewer", "Viewer", "/apps/Viewer.desktop"};
  const SimulatedApplication editorApplication{"org.editor", "Editor", "/apps/Editor.desktop"};
  const auto viewer = platform.processes().launchInFront(viewerApplication);
  const auto editor = platform.processes().launchInFront(editorApplication);
  platform.runFor(3);
  const auto commandTab = [this] {
    platform.keyboard().type(KeyCodeTab, {KeyCodeLeftCommand});
    platform.runFor(1);
  };
  commandTab();
  EXPECT_EQ(platform.processes().getFrontProcess(), viewer);
  commandTab();
  EXPECT_EQ(platform.processes().getFrontProcess(), editor);
  EXPECT_TRUE(platform.keyboard().frontApplicationReceived().empty());
  EXPECT_TRUE(platform.contractBreaches().empty());
}

}  // namespace
}  // namespace qb::test
