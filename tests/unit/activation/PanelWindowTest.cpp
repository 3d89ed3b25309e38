#include "Quillbox/activation/PanelWindow.h"

#include "Quillbox/activation/Environment.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::int64_t floating = 3, screenSaver = 1000;

class PanelWindowTest : public ActivationFixture {
 protected:
  void setDock(const Rect& visibleFrame) {
    platform.displays().setScreens({{Rect::make(0, 0, 1440, 900), visibleFrame, 1}});
  }
  bool contentIsVisible() const { return appDelegate->contentViewIsVisible(); }
};

TEST_F(PanelWindowTest, LiesHiddenAndClearFromTheLaunchOn) {
  EXPECT_FALSE(panel().isVisible());
  EXPECT_EQ(panel().frame(), Rect::make(0, 0, 1440, 900));
  EXPECT_EQ(panel().level(), screenSaver);
  EXPECT_EQ(panel().collectionBehavior(), 2U);
  EXPECT_EQ(panel().styleMask(), 0U);
  EXPECT_FALSE(panel().hasShadow());
  EXPECT_FALSE(panel().isOpaque());
  EXPECT_EQ(panel().backgroundColor(), Color::clear());
  EXPECT_EQ(panel().contentAlphaValue(), 0);
  EXPECT_EQ(appDelegate->window()->contentView()->subviews().size(), 1U);
}

TEST_F(PanelWindowTest, CanBeKeyAndMainWithoutABorder) {
  EXPECT_TRUE(appDelegate->window()->canBecomeKeyWindow());
  EXPECT_TRUE(appDelegate->window()->canBecomeMainWindow());
}

// Frames.

TEST_F(PanelWindowTest, KeepsItsMarginsAndTheWidthOfTheSettings) {
  settings().setMaxHostViewWidthPercent(50);
  // 1400 points between the margins; 700 of them go, half of that on either side.
  EXPECT_EQ(appDelegate->hostViewMaximumFrame(), Rect::make(20 + 350, 20, 700, 840));
  EXPECT_EQ(host().frame(), Rect::make(370, 20, 700, 840));
}

TEST_F(PanelWindowTest, FullWidthLeavesNoExcess) {
  settings().setMaxHostViewWidthPercent(100);
  EXPECT_EQ(appDelegate->hostViewMaximumFrame(), Rect::make(20, 20, 1400, 840));
}

TEST_F(PanelWindowTest, MoreThanFullWidthChangesNothing) {
  settings().setMaxHostViewWidthPercent(150);
  EXPECT_EQ(appDelegate->hostViewMaximumFrame(), Rect::make(20, 20, 1400, 840));
}

TEST_F(PanelWindowTest, OffsetIsTruncatedNotRounded) {
  appDelegate->adjustWindowSizeToFrame(Rect::make(0, 0, 1443, 900));
  settings().setMaxHostViewWidthPercent(50);
  // An excess of 701.5: half of it, 350.75, becomes 350.
  EXPECT_EQ(appDelegate->hostViewMaximumFrame(), Rect::make(370, 20, 701.5, 840));
}

TEST_F(PanelWindowTest, LeavesTheColumnOfADockAtASideFree) {
  const struct {
    const char* dock;
    Rect visible, expected;
  } cases[] = {
      {"left", Rect::make(64, 0, 1376, 900), Rect::make(64, 0, 1376, 900)},
      {"right", Rect::make(0, 0, 1370, 900), Rect::make(0, 0, 1370, 900)},
      {"bottom", Rect::make(0, 80, 1440, 820), Rect::make(0, 0, 1440, 900)},
      {"none", Rect::make(0, 0, 1500, 900), Rect::make(0, 0, 1440, 900)},
  };
  for (const auto& each : cases) {
    setDock(each.visible);
    open(ActivationMethodCorner);
    EXPECT_EQ(panel().frame(), each.expected) << each.dock;
    EXPECT_EQ(host().frame(), appDelegate->hostViewMaximumFrame()) << each.dock;
    close();
  }
}

TEST_F(PanelWindowTest, SameFrameDoesNotTouchTheHostView) {
  const Rect odd = Rect::make(1, 2, 300, 400);
  host().setFrame(odd);
  appDelegate->adjustWindowSizeToFrame(Rect::make(0, 0, 1440, 900));
  EXPECT_EQ(host().frame(), odd);
  appDelegate->adjustWindowSizeToFrame(Rect::make(0, 0, 1440, 899));
  EXPECT_EQ(host().frame(), appDelegate->hostViewMaximumFrame());
}

TEST_F(PanelWindowTest, PrimaryScreenIsTheFirstAtTheOrigin) {
  platform.displays().setScreens({{Rect::make(-800, 0, 800, 600), {}, 1},
                                  {Rect::make(0, 0, 1024, 768), {}, 1},
                                  {Rect::make(0, 0, 640, 480), {}, 1}});
  EXPECT_EQ(appDelegate->primaryScreenFrame(), Rect::make(0, 0, 1024, 768));
  platform.displays().setScreens({{Rect::make(1, 0, 1024, 768), {}, 1}});
  EXPECT_EQ(appDelegate->primaryScreenFrame(), Rect{});
}

TEST_F(PanelWindowTest, ChangeOfTheDisplaysIsNotedAtOnce) {
  platform.displays().setScreens({{Rect::make(0, 0, 800, 600), Rect::make(0, 0, 800, 600), 1}});
  EXPECT_EQ(appDelegate->panelWindow().notedPrimaryScreenFrame(), Rect::make(0, 0, 800, 600));
  // The window follows when it is shown next.
  EXPECT_EQ(panel().frame(), Rect::make(0, 0, 1440, 900));
  open(ActivationMethodCorner);
  EXPECT_EQ(panel().frame(), Rect::make(0, 0, 800, 600));
}

// Presenting.

TEST_F(PanelWindowTest, LevelAtPresentation) {
  const struct {
    std::int32_t method;
    bool buttonIsDown;
    std::int64_t level;
  } cases[] = {
      {0, false, floating},    {1, false, screenSaver}, {2, false, screenSaver},
      {3, false, screenSaver}, {0, true, floating},     {1, true, floating},
      {2, true, floating},     {3, true, floating},
  };
  for (const auto& each : cases) {
    if (each.buttonIsDown) pointer().press(2);
    open(each.method);
    EXPECT_EQ(panel().level(), each.level) << each.method << " " << each.buttonIsDown;
    close();
    if (each.buttonIsDown) pointer().release(2);
  }
}

TEST_F(PanelWindowTest, IsKeyAndInFrontWhileItIsUp) {
  open(ActivationMethodCommandTab);
  EXPECT_TRUE(panel().isVisible());
  EXPECT_TRUE(panel().isKey());
  EXPECT_EQ(platform.processes().getFrontProcess(), platform.processes().getCurrentProcess());
  EXPECT_TRUE(quillbox->quillboxWindowIsVisible());
  close();
  EXPECT_FALSE(panel().isVisible());
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
  EXPECT_EQ(platform.processes().getFrontProcess(), editor);
}

TEST_F(PanelWindowTest, ContentShowsAfterTheFadeInDelayOfTheMethod) {
  keyboard().press(KeyCodeLeftCommand);
  keyboard().press(KeyCodeLeftOption);
  for (const std::int32_t method : {ActivationMethodCommandTab, ActivationMethodOptionTab}) {
    open(method);
    platform.runFor(0.299);
    EXPECT_FALSE(contentIsVisible()) << method;
    platform.runFor(0.001);
    EXPECT_TRUE(contentIsVisible()) << method;
    close();
    EXPECT_FALSE(contentIsVisible()) << method;
  }
  for (const std::int32_t method : {ActivationMethodCommandDoubleTap, ActivationMethodCorner}) {
    open(method);
    EXPECT_TRUE(contentIsVisible()) << method;
    close();
    EXPECT_FALSE(contentIsVisible()) << method;
  }
}

TEST_F(PanelWindowTest, QuickPressAndReleaseNeverShowsContent) {
  platform.runFor(0.2);
  panel().clearHistory();
  hold({KeyCodeLeftCommand, KeyCodeTab});
  platform.runFor(0.1);
  keyboard().release(KeyCodeTab);
  keyboard().release(KeyCodeLeftCommand);
  platform.runFor(1);
  EXPECT_FALSE(isActive());
  EXPECT_THAT(panel().history(), Contains("makeKeyAndOrderFront"));
  EXPECT_THAT(panel().history(), Not(Contains("setContentAlphaValue 1")));
}

TEST_F(PanelWindowTest, BackdropAndBlurComeWithTheContentAndGoWithIt) {
  settings().setBackdropColorWithRed(0.25, 0.5, 0.75);
  settings().setBackdropColorAlpha(0.5);
  settings().setBackdropBlurPercent(30);
  keyboard().press(KeyCodeLeftCommand);
  open(ActivationMethodCommandTab);
  EXPECT_EQ(panel().backgroundColor(), Color::clear());
  platform.runFor(0.3);
  EXPECT_EQ(panel().backgroundColor(), Color::colorWithCalibratedRed(0.25, 0.5, 0.75, 0.5));
  EXPECT_EQ(panel().backgroundBlurRadius(), 30);
  settings().setBackdropBlurPercent(40);
  close();
  EXPECT_EQ(panel().backgroundColor(), Color::clear());
  EXPECT_EQ(panel().backgroundBlurRadius(), 40);
}

TEST_F(PanelWindowTest, PresentingTwiceAndDismissingTwiceIsOnce) {
  open(ActivationMethodCorner);
  panel().clearHistory();
  appDelegate->presentWindowWithApplicationActivationMethod(ActivationMethodCorner);
  EXPECT_TRUE(panel().history().empty());
  close();
  panel().clearHistory();
  appDelegate->dismissWindowWithInvocation(true, true);
  EXPECT_TRUE(panel().history().empty());
}

TEST_F(PanelWindowTest, RowsLearnWhoWasInFront) {
  struct Provider : TestProvider {
    void noteEnvironment(const PropertyList& environment) override { noted = environment; }
    PropertyList noted;
  };
  const auto curious = std::make_shared<Provider>();
  row().setProvider(curious);
  open(ActivationMethodCorner);
  EXPECT_EQ(frontProcessOfEnvironment(curious->noted), editor);
  EXPECT_EQ(curious->noted.dictionaryValue().size(), 2U);
}

TEST(EnvironmentTest, KeepsBothHalvesUnderTheirKeys) {
  const PropertyList environment = environmentWithFrontProcess({0x80000001, 0xfffffffe});
  EXPECT_EQ(environment, PropertyList::dictionary(
                             {{"kEnvironmentKeyFrontProcessSerialNumberHighLong", 0x80000001L},
                              {"kEnvironmentKeyFrontProcessSerialNumberLowLong", 0xfffffffeL}}));
  EXPECT_EQ(frontProcessOfEnvironment(environment), (ProcessSerialNumber{0x80000001, 0xfffffffe}));
}

TEST_F(PanelWindowTest, OrderingTheWindowOutLeavesTheActivationToEnd) {
  open(ActivationMethodCorner);
  quillbox->orderOutQuillboxWindow();
  EXPECT_FALSE(panel().isVisible());
  EXPECT_TRUE(isActive());
}

}  // namespace
}  // namespace qb::test
