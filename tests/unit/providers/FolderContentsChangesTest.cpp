#include <gmock/gmock.h>

#include "support/FolderContentsFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FolderContentsChangesTest : public FolderContentsFixture {
 protected:
  /// Whether all items of the row have been made anew since the last time.
  bool rowIsRebuilt() {
    const auto last = std::exchange(lastButton_, row->items().back());
    return last.lock() != row->items().back();
  }
  const Names both_{"b.desktop", "a.desktop", "Open Work in Finder..."};
  const Names one_{"a.desktop", "Open Work in Finder..."};

 private:
  std::weak_ptr<Item> lastButton_;
};

TEST_F(FolderContentsChangesTest, TheFolderIsWatchedForAsLongAsItIsShown) {
  EXPECT_THAT(platform.fileEvents().watchedFolders(), IsEmpty());
  showFolder();
  EXPECT_THAT(platform.fileEvents().watchedFolders(), ElementsAre(folder));
  showFolder("/home/user");
  EXPECT_THAT(platform.fileEvents().watchedFolders(), ElementsAre("/home/user"));
  showFolder("");
  EXPECT_THAT(platform.fileEvents().watchedFolders(), IsEmpty());
  showFolder();
  contents->prepareForDeallocation();
  EXPECT_THAT(platform.fileEvents().watchedFolders(), IsEmpty());
  showFolder();
  contents.reset();
  EXPECT_THAT(platform.fileEvents().watchedFolders(), IsEmpty());
}

TEST_F(FolderContentsChangesTest, ARowThatIsUpIsRefreshedTwice) {
  put("a.desktop");
  showFolder();
  showInRow();
  rowIsRebuilt();
  put("b.desktop");
  // The news takes 0.25 second, the refresh 0.1 and the row 0.025.
  platform.runFor(0.374);
  EXPECT_EQ(entryNames(), (Names{"b.desktop", "a.desktop"}));
  EXPECT_FALSE(rowIsRebuilt());
  platform.runFor(0.002);
  EXPECT_TRUE(rowIsRebuilt());
  EXPECT_EQ(rowNames(), both_);
  platform.runFor(2.898);
  EXPECT_FALSE(rowIsRebuilt());
  platform.runFor(0.002);
  EXPECT_TRUE(rowIsRebuilt());
  platform.runFor(10);
  EXPECT_FALSE(rowIsRebuilt());
  EXPECT_FALSE(contents->haveItemsChanged());
}

TEST_F(FolderContentsChangesTest, TheSecondRefreshShowsWhatAFileHasGrownTo) {
  put("a.desktop", "1234");
  contents->restoreState(PropertyList::dictionary({{"FolderPathKey", folder}, {"SortBy", 1}}));
  showInRow();
  put("b.desktop", "1");
  platform.runFor(1);
  EXPECT_EQ(rowNames(), (Names{"a.desktop", "b.desktop", "Open Work in Finder..."}));
  put("b.desktop", "123456");
  platform.runFor(3);
  EXPECT_EQ(rowNames(), both_);
}

TEST_F(FolderContentsChangesTest, WhatChangesWhileThePanelIsDownIsShownWhenItComesUp) {
  put("a.desktop");
  showFolder();
  showInRow();
  dismiss();
  EXPECT_FALSE(contents->haveItemsChanged());
  put("b.desktop");
  platform.runFor(0.26);
  EXPECT_TRUE(contents->haveItemsChanged());
  EXPECT_FALSE(contents->haveItemsChanged());
  files().removeItemAtPath(pathOf("b.desktop"));
  put("c.desktop");
  platform.runFor(0.26);
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rowNames(), (Names{"c.desktop", "a.desktop", "Open Work in Finder..."}));
}

TEST_F(FolderContentsChangesTest, ARefreshThatFindsThePanelDownIsLeftForTheNextOpening) {
  put("a.desktop");
  showFolder();
  showInRow();
  put("b.desktop");
  platform.runFor(0.3);
  dismiss();
  EXPECT_FALSE(contents->haveItemsChanged());
  platform.runFor(0.1);
  EXPECT_TRUE(contents->haveItemsChanged());
  platform.runFor(3);
  EXPECT_TRUE(contents->haveItemsChanged());
}

TEST_F(FolderContentsChangesTest, NothingIsMadeAnewWhileNothingChanges) {
  put("a.desktop");
  showFolder();
  showInRow();
  rowIsRebuilt();
  dismiss();
  platform.runFor(5);
  present(ActivationMethodCommandDoubleTap);
  EXPECT_FALSE(rowIsRebuilt());
  EXPECT_EQ(rowNames(), one_);
}

TEST_F(FolderContentsChangesTest, AFolderThatCannotBeWatchedIsFreshAtEachOpening) {
  platform.fileEvents().setCannotBeWatched(folder);
  put("a.desktop");
  showFolder();
  EXPECT_EQ(platform.log().back(), folder + std::string(" cannot be watched."));
  showInRow();
  EXPECT_EQ(rowNames(), one_);
  dismiss();
  put("b.desktop");
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rowNames(), both_);
  dismiss();
  files().removeItemAtPath(pathOf("b.desktop"));
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rowNames(), one_);
}

TEST_F(FolderContentsChangesTest, WhatARowThatIsUpHasMissedIsShownAtTheNextOpening) {
  platform.fileEvents().setCannotBeWatched(folder);
  put("a.desktop");
  showFolder();
  showInRow();
  put("b.desktop");
  // Another row has changed, and all are asked for their size.
  row->numberOfItems();
  EXPECT_EQ(rowNames(), one_);
  dismiss();
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rowNames(), both_);
}

TEST_F(FolderContentsChangesTest, ANewOrderBySizeIsShownAtTheNextOpeningToo) {
  put("a.desktop", "1234");
  put("b.desktop", "1");
  contents->restoreState(PropertyList::dictionary({{"FolderPathKey", folder}, {"SortBy", 1}}));
  showInRow();
  EXPECT_EQ(rowNames(), (Names{"a.desktop", "b.desktop", "Open Work in Finder..."}));
  dismiss();
  put("b.desktop", "123456");
  present(ActivationMethodCommandDoubleTap);
  EXPECT_EQ(rowNames(), both_);
}

TEST_F(FolderContentsChangesTest, AFolderMayGoWhileItIsShownAndComeBack) {
  put("a.desktop");
  showFolder();
  showInRow();
  files().removeItemAtPath(folder);
  platform.runFor(4);
  EXPECT_EQ(rowNames(), (Names{"Open Work in Finder..."}));
  ASSERT_NE(row->instructionalMessageLabel(), nullptr);
  files().makeFolder(folder);
  put("b.desktop");
  platform.runFor(4);
  EXPECT_EQ(rowNames(), (Names{"b.desktop", "Open Work in Finder..."}));
  EXPECT_EQ(row->instructionalMessageLabel(), nullptr);
}

TEST_F(FolderContentsChangesTest, NewsDoNotReachARowThatShowsSomethingElse) {
  showFolder();
  showInRow();
  put("a.desktop");
  platform.runFor(0.3);
  row->setProvider(nullptr);
  contents.reset();
  platform.runFor(5);
  EXPECT_THAT(row->items(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
