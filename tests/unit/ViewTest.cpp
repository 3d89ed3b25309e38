#include <gtest/gtest.h>

#include "QuillboxCommon/views/Window.h"
#include "support/PrintGeometry.h"
#include "support/RecordingPeer.h"
#include "support/TestViews.h"

namespace qb::test {
namespace {

using Views = std::vector<std::shared_ptr<View>>;

class ViewTreeTest : public testing::Test {
 protected:
  std::shared_ptr<View> top = makeView(Rect::make(0, 0, 100, 100));
  std::shared_ptr<View> a = makeView(Rect::make(0, 0, 10, 10));
  std::shared_ptr<View> b = makeView(Rect::make(0, 0, 10, 10));
  std::shared_ptr<View> c = makeView(Rect::make(0, 0, 10, 10));
};

TEST_F(ViewTreeTest, BoundsBeginAtZero) {
  const auto view = makeView(Rect::make(3, 4, 5, 6));
  EXPECT_EQ(view->frame(), Rect::make(3, 4, 5, 6));
  EXPECT_EQ(view->bounds(), Rect::make(0, 0, 5, 6));
  view->setFrameOrigin({7, 8});
  view->setFrameSize({9, 10});
  EXPECT_EQ(view->frame(), Rect::make(7, 8, 9, 10));
}

TEST_F(ViewTreeTest, EachSubviewIsAddedOnTop) {
  top->addSubview(a);
  top->addSubview(b);
  EXPECT_EQ(top->subviews(), (Views{a, b}));
  EXPECT_EQ(a->superview(), top.get());
}

TEST_F(ViewTreeTest, AddingASubviewAgainBringsItToTheTop) {
  for (const auto& view : {a, b, c}) top->addSubview(view);
  top->addSubview(a);
  EXPECT_EQ(top->subviews(), (Views{b, c, a}));
  // The argument stands in the very list that changes.
  top->addSubview(top->subviews().front());
  EXPECT_EQ(top->subviews(), (Views{c, a, b}));
}

TEST_F(ViewTreeTest, AViewLeavesItsFormerSuperview) {
  const auto other = makeView({});
  other->addSubview(a);
  top->addSubview(a);
  EXPECT_TRUE(other->subviews().empty());
  EXPECT_EQ(a->superview(), top.get());
}

TEST_F(ViewTreeTest, NothingIsAddedForNull) {
  top->addSubview(nullptr);
  EXPECT_TRUE(top->subviews().empty());
}

TEST_F(ViewTreeTest, ASubviewIsPlacedByItsSibling) {
  using Ordering = View::Ordering;
  struct Case {
    Ordering ordering;
    const View* sibling;
    Views result;
  };
  const auto stranger = makeView({});
  const Case cases[] = {
      {Ordering::Above, a.get(), {a, c, b}},        {Ordering::Above, b.get(), {a, b, c}},
      {Ordering::Below, a.get(), {c, a, b}},        {Ordering::Below, b.get(), {a, c, b}},
      {Ordering::Above, nullptr, {a, b, c}},        {Ordering::Below, nullptr, {c, a, b}},
      {Ordering::Above, stranger.get(), {a, b, c}}, {Ordering::Below, stranger.get(), {c, a, b}},
  };
  for (const bool isThereAlready : {false, true}) {
    for (const Case& one : cases) {
      for (const auto& view : {a, b, c}) view->removeFromSuperview();
      if (isThereAlready) top->addSubview(c);
      top->addSubview(a);
      top->addSubview(b);
      top->addSubview(c, one.ordering, one.sibling);
      EXPECT_EQ(top->subviews(), one.result) << "case " << (&one - cases);
    }
  }
}

TEST_F(ViewTreeTest, AViewPlacedBesideItselfStays) {
  top->addSubview(a);
  top->addSubview(b);
  top->addSubview(a, View::Ordering::Above, a.get());
  EXPECT_EQ(top->subviews(), (Views{a, b}));
}

TEST_F(ViewTreeTest, ARemovedViewHasNoSuperviewAndRemovingAgainIsHarmless) {
  top->addSubview(a);
  a->removeFromSuperview();
  a->removeFromSuperview();
  EXPECT_TRUE(top->subviews().empty());
  EXPECT_EQ(a->superview(), nullptr);
}

TEST_F(ViewTreeTest, ASubviewHeldByItsSuperviewAloneGoesWhenRemoved) {
  top->addSubview(a);
  const std::weak_ptr<View> watched = a;
  View& view = *a;
  a.reset();
  view.removeFromSuperview();
  EXPECT_TRUE(watched.expired());
}

TEST_F(ViewTreeTest, ASubviewThatOutlivesItsSuperviewHasNone) {
  top->addSubview(a);
  top.reset();
  EXPECT_EQ(a->superview(), nullptr);
  EXPECT_EQ(a->window(), nullptr);
}

TEST_F(ViewTreeTest, DescentIncludesTheViewItself) {
  top->addSubview(a);
  a->addSubview(b);
  EXPECT_TRUE(b->isDescendantOf(*top));
  EXPECT_TRUE(b->isDescendantOf(*b));
  EXPECT_FALSE(a->isDescendantOf(*b));
  EXPECT_FALSE(c->isDescendantOf(*top));
}

TEST_F(ViewTreeTest, HiddenIsInherited) {
  top->addSubview(a);
  a->addSubview(b);
  EXPECT_FALSE(b->isHiddenOrHasHiddenAncestor());
  top->setHidden(true);
  EXPECT_TRUE(b->isHiddenOrHasHiddenAncestor());
  EXPECT_FALSE(b->isHidden());
}

TEST_F(ViewTreeTest, AlphaStaysBetweenZeroAndOne) {
  a->setAlphaValue(1.5);
  EXPECT_EQ(a->alphaValue(), 1);
  a->setAlphaValue(-0.5);
  EXPECT_EQ(a->alphaValue(), 0);
}

TEST(ViewHitTest, TheTopmostVisibleViewUnderThePointIsHit) {
  const auto top = makeView(Rect::make(10, 10, 100, 100));
  const auto back = makeView(Rect::make(0, 0, 60, 60), true);
  const auto front = makeView(Rect::make(40, 40, 60, 60));
  const auto inner = makeView(Rect::make(0, 0, 20, 20));
  top->addSubview(back);
  top->addSubview(front);
  back->addSubview(inner);  // at the top left of `back`, which is flipped

  struct Case {
    const char* what;
    Point point;
    const View* hit;
  };
  const Case cases[] = {
      {"outside", {9, 50}, nullptr},
      {"near edge belongs", {10, 10}, back.get()},
      {"far edge does not", {110, 50}, nullptr},
      {"the superview itself", {20, 90}, top.get()},
      {"both: the front one", {60, 60}, front.get()},
      {"inner, from the top", {15, 65}, inner.get()},
      {"where inner would be from the bottom", {15, 15}, back.get()},
  };
  for (const Case& one : cases) EXPECT_EQ(top->hitTest(one.point), one.hit) << one.what;

  front->setAlphaValue(0);
  EXPECT_EQ(top->hitTest({60, 60}), front.get());
  front->setHidden(true);
  EXPECT_EQ(top->hitTest({60, 60}), back.get());
  top->setHidden(true);
  EXPECT_EQ(top->hitTest({60, 60}), nullptr);
}

TEST(ViewHitTest, WhatSticksOutIsNotHit) {
  const auto top = makeView(Rect::make(0, 0, 10, 10));
  top->addSubview(makeView(Rect::make(5, 5, 20, 20)));
  EXPECT_EQ(top->hitTest({15, 15}), nullptr);
}

class InvalidationTest : public testing::Test {
 protected:
  InvalidationTest() {
    window.contentView()->addSubview(row);
    row->addSubview(item);
    asked();
  }
  /// What was asked for since the last question.
  std::vector<Rect> asked() { return std::exchange(factory.record.dirty, {}); }

  RecordingPeerFactory factory;
  Window window{factory, Rect::make(0, 0, 200, 100)};
  // In the window from the top left: row [10, 60, 50 x 30], item [15, 62, 10 x 8].
  std::shared_ptr<View> row = makeView(Rect::make(10, 10, 50, 30), true);
  std::shared_ptr<View> item = makeView(Rect::make(5, 2, 10, 8));
};

using Rects = std::vector<Rect>;

TEST_F(InvalidationTest, AMoveAsksForTheOldAndTheNewPlace) {
  item->setFrame(Rect::make(20, 4, 6, 6));
  EXPECT_EQ(asked(), (Rects{Rect::make(15, 62, 10, 8), Rect::make(30, 64, 6, 6)}));
}

TEST_F(InvalidationTest, SubviewsThatStickOutMoveAlong) {
  item->setFrame(Rect::make(45, 25, 10, 10));
  asked();
  row->setFrameOrigin({20, 10});
  EXPECT_EQ(asked(), (Rects{Rect::make(10, 60, 50, 30), Rect::make(55, 85, 10, 10),
                            Rect::make(20, 60, 50, 30), Rect::make(65, 85, 10, 10)}));
}

TEST_F(InvalidationTest, SubviewsInsideAddNothing) {
  row->setNeedsDisplay();
  row->setAlphaValue(0.5);
  EXPECT_EQ(asked(), (Rects{Rect::make(10, 60, 50, 30), Rect::make(10, 60, 50, 30)}));
}

TEST_F(InvalidationTest, WhatStaysTheSameAsksForNothing) {
  row->setFrame(row->frame());
  row->setAlphaValue(1);
  row->setHidden(false);
  window.contentView()->addSubview(row);
  EXPECT_EQ(asked(), Rects{});
}

TEST_F(InvalidationTest, AlphaAsksForTheAreaUntilItIsGoneAndAgain) {
  item->setAlphaValue(0);
  EXPECT_EQ(asked(), Rects{Rect::make(15, 62, 10, 8)});
  item->setFrame(Rect::make(0, 0, 5, 5));
  item->setNeedsDisplay();
  EXPECT_EQ(asked(), Rects{});
  item->setAlphaValue(0.2);
  EXPECT_EQ(asked(), Rects{Rect::make(10, 60, 5, 5)});
}

TEST_F(InvalidationTest, HidingAndShowingAskForTheArea) {
  item->setHidden(true);
  EXPECT_EQ(asked(), Rects{Rect::make(15, 62, 10, 8)});
  item->setHidden(false);
  EXPECT_EQ(asked(), Rects{Rect::make(15, 62, 10, 8)});
}

TEST_F(InvalidationTest, WhatIsHiddenAsksForNothing) {
  row->setHidden(true);
  asked();
  item->setFrame(Rect::make(1, 1, 5, 5));
  item->setAlphaValue(0.5);
  item->setHidden(true);
  item->setNeedsDisplay();
  row->setFrameOrigin({0, 0});
  row->setAlphaValue(0.5);
  item->removeFromSuperview();
  EXPECT_EQ(asked(), Rects{});
}

TEST_F(InvalidationTest, WhatIsInsideSomethingTransparentAsksForNothing) {
  row->setAlphaValue(0);
  asked();
  item->setFrame(Rect::make(1, 1, 5, 5));
  item->setAlphaValue(0.5);
  EXPECT_EQ(asked(), Rects{});
}

TEST_F(InvalidationTest, AddingRemovingAndReorderingAskForTheArea) {
  const auto other = makeView(Rect::make(0, 0, 4, 4));
  row->addSubview(other);
  EXPECT_EQ(asked(), Rects{Rect::make(10, 60, 4, 4)});
  row->addSubview(item);
  EXPECT_EQ(asked(), Rects{Rect::make(15, 62, 10, 8)});
  other->removeFromSuperview();
  EXPECT_EQ(asked(), Rects{Rect::make(10, 60, 4, 4)});
}

TEST_F(InvalidationTest, APartIsGivenInTheViewsOwnCoordinates) {
  row->setNeedsDisplay(Rect::make(1, 2, 3, 4));
  item->setNeedsDisplay(Rect::make(0, 0, 2, 3));  // unflipped: the lower left corner
  EXPECT_EQ(asked(), (Rects{Rect::make(11, 62, 3, 4), Rect::make(15, 67, 2, 3)}));
}

TEST_F(InvalidationTest, APartIsCutOffAtTheView) {
  row->setNeedsDisplay(Rect::make(40, 20, 100, 100));
  row->setNeedsDisplay(Rect::make(60, 0, 5, 5));
  EXPECT_EQ(asked(), Rects{Rect::make(50, 80, 10, 10)});
}

TEST_F(InvalidationTest, NothingIsAskedForOutsideOfTheWindow) {
  row->setFrame(Rect::make(180, -10, 50, 30));
  EXPECT_EQ(asked(), (Rects{Rect::make(10, 60, 50, 30), Rect::make(180, 80, 20, 20)}));
  row->setFrameOrigin({500, 500});
  asked();
  row->setNeedsDisplay();
  EXPECT_EQ(asked(), Rects{});
}

TEST_F(InvalidationTest, TheContentViewsAlphaIsThePeersAndRepaintsNothing) {
  window.contentView()->setAlphaValue(0);
  EXPECT_EQ(factory.record.contentAlpha, 0);
  EXPECT_EQ(asked(), Rects{});
  // The peer prepares its picture meanwhile.
  item->setNeedsDisplay();
  EXPECT_EQ(asked(), Rects{Rect::make(15, 62, 10, 8)});
}

TEST_F(InvalidationTest, AViewInNoWindowAsksNobody) {
  const auto lone = makeView(Rect::make(0, 0, 10, 10));
  lone->setNeedsDisplay();
  lone->setFrame(Rect::make(0, 0, 20, 20));
  lone->setAlphaValue(0.5);
  EXPECT_EQ(asked(), Rects{});
}

TEST_F(InvalidationTest, ASubviewThatOutlivesTheWindowAsksNobody) {
  std::shared_ptr<View> content;
  {
    Window other(factory, Rect::make(0, 0, 50, 50));
    content = other.contentView();
    content->addSubview(row);
  }
  asked();
  row->setFrameOrigin({0, 0});
  content->setAlphaValue(0.5);
  EXPECT_EQ(content->window(), nullptr);
  EXPECT_EQ(asked(), Rects{});
}

}  // namespace
}  // namespace qb::test
