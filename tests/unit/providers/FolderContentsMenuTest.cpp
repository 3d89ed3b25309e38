#include <gmock/gmock.h>

#include "Quillbox/activation/MenuItemTags.h"
#include "support/FolderContentsFixture.h"

namespace qb::test {
namespace {

constexpr const char* downloads = "/home/user/Downloads";

class FolderContentsMenuTest : public FolderContentsFixture {
 protected:
  struct Order {
    std::int32_t sortMethod;
    std::int64_t sortOrder;
    std::int32_t sortSegregation;
  };
  void setOrder(Order order) {
    contents->restoreState(PropertyList::dictionary({{"SortBy", order.sortMethod},
                                                     {"SortOrder", order.sortOrder},
                                                     {"SegregateBy", order.sortSegregation}}));
  }
  /// Each entry as "title: action", with a "*" before those that are checked; "-" for a separator.
  Names menu() {
    Names entries;
    for (const auto& entry : contents->menuItemsForConfigure()) {
      if (entry->isSeparatorItem()) {
        entries.emplace_back("-");
        continue;
      }
      EXPECT_TRUE(entry->isEnabled());
      EXPECT_EQ(entry->action().target.lock(), contents);
      entries.push_back((entry->state() ? "*" : "") + entry->title() + ": " + entry->action().name);
    }
    return entries;
  }
  void choose(const std::string& title) {
    for (const auto& entry : contents->menuItemsForConfigure()) {
      if (entry->title() == title) return entry->performAction();
    }
    ADD_FAILURE() << "no entry " << title;
  }
};

TEST_F(FolderContentsMenuTest, EntriesAreCheckedByTheOrderAsItIs) {
  EXPECT_EQ(menu(), (Names{
                        "Sort By: sortByName",
                        "*Name: sortByName",
                        "Size: sortBySize",
                        "Creation Date: sortByCreationDate",
                        "Modification Date: sortByModificationDate",
                        "-",
                        "*Descending: descendingSelected",
                        "Ascending: ascendingSelected",
                        "-",
                        "*File & Folders Combined: combinedSelected",
                        "Files First: filesFirstSelected",
                        "Folders First: foldersFirstSelected",
                    }));
  EXPECT_EQ(contents->menuItemsForConfigure()[0]->tag(), MenuItemTagGrayTitle);
}

TEST_F(FolderContentsMenuTest, TheWordsForTheDirectionAreThoseOfTheMethod) {
  struct Words {
    Order order;
    std::string descending, ascending;
  };
  const Words table[] = {
      {{0, -1, 0}, "Descending: descendingSelected", "*Ascending: ascendingSelected"},
      {{1, 1, 0}, "*Largest First: descendingSelected", "Smallest First: ascendingSelected"},
      {{2, -1, 0}, "Youngest First: descendingSelected", "*Oldest First: ascendingSelected"},
      {{3, 1, 0}, "*Youngest First: descendingSelected", "Oldest First: ascendingSelected"},
      {{9, 0, 9}, "Descending: descendingSelected", "Ascending: ascendingSelected"},
  };
  for (const Words& each : table) {
    setOrder(each.order);
    const Names entries = menu();
    EXPECT_EQ(entries[6], each.descending);
    EXPECT_EQ(entries[7], each.ascending);
  }
}

TEST_F(FolderContentsMenuTest, EveryEntrySetsItsOwnPartOfTheOrder) {
  struct Choice {
    std::string title;
    Order order;
  };
  // Each is chosen after the one before.
  const Choice table[] = {
      {"Size", {1, 1, 0}},
      {"Smallest First", {1, -1, 0}},
      {"Files First", {1, -1, 1}},
      {"Creation Date", {2, -1, 1}},
      {"Youngest First", {2, 1, 1}},
      {"Folders First", {2, 1, 2}},
      {"Modification Date", {3, 1, 2}},
      {"Oldest First", {3, -1, 2}},
      {"File & Folders Combined", {3, -1, 0}},
      {"Name", {0, -1, 0}},
      {"Descending", {0, 1, 0}},
      {"Ascending", {0, -1, 0}},
  };
  for (const Choice& each : table) {
    choose(each.title);
    EXPECT_EQ(contents->order().sortMethod, each.order.sortMethod) << each.title;
    EXPECT_EQ(contents->order().sortOrder, each.order.sortOrder) << each.title;
    EXPECT_EQ(contents->order().sortSegregation, each.order.sortSegregation) << each.title;
  }
}

TEST_F(FolderContentsMenuTest, ARowThatIsUpShowsTheNewOrderAtOnce) {
  for (const char* name : {"a.desktop", "b.desktop"}) put(name);
  showFolder();
  showInRow();
  EXPECT_EQ(rowNames(), (Names{"b.desktop", "a.desktop", "Open Work in Finder..."}));
  const auto saved = host().stateChanged().generation();
  choose("Ascending");
  platform.runFor(0.1);
  EXPECT_EQ(rowNames(), (Names{"a.desktop", "b.desktop", "Open Work in Finder..."}));
  EXPECT_GT(host().stateChanged().generation(), saved);
}

TEST_F(FolderContentsMenuTest, AnOrderThatIsChosenWhileTheRowIsBusyIsShownAfterThat) {
  for (const char* name : {"a.desktop", "b.desktop"}) put(name);
  showFolder();
  showInRow();
  choose("Ascending");
  platform.runFor(0.1);
  choose("Descending");
  platform.runFor(0.1);
  EXPECT_EQ(rowNames(), (Names{"a.desktop", "b.desktop", "Open Work in Finder..."}));
  platform.runFor(0.6);
  EXPECT_EQ(rowNames(), (Names{"b.desktop", "a.desktop", "Open Work in Finder..."}));
}

TEST_F(FolderContentsMenuTest, DownloadsCanBeThrownAwayAsAWhole) {
  EXPECT_FALSE(contents->sourceFolderIsDownloads());
  showFolder(downloads);
  EXPECT_TRUE(contents->sourceFolderIsDownloads());
  const Names entries = menu();
  ASSERT_EQ(entries.size(), 14U);
  EXPECT_EQ(entries[12], "-");
  EXPECT_EQ(entries[13], "Move All Items to Trash: moveAllItemsToTrash");
  showFolder();
  EXPECT_FALSE(contents->sourceFolderIsDownloads());
}

}  // namespace
}  // namespace qb::test
