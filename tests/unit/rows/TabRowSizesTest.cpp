// Rows with very many items, and with none.

#include "Quillbox/activation/QuillboxAction.h"
#include "support/CountedAllocations.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

class TabRowSizesTest : public TabRowFixture {};

TEST_F(TabRowSizesTest, AThousandItemsCanBeWalkedFromEndToEnd) {
  makeOpenRow(1000);
  ASSERT_EQ(row->items().size(), 1000U);
  select(0);
  perform(QuillboxActionPreviousItem);
  EXPECT_EQ(selectedName(), "item999");
  EXPECT_FALSE(row->selectedItem()->view()->isHidden());
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), 999);
  perform(QuillboxActionNextItem);
  EXPECT_EQ(selectedName(), "item0");
  EXPECT_EQ(row->indexScrollOffset(), 0);
}

TEST_F(TabRowSizesTest, MovingThePointerOverManyItemsAllocatesNothing) {
  makeOpenRow(1000);
  moveTo({30, 40});
  ASSERT_EQ(selectedName(), "item0");
  std::size_t before = numberOfAllocations();
  for (double x = 17; x < 60; ++x) moveTo({x, 40});
  EXPECT_EQ(numberOfAllocations() - before, 0U);
  EXPECT_EQ(selectedName(), "item0");
  moveTo({5, 40});
  ASSERT_EQ(selectedName(), "none");
  before = numberOfAllocations();
  // Below that the add button begins to fade in.
  for (double y = 1; y < 49; ++y) moveTo({5, y});
  EXPECT_EQ(numberOfAllocations() - before, 0U);
}

TEST_F(TabRowSizesTest, AnEmptyRowTakesPointerAndKeys) {
  makeOpenRow(0);
  moveTo({30, 40});
  for (std::int32_t code = QuillboxActionNone; code <= QuillboxActionCut; ++code) perform(code);
  EXPECT_EQ(selectedName(), "none");
  EXPECT_FALSE(row->leftMoreIndicator().isVisible());
  EXPECT_FALSE(row->rightMoreIndicator().isVisible());
  EXPECT_EQ(row->indexOfLeftMostVisibleItem(), -1);
}

}  // namespace
}  // namespace qb::test
