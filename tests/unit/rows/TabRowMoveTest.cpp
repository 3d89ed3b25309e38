// A row under the drag button, and the others that make way for it.

#include "Quillbox/rows/TabRowMove.h"

#include <gmock/gmock.h>

#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

class TabRowMoveTest : public HostViewFixture {
 protected:
  /// Three rows above the row of applications, on an open panel.
  void SetUp() override {
    makeRows({3, 3, 3});
    rows.push_back(host().tabRows().back());
    open(ActivationMethodCorner);
    platform.runFor(0.1);
  }
  void begin(std::size_t row) { host().beginMovingTabRow(*rows[row], Event{}); }
  void end(std::size_t row) { host().endMovingTabRow(*rows[row], Event{}); }
  double slot(std::size_t index) const {
    return host().frameForTabRowAtIndex(index, host().haloSize()).y();
  }
  double spacing() const { return slot(1) - slot(0); }
  double top(std::size_t row) const { return rows[row]->frame().y(); }
  /// The rows from the top, by their number at the start.
  std::vector<std::size_t> order() const {
    std::vector<std::size_t> numbers;
    for (const auto& row : host().tabRows()) {
      numbers.push_back(
          static_cast<std::size_t>(std::find(rows.begin(), rows.end(), row) - rows.begin()));
    }
    return numbers;
  }
};

TEST_F(TabRowMoveTest, FollowsThePointerAtOnce) {
  begin(1);
  EXPECT_EQ(host().tabRowBeingMoved(), rows[1].get());
  host().moveTabRowBy(7);
  EXPECT_EQ(top(1), slot(1) + 7);
  host().moveTabRowBy(-12);
  EXPECT_EQ(top(1), slot(1) - 5);
  EXPECT_THAT(order(), ElementsAre(0, 1, 2, 3));
}

TEST_F(TabRowMoveTest, ChangesPlacesWithTheRowWhoseMiddleItReaches) {
  begin(1);
  host().moveTabRowBy(spacing() - 1);
  EXPECT_THAT(order(), ElementsAre(0, 1, 2, 3));
  host().moveTabRowBy(1);
  EXPECT_THAT(order(), ElementsAre(0, 2, 1, 3));
  EXPECT_EQ(rows[1]->index(), 2U);
  EXPECT_EQ(rows[2]->index(), 1U);
  platform.runFor(0.1);
  EXPECT_GT(top(2), slot(1));
  EXPECT_LT(top(2), slot(2));
  platform.runFor(0.11);
  EXPECT_EQ(top(2), slot(1));
  EXPECT_EQ(top(1), slot(2));
}

TEST_F(TabRowMoveTest, ChangesPlacesUpwardToo) {
  begin(2);
  host().moveTabRowBy(1 - spacing());
  EXPECT_THAT(order(), ElementsAre(0, 1, 2, 3));
  host().moveTabRowBy(-1);
  EXPECT_THAT(order(), ElementsAre(0, 2, 1, 3));
  platform.runFor(0.21);
  EXPECT_EQ(top(1), slot(2));
}

TEST_F(TabRowMoveTest, OneMovementMayPassSeveralRows) {
  struct Case {
    std::size_t row;
    double spacings;
    std::vector<std::size_t> order;
  };
  const Case cases[] = {
      {0, 2, {1, 2, 0, 3}},
      {0, 3, {1, 2, 3, 0}},
      {3, -2, {0, 3, 1, 2}},
      {3, -3, {3, 0, 1, 2}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.spacings);
    begin(one.row);
    host().moveTabRowBy(one.spacings * spacing());
    EXPECT_EQ(order(), one.order);
    platform.runFor(0.21);
    for (std::size_t index = 0; index < rows.size(); ++index) {
      EXPECT_EQ(host().tabRows()[index]->frame().y(), slot(index));
    }
    host().moveTabRowBy(-one.spacings * spacing());
    end(one.row);
    EXPECT_THAT(order(), ElementsAre(0, 1, 2, 3));
    platform.runFor(0.3);
  }
}

TEST_F(TabRowMoveTest, ARowThatStillSlidesCountsAsBeingInItsPlace) {
  begin(0);
  host().moveTabRowBy(spacing());
  platform.runFor(0.05);
  host().moveTabRowBy(-spacing());
  EXPECT_THAT(order(), ElementsAre(0, 1, 2, 3));
  platform.runFor(0.21);
  EXPECT_EQ(top(1), slot(1));
}

TEST_F(TabRowMoveTest, StaysWithinTheView) {
  begin(1);
  host().moveTabRowBy(-5000);
  EXPECT_EQ(top(1), 0);
  EXPECT_THAT(order(), ElementsAre(1, 0, 2, 3));
  host().moveTabRowBy(9000);
  EXPECT_EQ(rows[1]->frame().maxY(), host().bounds().height());
  EXPECT_THAT(order(), ElementsAre(0, 2, 3, 1));
}

TEST_F(TabRowMoveTest, FloatsAboveTheOthers) {
  begin(1);
  std::vector<const View*> stacked;
  for (const auto& view : host().subviews()) stacked.push_back(view.get());
  EXPECT_EQ(stacked.back(), rows[1].get());
  EXPECT_EQ(stacked.size(), rows.size());
}

TEST_F(TabRowMoveTest, SlidesIntoItsPlaceWhenLetGo) {
  begin(1);
  host().moveTabRowBy(30);
  const auto saved = host().stateChanged().generation();
  end(1);
  EXPECT_EQ(host().tabRowBeingMoved(), nullptr);
  EXPECT_EQ(host().stateChanged().generation(), saved + 1);
  EXPECT_EQ(top(1), slot(1) + 30);
  platform.runFor(0.26);
  EXPECT_EQ(top(1), slot(1));
}

TEST_F(TabRowMoveTest, OneRowMovesAtATime) {
  begin(1);
  begin(2);
  EXPECT_EQ(host().tabRowBeingMoved(), rows[1].get());
}

TEST_F(TabRowMoveTest, ASingleRowDoesNotMove) {
  for (std::size_t row = 0; row < 3; ++row) host().deleteTabRow(*rows[row]);
  ASSERT_EQ(host().tabRows().size(), 1U);
  begin(3);
  EXPECT_EQ(host().tabRowBeingMoved(), nullptr);
}

TEST_F(TabRowMoveTest, WithoutAMovingRowNothingMovesOrEnds) {
  const auto saved = host().stateChanged().generation();
  host().moveTabRowBy(50);
  end(1);
  EXPECT_EQ(top(1), slot(1));
  EXPECT_EQ(host().stateChanged().generation(), saved);
}

TEST_F(TabRowMoveTest, EndsWithThePanelAtTheLatest) {
  begin(1);
  host().moveTabRowBy(spacing());
  close();
  EXPECT_EQ(host().tabRowBeingMoved(), nullptr);
  EXPECT_THAT(order(), ElementsAre(0, 2, 1, 3));
}

TEST_F(TabRowMoveTest, ThePolledPointerMovesTheRowAndNothingElse) {
  const Point start = onItem(1, 1);
  platform.pointer().moveTo(start);
  platform.runFor(0.051);
  ASSERT_EQ(selectedName(1), "item1");
  begin(1);
  platform.pointer().moveTo({start.x + 60, start.y - 8});
  platform.runFor(0.051);
  EXPECT_EQ(top(1), slot(1) + 8);
  EXPECT_EQ(selectedName(1), "item1");
  platform.pointer().moveTo({start.x + 60, start.y + 2});
  platform.runFor(0.051);
  EXPECT_EQ(top(1), slot(1) - 2);
}

TEST_F(TabRowMoveTest, DeletingTheMovingRowEndsTheMove) {
  begin(1);
  host().deleteTabRow(*rows[1]);
  EXPECT_EQ(host().tabRowBeingMoved(), nullptr);
  EXPECT_THAT(order(), ElementsAre(0, 2, 3));
}

}  // namespace
}  // namespace qb::test
