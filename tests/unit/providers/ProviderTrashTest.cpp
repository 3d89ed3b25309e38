#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class ProviderTrashTest : public TabRowFixture {
 protected:
  ProviderTrashTest() {
    makeOpenRow(2);
    platform.fileSystem().putRaw(file, "contents");
    provider->log.clear();
  }
  /// Whether the row has had its items made anew.
  bool itemsWereMadeAnew() const { return countOf(provider->log, "createItems") == 1; }

  const std::string file = "/home/user/old.txt";
};

TEST_F(ProviderTrashTest, FilesGoLaterAndTheItemsAreMadeAnew) {
  provider->recycleURLs({file});
  EXPECT_TRUE(platform.fileSystem().fileExistsAtPath(file));
  platform.runFor(0.1);
  EXPECT_EQ(platform.trash().paths(), std::vector{file});
  EXPECT_TRUE(itemsWereMadeAnew());
  EXPECT_TRUE(platform.dialogs().shownAlerts().empty());
}

TEST_F(ProviderTrashTest, AnErrorIsToldAndTheItemsAreMadeAnewAllTheSame) {
  platform.trash().setError("The volume is locked.");
  std::int64_t level = 0;
  platform.dialogs().answerAlert([&](AlertOnScreen& alert) {
    level = appDelegate->userInteractionLevel();
    alert.press("OK");
  });
  provider->recycleURLs({file});
  platform.runFor(1);
  ASSERT_EQ(platform.dialogs().shownAlerts().size(), 1U);
  const auto& alert = platform.dialogs().shownAlerts()[0];
  EXPECT_EQ(alert.messageText, "Error");
  EXPECT_EQ(alert.informativeText, "The volume is locked.");
  EXPECT_EQ(alert.buttons, std::vector<std::string>{"OK"});
  EXPECT_EQ(level, 1);
  EXPECT_TRUE(platform.fileSystem().fileExistsAtPath(file));
  EXPECT_TRUE(itemsWereMadeAnew());
}

TEST_F(ProviderTrashTest, TheProviderLivesUntilItsFilesAreGone) {
  auto lonely = std::make_shared<TabRowProvider>();
  const std::weak_ptr<TabRowProvider> left = lonely;
  lonely->recycleURLs({file});
  lonely.reset();
  EXPECT_FALSE(left.expired());
  platform.runFor(0.1);
  EXPECT_TRUE(left.expired());
  EXPECT_EQ(platform.trash().paths(), std::vector{file});
}

}  // namespace
}  // namespace qb::test
