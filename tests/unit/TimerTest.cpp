#include "QuillboxCommon/Timer.h"

#include <gtest/gtest.h>

#include <any>
#include <memory>
#include <string>
#include <vector>

#include "support/RecordingLog.h"
#include "support/VirtualHost.h"

namespace qb {
namespace {

class TimerTest : public testing::Test {
 protected:
  Timer::TimerBlock count() {
    return [this](const std::any&) { ++fired_; };
  }

  test::VirtualHost host_;
  RunLoop loop_{host_};
  test::RecordingLog log_;
  int fired_ = 0;
};

const std::string noBlockError =
    "ERROR: Timer 'Tip View Timer' IS RUNNING WITH NO CODE BLOCK TO EXECUTE!";

TEST_F(TimerTest, RepeatsUntilItIsDone) {
  auto timer = Timer::timerWithName("Tip View Timer", 0.5, count());
  EXPECT_EQ(timer->name(), "Tip View Timer");
  EXPECT_EQ(timer->timeInterval(), 0.5);
  host_.advance(1.6);
  EXPECT_EQ(fired_, 3);
  timer = timer->done();
  EXPECT_EQ(timer, nullptr);
  host_.advance(5);
  EXPECT_EQ(fired_, 3);
}

TEST_F(TimerTest, HandsItsUserInfoToEachFiring) {
  std::vector<int> seen;
  const auto timer = Timer::timerWithName(
      "Separator Clock Timer", 1,
      [&](const std::any& userInfo) { seen.push_back(std::any_cast<int>(userInfo)); }, 42);
  host_.advance(2);
  EXPECT_EQ(seen, (std::vector<int>{42, 42}));
}

TEST_F(TimerTest, WithoutUserInfoTheBlockGetsNone) {
  bool none = false;
  const auto timer = Timer::timerWithName(
      "Dock Manager Poll", 1, [&](const std::any& userInfo) { none = !userInfo.has_value(); });
  host_.advance(1);
  EXPECT_TRUE(none);
}

TEST_F(TimerTest, ATriggerFiresOnce) {
  const auto timer = Timer::triggerWithName("Drag Button Timer", 0.5, count());
  host_.advance(0.4);
  EXPECT_EQ(fired_, 0);
  host_.advance(5);
  EXPECT_EQ(fired_, 1);
}

TEST_F(TimerTest, ATriggersBlockMayEndItsOwnTimer) {
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  std::shared_ptr<Timer> timer;
  timer = Timer::triggerWithName("Drag Button Timer", 0.5, [&, held](const std::any&) {
    timer = timer->done();
    // What the block holds must outlast the end of its timer.
    ++*held;
    ++fired_;
  });
  held.reset();
  host_.advance(5);
  EXPECT_EQ(fired_, 1);
  EXPECT_EQ(timer, nullptr);
  EXPECT_TRUE(watched.expired());
  EXPECT_TRUE(log_.entries.empty());
}

TEST_F(TimerTest, ARepeatingTimersBlockMayEndItToo) {
  std::shared_ptr<Timer> timer;
  timer = Timer::timerWithName("Screen Shot Monitor", 0.5, [&](const std::any&) {
    ++fired_;
    timer = timer->done();
  });
  host_.advance(5);
  EXPECT_EQ(fired_, 1);
  EXPECT_TRUE(log_.entries.empty());
}

TEST_F(TimerTest, BeingDoneAgainIsHarmless) {
  const auto timer = Timer::timerWithName("Tip View Timer", 0.5, count());
  timer->done();
  timer->done();
  host_.advance(5);
  EXPECT_EQ(fired_, 0);
  EXPECT_TRUE(log_.entries.empty());
}

TEST_F(TimerTest, RunsOnWithoutAnOwner) {
  const std::weak_ptr<Timer> timer = Timer::timerWithName("Tip View Timer", 0.5, count());
  EXPECT_FALSE(timer.expired());
  host_.advance(1);
  EXPECT_EQ(fired_, 2);
  timer.lock()->done();
  EXPECT_TRUE(timer.expired());
}

TEST_F(TimerTest, ATriggerWithoutAnOwnerGoesAfterItsFiring) {
  const std::weak_ptr<Timer> timer = Timer::triggerWithName("Tip View Timer", 0.5, count());
  host_.advance(0.5);
  EXPECT_EQ(fired_, 1);
  EXPECT_TRUE(timer.expired());
}

TEST_F(TimerTest, AnOwnerlessTimerMayEndItselfInItsBlock) {
  std::weak_ptr<Timer> weak;
  weak = Timer::timerWithName("Tip View Timer", 0.5, [&](const std::any&) {
    ++fired_;
    weak.lock()->done();
  });
  host_.advance(5);
  EXPECT_EQ(fired_, 1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(TimerTest, BeingDoneLetsTheBlockGo) {
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  const auto timer = Timer::timerWithName("Tip View Timer", 0.5, [held](const std::any&) {});
  held.reset();
  EXPECT_FALSE(watched.expired());
  timer->done();
  EXPECT_TRUE(watched.expired());
}

TEST_F(TimerTest, ItsBlockKeepsWhatItChangesBetweenFirings) {
  std::vector<int> seen;
  const auto timer = Timer::timerWithName(
      "Tip View Timer", 0.5, [&, count = 0](const std::any&) mutable { seen.push_back(++count); });
  host_.advance(1.5);
  EXPECT_EQ(seen, (std::vector<int>{1, 2, 3}));
}

TEST_F(TimerTest, OneWithoutABlockSaysSoAtEachFiring) {
  const auto timer = Timer::timerWithName("Tip View Timer", 0.5, nullptr);
  host_.advance(1);
  EXPECT_EQ(log_.entries, (std::vector<std::string>{noBlockError, noBlockError}));
}

TEST_F(TimerTest, ResetAfterItsEndItRunsWithoutABlock) {
  const auto timer = Timer::timerWithName("Tip View Timer", 0.5, count());
  timer->done();
  timer->resetTimeInterval(1);
  host_.advance(1);
  EXPECT_EQ(fired_, 0);
  EXPECT_EQ(log_.entries, std::vector<std::string>{noBlockError});
  timer->done();
}

TEST_F(TimerTest, ATriggerWithoutABlockIsNotEndedByItsError) {
  const auto timer = Timer::triggerWithName("Tip View Timer", 0.5, nullptr);
  timer->resetTimeInterval(1);
  host_.advance(2);
  EXPECT_EQ(log_.entries, (std::vector<std::string>{noBlockError, noBlockError}));
}

TEST_F(TimerTest, FiresInTheDefaultModeOnly) {
  const auto timer = Timer::timerWithName("Tip View Timer", 0.5, count());
  const RunLoop::ModeScope scope(loop_, RunLoopMode::EventTracking);
  host_.advance(1);
  EXPECT_EQ(fired_, 0);
}

TEST_F(TimerTest, AddedToAdditionalRunLoopsItFiresInMenusAndDialogs) {
  const auto timer = Timer::timerWithName("Clipboard Manager Pasteboard Poll", 0.5, count());
  timer->addToAdditionalRunLoops();
  EXPECT_EQ(timer->runLoopTimer().modes(), RunLoopModes::common());
  {
    const RunLoop::ModeScope scope(loop_, RunLoopMode::EventTracking);
    host_.advance(1);
  }
  EXPECT_EQ(fired_, 2);
  {
    const RunLoop::ModeScope scope(loop_, RunLoopMode::ModalPanel);
    host_.advance(1);
  }
  EXPECT_EQ(fired_, 4);
  host_.advance(1);
  EXPECT_EQ(fired_, 6);
}

TEST_F(TimerTest, ResettingStartsTheNewIntervalNow) {
  const auto timer = Timer::timerWithName("Tip View Timer", 1, count());
  host_.advance(0.9);
  timer->resetTimeInterval(2);
  EXPECT_EQ(timer->timeInterval(), 2);
  host_.advance(1.9);
  EXPECT_EQ(fired_, 0);
  host_.advance(0.1);
  EXPECT_EQ(fired_, 1);
  host_.advance(2);
  EXPECT_EQ(fired_, 2);
}

TEST_F(TimerTest, ResettingTakesAwayAdditionalModes) {
  const auto timer = Timer::timerWithName("Tip View Timer", 1, count());
  timer->addToAdditionalRunLoops();
  timer->resetTimeInterval(0.5);
  EXPECT_EQ(timer->runLoopTimer().modes(), RunLoopModes(RunLoopMode::Default));
  const RunLoop::ModeScope scope(loop_, RunLoopMode::EventTracking);
  host_.advance(1);
  EXPECT_EQ(fired_, 0);
}

TEST_F(TimerTest, AResetTriggerRepeatsByItsLoopTimerButStillEndsWithItsFirstFiring) {
  const auto timer = Timer::triggerWithName("Tip View Timer", 1, count());
  EXPECT_EQ(timer->timeInterval(), 0);
  timer->resetTimeInterval(2);
  EXPECT_EQ(timer->timeInterval(), 2);
  host_.advance(10);
  EXPECT_EQ(fired_, 1);
  EXPECT_FALSE(timer->runLoopTimer().isValid());
  EXPECT_TRUE(log_.entries.empty());
}

TEST_F(TimerTest, MayBeResetInItsOwnBlock) {
  std::shared_ptr<Timer> timer;
  timer = Timer::timerWithName("Tip View Timer", 1, [&](const std::any&) {
    ++fired_;
    timer->resetTimeInterval(3);
  });
  host_.advance(7);
  EXPECT_EQ(fired_, 3);
  timer->done();
}

TEST_F(TimerTest, KnowsTheSecondsSinceItsInception) {
  const auto timer = Timer::timerWithName("Tip View Timer", 1, count());
  host_.advance(0.25);
  EXPECT_DOUBLE_EQ(timer->secondsSinceInception(), 0.25);
  timer->resetTimeInterval(2);
  host_.advance(0.5);
  EXPECT_DOUBLE_EQ(timer->secondsSinceInception(), 0.75);
}

TEST(TimerEndTest, GoesAfterItsLoop) {
  test::VirtualHost host;
  std::shared_ptr<Timer> timer;
  {
    RunLoop loop(host);
    timer = Timer::timerWithName("Tip View Timer", 1, [](const std::any&) {});
  }
  EXPECT_FALSE(timer->runLoopTimer().isValid());
  EXPECT_EQ(timer->done(), nullptr);
}

}  // namespace
}  // namespace qb
