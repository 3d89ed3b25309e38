// Which row is active, and how keys and the wheel change that.

#include "Platform/KeyCodes.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

class HostViewRowsTest : public HostViewFixture {
 protected:
  void perform(std::int32_t code) { host().handleAction(QuillboxAction::actionWithCode(code)); }
  void select(std::size_t row, std::size_t item) {
    rows[row]->setSelectedItem(rows[row]->items().at(item), SelectionMethodKeyboard);
  }
  void scroll(double dx, double dy) {
    Event event;
    event.type = EventTypeScrollWheel;
    event.deltaX = dx;
    event.deltaY = dy;
    host().scrollWheel(event);
  }
  std::size_t activeIndex() const { return host().activeTabRow()->index(); }
};

TEST_F(HostViewRowsTest, NextRowTakesOverTheColumn) {
  makeRows({4, 4, 4});
  present(ActivationMethodCommandDoubleTap);
  select(0, 2);
  perform(QuillboxActionNextTabRow);
  EXPECT_EQ(activeIndex(), 1U);
  EXPECT_EQ(selectedName(0), "none");
  EXPECT_EQ(selectedName(1), "item2");
  EXPECT_EQ(host().lastActiveTabRow(), rows[0].get());
}

TEST_F(HostViewRowsTest, PreviousRowTakesOverTheColumn) {
  makeRows({4, 4, 4});
  present(ActivationMethodCommandDoubleTap);
  host().setActiveTabRow(rows[1], false);
  select(1, 3);
  perform(QuillboxActionPreviousTabRow);
  EXPECT_EQ(activeIndex(), 0U);
  EXPECT_EQ(selectedName(0), "item3");
}

TEST_F(HostViewRowsTest, WalkOverTheRowsGoesRoundAndPassesOverEmptyOnes) {
  makeRows({2, 0, 2});
  present(ActivationMethodCommandDoubleTap);
  std::vector<std::size_t> walked;
  for (const std::int32_t code : {3, 3, 4, 4}) {
    perform(code);
    walked.push_back(activeIndex());
  }
  // The row of applications at the bottom has no items either.
  EXPECT_EQ(walked, (std::vector<std::size_t>{2, 0, 2, 0}));
}

TEST_F(HostViewRowsTest, AShorterRowSelectsItsLastItem) {
  makeRows({5, 2});
  present(ActivationMethodCommandDoubleTap);
  select(0, 4);
  perform(QuillboxActionNextTabRow);
  EXPECT_EQ(selectedName(1), "item1");
}

TEST_F(HostViewRowsTest, WithoutASelectionTheFirstItemIsTaken) {
  makeRows({3, 3});
  present(ActivationMethodCommandDoubleTap);
  perform(QuillboxActionNextTabRow);
  EXPECT_EQ(selectedName(1), "item0");
}

TEST_F(HostViewRowsTest, ColumnIsTheOneOnScreenInScrolledRows) {
  makeRows({40, 40});
  present(ActivationMethodCommandDoubleTap);
  rows[0]->scrollItemsBy(-5);
  select(0, 7);
  perform(QuillboxActionNextTabRow);
  EXPECT_EQ(selectedName(1), "item2");
  rows[0]->scrollItemsBy(2);
  perform(QuillboxActionPreviousTabRow);
  EXPECT_EQ(selectedName(0), "item5");
}

TEST_F(HostViewRowsTest, ASingleRowKeepsItsSelection) {
  makeRows({3});
  present(ActivationMethodCommandDoubleTap);
  select(0, 1);
  providers[0]->itemLog->clear();
  perform(QuillboxActionNextTabRow);
  perform(QuillboxActionPreviousTabRow);
  EXPECT_EQ(activeIndex(), 0U);
  EXPECT_EQ(selectedName(0), "item1");
  EXPECT_TRUE(providers[0]->itemLog->empty());
}

TEST_F(HostViewRowsTest, AnOnlyRowKeepsItsSelection) {
  makeRows({3});
  host().deleteTabRow(*host().tabRows().back());
  ASSERT_EQ(host().tabRows().size(), 1U);
  present(ActivationMethodCommandDoubleTap);
  select(0, 1);
  providers[0]->itemLog->clear();
  perform(QuillboxActionNextTabRow);
  perform(QuillboxActionPreviousTabRow);
  EXPECT_TRUE(rows[0]->hasActiveStatus());
  EXPECT_EQ(selectedName(0), "item1");
  EXPECT_TRUE(providers[0]->itemLog->empty());
}

TEST_F(HostViewRowsTest, WithNoRowActiveKeysGoToTheLastActiveOne) {
  makeRows({3, 3});
  present(ActivationMethodCommandDoubleTap);
  host().setActiveTabRow(nullptr, false);
  perform(QuillboxActionNextItem);
  EXPECT_EQ(activeIndex(), 0U);
  EXPECT_TRUE(rows[0]->hasActiveStatus());
  EXPECT_EQ(selectedName(0), "item0");
}

TEST_F(HostViewRowsTest, WithNoRowActiveTheWalkStartsFromTheLastActiveOne) {
  makeRows({3, 3});
  present(ActivationMethodCommandDoubleTap);
  host().setActiveTabRow(nullptr, false);
  perform(QuillboxActionNextTabRow);
  EXPECT_EQ(activeIndex(), 1U);
}

TEST_F(HostViewRowsTest, WithNoRowActivePlainKeysGoToTheLastActiveOne) {
  makeRows({3, 3});
  present(ActivationMethodCommandDoubleTap);
  host().setActiveTabRow(nullptr, false);
  Event event;
  event.type = EventTypeKeyDown;
  event.keyCode = KeyCodeO;
  host().keyDown(event);
  EXPECT_EQ(activeIndex(), 0U);
  EXPECT_EQ(countOf(providers[0]->log, "keyDown 31"), 1);
}

TEST_F(HostViewRowsTest, OneRowIsActiveAtATime) {
  makeRows({3, 3});
  present(ActivationMethodCommandDoubleTap);
  host().setActiveTabRow(rows[1], false);
  EXPECT_FALSE(rows[0]->hasActiveStatus());
  EXPECT_TRUE(rows[1]->hasActiveStatus());
  EXPECT_EQ(host().lastActiveTabRow(), rows[0].get());
}

TEST_F(HostViewRowsTest, TheWheelWalksOverTheRows) {
  makeRows({2, 2, 2});
  present(ActivationMethodCommandDoubleTap);
  host().setActiveTabRow(rows[1], false);
  scroll(0, 12);
  EXPECT_EQ(activeIndex(), 1U);
  scroll(0, 0.5);
  EXPECT_EQ(activeIndex(), 2U);
  scroll(0, -12);
  EXPECT_EQ(activeIndex(), 2U);
  scroll(0, -0.5);
  EXPECT_EQ(activeIndex(), 1U);
}

TEST_F(HostViewRowsTest, AnActionOfTheWheelStartsTheCountAnew) {
  makeRows({2, 2, 2});
  present(ActivationMethodCommandDoubleTap);
  scroll(0, 20);
  EXPECT_EQ(activeIndex(), 1U);
  scroll(0, 8);
  EXPECT_EQ(activeIndex(), 1U);
}

TEST_F(HostViewRowsTest, AHorizontalSweepDoesNothing) {
  makeRows({2, 2});
  present(ActivationMethodCommandDoubleTap);
  select(0, 1);
  scroll(30, 0);
  scroll(-30, 0);
  EXPECT_EQ(activeIndex(), 0U);
  EXPECT_EQ(selectedName(0), "item1");
}

TEST_F(HostViewRowsTest, AnOpeningStartsTheWheelAnew) {
  makeRows({2, 2});
  present(ActivationMethodCommandDoubleTap);
  scroll(0, 10);
  dismiss();
  present(ActivationMethodCommandDoubleTap);
  scroll(0, 10);
  EXPECT_EQ(activeIndex(), 0U);
}

}  // namespace
}  // namespace qb::test
