// Rows with very many items, and with none.

#include <cstdlib>
#include <new>

#include "Quillbox/activation/QuillboxAction.h"
#include "support/TabRowFixture.h"

namespace {

std::size_t numberOfAllocations = 0;

void* allocate(std::size_t size) noexcept {
  ++numberOfAllocations;
  return std::malloc(size > 0 ? size : 1);
}

}  // namespace

// All plain forms together: a mixture of ours and the library's would part what belongs together.
void* operator new(std::size_t size) {
  if (void* const memory = allocate(size)) return memory;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

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
  std::size_t before = numberOfAllocations;
  for (double x = 17; x < 60; ++x) moveTo({x, 40});
  EXPECT_EQ(numberOfAllocations - before, 0U);
  EXPECT_EQ(selectedName(), "item0");
  moveTo({5, 40});
  ASSERT_EQ(selectedName(), "none");
  before = numberOfAllocations;
  for (double y = 1; y < 79; ++y) moveTo({5, y});
  EXPECT_EQ(numberOfAllocations - before, 0U);
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
