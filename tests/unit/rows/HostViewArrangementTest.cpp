#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/TabRow.h"
#include "support/QuillboxFixture.h"
#include "support/TestItems.h"

namespace qb::test {
namespace {

class HostViewArrangementTest : public QuillboxFixture {
 protected:
  /// Test rows only, top one first, with so many items each.
  void makeRows(std::initializer_list<int> counts) {
    stack = HostView::create(Rect::make(0, 0, 1000, 800));
    for (const int count : counts) {
      providers.push_back(TestProvider::withItems(count));
      stack->createTabRowAtIndex(stack->tabRows().size(), providers.back(), false);
    }
    stack->arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(false);
  }
  void sizeView(double width, double height) {
    stack->setMaximumFrame(Rect::make(0, 0, width, height));
  }
  Rect frameOfRow(std::size_t index) const { return stack->tabRows()[index]->frame(); }

  std::shared_ptr<HostView> stack;
  std::vector<std::shared_ptr<TestProvider>> providers;
};

TEST_F(HostViewArrangementTest, HeightOfAllRowsCountsTheGaps) {
  makeRows({1, 1, 1});
  EXPECT_EQ(stack->heightOfAllTabRowsWithTabRowHeight(130), 430);
  EXPECT_EQ(stack->heightOfAllTabRowsWithTabRowHeight(0), 40);
}

TEST_F(HostViewArrangementTest, NaturalHeightIsTakenFromTheUpperHaloHeight) {
  makeRows({1, 1, 1});
  settings().setUpperTabRowItemHaloHeight(80);
  EXPECT_EQ(stack->naturalFrameHeightOfTabRows(), 130);
  EXPECT_EQ(stack->naturalHaloHeight(), 78);
}

TEST_F(HostViewArrangementTest, NaturalHeightGivesUpEachRowsShareOfTheExcess) {
  struct Case {
    double viewHeight;
    std::int64_t height;
  };
  // Three rows of 130 take 430.
  const Case cases[] = {{430, 130}, {429.5, 130}, {429, 129}, {427, 129}, {426, 128}, {200, 53}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.viewHeight);
    makeRows({1, 1, 1});
    settings().setUpperTabRowItemHaloHeight(80);
    sizeView(1000, one.viewHeight);
    EXPECT_EQ(stack->naturalFrameHeightOfTabRows(), one.height);
  }
}

TEST_F(HostViewArrangementTest, IconsShrinkUntilTheRowsFit) {
  struct Case {
    const char* what;
    std::initializer_list<int> rows;
    double width, height;
    std::int64_t halo;
  };
  // The settings ask for 85 at most and 50 at least; the natural halo is 85 + 50 - 52.
  const Case cases[] = {
      {"all fits", {5}, 1000, 800, 83},
      {"just wide enough", {10}, 871, 800, 83},
      {"one point too narrow", {10}, 870, 800, 82},
      {"a long row", {16}, 1000, 800, 59},
      {"longer than fits at all", {40}, 1000, 800, 50},
      {"the longest row counts", {3, 16, 2}, 1000, 800, 59},
      {"just high enough", {1, 1, 1}, 1000, 506, 83},
      {"one point too low", {1, 1, 1}, 1000, 505, 82},
      {"more rows than fit at all", {1, 1, 1, 1, 1, 1, 1}, 1000, 600, 50},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    makeRows(one.rows);
    sizeView(one.width, one.height);
    const auto halo = static_cast<double>(one.halo);
    EXPECT_EQ(stack->haloSize(), (Size{halo, halo}));
    EXPECT_EQ(stack->tabRowHeight(), one.halo + 52);
    for (const auto& row : stack->tabRows()) EXPECT_EQ(row->haloSize(), stack->haloSize());
  }
}

TEST_F(HostViewArrangementTest, LowerHaloHeightHoldsEvenAgainstASmallerNaturalOne) {
  makeRows({1, 1, 1});
  sizeView(1000, 200);
  EXPECT_LT(stack->naturalHaloHeight(), 50);
  EXPECT_EQ(stack->haloSize(), (Size{50, 50}));
}

TEST_F(HostViewArrangementTest, ASmallerNaturalHeightThanTheLowerOneStandsIfItFits) {
  makeRows({1});
  settings().setLowerTabRowItemHaloHeight(120);
  settings().setUpperTabRowItemHaloHeight(80);
  stack->arrangeTabRowsWithAnimate(false);
  EXPECT_EQ(stack->haloSize(), (Size{78, 78}));
}

TEST_F(HostViewArrangementTest, StackIsCentredAndEquallyWide) {
  makeRows({5, 3});
  // Halo 83, rows of 135: 2 times 135 + 20 = 290 high, 5 times 83 + 36 = 451 wide.
  EXPECT_EQ(frameOfRow(0), Rect::make(275, 255, 451, 135));
  EXPECT_EQ(frameOfRow(1), Rect::make(275, 410, 451, 135));
}

TEST_F(HostViewArrangementTest, FramesHaveWholeEdges) {
  makeRows({5});
  sizeView(1001, 800);
  // x 500.5 - 225 and y 400 - 67.5.
  EXPECT_EQ(frameOfRow(0), Rect::make(275, 332, 452, 136));
}

TEST_F(HostViewArrangementTest, RowsAreAsWideAsTheMostCellsThatFit) {
  makeRows({40});
  // 19 cells of 50 and the margin make 986; 20 would make 1036.
  EXPECT_EQ(frameOfRow(0).width(), 986);
  sizeView(986, 800);
  EXPECT_EQ(frameOfRow(0).width(), 986);
  sizeView(984, 800);
  EXPECT_EQ(frameOfRow(0).width(), 936);
}

TEST_F(HostViewArrangementTest, RowsWithoutItemsAreTheMarginWide) {
  makeRows({0});
  stack->arrangeTabRowsWithAnimate(false);
  EXPECT_EQ(frameOfRow(0).width(), 36);
}

TEST_F(HostViewArrangementTest, FrameIsForThePositionAskedFor) {
  makeRows({2, 2});
  EXPECT_EQ(stack->frameForTabRowAtIndex(1, {60, 60}),
            Rect::make(500 - 78, 400 - 145 + 155, 156, 135));
}

TEST_F(HostViewArrangementTest, KnowsHowManyRowsFitAtTheSmallest) {
  struct Case {
    double height;
    std::int64_t lower, rows;
  };
  const Case cases[] = {{800, 50, 6}, {752, 50, 6}, {751, 50, 5}, {1200, 30, 11},
                        {386, 50, 3}, {385, 50, 2}, {200, 50, 2}, {50, 50, 2}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.height);
    makeRows({1});
    settings().setLowerTabRowItemHaloHeight(one.lower);
    sizeView(1000, one.height);
    EXPECT_EQ(stack->calculateMaximumTabRowsSupportedByMainScreen(), one.rows);
  }
}

TEST_F(HostViewArrangementTest, WithoutANewLargestCountNothingMoves) {
  makeRows({5, 3});
  stack->tabRows()[1]->setFrame(Rect::make(1, 2, 3, 4));
  providers[1]->names.resize(4, "more");
  stack->arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(false);
  EXPECT_EQ(frameOfRow(1), Rect::make(1, 2, 3, 4));
  providers[1]->names.resize(6, "more");
  stack->arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(false);
  EXPECT_EQ(stack->largestNumberOfTabRowItems(), 6);
  EXPECT_EQ(frameOfRow(1).width(), 6 * 83 + 36);
}

TEST_F(HostViewArrangementTest, FewerItemsCountAsAChangeToo) {
  makeRows({5, 3});
  providers[0]->names.resize(1);
  stack->arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(false);
  EXPECT_EQ(stack->largestNumberOfTabRowItems(), 3);
}

TEST_F(HostViewArrangementTest, AnimatedArrangementTakesAQuarterOfASecond) {
  makeRows({5});
  const Rect before = frameOfRow(0);
  providers[0]->names.resize(6, "more");
  stack->arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(true);
  EXPECT_EQ(frameOfRow(0), before);
  platform.runFor(0.26);
  EXPECT_EQ(frameOfRow(0).width(), 6 * 83 + 36);
}

TEST_F(HostViewArrangementTest, NewSettingsArrangeAndRecolourTheRows) {
  makeRows({5});
  settings().setUpperTabRowItemHaloHeight(60);
  settings().setTabRowColor(Color::colorWithCalibratedRed(0.5, 0.25, 1, 0.75));
  stack->settingsChanged();
  EXPECT_EQ(stack->haloSize(), (Size{58, 58}));
  EXPECT_EQ(stack->tabRows()[0]->backgroundColor(),
            Color::colorWithCalibratedRed(0.5, 0.25, 1, 0.75));
}

TEST_F(HostViewArrangementTest, WithoutRowsThereIsNothingToArrange) {
  const auto empty = HostView::create(Rect::make(0, 0, 1000, 800));
  empty->setMaximumFrame(Rect::make(0, 0, 500, 400));
  EXPECT_EQ(empty->frame(), Rect::make(0, 0, 500, 400));
  EXPECT_TRUE(empty->tabRows().empty());
}

TEST_F(HostViewArrangementTest, RowsKnowTheirPlacesAndWhetherTheyCanGo) {
  makeRows({1});
  EXPECT_FALSE(stack->tabRows()[0]->canBeDeleted());
  EXPECT_FALSE(stack->tabRows()[0]->canBeMoved());
  const auto top = stack->createTabRowAtIndex(0, TestProvider::withItems(1), true);
  EXPECT_EQ(stack->tabRows()[0], top);
  for (std::size_t index = 0; index < 2; ++index) {
    EXPECT_EQ(stack->tabRows()[index]->index(), index);
    EXPECT_TRUE(stack->tabRows()[index]->canBeDeleted());
    EXPECT_TRUE(stack->tabRows()[index]->canBeMoved());
  }
}

}  // namespace
}  // namespace qb::test
