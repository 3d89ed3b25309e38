#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowSelectionTest : public TabRowFixture {
 protected:
  void disable(std::initializer_list<std::size_t> positions) {
    for (const std::size_t position : positions) provider->item(position).setInvokable(false);
  }
  void disableAll() {
    for (const auto& item : provider->items()) item->setInvokable(false);
  }
  SelectionViews& views() { return row->selectionViews(); }
};

TEST_F(TabRowSelectionTest, TellsItemAndProvider) {
  makeOpenRow(3);
  provider->log.clear();
  provider->itemLog->clear();
  select(0);
  select(2);
  EXPECT_EQ(*provider->itemLog,
            (CallLog{"item0: wasSelected", "item0: wasDeselected", "item2: wasSelected"}));
  EXPECT_EQ(provider->log,
            (CallLog{"itemWasSelected item0", "itemWasDeselected item0", "itemWasSelected item2"}));
}

TEST_F(TabRowSelectionTest, SelectingTheSelectedItemAgainDoesNothing) {
  makeOpenRow(3);
  select(1);
  select(1);
  row->setSelectedItem(provider->items()[1], SelectionMethodPointer);
  EXPECT_EQ(countOf(*provider->itemLog, "item1: wasSelected"), 1);
}

TEST_F(TabRowSelectionTest, HaloLabelAndCaptureViewStandAroundTheItem) {
  makeOpenRow(5);
  select(3);
  // The item stands at x 166, y 19, 42 points wide; its name is 5 characters of 7 points.
  ASSERT_EQ(row->selectedItem()->view()->frame(), Rect::make(166, 19, 42, 42));
  EXPECT_EQ(views().halo().frame(), Rect::make(162, 15, 50, 50));
  EXPECT_FALSE(views().halo().isHidden());
  EXPECT_EQ(views().label().text(), "item3");
  EXPECT_EQ(views().label().frame(), Rect::make(187 - 27.5, 58, 55, 19));
  EXPECT_FALSE(views().label().isHidden());
  EXPECT_EQ(views().eventCaptureView().frame(), Rect::make(162, 15, 50, 50));
  EXPECT_FALSE(views().eventCaptureView().isHidden());
}

TEST_F(TabRowSelectionTest, NoSelectionHidesTheViews) {
  makeOpenRow(3);
  select(1);
  row->setSelectedItem(nullptr, SelectionMethodProgram);
  EXPECT_TRUE(views().halo().isHidden());
  EXPECT_TRUE(views().label().isHidden());
  EXPECT_TRUE(views().eventCaptureView().isHidden());
}

TEST_F(TabRowSelectionTest, LabelStaysInsideTheRow) {
  struct Case {
    const char* what;
    int item;
    int nameLength;
    double x, width;
  };
  // Item n's centre is at 37 + 50 n; a name of k characters makes a label of 7 k + 20.
  const Case cases[] = {
      {"in the middle", 5, 10, 287 - 45.0, 90},
      {"too far left", 0, 10, 15, 90},
      {"too far right", 10, 20, 600 - 15 - 160.0, 160},
      {"wider than the row: the right edge wins", 5, 100, 600 - 15 - 720.0, 720},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    makeRow(11);
    provider->names[static_cast<std::size_t>(one.item)] =
        std::string(static_cast<std::size_t>(one.nameLength), 'n');
    openRow();
    select(one.item);
    EXPECT_EQ(views().label().frame(), Rect::make(one.x, 58, one.width, 19));
  }
}

TEST_F(TabRowSelectionTest, AnItemWithoutANameHasNoLabelAndAHalo) {
  makeRow(2);
  provider->names[1] = "";
  openRow();
  select(1);
  EXPECT_TRUE(views().label().isHidden());
  EXPECT_FALSE(views().halo().isHidden());
}

TEST_F(TabRowSelectionTest, AButtonGetsItsOwnClicks) {
  makeOpenRow(2);
  provider->item(1).itemType = ItemTypeButton;
  select(1);
  EXPECT_TRUE(views().eventCaptureView().isHidden());
  EXPECT_FALSE(views().halo().isHidden());
  select(0);
  EXPECT_FALSE(views().eventCaptureView().isHidden());
}

TEST_F(TabRowSelectionTest, InitialItemIsTheProvidersChoice) {
  makeOpenRow(3);
  row->selectInitialItem();
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(TabRowSelectionTest, IndexOfNoSelectionIsZero) {
  makeOpenRow(3);
  EXPECT_EQ(row->indexOfSelectedItem(), 0);
  select(2);
  EXPECT_EQ(row->indexOfSelectedItem(), 2);
}

TEST_F(TabRowSelectionTest, WalksToTheNearestInvokableItem) {
  struct Case {
    const char* what;
    std::int64_t index;
    std::int32_t code;
    const char* selected;
  };
  // Items 0, 3 and 5 of six are not invokable.
  const Case cases[] = {
      {"forward onto an invokable item", 2, 1, "item2"},
      {"forward over one that is not", 3, 1, "item4"},
      {"forward past the end goes round", 6, 1, "item1"},
      {"forward over the last goes round", 5, 1, "item1"},
      {"backward onto an invokable item", 4, 2, "item4"},
      {"backward over one that is not", 3, 2, "item2"},
      {"backward past the start goes round", -1, 2, "item4"},
      {"backward over the first goes round", 0, 2, "item4"},
      {"nearest onto an invokable item", 1, 0, "item1"},
      {"nearest past the end means the last, then forward", 9, 0, "item1"},
      {"nearest over one that is not", 3, 0, "item4"},
      {"any other code is nearest", 9, 7, "item1"},
      {"forward from before the start", -2, 1, "item1"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    makeOpenRow(6);
    disable({0, 3, 5});
    row->selectItemAtIndexOrNearest(one.index, one.code, SelectionMethodKeyboard);
    EXPECT_EQ(selectedName(), one.selected);
  }
}

TEST_F(TabRowSelectionTest, NearestPastTheEndIsTheLastItem) {
  makeOpenRow(4);
  row->selectItemAtIndexOrNearest(12);
  EXPECT_EQ(selectedName(), "item3");
}

TEST_F(TabRowSelectionTest, WithNothingInvokableTheSelectionStays) {
  for (const std::int32_t code : {0, 1, 2}) {
    SCOPED_TRACE(code);
    makeOpenRow(4);
    disableAll();
    select(2);
    row->selectItemAtIndexOrNearest(3, code, SelectionMethodKeyboard);
    EXPECT_EQ(selectedName(), "item2");
  }
}

TEST_F(TabRowSelectionTest, WalkStopsAfterTwoTriesMoreThanThereAreItems) {
  /// Counts how often it is asked for an item.
  class CountingProvider : public TestProvider {
   public:
    int asked = 0;
    std::shared_ptr<Item> itemForIndex(std::uint64_t index) override {
      ++asked;
      return TestProvider::itemForIndex(index);
    }
  };
  const auto counting = std::make_shared<CountingProvider>();
  counting->names = {"a", "b", "c"};
  makeRow(counting);
  openRow();
  disableAll();
  counting->asked = 0;
  row->selectItemAtIndexOrNearest(0, QuillboxActionNextItem, SelectionMethodKeyboard);
  EXPECT_EQ(counting->asked, 5);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(TabRowSelectionTest, WalkInAnEmptyRowDoesNothing) {
  makeOpenRow(0);
  for (const std::int32_t code : {0, 1, 2}) {
    row->selectItemAtIndexOrNearest(0, code, SelectionMethodKeyboard);
    EXPECT_EQ(selectedName(), "none");
  }
}

TEST_F(TabRowSelectionTest, WalkGoesOnOverPositionsWithoutAnItem) {
  makeRow(2);
  provider->surplus = 2;
  openRow();
  row->selectItemAtIndexOrNearest(2, QuillboxActionNextItem, SelectionMethodKeyboard);
  EXPECT_EQ(selectedName(), "item0");
  row->selectItemAtIndexOrNearest(3, QuillboxActionPreviousItem, SelectionMethodKeyboard);
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TabRowSelectionTest, AnItemBeyondTheRightEndScrollsIntoSight) {
  makeOpenRow(20);
  ASSERT_EQ(row->indexOfRightMostVisibleItem(), 10);
  row->selectItemAtIndexOrNearest(13, QuillboxActionNextItem, SelectionMethodKeyboard);
  EXPECT_EQ(row->indexScrollOffset(), -3);
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), 13);
  EXPECT_EQ(row->selectedItem()->view()->frame().x(), 16 + 10 * 50);
  EXPECT_EQ(views().halo().frame().x(), 16 + 10 * 50 - 4);
}

TEST_F(TabRowSelectionTest, AnItemBeyondTheLeftEndScrollsIntoSight) {
  makeOpenRow(20);
  row->scrollItemsBy(-6);
  ASSERT_EQ(row->indexOfLeftMostVisibleItem(), 6);
  row->selectItemAtIndexOrNearest(2, QuillboxActionPreviousItem, SelectionMethodKeyboard);
  EXPECT_EQ(row->indexScrollOffset(), -2);
  EXPECT_EQ(row->indexOfLeftMostVisibleItem(), 2);
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(TabRowSelectionTest, DisabledSelectionBlocksAllChanges) {
  makeOpenRow(3);
  select(1);
  row->arrangeItemsWithMaintainScrollOffset(false, true);
  EXPECT_EQ(selectedName(), "none");
  EXPECT_FALSE(row->itemSelectionEnabled());
  select(2);
  EXPECT_EQ(selectedName(), "none");
  platform.runFor(0.249);
  select(2);
  EXPECT_EQ(selectedName(), "none");
  platform.runFor(0.002);
  select(2);
  EXPECT_EQ(selectedName(), "item2");
}

}  // namespace
}  // namespace qb::test
