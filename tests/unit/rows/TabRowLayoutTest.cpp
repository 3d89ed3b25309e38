#include "Quillbox/rows/ProviderSelector.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowLayoutTest : public TabRowFixture {
 protected:
  std::vector<double> itemXs() const {
    std::vector<double> xs;
    for (const auto& item : row->items()) xs.push_back(item->view()->frame().x());
    return xs;
  }
  std::vector<bool> itemsHidden() const {
    std::vector<bool> hidden;
    for (const auto& item : row->items()) hidden.push_back(item->view()->isHidden());
    return hidden;
  }
  void size(double width, double height, double halo, bool animate = false) {
    row->setFrame(Rect::make(0, 0, width, height), {halo, halo}, animate);
  }
};

TEST_F(TabRowLayoutTest, HaloHeightDecidesTheLookOfTheHalo) {
  struct Case {
    double height, borderWidth, cornerRadius;
  };
  const Case cases[] = {
      {85, 3, 10},   {51, 3, 10},   {50.5, 3, 10}, {50, 2.67, 9},
      {41, 2.67, 9}, {40, 2.34, 7}, {30, 2.34, 7},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.height);
    makeRow(1);
    size(500, one.height + 52, one.height);
    EXPECT_EQ(row->selectionViews().halo().borderWidth(), one.borderWidth);
    EXPECT_EQ(row->selectionViews().halo().cornerRadius(), one.cornerRadius);
  }
}

TEST_F(TabRowLayoutTest, SizesFollowFromTheHalo) {
  makeRow(1);
  size(500, 137, 85.75);
  EXPECT_EQ(row->haloSize(), (Size{85.75, 85.75}));
  EXPECT_EQ(row->itemSize(), (Size{77.75, 77.75}));
  EXPECT_EQ(row->distanceBetweenItems(), 85);
  EXPECT_EQ(row->selfBounds(), Rect::make(0, 0, 500, 137));
}

TEST_F(TabRowLayoutTest, WithoutANewRowSizeTheHaloSizeIsNotTakenOver) {
  makeRow(1);
  row->setFrame(Rect::make(40, 50, 600, 80), {30, 30}, false);
  EXPECT_EQ(row->frame(), Rect::make(40, 50, 600, 80));
  EXPECT_EQ(row->haloSize(), (Size{50, 50}));
  EXPECT_EQ(row->distanceBetweenItems(), 50);
}

TEST_F(TabRowLayoutTest, FirstItemStandsInByAFifthOfTheHeight) {
  struct Case {
    double height, x;
  };
  for (const Case& one : {Case{80, 16}, Case{84, 16}, Case{85, 17}, Case{137, 27}}) {
    SCOPED_TRACE(one.height);
    makeRow(1);
    openRow();
    size(601, one.height, 50);
    EXPECT_EQ(itemXs(), (std::vector<double>{one.x}));
  }
}

TEST_F(TabRowLayoutTest, ItemsStandAStepApartOnWholePoints) {
  makeOpenRow(4);
  EXPECT_EQ(itemXs(), (std::vector<double>{16, 66, 116, 166}));
  EXPECT_EQ(row->items()[1]->view()->frame(), Rect::make(66, 19, 42, 42));
  // A height of 81 would put them at 19.5.
  size(600, 81, 50);
  EXPECT_EQ(row->items()[1]->view()->frame(), Rect::make(66, 19, 42, 43));
}

TEST_F(TabRowLayoutTest, AnimatedArrangementTakesAQuarterOfASecond) {
  makeOpenRow(2);
  select(1);
  size(700, 100, 60, true);
  EXPECT_EQ(selectedName(), "none");
  EXPECT_EQ(row->frame().size, (Size{600, 80}));
  EXPECT_EQ(row->selfBounds(), Rect::make(0, 0, 700, 100));
  platform.runFor(0.26);
  EXPECT_EQ(row->frame().size, (Size{700, 100}));
  EXPECT_EQ(itemXs(), (std::vector<double>{20, 80}));
  EXPECT_EQ(row->items()[1]->view()->frame().size, (Size{52, 52}));
}

TEST_F(TabRowLayoutTest, ScrollingMovesAllItemsAtOnce) {
  makeOpenRow(4);
  row->scrollItemsBy(-2);
  EXPECT_EQ(itemXs(), (std::vector<double>{-84, -34, 16, 66}));
  EXPECT_EQ(row->indexScrollOffset(), -2);
  row->scrollItemsBy(5);
  EXPECT_EQ(itemXs(), (std::vector<double>{166, 216, 266, 316}));
  EXPECT_EQ(row->indexScrollOffset(), 3);
}

TEST_F(TabRowLayoutTest, MaintainingTheOffsetKeepsTheItemsScrolled) {
  makeOpenRow(3);
  row->scrollItemsBy(2);
  row->arrangeItemsWithMaintainScrollOffset(true, false);
  EXPECT_EQ(itemXs(), (std::vector<double>{116, 166, 216}));
}

TEST_F(TabRowLayoutTest, NotMaintainingTheOffsetUnscrollsTheItemsAndKeepsTheField) {
  makeOpenRow(3);
  row->scrollItemsBy(2);
  row->arrangeItemsWithMaintainScrollOffset(false, false);
  EXPECT_EQ(itemXs(), (std::vector<double>{16, 66, 116}));
  EXPECT_EQ(row->indexScrollOffset(), 2);
}

TEST_F(TabRowLayoutTest, OnlyWholeItemsShow) {
  makeRow(4);
  size(160, 80, 50);
  openRow();
  // The third one ends at 158, the fourth begins at 166.
  EXPECT_EQ(itemsHidden(), (std::vector<bool>{false, false, false, true}));
  EXPECT_EQ(row->indexOfLeftMostVisibleItem(), 0);
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), 2);
  row->scrollItemsBy(-1);
  EXPECT_EQ(itemsHidden(), (std::vector<bool>{true, false, false, false}));
  EXPECT_EQ(row->indexOfLeftMostVisibleItem(), 1);
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), 3);
}

TEST_F(TabRowLayoutTest, AnItemThatTouchesTheRightEdgeIsVisible) {
  makeRow(3);
  size(158, 80, 50);
  openRow();
  EXPECT_EQ(itemsHidden(), (std::vector<bool>{false, false, false}));
  EXPECT_FALSE(row->rightMoreIndicator().isVisible());
  size(157, 80, 50);
  EXPECT_EQ(itemsHidden(), (std::vector<bool>{false, false, true}));
  EXPECT_TRUE(row->rightMoreIndicator().isVisible());
}

TEST_F(TabRowLayoutTest, NothingVisibleIsMinusOne) {
  makeOpenRow(2);
  row->scrollItemsBy(-5);
  EXPECT_EQ(row->indexOfLeftMostVisibleItem(), -1);
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), -1);
}

TEST_F(TabRowLayoutTest, VisibilityGoesByWhereItemsAreMovingTo) {
  makeRow(4);
  size(160, 80, 50);
  openRow();
  ASSERT_EQ(row->indexOfRightMostVisibleItem(), 2);
  size(300, 80, 50, true);
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), 3);
  EXPECT_FALSE(row->rightMoreIndicator().isVisible());
}

TEST_F(TabRowLayoutTest, SelectorStandsAtTheTopCentre) {
  makeRow(1);
  // The title is 10 characters of 7 points.
  EXPECT_EQ(row->providerSelector().naturalWidth(), 114);
  EXPECT_EQ(row->providerSelector().frame(), Rect::make(243, 2, 114, 20));
  EXPECT_EQ(row->providerSelector().nameLabel().frame(), Rect::make(22, 0, 70, 18));
  EXPECT_EQ(row->providerSelector().nameLabel().text(), "Test Items");
}

TEST_F(TabRowLayoutTest, SelectorFollowsTheNameOfTheProvider) {
  makeRow(1);
  provider->title = "Mine";
  row->updateProviderName();
  EXPECT_EQ(row->providerSelector().nameLabel().text(), "Mine");
  EXPECT_EQ(row->providerSelector().frame(), Rect::make(264, 2, 72, 20));
}

TEST_F(TabRowLayoutTest, SelectorWithoutAProviderAsksForOne) {
  const auto selector = ProviderSelector::create(nullptr, Rect::make(0, 0, 300, 20), nullptr);
  EXPECT_EQ(selector->nameLabel().text(), "Select Contents:");
  EXPECT_EQ(selector->nameLabel().frame(), Rect::make(94, 0, 112, 18));
  EXPECT_TRUE(selector->nameLabel().isShadowed());
  EXPECT_FALSE(selector->nameLabel().renderBackground());
  EXPECT_TRUE(selector->isFlipped());
}

}  // namespace
}  // namespace qb::test
