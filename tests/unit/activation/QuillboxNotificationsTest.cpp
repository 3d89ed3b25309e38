#include "Quillbox/activation/QuillboxNotifications.h"

#include <gmock/gmock.h>

#include "Quillbox/activation/Settings.h"
#include "QuillboxCommon/views/LabelView.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class QuillboxNotificationsTest : public QuillboxFixture {
 protected:
  /// The platform's side of the window that was made last.
  SimulatedWindowPeer& newestPeer() { return *platform.windowServer().windows().back(); }
  static LabelView& label(Window& window, std::size_t index) {
    return dynamic_cast<LabelView&>(*window.contentView()->subviews().at(index));
  }
};

TEST_F(QuillboxNotificationsTest, TheWindowFloatsClearAboveEverythingWithTheBlurOfTheBackdrop) {
  settings().setBackdropBlurPercent(40);
  const auto window = quillbox->createQuillboxNotification("Hello");
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(newestPeer().collectionBehavior(), 16U);
  EXPECT_EQ(newestPeer().styleMask(), 0U);
  EXPECT_FALSE(newestPeer().hasShadow());
  EXPECT_FALSE(newestPeer().isOpaque());
  EXPECT_EQ(newestPeer().backgroundColor(), Color::clear());
  EXPECT_EQ(newestPeer().level(), 1000);
  EXPECT_EQ(newestPeer().backgroundBlurRadius(), 40);
}

TEST_F(QuillboxNotificationsTest, TheWindowIsItsTextWithMarginsInTheMiddleOfTheScreen) {
  const auto window = quillbox->createQuillboxNotification("Hello");
  const Size text = platform.graphics().measureText("Hello", Font::systemFontOfSize(24));
  const Rect& frame = window->frame();
  EXPECT_EQ(frame.size, (Size{text.width + 50, text.height + 50}));
  EXPECT_EQ(frame.x(), 720 - frame.width() / 2);
  EXPECT_GT(frame.center().y, 450);
  EXPECT_LT(frame.maxY(), 900);
}

TEST_F(QuillboxNotificationsTest, TheTextStandsWhiteOnItsBlackShadowInAStripLikeARow) {
  settings().setTabRowColor(Color::colorWithCalibratedRed(0.25, 0.5, 0.75, 0.5));
  const auto window = quillbox->createQuillboxNotification("Hello");
  const auto& views = window->contentView()->subviews();
  ASSERT_THAT(views, SizeIs(3));
  const auto& background = dynamic_cast<const RoundedRectangleView&>(*views[0]);
  EXPECT_EQ(background.frame(), window->contentView()->bounds());
  EXPECT_EQ(background.cornerRadius(), 10);
  EXPECT_EQ(background.backgroundColor(), settings().tabRowColor());
  EXPECT_EQ(background.alphaValue(), 1);
  EXPECT_FALSE(background.renderBorder());
  EXPECT_FALSE(background.isHidden());

  const LabelView& black = label(*window, 1);
  const LabelView& white = label(*window, 2);
  for (const LabelView* field : {&black, &white}) {
    EXPECT_EQ(field->text(), "Hello");
    EXPECT_EQ(field->font(), Font::systemFontOfSize(24));
    EXPECT_FALSE(field->renderBackground());
    EXPECT_FALSE(field->renderBorder());
  }
  EXPECT_EQ(black.textColor(), Color::black());
  EXPECT_EQ(white.textColor(), Color::white());
  EXPECT_EQ(white.frame(), centered(white.frame().size, window->contentView()->bounds()));
  EXPECT_EQ(black.frame(), offset(white.frame(), 0, 1));
}

TEST_F(QuillboxNotificationsTest, AVeryLongTextIsNotWrapped) {
  const std::string text(300, 'W');
  const auto window = quillbox->createQuillboxNotification(text);
  const Size measured = platform.graphics().measureText(text, Font::systemFontOfSize(24));
  EXPECT_GT(measured.width, 1440);
  EXPECT_EQ(window->frame().size, (Size{measured.width + 50, measured.height + 50}));
}

TEST_F(QuillboxNotificationsTest, ItComesStaysFadesAndGoes) {
  const auto window = quillbox->displayQuillboxNotification("Hello", 2.0, 0.5);
  SimulatedWindowPeer& peer = newestPeer();
  ASSERT_TRUE(window);
  platform.runFor(0.49);
  EXPECT_FALSE(window->isVisible());
  platform.runFor(0.02);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->isKeyWindow());
  platform.runFor(1.98);
  EXPECT_EQ(peer.contentAlphaValue(), 1);
  platform.runFor(0.26);
  EXPECT_EQ(peer.contentAlphaValue(), 0);
  EXPECT_TRUE(window->isVisible());
  platform.runFor(0.74);
  EXPECT_TRUE(window->isVisible());
  platform.runFor(0.02);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(QuillboxNotificationsTest, WithoutADelayItComesAtOnceAndNobodyHasToKeepIt) {
  const auto before = platform.windowServer().windows().size();
  quillbox->displayQuillboxNotification("Hello", 1.0);
  platform.runPending();
  ASSERT_THAT(platform.windowServer().windows(), SizeIs(before + 1));
  EXPECT_TRUE(newestPeer().isVisible());
  platform.runFor(2.01);
  EXPECT_THAT(platform.windowServer().windows(), SizeIs(before));
}

TEST_F(QuillboxNotificationsTest, ItGoesOnWhileADialogIsUp) {
  const auto window = quillbox->displayQuillboxNotification("Hello", 1.0);
  platform.dialogs().leaveAlertUp();
  platform.schedule(3, [this] { platform.dialogs().abortModal(); });
  quillbox->displayMessage("text", "title");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(QuillboxNotificationsTest, TheDesktopsOwnHaveTitleDetailsAndSound) {
  quillbox->displaySystemNotificationWithTitle("Copied", "3 files");
  EXPECT_THAT(
      platform.userNotifications().delivered(),
      ElementsAre(UserNotification{"Copied", "3 files", "NSUserNotificationDefaultSoundName"}));
}

TEST_F(QuillboxNotificationsTest, TheDesktopsOwnShowAlsoWhileThisProcessIsInFront) {
  open(ActivationMethodCommandTab);
  ASSERT_EQ(platform.processes().getFrontProcess(), platform.processes().getCurrentProcess());
  quillbox->displaySystemNotificationWithTitle("Copied", "3 files");
  EXPECT_THAT(platform.userNotifications().presented(), SizeIs(1));
}

}  // namespace
}  // namespace qb::test
