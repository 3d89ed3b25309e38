#include <gtest/gtest.h>

#include "PlatformSimulated/RecordingCanvas.h"
#include "QuillboxCommon/views/Button.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "QuillboxCommon/views/Window.h"
#include "support/RecordingPeer.h"
#include "support/TestPictures.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using Kind = DrawOperation::Kind;
using Operations = std::vector<DrawOperation>;
using Rects = std::vector<Rect>;

DrawOperation fillOf(const Path& path, const Color& color) {
  DrawOperation operation;
  operation.kind = Kind::FillPath;
  operation.path = path;
  operation.color = color;
  return operation;
}

DrawOperation strokeOf(const Path& path, const Color& color, double lineWidth) {
  DrawOperation operation = fillOf(path, color);
  operation.kind = Kind::StrokePath;
  operation.lineWidth = lineWidth;
  return operation;
}

DrawOperation imageIn(const Rect& rect, const Image& image) {
  DrawOperation operation;
  operation.kind = Kind::Image;
  operation.rect = rect;
  operation.image = image;
  return operation;
}

DrawOperation textIn(const Rect& rect, const std::string& text, const Color& color) {
  DrawOperation operation;
  operation.kind = Kind::Text;
  operation.rect = rect;
  operation.text = text;
  operation.font = Font::systemFontOfSize(14);
  operation.color = color;
  operation.alignment = TextAlignmentCenter;
  return operation;
}

/// What the view draws when all of it is asked for.
Operations drawn(View& view) {
  RecordingCanvas canvas(Rect::make(-1000, -1000, 3000, 3000));
  view.display(canvas);
  EXPECT_TRUE(canvas.isBalanced());
  return canvas.operations();
}

/// A window of 200 by 100 with one view, for requests to draw.
class ViewInWindow {
 public:
  explicit ViewInWindow(const std::shared_ptr<View>& view) {
    window.contentView()->addSubview(view);
    asked();
  }
  Rects asked() { return std::exchange(factory.record.dirty, {}); }

  RecordingPeerFactory factory;
  Window window{factory, Rect::make(0, 0, 200, 100)};
};

TEST(PathTest, ARoundedRectangleIsFourArcsClockwiseFromTheTopLeft) {
  Path expected;
  expected.moveTo({10, 25});
  expected.arc({15, 25}, 5, 180, 90);
  expected.arc({105, 25}, 5, 270, 90);
  expected.arc({105, 65}, 5, 0, 90);
  expected.arc({15, 65}, 5, 90, 90);
  expected.close();
  EXPECT_EQ(Path::roundedRect(Rect::make(10, 20, 100, 50), 5), expected);
}

TEST(PathTest, TheRadiusIsAtMostHalfOfTheShorterSideAndNeverNegative) {
  const Rect rect = Rect::make(0, 0, 100, 50);
  EXPECT_EQ(Path::roundedRect(rect, 80), Path::roundedRect(rect, 25));
  EXPECT_EQ(Path::roundedRect(rect, -3), Path::roundedRect(rect, 0));
}

TEST(PathTest, NothingIsRoundNothing) {
  EXPECT_TRUE(Path::roundedRect(Rect::make(5, 5, 0, 10), 5).elements().empty());
  EXPECT_TRUE(Path::roundedRect(Rect::make(5, 5, 10, -1), 5).elements().empty());
}

TEST(AttributedStringTest, TheTextIsThatOfAllRuns) {
  AttributedString text;
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(text.string(), "");
  text.append("Quill", Font::systemFontOfSize(12));
  text.append("box", Font::boldSystemFontOfSize(12), Color::gray());
  EXPECT_EQ(text.string(), "Quillbox");
}

TEST(RoundedRectangleViewTest, ItBeginsAsABlackBackgroundWithoutBorder) {
  const auto view = std::make_shared<RoundedRectangleView>(Rect::make(0, 0, 100, 60));
  EXPECT_TRUE(view->isFlipped());
  EXPECT_EQ(drawn(*view),
            Operations{fillOf(Path::roundedRect(Rect::make(0, 0, 100, 60), 10), Color::black())});
}

TEST(RoundedRectangleViewTest, BackgroundAndBorderAreInset) {
  struct Case {
    double borderWidth, radius;
    Rect line;
  };
  const Case cases[] = {
      {2, 10, Rect::make(3, 5, 94, 50)},
      {3, 10, Rect::make(4, 6, 92, 48)},
      {5, 4, Rect::make(6, 8, 88, 44)},
      {1, 7, Rect::make(2, 4, 96, 52)},
  };
  const auto view = std::make_shared<RoundedRectangleView>(Rect::make(0, 0, 100, 60));
  view->setInset({3, 5});
  view->setBackgroundColor(Color::gray());
  view->setBorderColor(Color::white());
  for (const Case& one : cases) {
    view->setCornerRadius(one.radius);
    view->setBorderWidth(one.borderWidth);
    const DrawOperation background =
        fillOf(Path::roundedRect(Rect::make(3, 5, 94, 50), one.radius), Color::gray());
    const DrawOperation border =
        strokeOf(Path::roundedRect(one.line, one.radius), Color::white(), one.borderWidth);
    view->setRenderBackground(true);
    view->setRenderBorder(true);
    EXPECT_EQ(drawn(*view), (Operations{background, border})) << one.borderWidth;
    view->setRenderBackground(false);
    EXPECT_EQ(drawn(*view), Operations{border});
    view->setRenderBorder(false);
    EXPECT_EQ(drawn(*view), Operations{});
  }
}

TEST(RoundedRectangleViewTest, AThinBorderStandsOutside) {
  const auto view = std::make_shared<RoundedRectangleView>(Rect::make(10, 10, 100, 60));
  EXPECT_EQ(view->drawnArea(), Rect::make(0, 0, 100, 60));
  view->setRenderBorder(true);
  view->setBorderWidth(3);
  EXPECT_EQ(view->drawnArea(), Rect::make(-0.5, -0.5, 101, 61));
  view->setInset({0.25, 1});
  EXPECT_EQ(view->drawnArea(), Rect::make(-0.25, 0, 100.5, 60));
  view->setBorderWidth(4);
  EXPECT_EQ(view->drawnArea(), Rect::make(0, 0, 100, 60));
}

TEST(RoundedRectangleViewTest, EachChangeAsksForARedrawAndNoChangeForNone) {
  const auto view = std::make_shared<RoundedRectangleView>(Rect::make(10, 10, 40, 40));
  ViewInWindow place(view);
  using Change = std::function<void(RoundedRectangleView&)>;
  const Change changes[] = {
      [](auto& v) { v.setCornerRadius(3); },
      [](auto& v) {
        v.setInset({4, 4});
      },
      [](auto& v) { v.setRenderBackground(false); },
      [](auto& v) { v.setRenderBorder(true); },
      [](auto& v) { v.setBorderWidth(2); },
      [](auto& v) { v.setBorderColor(Color::gray()); },
      [](auto& v) { v.setBackgroundColor(Color::gray()); },
  };
  for (const Change& change : changes) {
    change(*view);
    const Rects asked = place.asked();
    ASSERT_FALSE(asked.empty()) << "change " << (&change - changes);
    EXPECT_EQ(asked.back(), Rect::make(10, 50, 40, 40)) << "change " << (&change - changes);
    change(*view);
    EXPECT_EQ(place.asked(), Rects{}) << "change " << (&change - changes);
  }
}

class LabelViewTest : public testing::Test {
 protected:
  PlainMeasurer measurer;
  std::shared_ptr<LabelView> label =
      std::make_shared<LabelView>(measurer, Rect::make(0, 0, 100, 31));
};

TEST_F(LabelViewTest, ItBeginsWhiteCentredAndUnmeasured) {
  EXPECT_EQ(label->font(), Font::systemFontOfSize(14));
  EXPECT_EQ(label->textColor(), Color::white());
  EXPECT_EQ(label->shadowColor(), Color::black());
  EXPECT_FALSE(label->isShadowed());
  EXPECT_EQ(label->horizontalAlignment(), TextAlignmentCenter);
  EXPECT_EQ(label->horizontalAlignment(), 2U);
  EXPECT_EQ(label->textWidth(), 0);
  EXPECT_EQ(label->textHeight(), 0);
  EXPECT_EQ(drawn(*label).size(), 1U) << "the background alone";
}

TEST_F(LabelViewTest, TextAndFontAreMeasured) {
  label->setText("Mail");
  EXPECT_EQ(label->textWidth(), 28);
  EXPECT_EQ(label->textHeight(), 14);
  label->setFont(Font::boldSystemFontOfSize(20));
  EXPECT_EQ(label->textWidth(), 40);
  EXPECT_EQ(label->textHeight(), 20);
  label->setText("");
  EXPECT_EQ(label->textWidth(), 0);
}

TEST_F(LabelViewTest, SeveralLinesAreAsHighAsAllOfThem) {
  label->setText("one\ntwo\rthree");
  EXPECT_EQ(label->textHeight(), 42);
  EXPECT_EQ(label->drawnArea(), Rect::make(0, -6, 100, 42));
}

TEST_F(LabelViewTest, TheTextStandsInTheMiddleOfTheHeight) {
  label->setRenderBackground(false);
  label->setText("Mail");
  // 31 high, text 14 + 1: 8 down, 8 shorter.
  const DrawOperation text = textIn(Rect::make(0, 8, 100, 23), "Mail", Color::white());
  EXPECT_EQ(drawn(*label), Operations{text});

  const DrawOperation shadow = textIn(Rect::make(1, 9, 100, 23), "Mail", Color::gray());
  label->setShadowed(true);
  label->setShadowColor(Color::gray());
  EXPECT_EQ(drawn(*label), (Operations{shadow, text})) << "the shadow lies beneath";
}

TEST_F(LabelViewTest, ALowViewMovesTheTextUp) {
  label->setRenderBackground(false);
  label->setFrameSize({100, 11});
  label->setText("Mail");
  ASSERT_EQ(drawn(*label).size(), 1U);
  EXPECT_EQ(drawn(*label)[0].rect, Rect::make(0, -2, 100, 13));
  EXPECT_EQ(label->drawnArea(), Rect::make(0, -2, 100, 14));
}

TEST_F(LabelViewTest, TheBackgroundComesFirst) {
  label->setText("Mail");
  label->setRenderBorder(true);
  const Operations all = drawn(*label);
  ASSERT_EQ(all.size(), 3U);
  EXPECT_EQ(all[0].kind, Kind::FillPath);
  EXPECT_EQ(all[1].kind, Kind::StrokePath);
  EXPECT_EQ(all[2].kind, Kind::Text);
}

TEST_F(LabelViewTest, WideTextSticksOutByItsAlignment) {
  struct Case {
    TextAlignment alignment;
    Rect area;
  };
  const Case cases[] = {
      {TextAlignmentLeft, Rect::make(0, 0, 140, 31)},
      {TextAlignmentRight, Rect::make(-40, 0, 140, 31)},
      {TextAlignmentCenter, Rect::make(-20, 0, 140, 31)},
  };
  label->setText("twenty letters long!");
  for (const Case& one : cases) {
    label->setHorizontalAlignment(one.alignment);
    EXPECT_EQ(label->drawnArea(), one.area) << one.alignment;
  }
  label->setShadowed(true);
  EXPECT_EQ(label->drawnArea(), Rect::make(-20, 0, 141, 31));
}

TEST_F(LabelViewTest, AShorterTextAsksForWhatTheLongerOneCovered) {
  label->setFrame(Rect::make(50, 10, 100, 31));
  label->setText("twenty letters long!");
  ViewInWindow place(label);
  label->setText("Mail");
  EXPECT_EQ(place.asked(), (Rects{Rect::make(30, 59, 140, 31), Rect::make(50, 59, 100, 31)}));
  label->setText("Mail");
  label->setFont(label->font());
  label->setTextColor(Color::white());
  label->setShadowColor(Color::gray());  // not shown
  EXPECT_EQ(place.asked(), Rects{});
  label->setTextColor(Color::gray());
  EXPECT_EQ(place.asked(), Rects{Rect::make(50, 59, 100, 31)});
}

class ImageViewTest : public testing::Test {
 protected:
  std::shared_ptr<ImageView> view = std::make_shared<ImageView>(Rect::make(0, 0, 40, 20));
};

TEST_F(ImageViewTest, AnImageIsMadeSmallerButNeverLarger) {
  struct Case {
    Size image;
    Rect drawn;
  };
  const Case cases[] = {
      {{40, 20}, Rect::make(0, 0, 40, 20)},   {{10, 10}, Rect::make(15, 5, 10, 10)},
      {{80, 20}, Rect::make(0, 5, 40, 10)},   {{128, 128}, Rect::make(10, 0, 20, 20)},
      {{20, 80}, Rect::make(17.5, 0, 5, 20)},
  };
  for (const Case& one : cases) {
    const Image image = imageOfSize(one.image.width, one.image.height);
    view->setImage(image);
    EXPECT_EQ(drawn(*view), Operations{imageIn(one.drawn, image)});
  }
}

TEST_F(ImageViewTest, TheSizeOfTheImageCanBeSet) {
  view->setImage(imageOfSize(128, 128));
  view->setImageSize({8, 8});
  EXPECT_EQ(view->image().size(), (Size{8, 8}));
  ASSERT_EQ(drawn(*view).size(), 1U);
  EXPECT_EQ(drawn(*view)[0].rect, Rect::make(16, 6, 8, 8));
}

TEST_F(ImageViewTest, TheOtherScalingsFillOrKeepTheSize) {
  view->setImage(imageOfSize(60, 10));
  view->setImageScaling(ImageScaleAxesIndependently);
  ASSERT_EQ(drawn(*view).size(), 1U);
  EXPECT_EQ(drawn(*view)[0].rect, Rect::make(0, 0, 40, 20));
  view->setImageScaling(ImageScaleNone);
  ASSERT_EQ(drawn(*view).size(), 1U);
  EXPECT_EQ(drawn(*view)[0].rect, Rect::make(-10, 5, 60, 10));
}

TEST_F(ImageViewTest, WithoutAnImageNothingIsDrawn) {
  EXPECT_EQ(drawn(*view), Operations{});
  view->setImage(imageOfSize(0, 10));
  EXPECT_EQ(drawn(*view), Operations{});
}

TEST_F(ImageViewTest, OnlyAnotherImageAsksForARedraw) {
  ViewInWindow place(view);
  const Image image = imageOfSize(10, 10);
  view->setImage(image);
  EXPECT_EQ(place.asked(), Rects{Rect::make(0, 80, 40, 20)});
  view->setImage(image);
  view->setImageSize({10, 10});
  view->setImageScaling(ImageScaleProportionallyDown);
  EXPECT_EQ(place.asked(), Rects{});
  view->setImageSize({9, 9});
  EXPECT_EQ(place.asked(), Rects{Rect::make(0, 80, 40, 20)});
}

class ButtonTest : public testing::Test {
 protected:
  ButtonTest() {
    button->setImage(imageOfSize(24, 24));
    button->setAction([this] { ++clicks; });
    row->addSubview(button);
  }
  void send(EventType type, Point location) {
    Event event;
    event.type = type;
    event.location = location;
    place.window.sendEvent(event);
  }
  double fraction() {
    const Operations all = drawn(*button);
    return all.size() == 1 ? all[0].fraction : -1;
  }

  int clicks = 0;
  std::vector<std::string> rowHeard;
  std::shared_ptr<ListeningView> row =
      std::make_shared<ListeningView>(Rect::make(0, 0, 200, 100), "row", rowHeard);
  std::shared_ptr<Button> button = std::make_shared<Button>(Rect::make(10, 10, 24, 24));
  ViewInWindow place{row};
  const Point inside{15, 15}, outside{150, 15};
};

TEST_F(ButtonTest, AClickActsOnReleaseAndDimsMeanwhile) {
  EXPECT_EQ(fraction(), 1);
  place.asked();
  send(EventTypeLeftMouseDown, inside);
  EXPECT_TRUE(button->isPressed());
  EXPECT_EQ(fraction(), 0.5);
  EXPECT_EQ(clicks, 0);
  send(EventTypeLeftMouseUp, inside);
  EXPECT_FALSE(button->isPressed());
  EXPECT_EQ(fraction(), 1);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(place.asked(), (Rects{Rect::make(10, 66, 24, 24), Rect::make(10, 66, 24, 24)}));
  EXPECT_TRUE(rowHeard.empty()) << "the row beneath hears nothing of it";
}

TEST_F(ButtonTest, AReleaseOutsideDoesNotAct) {
  send(EventTypeLeftMouseDown, inside);
  send(EventTypeLeftMouseDragged, outside);
  EXPECT_FALSE(button->isPressed());
  send(EventTypeLeftMouseUp, outside);
  EXPECT_EQ(clicks, 0);
}

TEST_F(ButtonTest, ComingBackPressesItAgain) {
  send(EventTypeLeftMouseDown, inside);
  send(EventTypeLeftMouseDragged, outside);
  send(EventTypeLeftMouseDragged, inside);
  EXPECT_TRUE(button->isPressed());
  send(EventTypeLeftMouseUp, inside);
  EXPECT_EQ(clicks, 1);
}

TEST_F(ButtonTest, AReleaseWithoutAPressDoesNothing) {
  Event event;
  event.location = inside;
  button->mouseDragged(event);
  EXPECT_FALSE(button->isPressed());
  button->mouseUp(event);
  EXPECT_EQ(clicks, 0);
}

TEST_F(ButtonTest, AClickCanBePerformedAndWithoutAnActionDoesNothing) {
  button->performClick();
  EXPECT_EQ(clicks, 1);
  button->setAction({});
  button->performClick();
  EXPECT_EQ(clicks, 1);
}

TEST_F(ButtonTest, TheActionMayDoAwayWithTheButton) {
  Button& pressed = *button;
  const std::weak_ptr<Button> watched = button;
  pressed.setAction([this, &pressed] {
    button.reset();
    pressed.removeFromSuperview();
    pressed.setAction({});
    ++clicks;
  });
  send(EventTypeLeftMouseDown, inside);
  send(EventTypeLeftMouseUp, inside);
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace qb::test
