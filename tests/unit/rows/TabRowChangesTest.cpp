// Items that change while the panel is up.

#include "Quillbox/Item/FileSystemItem.h"
#include "support/HostViewFixture.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowChangesTest : public TabRowFixture {
 protected:
  void change(bool maintainSelection, bool maintainScrollOffset = false) {
    row->itemsHaveChangedWithMaintainSelection(maintainSelection, maintainScrollOffset);
  }
  /// The first creation came with the opening.
  std::int64_t rebuilds() const { return countOf(provider->log, "createItems") - 1; }
};

TEST_F(TabRowChangesTest, RebuildComesAMomentLater) {
  makeOpenRow(2);
  change(false);
  platform.runFor(0.024);
  EXPECT_EQ(rebuilds(), 0);
  platform.runFor(0.002);
  EXPECT_EQ(rebuilds(), 1);
}

TEST_F(TabRowChangesTest, RebuildGoesThroughItsStepsInOrder) {
  makeOpenRow(2);
  select(1);
  provider->log.clear();
  provider->names = {"a", "b", "c"};
  change(false);
  row->numberOfItems();
  platform.runFor(0.03);
  EXPECT_EQ(provider->log, (CallLog{"itemsWillBeDismissed", "itemWasDeselected item1",
                                    "deleteItems", "createItems", "itemsWillBeDisplayed"}));
  ASSERT_EQ(row->items().size(), 3U);
  EXPECT_EQ(row->items()[2]->view()->alphaValue(), 1);
  EXPECT_EQ(row->items()[2]->view()->frame().x(), 116);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowChangesTest, TwoCallsShortlyAfterEachOtherCauseOneRebuild) {
  makeOpenRow(2);
  change(false);
  platform.runFor(0.1);
  change(false);
  platform.runFor(1.0);
  EXPECT_EQ(rebuilds(), 1);
}

TEST_F(TabRowChangesTest, WithoutMaintainedSelectionTheGuardLastsSixTenthsOfASecond) {
  makeOpenRow(2);
  change(false);
  platform.runFor(0.599);
  change(false);
  platform.runFor(0.002);
  EXPECT_EQ(rebuilds(), 1);
  change(false);
  platform.runFor(0.03);
  EXPECT_EQ(rebuilds(), 2);
}

TEST_F(TabRowChangesTest, WithMaintainedSelectionTheGuardEndsWithTheSelection) {
  makeOpenRow(2);
  change(true);
  platform.runFor(0.049);
  change(true);
  platform.runFor(0.002);
  EXPECT_EQ(rebuilds(), 1);
  change(true);
  platform.runFor(0.03);
  EXPECT_EQ(rebuilds(), 2);
}

TEST_F(TabRowChangesTest, ANewItemOfTheSameNameIsSelected) {
  makeOpenRow(3);
  select(2);
  const auto before = row->selectedItem();
  provider->names = {"item2", "other"};
  row->numberOfItems();
  change(true);
  platform.runFor(0.04);
  EXPECT_EQ(selectedName(), "none");
  platform.runFor(0.02);
  EXPECT_EQ(selectedName(), "item2");
  EXPECT_EQ(row->selectedItem(), row->items()[0]);
  EXPECT_NE(row->selectedItem(), before);
}

TEST_F(TabRowChangesTest, OfSeveralOfTheNameTheLastOneIsSelected) {
  makeOpenRow(3);
  select(1);
  provider->names = {"item1", "other", "item1", "more"};
  row->numberOfItems();
  change(true);
  platform.runFor(0.06);
  EXPECT_EQ(row->selectedItem(), row->items()[2]);
}

TEST_F(TabRowChangesTest, AnItemOfTheSameIdentityComesBeforeOneOfTheSameName) {
  /// Gives its first item the identity that it always has.
  class LastingProvider : public TestProvider {
   public:
    void createItemsWithSize(Size size) override {
      TestProvider::createItemsWithSize(size);
      items().front()->setUniqueID("lasting");
    }
  };
  const auto lasting = std::make_shared<LastingProvider>();
  lasting->names = {"same", "same"};
  makeRow(lasting);
  openRow();
  select(0);
  change(true);
  platform.runFor(0.06);
  EXPECT_EQ(row->selectedItem(), row->items()[0]);
}

TEST_F(TabRowChangesTest, WhatHasGoneIsReplacedByTheItemInItsPlace) {
  makeOpenRow(4);
  select(1);
  provider->names = {"item0", "item2", "item3"};
  row->numberOfItems();
  change(true);
  platform.runFor(0.06);
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowChangesTest, WhatHasGoneFromTheEndIsReplacedByTheFirstItem) {
  makeOpenRow(3);
  select(2);
  provider->names = {"item0", "item1"};
  row->numberOfItems();
  change(true);
  platform.runFor(0.06);
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(TabRowChangesTest, ScrollOffsetIsKeptOnRequest) {
  makeOpenRow(20);
  row->scrollItemsBy(-3);
  change(false, true);
  platform.runFor(0.03);
  EXPECT_EQ(row->items()[3]->view()->frame().x(), 16);
  platform.runFor(1.0);
  change(false, false);
  platform.runFor(0.03);
  EXPECT_EQ(row->items()[0]->view()->frame().x(), 16);
  EXPECT_EQ(row->indexScrollOffset(), -3);
}

TEST_F(TabRowChangesTest, ARowThatHasGoneIsNotRebuilt) {
  makeOpenRow(2);
  change(true);
  row.reset();
  platform.runFor(1.0);
  EXPECT_EQ(rebuilds(), 0);
}

TEST_F(TabRowChangesTest, AChangeJustBeforeThePanelClosesWaitsForTheNextOpening) {
  makeOpenRow(2);
  select(1);
  provider->names = {"a", "b", "c"};
  change(true);
  closeRow();
  platform.runFor(1.0);
  EXPECT_TRUE(row->items().empty());
  EXPECT_EQ(row->selectedItem(), nullptr);
  EXPECT_FALSE(provider->itemsAreDisplayed());
  openRow();
  ASSERT_EQ(row->items().size(), 3U);
  EXPECT_EQ(row->items()[0]->name(), "a");
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowChangesTest, APanelThatClosesRightAfterARebuildGetsNoSelection) {
  makeOpenRow(2);
  select(1);
  change(true);
  platform.runFor(0.03);
  EXPECT_EQ(rebuilds(), 1);
  closeRow();
  platform.runFor(1.0);
  EXPECT_EQ(row->selectedItem(), nullptr);
  EXPECT_TRUE(row->items().empty());
}

TEST_F(TabRowChangesTest, AKeyBetweenTwoSetsOfItemsReachesOnlyItemsOfTheRow) {
  makeOpenRow(3);
  select(1);
  const std::weak_ptr<Item> before = row->selectedItem();
  change(true);
  platform.runFor(0.03);
  EXPECT_TRUE(before.expired());
  perform(QuillboxActionClose);
  perform(QuillboxActionInvokeAndStay);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: close"), 0);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: invoke"), 0);
  perform(QuillboxActionNextItem);
  EXPECT_EQ(row->selectedItem(), row->items()[0]);
}

TEST_F(TabRowChangesTest, InThePanelTheRowsAreSizedAnew) {
  const auto inPanel = TestProvider::withItems(3);
  const auto panelRow = host().createTabRowAtIndex(0, inPanel, true);
  open(ActivationMethodCommandDoubleTap);
  const double before = panelRow->selfBounds().width();
  inPanel->names.push_back("item3");
  panelRow->itemsHaveChangedWithMaintainSelection(false, false);
  platform.runFor(0.03);
  EXPECT_EQ(panelRow->items().size(), 4U);
  EXPECT_EQ(panelRow->selfBounds().width(), before + panelRow->haloSize().width);
  EXPECT_EQ(host().largestNumberOfTabRowItems(), 4);
}

/// Rows in the panel, where new items change the size of all rows.
class PanelChangesTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({3, 2});
    makeDefaults(0, 0);
    present(ActivationMethodCommandTab);
    rows[0]->setSelectedItem(rows[0]->items()[1], SelectionMethodKeyboard);
  }
  /// The count of the longest row is another one now.
  void addItem() {
    providers[0]->names.push_back("item3");
    rows[0]->itemsHaveChangedWithMaintainSelection(true, false);
  }
};

TEST_F(PanelChangesTest, SelectionComesBackWhenItemsThatMoveHaveArrived) {
  addItem();
  platform.runFor(0.06);
  EXPECT_FALSE(rows[0]->itemSelectionEnabled());
  EXPECT_EQ(selectedName(0), "none");
  platform.runFor(0.25);
  EXPECT_EQ(selectedName(0), "item1");
  EXPECT_EQ(rows[0]->selectedItem(), rows[0]->items()[1]);
}

TEST_F(PanelChangesTest, AFurtherChangeMeanwhileStillKnowsTheSelection) {
  addItem();
  platform.runFor(0.1);
  addItem();
  platform.runFor(0.5);
  EXPECT_EQ(selectedName(0), "item1");
}

TEST_F(PanelChangesTest, ARowThatIsLeftMeanwhileGetsNoSelection) {
  addItem();
  platform.runFor(0.1);
  host().setActiveTabRow(rows[1], false);
  platform.runFor(0.5);
  EXPECT_EQ(selectedName(0), "none");
}

TEST_F(PanelChangesTest, APanelThatIsClosedMeanwhileOpensWithItsOwnSelection) {
  addItem();
  platform.runFor(0.1);
  dismiss();
  present(ActivationMethodCommandDoubleTap);
  platform.runFor(0.5);
  EXPECT_EQ(selectedName(0), "none");
}

TEST_F(PanelChangesTest, ARowWithoutTheKeysGetsNoSelection) {
  rows[1]->itemsHaveChangedWithMaintainSelection(true, false);
  platform.runFor(0.5);
  EXPECT_EQ(selectedName(1), "none");
  EXPECT_EQ(selectedName(0), "item1");
}

TEST_F(TabRowChangesTest, AnItemThatIsTrashedLeavesItsRow) {
  makeOpenRow(3);
  select(1);
  EXPECT_TRUE(row->trashItem(provider->items()[1]));
  EXPECT_EQ(countOf(provider->log, "moveItemToTrash item1"), 1);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: willBeRemovedFromTabBar"), 1);
  EXPECT_EQ(selectedName(), "none");
  row->numberOfItems();
  platform.runFor(0.1);
  EXPECT_EQ(row->items().size(), 2U);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowChangesTest, AnItemThatIsMovedLeavesItsRow) {
  makeOpenRow(3);
  select(0);
  EXPECT_TRUE(row->moveItem(provider->items()[1], "/folder"));
  EXPECT_EQ(countOf(provider->log, "moveItem item1 to /folder"), 1);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: willBeRemovedFromTabBar"), 1);
  EXPECT_EQ(selectedName(), "item0");
  row->numberOfItems();
  platform.runFor(0.1);
  EXPECT_EQ(row->items().size(), 2U);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowChangesTest, WhatTheProviderDoesNotTrashOrMoveStays) {
  makeOpenRow(3);
  select(1);
  provider->allowsTrashing = false;
  provider->allowsMoving = false;
  EXPECT_FALSE(row->trashItem(provider->items()[1]));
  EXPECT_FALSE(row->moveItem(provider->items()[1], "/folder"));
  platform.runFor(0.1);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: willBeRemovedFromTabBar"), 0);
  EXPECT_EQ(row->items().size(), 3U);
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowChangesTest, TheIconOfAFileThatHasLeftIsForgotten) {
  /// A provider of one file.
  class FileProvider : public TestProvider {
   public:
    void createItemsWithSize(Size size) override {
      addItem(FileSystemItem::create({{0, 0}, size}, std::string("/files/letter.txt")));
    }
  };
  platform.fileSystem().putRaw("/files/letter.txt", "text");
  for (const bool trashed : {true, false}) {
    const auto files = std::make_shared<FileProvider>();
    files->names = {"letter"};
    makeRow(files);
    openRow();
    platform.runFor(1);
    const auto icon = [&] { return platform.graphics().iconForFile("/files/letter.txt", nullptr); };
    ASSERT_EQ(simulatedImageName(icon()), "icon:/files/letter.txt");
    const auto item = files->items().front();
    EXPECT_TRUE(trashed ? row->trashItem(item) : row->moveItem(item, "/folder"));
    EXPECT_EQ(simulatedImageName(icon()), "generic icon");
  }
}

}  // namespace
}  // namespace qb::test
