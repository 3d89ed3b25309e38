// The warning while the user tries icon sizes in the settings.

#include "Quillbox/rows/TabRowFitNotice.h"

#include "Quillbox/activation/Settings.h"
#include "QuillboxCommon/views/LabelView.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

class TabRowFitNoticeTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({1, 1, 1, 1, 1, 1});
    preferences = platform.processes().launchInFront(
        {"com.apple.systempreferences", "Settings", "/apps/Settings.desktop"});
  }
  /// Seven rows fit with the first size and do not with the second.
  void useSmallIcons() { settings().setLowerTabRowItemHaloHeight(30); }
  void useLargeIcons() { settings().setLowerTabRowItemHaloHeight(120); }
  /// The windows on the screen that are not the panel.
  std::vector<const SimulatedWindowPeer*> notices() {
    std::vector<const SimulatedWindowPeer*> found;
    for (const auto* window : platform.windowServer().windows()) {
      if (window->isVisible()) found.push_back(window);
    }
    return found;
  }

  ProcessSerialNumber preferences;
};

TEST_F(TabRowFitNoticeTest, ComesWithTooLargeASizeAndGoesWithASmallerOne) {
  useSmallIcons();
  EXPECT_EQ(notices().size(), 0U);
  useLargeIcons();
  EXPECT_EQ(notices().size(), 1U);
  useSmallIcons();
  EXPECT_EQ(notices().size(), 0U);
}

TEST_F(TabRowFitNoticeTest, SaysWhatToDo) {
  TabRowFitNotice notice(host());
  useLargeIcons();
  notice.manage();
  ASSERT_NE(notice.window(), nullptr);
  const auto& label =
      dynamic_cast<const LabelView&>(*notice.window()->contentView()->subviews().back());
  EXPECT_EQ(label.text(),
            "The current \"Smaller\" icon size is too large to fit your\rcurrent Tab Rows on "
            "screen. If you keep this size you\rwill need to close one or more Tab Rows to fit "
            "them.");
}

TEST_F(TabRowFitNoticeTest, IsForThoseWhoAreInTheSettings) {
  platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
  useLargeIcons();
  EXPECT_EQ(notices().size(), 0U);
  platform.processes().bringToFront(preferences);
  platform.runFor(1);
  EXPECT_EQ(notices().size(), 0U);
  useLargeIcons();
  EXPECT_EQ(notices().size(), 1U);
}

TEST_F(TabRowFitNoticeTest, WithNothingInFrontThereIsNobodyToWarn) {
  platform.processes().bringToFront({});
  useLargeIcons();
  EXPECT_EQ(notices().size(), 0U);
}

TEST_F(TabRowFitNoticeTest, LooksAgainEveryHalfSecondWhileItIsUp) {
  useLargeIcons();
  ASSERT_EQ(notices().size(), 1U);
  platform.processes().terminate(preferences);
  platform.runFor(0.49);
  EXPECT_EQ(notices().size(), 1U);
  platform.runFor(0.02);
  EXPECT_EQ(notices().size(), 0U);
}

TEST_F(TabRowFitNoticeTest, StaysUpForAsLongAsItApplies) {
  useLargeIcons();
  platform.runFor(5);
  useLargeIcons();
  EXPECT_EQ(notices().size(), 1U);
  host().deleteTabRow(*rows[0]);
  host().deleteTabRow(*rows[1]);
  host().deleteTabRow(*rows[2]);
  host().deleteTabRow(*rows[3]);
  platform.runFor(0.51);
  EXPECT_EQ(notices().size(), 0U);
}

TEST_F(TabRowFitNoticeTest, GoesWithTheHostView) {
  auto other = HostView::create(Rect::make(0, 0, 400, 200));
  platform.runFor(0.01);
  for (std::size_t row = 0; row < 3; ++row) other->createTabRowAtIndex(0, nullptr, false);
  useSmallIcons();
  other->settingsChanged();
  ASSERT_EQ(notices().size(), 1U);
  other.reset();
  EXPECT_EQ(notices().size(), 0U);
  platform.runFor(1);
}

}  // namespace
}  // namespace qb::test
