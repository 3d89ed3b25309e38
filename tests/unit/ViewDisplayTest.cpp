#include <gtest/gtest.h>

#include "PlatformSimulated/RecordingCanvas.h"
#include "QuillboxCommon/views/Window.h"
#include "support/RecordingPeer.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

/// One fill in short: where, which white, how opaque.
struct Fill {
  Rect rect;
  double white = 1;
  double alpha = 1;
  friend bool operator==(const Fill&, const Fill&) = default;
};
using Fills = std::vector<Fill>;

void PrintTo(const Fill& fill, std::ostream* out) {
  PrintTo(fill.rect, out);
  *out << " white " << fill.white << " alpha " << fill.alpha;
}

Fills fillsOn(const RecordingCanvas& canvas) {
  EXPECT_TRUE(canvas.isBalanced());
  Fills fills;
  for (const DrawOperation& one : canvas.operations()) {
    EXPECT_EQ(one.kind, DrawOperation::Kind::FillRect);
    fills.push_back({one.rect, one.color.whiteComponent(), one.alpha});
  }
  return fills;
}

class ViewDisplayTest : public testing::Test {
 protected:
  Fills painted(const Rect& dirty = Rect::make(0, 0, 200, 100)) {
    RecordingCanvas canvas(dirty);
    window.paint(canvas, dirty);
    return fillsOn(canvas);
  }
  View& content() { return *window.contentView(); }

  RecordingPeerFactory factory;
  Window window{factory, Rect::make(0, 0, 200, 100)};
};

TEST_F(ViewDisplayTest, ViewsAreDrawnBackToFrontFromTheirTopLeftCorners) {
  const auto row = std::make_shared<FlippedView>(Rect::make(10, 10, 50, 30));
  const auto item = makePainted(Rect::make(5, 2, 10, 8), 0.25);
  const auto low = makePainted(Rect::make(0, 0, 4, 4), 0.75);
  content().addSubview(makePainted(Rect::make(100, 0, 20, 10), 0.5));
  content().addSubview(row);
  row->addSubview(item);
  item->addSubview(low);
  content().addSubview(makePainted(Rect::make(100, 0, 5, 5), 1));
  EXPECT_EQ(painted(), (Fills{{Rect::make(100, 90, 20, 10), 0.5},
                              {Rect::make(15, 62, 10, 8), 0.25},
                              {Rect::make(15, 66, 4, 4), 0.75},
                              {Rect::make(100, 95, 5, 5), 1}}));
}

TEST_F(ViewDisplayTest, AlphasMultiplyAndEndWithTheView) {
  const auto row = makePainted(Rect::make(0, 0, 50, 50), 0.5);
  const auto item = makePainted(Rect::make(0, 0, 10, 10), 0.25);
  row->setAlphaValue(0.5);
  item->setAlphaValue(0.25);
  content().addSubview(row);
  row->addSubview(item);
  content().addSubview(makePainted(Rect::make(60, 0, 10, 10), 1));
  EXPECT_EQ(painted(), (Fills{{Rect::make(0, 50, 50, 50), 0.5, 0.5},
                              {Rect::make(0, 90, 10, 10), 0.25, 0.125},
                              {Rect::make(60, 90, 10, 10), 1, 1}}));
}

TEST_F(ViewDisplayTest, NothingOfAHiddenOrTransparentViewIsDrawn) {
  for (const bool hidden : {true, false}) {
    const auto row = makePainted(Rect::make(0, 0, 50, 50));
    row->addSubview(makePainted(Rect::make(0, 0, 10, 10)));
    content().addSubview(row);
    EXPECT_EQ(painted().size(), 2U);
    if (hidden) {
      row->setHidden(true);
    } else {
      row->setAlphaValue(0);
    }
    EXPECT_EQ(painted(), Fills{});
    row->removeFromSuperview();
  }
}

TEST_F(ViewDisplayTest, OnlyWhatIsDirtyIsDrawn) {
  content().addSubview(makePainted(Rect::make(0, 0, 50, 50), 0.5));
  content().addSubview(makePainted(Rect::make(100, 0, 50, 50), 0.25));
  EXPECT_EQ(painted(Rect::make(110, 60, 5, 5)), Fills{(Fill{Rect::make(100, 50, 50, 50), 0.25})});
}

TEST_F(ViewDisplayTest, ASubviewThatSticksOutIsDrawnWithoutItsSuperview) {
  const auto row = makePainted(Rect::make(0, 0, 50, 50), 0.5);
  const auto middle = makePainted(Rect::make(0, 0, 10, 10), 0.75);
  row->addSubview(middle);
  middle->addSubview(makePainted(Rect::make(100, 0, 10, 10), 0.25));
  content().addSubview(row);
  EXPECT_EQ(painted(Rect::make(90, 0, 50, 100)), Fills{(Fill{Rect::make(100, 90, 10, 10), 0.25})});
}

TEST_F(ViewDisplayTest, TheContentViewsAlphaIsNotDrawn) {
  content().addSubview(makePainted(Rect::make(0, 0, 10, 10)));
  for (const double alpha : {0.0, 0.5}) {
    content().setAlphaValue(alpha);
    EXPECT_EQ(painted(), Fills{(Fill{Rect::make(0, 90, 10, 10), 1, 1})});
  }
  content().setHidden(true);
  EXPECT_EQ(painted(), Fills{});
}

TEST(DisplayOutsideOfAWindowTest, AViewDrawsItselfWithItsOwnAlpha) {
  const auto view = makePainted(Rect::make(30, 30, 10, 10));
  view->setAlphaValue(0.5);
  RecordingCanvas canvas(Rect::make(0, 0, 100, 100));
  view->display(canvas);
  EXPECT_EQ(fillsOn(canvas), Fills{(Fill{Rect::make(0, 0, 10, 10), 1, 0.5})});
}

}  // namespace
}  // namespace qb::test
