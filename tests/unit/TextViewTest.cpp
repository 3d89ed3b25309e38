#include "QuillboxCommon/views/TextView.h"

#include <gmock/gmock.h>

#include "PlatformSimulated/RecordingCanvas.h"
#include "support/PrintGeometry.h"
#include "support/TestPictures.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using Kind = DrawOperation::Kind;

class TextViewTest : public testing::Test {
 protected:
  void setText(const std::string& text) {
    AttributedString attributed;
    attributed.append(text, Font{10}, Color::gray());
    view->setText(attributed);
  }
  RecordingCanvas drawn() {
    RecordingCanvas canvas(Rect::make(-1000, -1000, 3000, 3000));
    view->display(canvas);
    EXPECT_TRUE(canvas.isBalanced());
    return canvas;
  }

  PlainMeasurer measurer;
  std::shared_ptr<TextView> view =
      std::make_shared<TextView>(measurer, Rect::make(30, 40, 50, 100));
};

TEST_F(TextViewTest, TheTextStandsOnItsGround) {
  setText("one two three");
  const auto operations = drawn().operations();
  ASSERT_EQ(operations.size(), 3U);
  EXPECT_EQ(operations[0].kind, Kind::FillRect);
  EXPECT_EQ(operations[0].rect, Rect::make(0, 0, 50, 100));
  EXPECT_EQ(operations[0].color, Color::white());
  EXPECT_EQ(operations[1].text, "one two ");
  EXPECT_EQ(operations[1].rect.origin.x, 5);
  EXPECT_EQ(operations[1].rect.origin.y, 0);
  EXPECT_EQ(operations[1].color, Color::gray());
  EXPECT_EQ(operations[2].text, "three");
  EXPECT_EQ(operations[2].rect.origin.y, 10);
}

TEST_F(TextViewTest, ItsNaturalHeightHoldsAllLines) {
  EXPECT_EQ(view->naturalHeight(), 0);
  setText("one two three");
  EXPECT_EQ(view->naturalHeight(), 20);
  view->setFrameSize({25, 100});
  EXPECT_EQ(view->naturalHeight(), 40);
}

TEST_F(TextViewTest, ANewWidthBreaksTheLinesAnew) {
  setText("one two three");
  view->setFrameSize({100, 100});
  EXPECT_THAT(drawn().texts(), ElementsAre("one two three"));
  view->setFrameSize({45, 100});
  EXPECT_THAT(drawn().texts(), ElementsAre("one two ", "three"));
}

TEST_F(TextViewTest, WhatIsHigherIsCutOff) {
  setText("a\nb\nc\nd");
  view->setFrameSize({50, 20});
  EXPECT_THAT(drawn().texts(), ElementsAre("a", "b"));
}

TEST_F(TextViewTest, TheGroundCanHaveAnyColour) {
  view->setBackgroundColor(Color::black());
  EXPECT_EQ(drawn().operations().at(0).color, Color::black());
}

}  // namespace
}  // namespace qb::test
