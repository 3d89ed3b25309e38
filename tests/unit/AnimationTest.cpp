#include "QuillboxCommon/views/Animation.h"

#include <gtest/gtest.h>

#include <optional>

#include "QuillboxCommon/views/Window.h"
#include "support/RecordingPeer.h"
#include "support/TestViews.h"
#include "support/VirtualHost.h"

namespace qb::test {
namespace {

/// Keeps the frames that were set, and does something more with each.
class SteppedView : public View {
 public:
  using View::View;
  void setFrame(const Rect& frame) override {
    View::setFrame(frame);
    frames.push_back(frame);
    if (onSetFrame) onSetFrame();
  }
  std::vector<Rect> frames;
  std::function<void()> onSetFrame;
};

class AnimationTest : public testing::Test {
 protected:
  bool isIdle() const { return host.deadline() >= distantFuture; }

  VirtualHost host;
  RunLoop loop{host};
  std::shared_ptr<View> view = makeView(Rect::make(0, 0, 10, 10));
};

TEST_F(AnimationTest, AlphaReachesItsTargetAtExactlyTheDuration) {
  view->setAlphaValue(0);
  view->animator().setAlphaValue(1);
  EXPECT_EQ(view->alphaValue(), 0);
  host.advance(0.249);
  EXPECT_LT(view->alphaValue(), 1);
  EXPECT_FALSE(isIdle());
  host.advance(0.0011);
  EXPECT_EQ(view->alphaValue(), 1);
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, AFrameMovesStepByStepOntoItsTarget) {
  const auto stepped = std::make_shared<SteppedView>(Rect::make(0, 0, 10, 10));
  stepped->animator().setFrame(Rect::make(100, 50, 30.3, 10));
  host.advance(1);
  ASSERT_EQ(stepped->frames.size(), 15U) << "a quarter of a second, sixty frames a second";
  for (std::size_t i = 1; i < stepped->frames.size(); ++i) {
    EXPECT_GT(stepped->frames[i].x(), stepped->frames[i - 1].x());
    EXPECT_GT(stepped->frames[i].width(), stepped->frames[i - 1].width());
  }
  EXPECT_EQ(stepped->frame(), Rect::make(100, 50, 30.3, 10));
}

TEST_F(AnimationTest, TheWayEasesInAndOut) {
  struct Case {
    TimeInterval after;
    double value;
  };
  const Case cases[] = {{0.25, 0.15625}, {0.5, 0.5}, {0.75, 0.84375}, {1, 1}};
  view->setAlphaValue(0);
  {
    const AnimationGroup group(1);
    view->animator().setAlphaValue(1);
  }
  TimeInterval passed = 0;
  for (const Case& one : cases) {
    host.advance(one.after - passed + 0.000002);  // the tick of that moment included
    passed = one.after + 0.000002;
    EXPECT_NEAR(view->alphaValue(), one.value, 1e-5) << "after " << one.after;
  }
}

TEST_F(AnimationTest, ADurationThatIsNoWholeNumberOfFramesIsKept) {
  const AnimationGroup group(0.02);
  view->animator().setAlphaValue(0);
  host.advance(0.0199);
  EXPECT_GT(view->alphaValue(), 0);
  host.advance(0.00011);
  EXPECT_EQ(view->alphaValue(), 0);
}

TEST_F(AnimationTest, AShortAnimationBesideALongOneIsNotHeldUp) {
  const auto other = makeView({});
  view->animator().setAlphaValue(0);
  host.advance(0.001);
  {
    const AnimationGroup group(0.003);
    other->animator().setAlphaValue(0);
  }
  host.advance(0.0031);
  EXPECT_EQ(other->alphaValue(), 0);
  EXPECT_GT(view->alphaValue(), 0);
}

TEST_F(AnimationTest, GroupsNestAndEndWithTheirScope) {
  EXPECT_EQ(AnimationGroup::currentDuration(), 0.25);
  {
    const AnimationGroup outer(1);
    {
      const AnimationGroup inner(0.1);
      EXPECT_EQ(AnimationGroup::currentDuration(), 0.1);
    }
    EXPECT_EQ(AnimationGroup::currentDuration(), 1);
  }
  EXPECT_EQ(AnimationGroup::currentDuration(), 0.25);
}

TEST_F(AnimationTest, WithoutDurationTheChangeHappensAtOnce) {
  view->animator().setAlphaValue(0.5);
  const AnimationGroup group(0);
  view->animator().setAlphaValue(0);
  view->animator().setFrame(Rect::make(1, 2, 3, 4));
  EXPECT_EQ(view->alphaValue(), 0);
  EXPECT_EQ(view->frame(), Rect::make(1, 2, 3, 4));
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, NothingRunsForATargetThatIsReachedAlready) {
  view->animator().setAlphaValue(1);
  view->animator().setFrame(view->frame());
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, SettingThePropertyEndsItsAnimation) {
  view->animator().setAlphaValue(0);
  view->animator().setFrame(Rect::make(100, 0, 10, 10));
  host.advance(0.1);
  view->setAlphaValue(0.7);
  host.advance(0.05);
  EXPECT_EQ(view->alphaValue(), 0.7);
  EXPECT_FALSE(isIdle()) << "the frame's goes on";
  view->setFrame(view->frame());
  EXPECT_TRUE(isIdle()) << "even when it stays the same";
  const Rect frame = view->frame();
  host.advance(1);
  EXPECT_EQ(view->frame(), frame);
}

TEST_F(AnimationTest, ANewAnimationReplacesTheOneUnderWay) {
  view->animator().setAlphaValue(0);
  host.advance(0.125);
  const double middle = view->alphaValue();
  view->animator().setAlphaValue(1);
  host.advance(0.13);
  EXPECT_GT(view->alphaValue(), middle) << "from where it was, not by way of the old target";
  EXPECT_LT(view->alphaValue(), 1) << "with a duration of its own";
  host.advance(0.125);
  EXPECT_EQ(view->alphaValue(), 1);
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, AnOriginGoesWithTheSizeUnderWay) {
  view->animator().setFrame(Rect::make(50, 50, 40, 40));
  view->animator().setFrameOrigin({80, 0});
  host.advance(0.3);
  EXPECT_EQ(view->frame(), Rect::make(80, 0, 40, 40));
  view->animator().setFrameOrigin({0, 5});
  host.advance(0.3);
  EXPECT_EQ(view->frame(), Rect::make(0, 5, 40, 40));
}

TEST_F(AnimationTest, AllAnimationsShareTheirSteps) {
  std::vector<std::shared_ptr<View>> views;
  for (int i = 0; i < 20; ++i) {
    views.push_back(makeView({}));
    views.back()->animator().setAlphaValue(0);
  }
  host.servedDeadlines = 0;
  host.advance(1);
  EXPECT_EQ(host.servedDeadlines, 15);
  EXPECT_EQ(views.back()->alphaValue(), 0);
}

TEST_F(AnimationTest, AViewThatGoesAwayEndsItsAnimations) {
  view->animator().setAlphaValue(0);
  const std::weak_ptr<View> watched = view;
  view.reset();
  EXPECT_TRUE(watched.expired()) << "held by nobody";
  host.advance(1);
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, AViewThatNobodySharesChangesAtOnce) {
  View lone(Rect::make(0, 0, 10, 10));
  lone.animator().setAlphaValue(0);
  EXPECT_EQ(lone.alphaValue(), 0);
}

TEST_F(AnimationTest, AnimationsRunInTheCommonModesOnly) {
  const auto advanceIn = [&](RunLoopMode mode) {
    const RunLoop::ModeScope scope(loop, mode);
    view->setAlphaValue(1);
    view->animator().setAlphaValue(0);
    host.advance(0.3);
    return view->alphaValue();
  };
  EXPECT_EQ(advanceIn(RunLoopMode::EventTracking), 0);
  EXPECT_EQ(advanceIn(RunLoopMode::ModalPanel), 0);
  EXPECT_EQ(advanceIn(RunLoopMode::EventOnly), 1);
}

TEST_F(AnimationTest, AStepMayRunTheLoop) {
  const auto stepped = std::make_shared<SteppedView>(Rect::make(0, 0, 10, 10));
  view->animator().setAlphaValue(0);
  stepped->animator().setFrame(Rect::make(100, 0, 10, 10));
  stepped->onSetFrame = [&] {
    stepped->onSetFrame = nullptr;
    loop.runUntilDate(loop.now() + 0.3);
    EXPECT_EQ(view->alphaValue(), 0) << "the others went on";
  };
  host.advance(0.5);
  EXPECT_EQ(stepped->frame(), Rect::make(100, 0, 10, 10));
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, AStepMayStartTheNextAnimationOfItsOwnView) {
  const auto stepped = std::make_shared<SteppedView>(Rect::make(0, 0, 10, 10));
  stepped->animator().setFrame(Rect::make(100, 0, 10, 10));
  stepped->onSetFrame = [&] {
    if (stepped->frame().x() == 100) stepped->animator().setFrame(Rect::make(0, 0, 10, 10));
  };
  host.advance(0.3);
  EXPECT_LT(stepped->frame().x(), 100);
  host.advance(0.3);
  EXPECT_EQ(stepped->frame().x(), 0);
  EXPECT_TRUE(isIdle());
}

TEST_F(AnimationTest, AStepMayEndAnotherViewsAnimation) {
  const auto stepped = std::make_shared<SteppedView>(Rect::make(0, 0, 10, 10));
  stepped->animator().setFrame(Rect::make(100, 0, 10, 10));
  view->animator().setAlphaValue(0);
  stepped->onSetFrame = [&] { view->setAlphaValue(0.5); };
  host.advance(0.5);
  EXPECT_EQ(view->alphaValue(), 0.5);
}

TEST_F(AnimationTest, TheContentViewFadesThroughThePeer) {
  RecordingPeerFactory factory;
  Window window(factory, Rect::make(0, 0, 10, 10));
  window.contentView()->setAlphaValue(0);
  window.contentView()->animator().setAlphaValue(1);
  host.advance(0.13);
  EXPECT_GT(factory.record.contentAlpha, 0.4);
  EXPECT_LT(factory.record.contentAlpha, 0.6);
  host.advance(0.13);
  EXPECT_EQ(factory.record.contentAlpha, 1);
  EXPECT_TRUE(factory.record.dirty.empty());
}

TEST(AnimationLoopTest, AnAnimationEndsWithItsLoopAndTheNextLoopBeginsAfresh) {
  const auto view = makeView({});
  for (int round = 0; round < 2; ++round) {
    VirtualHost host;
    RunLoop loop(host);
    view->setAlphaValue(1);
    view->animator().setAlphaValue(0);
    host.advance(0.3);
    EXPECT_EQ(view->alphaValue(), 0);
    view->animator().setAlphaValue(1);  // left unfinished
    host.advance(0.1);
  }
  const double left = view->alphaValue();
  view->setFrame(Rect::make(1, 1, 1, 1));
  EXPECT_EQ(view->alphaValue(), left);
}

}  // namespace
}  // namespace qb::test
