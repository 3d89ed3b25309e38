#include <gtest/gtest.h>

#include "QuillboxCommon/views/Window.h"
#include "support/RecordingPeer.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

class ViewCoordinatesTest : public testing::Test {
 protected:
  ViewCoordinatesTest() {
    content->addSubview(host);
    host->addSubview(row);
    row->addSubview(item);
    item->addSubview(badge);
    content->addSubview(corner);
  }

  RecordingPeerFactory factory;
  Window window{factory, Rect::make(500, 600, 200, 100)};
  std::shared_ptr<View> content = window.contentView();
  std::shared_ptr<View> host = makeView(Rect::make(10, 20, 150, 70), true);
  std::shared_ptr<View> row = makeView(Rect::make(5, 10, 100, 40), true);
  std::shared_ptr<View> item = makeView(Rect::make(20, 8, 30, 24));
  std::shared_ptr<View> badge = makeView(Rect::make(1, 2, 10, 12));
  std::shared_ptr<View> corner = makeView(Rect::make(190, 90, 10, 10), true);
};

TEST_F(ViewCoordinatesTest, PointsAreTheSamePlaceInEachViewsOwnTerms) {
  // One place of the window, seen by everyone.
  struct Case {
    const char* name;
    const View* view;
    Point point;
  };
  const Case cases[] = {
      {"window", nullptr, {40, 65}},        {"content", content.get(), {40, 65}},
      {"host", host.get(), {30, 25}},       {"row", row.get(), {25, 15}},
      {"item", item.get(), {5, 17}},        {"badge", badge.get(), {4, 15}},
      {"corner", corner.get(), {-150, 35}},
  };
  for (const Case& from : cases) {
    for (const Case& to : cases) {
      if (from.view) {
        EXPECT_EQ(from.view->convertPointToView(from.point, to.view), to.point)
            << from.name << " to " << to.name;
      }
      if (to.view) {
        EXPECT_EQ(to.view->convertPointFromView(from.point, from.view), to.point)
            << to.name << " from " << from.name;
      }
    }
  }
}

TEST_F(ViewCoordinatesTest, ARectangleKeepsItsSizeAndNamesItsCornerNearestTheOrigin) {
  const Rect part = Rect::make(2, 3, 10, 5);
  EXPECT_EQ(item->convertRectToView(part, row.get()), Rect::make(22, 24, 10, 5));
  EXPECT_EQ(row->convertRectToView(part, item.get()), Rect::make(-18, 24, 10, 5));
  EXPECT_EQ(row->convertRectToView(part, host.get()), Rect::make(7, 13, 10, 5));
  EXPECT_EQ(row->convertRectToView(part, nullptr), Rect::make(17, 72, 10, 5));
}

TEST_F(ViewCoordinatesTest, WithoutAWindowTheOutermostViewStandsForIt) {
  const auto top = makeView(Rect::make(1000, 1000, 50, 40), true);
  const auto inner = makeView(Rect::make(10, 10, 20, 20));
  top->addSubview(inner);
  EXPECT_EQ(inner->convertPointToView({1, 2}, top.get()), (Point{11, 28}));
  EXPECT_EQ(inner->convertPointToView({1, 2}, nullptr), (Point{11, 12}));
  EXPECT_EQ(inner->convertPointFromView({11, 12}, nullptr), (Point{1, 2}));
}

TEST_F(ViewCoordinatesTest, ConversionFollowsTheFrames) {
  host->setFrameOrigin({11, 22});
  EXPECT_EQ(row->convertPointToView({25, 15}, nullptr), (Point{41, 67}));
}

}  // namespace
}  // namespace qb::test
