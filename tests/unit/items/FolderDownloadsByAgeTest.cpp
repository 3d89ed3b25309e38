#include "Quillbox/Item/folder/DownloadsByAge.h"

#include <gmock/gmock.h>

#include "QuillboxCommon/views/LabelView.h"
#include "support/FolderItemFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;

constexpr double minute = 60, hour = 60 * minute, day = 24 * hour;

class FolderDownloadsByAgeTest : public FolderItemFixture {
 protected:
  std::string put(const std::string& name, double age) {
    const std::string path = downloads + '/' + name;
    files().putRaw(path, "");
    files().setCreationDate(path, RunLoop::main().date() - age);
    return path;
  }
  std::shared_ptr<Menu> menuFor(const Lines& paths) {
    return menuForMoveDownloadItemsToTrash(paths, {"trashContents", {}}, {"dummy", {}});
  }
  /// The titles of the entries that would throw the file away.
  Lines listsOf(const std::string& path) {
    Lines titles;
    const auto menu = menuFor({path});
    for (const auto& entry : menu->items()) {
      const auto* const paths = std::any_cast<FolderMenuPaths>(&entry->representedObject());
      if (paths && !paths->empty()) titles.push_back(entry->title());
    }
    return titles;
  }
};

TEST_F(FolderDownloadsByAgeTest, TheWholeMenu) {
  const auto menu = menuFor({put("old", 1000 * day)});
  EXPECT_EQ(menu->title(), "Move to Trash");
  EXPECT_FALSE(menu->autoenablesItems());
  EXPECT_EQ(linesOf(*menu), (Lines{"All Items", "-", "([view])", "1 Hour", "3 Hours", "8 Hours",
                                   "-", "1 Day", "2 Days", "3 Days", "-", "1 Week", "2 Weeks",
                                   "3 Weeks", "-", "1 Month", "3 Months", "6 Months"}));
  for (const auto& entry : menu->items()) {
    if (entry->isSeparatorItem() || entry->view()) continue;
    EXPECT_EQ(entry->action().name, "trashContents") << entry->title();
  }
}

TEST_F(FolderDownloadsByAgeTest, TheLabelSaysWhatTheRestIsAbout) {
  const auto entry = menuFor({})->items().at(2);
  EXPECT_EQ(entry->title(), "Older Than");
  EXPECT_EQ(entry->action().name, "dummy");
  const auto label = std::dynamic_pointer_cast<LabelView>(entry->view());
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text(), "Older Than:");
  EXPECT_EQ(label->frame(), Rect::make(0, 0, 160, 16));
  EXPECT_EQ(label->textColor(), Color::gray());
  EXPECT_EQ(label->horizontalAlignment(), TextAlignmentCenter);
}

struct LimitCase {
  const char* title;
  double age;
};

TEST_F(FolderDownloadsByAgeTest, AFileIsInEveryListWhoseLimitItReaches) {
  const LimitCase limits[] = {
      {"1 Hour", hour},      {"3 Hours", 3 * hour}, {"8 Hours", 8 * hour},  {"1 Day", day},
      {"2 Days", 2 * day},   {"3 Days", 3 * day},   {"1 Week", 7 * day},    {"2 Weeks", 14 * day},
      {"3 Weeks", 21 * day}, {"1 Month", 30 * day}, {"3 Months", 90 * day}, {"6 Months", 180 * day},
  };
  Lines reached = {"All Items"};
  for (const LimitCase& limit : limits) {
    EXPECT_EQ(listsOf(put("young", limit.age - minute)), reached) << limit.title;
    reached.emplace_back(limit.title);
    EXPECT_EQ(listsOf(put("old", limit.age + 1)), reached) << limit.title;
  }
}

TEST_F(FolderDownloadsByAgeTest, FiftyNineMinutesAreNoHour) {
  EXPECT_THAT(listsOf(put("a", 59 * minute)), ElementsAre("All Items"));
}

TEST_F(FolderDownloadsByAgeTest, TwentyFiveHoursAreOneDay) {
  EXPECT_THAT(listsOf(put("a", 25 * hour)),
              ElementsAre("All Items", "1 Hour", "3 Hours", "8 Hours", "1 Day"));
}

TEST_F(FolderDownloadsByAgeTest, WhatIsGoneOrOfTomorrowHasNoAge) {
  EXPECT_THAT(listsOf(downloads + "/missing"), ElementsAre("All Items"));
  EXPECT_THAT(listsOf(put("tomorrow", -day)), ElementsAre("All Items"));
}

TEST_F(FolderDownloadsByAgeTest, EntriesForNothingAreDisabled) {
  EXPECT_EQ(linesOf(*menuFor({put("a", 4 * hour)})),
            (Lines{"All Items", "-", "([view])", "1 Hour", "3 Hours", "(8 Hours)", "-", "(1 Day)",
                   "(2 Days)", "(3 Days)", "-", "(1 Week)", "(2 Weeks)", "(3 Weeks)", "-",
                   "(1 Month)", "(3 Months)", "(6 Months)"}));
}

}  // namespace
}  // namespace qb::test
