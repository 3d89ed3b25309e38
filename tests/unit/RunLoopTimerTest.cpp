#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "QuillboxCommon/RunLoop.h"
#include "support/VirtualHost.h"

namespace qb {
namespace {

using Moments = std::vector<double>;

class RunLoopTimerTest : public testing::Test {
 protected:
  double sinceStart(Moment moment) const { return std::round((moment - start_) * 1e6) / 1e6; }
  double elapsed() const { return sinceStart(host_.now()); }
  /// Starts a timer that writes down when it fires.
  std::shared_ptr<RunLoopTimer> start(TimeInterval interval, bool repeats,
                                      RunLoopModes modes = RunLoopMode::Default) {
    return loop_.scheduleTimer(
        interval, repeats, [this](RunLoopTimer&) { fired_.push_back(elapsed()); }, modes);
  }

  test::VirtualHost host_;
  RunLoop loop_{host_};
  const Moment start_ = host_.now();
  Moments fired_;
};

TEST_F(RunLoopTimerTest, ARepeatingOneFiresAtEachTickOfItsGrid) {
  const auto timer = start(0.1, true);
  host_.advance(0.35);
  EXPECT_EQ(fired_, (Moments{0.1, 0.2, 0.3}));
  EXPECT_TRUE(timer->isValid());
  EXPECT_EQ(timer->timeInterval(), 0.1);
  EXPECT_EQ(sinceStart(timer->fireMoment()), 0.4);
}

TEST_F(RunLoopTimerTest, TheGridDoesNotDrift) {
  start(0.1, true);
  host_.advance(1000);
  ASSERT_EQ(fired_.size(), 10000U);
  EXPECT_EQ(fired_.back(), 1000);
}

TEST_F(RunLoopTimerTest, AOneShotFiresOnceAndIsOver) {
  const auto timer = start(0.1, false);
  EXPECT_EQ(timer->timeInterval(), 0);
  EXPECT_TRUE(timer->isValid());
  host_.advance(1);
  EXPECT_EQ(fired_, Moments{0.1});
  EXPECT_FALSE(timer->isValid());
  EXPECT_EQ(host_.deadline(), distantFuture);
}

TEST_F(RunLoopTimerTest, IntervalsAreNeverShorterThanATenthOfAMillisecond) {
  for (const TimeInterval interval : {0.0, -1.0, 0.00001, std::nan("")}) {
    const auto timer = start(interval, true);
    EXPECT_EQ(timer->timeInterval(), 0.0001);
    EXPECT_EQ(sinceStart(timer->fireMoment()), 0.0001);
    timer->invalidate();
  }
}

TEST_F(RunLoopTimerTest, LateTicksAreSkippedAndTheGridStays) {
  start(0.1, true);
  host_.stall(0.35);
  host_.advance(0.1);
  EXPECT_EQ(fired_, (Moments{0.35, 0.4}));
}

TEST_F(RunLoopTimerTest, ATickThatIsDueWhenALateOneFiresIsSkippedToo) {
  start(0.1, true);
  host_.stall(0.2);
  host_.advance(0.1);
  EXPECT_EQ(fired_, (Moments{0.2, 0.3}));
}

TEST_F(RunLoopTimerTest, TicksThatPassDuringItsOwnBlockAreSkipped) {
  loop_.scheduleTimer(0.1, true, [this](RunLoopTimer&) {
    fired_.push_back(elapsed());
    if (fired_.size() == 1) host_.stall(0.25);
  });
  host_.advance(0.5);
  EXPECT_EQ(fired_, (Moments{0.1, 0.4, 0.5}));
}

TEST_F(RunLoopTimerTest, ANestedRunDoesNotFireItAgainForTheSameTick) {
  loop_.scheduleTimer(0.1, true, [this](RunLoopTimer&) {
    fired_.push_back(elapsed());
    if (fired_.size() == 1) loop_.runUntilDate(host_.now() + 0.05);
  });
  host_.advance(0.2);
  EXPECT_EQ(fired_, (Moments{0.1, 0.2}));
}

TEST_F(RunLoopTimerTest, ANestedRunFiresItForALaterTick) {
  bool inside = false;
  std::vector<bool> nested;
  loop_.scheduleTimer(0.1, true, [&](RunLoopTimer&) {
    fired_.push_back(elapsed());
    nested.push_back(inside);
    if (inside) return;
    inside = true;
    loop_.runUntilDate(host_.now() + 0.25);
    inside = false;
  });
  loop_.runUntilDate(start_ + 0.1);
  EXPECT_EQ(fired_, (Moments{0.1, 0.2, 0.3}));
  EXPECT_EQ(nested, (std::vector<bool>{false, true, true}));
}

TEST_F(RunLoopTimerTest, AOneShotDoesNotFireAgainInARunNestedInItsBlock) {
  loop_.scheduleTimer(0.1, false, [this](RunLoopTimer&) {
    fired_.push_back(elapsed());
    loop_.runUntilDate(host_.now() + 1);
  });
  host_.advance(0.1);
  EXPECT_EQ(fired_, Moments{0.1});
}

TEST_F(RunLoopTimerTest, AMissedModeLeavesOneLateFiringAndTheGrid) {
  start(0.1, true);
  bool done = false;
  executeBlockAfterDelay([&] { done = true; }, 0.45);
  loop_.runInMode(RunLoopMode::EventTracking, [&] { return done; });
  host_.advance(0.1);
  EXPECT_EQ(fired_, (Moments{0.45, 0.5}));
}

TEST_F(RunLoopTimerTest, TheLoopKeepsItAliveWhileItRuns) {
  const std::weak_ptr<RunLoopTimer> timer = start(0.1, false);
  EXPECT_FALSE(timer.expired());
  host_.advance(0.1);
  EXPECT_TRUE(timer.expired());
  EXPECT_EQ(fired_, Moments{0.1});
}

// Invalidation

TEST_F(RunLoopTimerTest, InvalidatingStopsItAndLetsItsBlockGo) {
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  const auto timer = loop_.scheduleTimer(0.1, true, [held](RunLoopTimer&) { ++*held; });
  held.reset();
  EXPECT_FALSE(watched.expired());
  timer->invalidate();
  EXPECT_FALSE(timer->isValid());
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(host_.deadline(), distantFuture);
  timer->invalidate();
}

TEST_F(RunLoopTimerTest, InvalidatedInsideItsBlockItKeepsTheBlockUntilThatReturns) {
  for (const bool repeats : {true, false}) {
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> watched = held;
    bool heldAfterwards = false;
    const auto timer =
        loop_.scheduleTimer(0.1, repeats, [&watched, &heldAfterwards, held](RunLoopTimer& self) {
          self.invalidate();
          heldAfterwards = !watched.expired() && *held == 0;
        });
    held.reset();
    host_.advance(1);
    EXPECT_TRUE(heldAfterwards);
    EXPECT_TRUE(watched.expired());
    EXPECT_FALSE(timer->isValid());
  }
}

TEST_F(RunLoopTimerTest, InvalidatedInANestedFiringItKeepsTheBlockForTheOuterOne) {
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  bool heldByOuter = false;
  loop_.scheduleTimer(0.1, true, [&, held](RunLoopTimer& self) {
    if (++*held == 2) {
      self.invalidate();
      return;
    }
    loop_.runUntilDate(host_.now() + 0.35);
    heldByOuter = *held == 2 && !watched.expired();
  });
  held.reset();
  host_.advance(1);
  EXPECT_TRUE(heldByOuter);
  EXPECT_TRUE(watched.expired());
}

TEST_F(RunLoopTimerTest, AOneShotLetsItsBlockGoWhenItHasFired) {
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  const auto timer = loop_.scheduleTimer(0.1, false, [held](RunLoopTimer&) {});
  held.reset();
  host_.advance(0.1);
  EXPECT_TRUE(watched.expired());
}

TEST_F(RunLoopTimerTest, ATimerInvalidatedByWorkOfTheSameMomentDoesNotFire) {
  std::shared_ptr<RunLoopTimer> timer;
  loop_.scheduleTimer(0.1, false, [&](RunLoopTimer&) { timer->invalidate(); });
  timer = start(0.1, true);
  host_.advance(1);
  EXPECT_TRUE(fired_.empty());
}

TEST_F(RunLoopTimerTest, ABlockThatHoldsItsOwnTimerIsLetGoOf) {
  auto timer = std::make_shared<std::shared_ptr<RunLoopTimer>>();
  *timer = loop_.scheduleTimer(0.1, true, [timer](RunLoopTimer&) {});
  const std::weak_ptr<RunLoopTimer> watched = *timer;
  RunLoopTimer& bare = **timer;
  timer.reset();
  bare.invalidate();
  EXPECT_TRUE(watched.expired());
}

TEST_F(RunLoopTimerTest, OneThatWasNeverScheduledIsNotValid) {
  RunLoopTimer timer;
  ChangeNotice notice;
  EXPECT_FALSE(timer.isValid());
  timer.restUntilSignalled({&notice});
  EXPECT_FALSE(timer.isResting());
  timer.addModes(RunLoopMode::EventTracking);
  timer.invalidate();
}

// Rest

TEST_F(RunLoopTimerTest, ARestingOneWakesNobody) {
  ChangeNotice notice;
  const auto timer = start(0.1, true);
  timer->restUntilSignalled({&notice});
  EXPECT_TRUE(timer->isResting());
  EXPECT_TRUE(timer->isValid());
  EXPECT_EQ(host_.deadline(), distantFuture);
  host_.advance(600);
  EXPECT_EQ(host_.servedDeadlines, 0);
  EXPECT_TRUE(fired_.empty());
}

TEST_F(RunLoopTimerTest, ASignalBringsItBackOnItsGrid) {
  ChangeNotice notice;
  const auto timer = start(0.1, true);
  timer->restUntilSignalled({&notice});
  host_.advance(0.43);
  notice.signal();
  EXPECT_EQ(notice.generation(), 1U);
  EXPECT_FALSE(timer->isResting());
  EXPECT_EQ(sinceStart(host_.deadline()), 0.5);
  host_.advance(0.2);
  EXPECT_EQ(fired_, (Moments{0.5, 0.6}));
}

TEST_F(RunLoopTimerTest, TheGridOfARestingOneIsStillToBeSeen) {
  ChangeNotice notice;
  const auto timer = start(0.1, true);
  timer->restUntilSignalled({&notice});
  host_.advance(0.43);
  EXPECT_EQ(sinceStart(timer->fireMoment()), 0.5);
}

TEST_F(RunLoopTimerTest, ASignalBeforeTheFirstTickDoesNotHastenIt) {
  ChangeNotice notice;
  start(1, true)->restUntilSignalled({&notice});
  host_.advance(0.01);
  notice.signal();
  host_.advance(1);
  EXPECT_EQ(fired_, Moments{1});
}

TEST_F(RunLoopTimerTest, ItCanRestFromInsideItsBlockAgainAndAgain) {
  ChangeNotice notice;
  loop_.scheduleTimer(0.1, true, [&](RunLoopTimer& self) {
    fired_.push_back(elapsed());
    self.restUntilSignalled({&notice});
  });
  host_.advance(5.05);
  notice.signal();
  host_.advance(5);
  notice.signal();
  host_.advance(5);
  EXPECT_EQ(fired_, (Moments{0.1, 5.1, 10.1}));
}

TEST_F(RunLoopTimerTest, ASignalInItsOwnBlockIsForTheNextTick) {
  ChangeNotice notice;
  loop_.scheduleTimer(0.1, true, [&](RunLoopTimer& self) {
    fired_.push_back(elapsed());
    self.restUntilSignalled({&notice});
    if (fired_.size() == 1) notice.signal();
  });
  host_.advance(1);
  EXPECT_EQ(fired_, (Moments{0.1, 0.2}));
}

TEST_F(RunLoopTimerTest, ASignalAtAMomentNotYetServedReachesTheTickOfThatMoment) {
  ChangeNotice notice;
  start(0.1, true)->restUntilSignalled({&notice});
  host_.stall(0.3);
  notice.signal();
  host_.advance(0);
  EXPECT_EQ(fired_, Moments{0.3});
}

TEST_F(RunLoopTimerTest, ASignalAtAMomentAlreadyServedIsForTheNextTick) {
  ChangeNotice notice;
  start(0.1, true)->restUntilSignalled({&notice});
  host_.advance(0.3);
  notice.signal();
  host_.advance(0.05);
  EXPECT_TRUE(fired_.empty());
  host_.advance(0.05);
  EXPECT_EQ(fired_, Moments{0.4});
}

/// Whether the rest shows: the same story is told with a timer that rests and one that does not.
TEST_F(RunLoopTimerTest, ARestChangesNeitherWhatATickSeesNorWhen) {
  std::optional<Moments> told;
  for (const bool rests : {false, true}) {
    test::VirtualHost host;
    RunLoop loop(host);
    const Moment start = host.now();
    ChangeNotice notice;
    int value = 0;
    int known = 0;
    Moments seen;
    const auto change = [&] {
      ++value;
      notice.signal();
    };
    // By work older than the timer, by younger work, between ticks and from outside.
    loop.performAfterDelay(nullptr, "older", 0.5, change);
    loop.scheduleTimer(0.1, true, [&](RunLoopTimer& self) {
      if (known != value) seen.push_back(std::round((host.now() - start) * 1e6) / 1e6);
      known = value;
      if (rests) self.restUntilSignalled({&notice});
    });
    loop.performAfterDelay(nullptr, "younger", 1.0, change);
    loop.performAfterDelay(nullptr, "between", 1.55, change);
    host.advance(2);
    change();
    host.advance(1);
    EXPECT_EQ(seen, (Moments{0.5, 1.1, 1.6, 2.1}));
    if (rests) {
      EXPECT_LT(host.servedDeadlines, 12);
    }
    if (told) {
      EXPECT_EQ(seen, *told);
    }
    told = seen;
  }
}

TEST_F(RunLoopTimerTest, AnyOfSeveralNoticesEndsTheRest) {
  ChangeNotice first;
  ChangeNotice second;
  const auto timer = start(0.1, true);
  for (ChangeNotice* notice : {&first, &second}) {
    timer->restUntilSignalled({&first, &second});
    ASSERT_TRUE(timer->isResting());
    notice->signal();
    EXPECT_FALSE(timer->isResting());
  }
}

TEST_F(RunLoopTimerTest, ANoticeWakesAllThatWatchIt) {
  ChangeNotice notice;
  const auto first = start(0.1, true);
  const auto second = start(0.3, true);
  first->restUntilSignalled({&notice});
  second->restUntilSignalled({&notice, &notice, nullptr});
  host_.advance(1);
  notice.signal();
  host_.advance(0.2);
  EXPECT_EQ(fired_, (Moments{1.1, 1.2, 1.2}));
}

TEST_F(RunLoopTimerTest, ALaterRestReplacesTheEarlier) {
  ChangeNotice first;
  ChangeNotice second;
  const auto timer = start(0.1, true);
  timer->restUntilSignalled({&first});
  timer->restUntilSignalled({&second});
  first.signal();
  EXPECT_TRUE(timer->isResting());
  second.signal();
  EXPECT_FALSE(timer->isResting());
}

TEST_F(RunLoopTimerTest, WithoutANoticeItDoesNotRest) {
  const auto timer = start(0.1, true);
  timer->restUntilSignalled({});
  timer->restUntilSignalled({nullptr});
  EXPECT_FALSE(timer->isResting());
  host_.advance(0.1);
  EXPECT_EQ(fired_, Moments{0.1});
}

TEST_F(RunLoopTimerTest, AOneShotDoesNotRest) {
  ChangeNotice notice;
  start(0.1, false)->restUntilSignalled({&notice});
  host_.advance(0.1);
  EXPECT_EQ(fired_, Moments{0.1});
}

TEST_F(RunLoopTimerTest, ASignalWithoutWatchersOnlyCounts) {
  ChangeNotice notice;
  notice.signal();
  notice.signal();
  EXPECT_EQ(notice.generation(), 2U);
  EXPECT_EQ(host_.announcements, 0);
}

TEST_F(RunLoopTimerTest, ANoticeThatGoesWakesItsWatchers) {
  const auto timer = start(0.1, true);
  {
    ChangeNotice notice;
    timer->restUntilSignalled({&notice});
  }
  EXPECT_FALSE(timer->isResting());
  host_.advance(0.1);
  EXPECT_EQ(fired_, Moments{0.1});
}

TEST_F(RunLoopTimerTest, ARestingOneThatIsInvalidatedIsForgottenByItsNotices) {
  ChangeNotice notice;
  const std::weak_ptr<RunLoopTimer> watched = start(0.1, true);
  {
    const auto timer = watched.lock();
    timer->restUntilSignalled({&notice});
    timer->invalidate();
    EXPECT_FALSE(timer->isResting());
  }
  EXPECT_TRUE(watched.expired());
  notice.signal();
  host_.advance(1);
  EXPECT_TRUE(fired_.empty());
}

TEST(RunLoopRestTest, ALoopThatGoesLeavesItsNoticesInPeace) {
  ChangeNotice notice;
  test::VirtualHost host;
  {
    RunLoop loop(host);
    loop.scheduleTimer(0.1, true, [](RunLoopTimer&) {})->restUntilSignalled({&notice});
  }
  const int announcements = host.announcements;
  notice.signal();
  EXPECT_EQ(host.announcements, announcements);
}

}  // namespace
}  // namespace qb
