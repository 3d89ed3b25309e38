#include "Quillbox/rows/MoreIndicator.h"

#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

/// A row 160 points wide in which three of ten items are to be seen.
class MoreIndicatorTest : public TabRowFixture {
 protected:
  void SetUp() override {
    platform.graphics().setImageSize("LeftIndicator", {12, 24});
    platform.graphics().setImageSize("RightIndicator", {12, 24});
    makeRow(10);
    row->setFrame(Rect::make(0, 0, 160, 80), {50, 50}, false);
    openRow();
  }
  MoreIndicator& left() { return row->leftMoreIndicator(); }
  MoreIndicator& right() { return row->rightMoreIndicator(); }
  double firstX() const { return row->items()[0]->view()->frame().x(); }

  static constexpr Point onRight{150, 40};
  static constexpr Point onLeft{8, 40};
};

TEST_F(MoreIndicatorTest, ShowsTheSideOnWhichThereIsMore) {
  EXPECT_FALSE(left().isVisible());
  EXPECT_TRUE(right().isVisible());
  row->scrollItemsBy(-3);
  EXPECT_TRUE(left().isVisible());
  EXPECT_TRUE(right().isVisible());
  row->scrollItemsBy(-4);
  EXPECT_TRUE(left().isVisible());
  EXPECT_FALSE(right().isVisible());
}

TEST_F(MoreIndicatorTest, ViewIsMadeWhenFirstNeededAndFadesIn) {
  EXPECT_EQ(left().view(), nullptr);
  ASSERT_NE(right().view(), nullptr);
  EXPECT_EQ(simulatedImageName(right().view()->image()), "RightIndicator");
  EXPECT_EQ(right().view()->alphaValue(), 0);
  platform.runFor(0.3);
  EXPECT_EQ(right().view()->alphaValue(), 1);
  row->scrollItemsBy(-7);
  platform.runFor(0.3);
  EXPECT_EQ(right().view()->alphaValue(), 0);
  EXPECT_EQ(left().view()->alphaValue(), 1);
  EXPECT_EQ(simulatedImageName(left().view()->image()), "LeftIndicator");
}

TEST_F(MoreIndicatorTest, StandAtTheEndsVerticallyCentred) {
  row->scrollItemsBy(-3);
  EXPECT_EQ(left().view()->frame(), Rect::make(2, 28, 12, 24));
  EXPECT_EQ(right().view()->frame(), Rect::make(146, 28, 12, 24));
  row->setFrame(Rect::make(0, 0, 200, 100), {50, 50}, false);
  EXPECT_EQ(left().view()->frame(), Rect::make(2, 38, 12, 24));
  EXPECT_EQ(right().view()->frame(), Rect::make(186, 38, 12, 24));
}

TEST_F(MoreIndicatorTest, PointerOnTheRightOneScrollsTenStepsASecond) {
  moveTo(onRight);
  EXPECT_TRUE(right().isInHoverState());
  EXPECT_EQ(row->indexScrollOffset(), -1);
  platform.runFor(0.1);
  EXPECT_EQ(row->indexScrollOffset(), -2);
  platform.runFor(0.2);
  EXPECT_EQ(row->indexScrollOffset(), -4);
}

TEST_F(MoreIndicatorTest, FurtherMovementOnItStartsNothingAnew) {
  moveTo(onRight);
  moveTo({151, 41});
  EXPECT_EQ(row->indexScrollOffset(), -1);
}

TEST_F(MoreIndicatorTest, LeavingItEndsTheScrolling) {
  moveTo(onRight);
  moveTo({80, 40});
  EXPECT_FALSE(right().isInHoverState());
  platform.runFor(1.0);
  EXPECT_EQ(row->indexScrollOffset(), -1);
}

TEST_F(MoreIndicatorTest, FivePointsAroundItBelongToIt) {
  struct Case {
    Point point;
    bool hit;
  };
  // Its frame is 146 to 158 by 28 to 52.
  const Case cases[] = {
      {{141, 40}, true}, {{140.9, 40}, false}, {{150, 23}, true}, {{150, 22.9}, false},
      {{162, 40}, true}, {{163, 40}, false},   {{150, 56}, true}, {{150, 57}, false},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(testing::Message() << one.point.x << " " << one.point.y);
    EXPECT_EQ(right().isHitBy(one.point), one.hit);
  }
}

TEST_F(MoreIndicatorTest, AnInvisibleOneIsNotHit) {
  row->scrollItemsBy(-1);
  row->scrollItemsBy(1);
  ASSERT_NE(left().view(), nullptr);
  EXPECT_FALSE(left().isHitBy(onLeft));
}

TEST_F(MoreIndicatorTest, HoveringTakesTheSelectionAway) {
  select(1);
  moveTo(onRight);
  EXPECT_EQ(selectedName(), "none");
}

TEST_F(MoreIndicatorTest, LeftOneScrollsUntilTheFirstItemIsWhollyVisible) {
  row->scrollItemsBy(-4);
  moveTo(onLeft);
  EXPECT_EQ(firstX(), 16 - 3 * 50);
  platform.runFor(0.2);
  EXPECT_TRUE(left().isInHoverState());
  platform.runFor(2.0);
  EXPECT_FALSE(left().isInHoverState());
  EXPECT_FALSE(left().isVisible());
  EXPECT_EQ(left().view()->alphaValue(), 0);
  EXPECT_EQ(firstX(), 16);
  EXPECT_EQ(row->indexScrollOffset(), 0);
}

TEST_F(MoreIndicatorTest, RightOneScrollsUntilTheLastItemIsWhollyVisible) {
  moveTo(onRight);
  platform.runFor(3.0);
  EXPECT_FALSE(right().isInHoverState());
  EXPECT_EQ(row->indexScrollOffset(), -7);
  EXPECT_EQ(row->indexOfRightMostVisibleItem(), 9);
}

TEST_F(MoreIndicatorTest, LeavingTheRowEndsTheScrolling) {
  moveTo(onRight);
  row->mouseExited();
  EXPECT_FALSE(right().isInHoverState());
}

TEST_F(MoreIndicatorTest, ClosingEndsTheScrolling) {
  moveTo(onRight);
  row->hostViewWillBeDismissed();
  EXPECT_FALSE(right().isInHoverState());
}

TEST_F(MoreIndicatorTest, ARowThatGoesWhileScrollingLeavesNothingBehind) {
  moveTo(onRight);
  row.reset();
  platform.runFor(0.5);
  EXPECT_EQ(provider->items()[0]->tabRow(), nullptr);
}

}  // namespace
}  // namespace qb::test
