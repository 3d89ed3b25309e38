#include "QuillboxCommon/RunLoop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/VirtualHost.h"

namespace qb {
namespace {

class RunLoopTest : public testing::Test {
 protected:
  Block note(std::string name) {
    return [this, name = std::move(name)] { noted_.push_back(name); };
  }
  std::function<void(RunLoopTimer&)> tick(std::string name) {
    return [this, name = std::move(name)](RunLoopTimer&) { noted_.push_back(name); };
  }
  double sinceStart(Moment moment) const { return std::round((moment - start_) * 1e6) / 1e6; }
  double elapsed() const { return sinceStart(host_.now()); }

  test::VirtualHost host_;
  RunLoop loop_{host_};
  const Moment start_ = host_.now();
  std::vector<std::string> noted_;
  const int target_ = 0;
  const int otherTarget_ = 0;
};

using Names = std::vector<std::string>;

TEST_F(RunLoopTest, IsTheMainLoopWhileItLives) { EXPECT_EQ(&RunLoop::main(), &loop_); }

TEST_F(RunLoopTest, ModesHaveTheirSystemNames) {
  EXPECT_EQ(runLoopModeName(RunLoopMode::Default), "kCFRunLoopDefaultMode");
  EXPECT_EQ(runLoopModeName(RunLoopMode::EventTracking), "NSEventTrackingRunLoopMode");
  EXPECT_EQ(runLoopModeName(RunLoopMode::Graphics), "NSGraphicsRunLoopMode");
  EXPECT_EQ(runLoopModeName(RunLoopMode::ModalPanel), "NSModalPanelRunLoopMode");
  EXPECT_EQ(runLoopModeName(RunLoopMode::EventOnly), "EventOnlyMode");
}

TEST_F(RunLoopTest, AnIdleLoopHasNoDeadline) {
  EXPECT_EQ(loop_.nextDeadline(), distantFuture);
  EXPECT_FALSE(loop_.service());
}

TEST_F(RunLoopTest, RunsInOrderOfTimeAndThenOfArrival) {
  loop_.performAfterDelay(&target_, "late", 0.2, note("late"));
  loop_.executeOnMainQueue(note("first of two"), 0.1);
  loop_.scheduleTimer(0.1, false, tick("second of two"));
  loop_.performAfterDelay(&target_, "early", 0.05, note("early"));
  host_.advance(0.2);
  EXPECT_EQ(noted_, (Names{"early", "first of two", "second of two", "late"}));
}

TEST_F(RunLoopTest, RunsNothingAheadOfItsTime) {
  loop_.performAfterDelay(&target_, "later", 0.1, note("later"));
  host_.advance(0.099);
  EXPECT_TRUE(noted_.empty());
  host_.advance(0.001);
  EXPECT_EQ(noted_, Names{"later"});
}

TEST_F(RunLoopTest, OneMomentReachedByManyStepsIsStillThatMoment) {
  loop_.performAfterDelay(&target_, "later", 1.0, note("later"));
  for (int i = 0; i < 10; ++i) host_.advance(0.1);
  EXPECT_EQ(noted_, Names{"later"});
}

TEST_F(RunLoopTest, ADelayOfZeroStillWaitsForTheNextPass) {
  loop_.performAfterDelay(&target_, "outer", 0, [this] {
    noted_.push_back("outer");
    loop_.performAfterDelay(&target_, "inner", 0, note("inner"));
    loop_.executeOnMainQueue(note("queued"), 0);
  });
  EXPECT_TRUE(loop_.service());
  EXPECT_EQ(noted_, Names{"outer"});
  EXPECT_EQ(host_.deadline(), host_.now());
  EXPECT_TRUE(loop_.service());
  EXPECT_EQ(noted_, (Names{"outer", "inner", "queued"}));
  EXPECT_FALSE(loop_.service());
}

TEST_F(RunLoopTest, ANegativeDelayCountsAsZero) {
  loop_.executeOnMainQueue(note("queued"), 0);
  loop_.executeOnMainQueue(note("negative"), -5);
  loop_.performAfterDelay(&target_, "negative", -1, note("perform"));
  loop_.service();
  EXPECT_EQ(noted_, (Names{"queued", "negative", "perform"}));
}

TEST_F(RunLoopTest, ANestedRunGoesOnWithTheOlderWork) {
  loop_.performAfterDelay(&target_, "a", 0, [this] {
    noted_.push_back("a");
    loop_.performAfterDelay(&target_, "d", 0, note("d"));
    loop_.runUntilDate(host_.now());
    noted_.push_back("end of a");
  });
  loop_.performAfterDelay(&target_, "b", 0, note("b"));
  loop_.performAfterDelay(&target_, "c", 0, note("c"));
  loop_.service();
  EXPECT_EQ(noted_, (Names{"a", "b", "c", "d", "end of a"}));
  EXPECT_FALSE(loop_.service());
}

TEST_F(RunLoopTest, AnOuterPassGoesOnWhereTheNestedOneLeftOff) {
  bool nestedDone = false;
  loop_.performAfterDelay(&target_, "a", 0, [&] {
    loop_.runInMode(RunLoopMode::Default, [&] { return nestedDone; });
    noted_.push_back("end of a");
  });
  loop_.performAfterDelay(&target_, "b", 0, [&] {
    noted_.push_back("b");
    nestedDone = true;
  });
  loop_.performAfterDelay(&target_, "c", 0.5, note("c"));
  loop_.service();
  EXPECT_EQ(noted_, (Names{"b", "end of a"}));
  host_.advance(0.5);
  EXPECT_EQ(noted_, (Names{"b", "end of a", "c"}));
}

TEST_F(RunLoopTest, RunUntilDateServesWhatIsDueAtThatMoment) {
  loop_.performAfterDelay(&target_, "at the end", 1, note("at the end"));
  loop_.performAfterDelay(&target_, "after", 1.001, note("after"));
  loop_.runUntilDate(host_.now() + 1);
  EXPECT_EQ(noted_, Names{"at the end"});
  EXPECT_EQ(elapsed(), 1);
}

TEST_F(RunLoopTest, RunUntilAMomentThatHasPassedMakesOnePass) {
  loop_.performAfterDelay(&target_, "due", 0, note("due"));
  loop_.runUntilDate(host_.now() - 3);
  EXPECT_EQ(noted_, Names{"due"});
  EXPECT_EQ(elapsed(), 0);
}

/// A host that gives up waiting, as one does that is about to quit.
class QuittingHost : public test::VirtualHost {
 public:
  void runUntil(const std::function<bool()>&) override {}
};

TEST(RunLoopQuittingTest, RunUntilDateLeavesNothingBehindWhenTheHostGivesUp) {
  QuittingHost host;
  RunLoop loop(host);
  loop.runUntilDate(host.now() + 1);
  EXPECT_EQ(loop.nextDeadline(), distantFuture);
  EXPECT_EQ(host.deadline(), distantFuture);
}

TEST_F(RunLoopTest, TheNextDeadlineIsKnownBeforeABlockRuns) {
  Moment seen = 0;
  loop_.scheduleTimer(0.5, true, [&](RunLoopTimer&) { seen = host_.deadline(); });
  host_.advance(0.5);
  EXPECT_EQ(sinceStart(seen), 1.0);

  loop_.performAfterDelay(&target_, "one shot", 0.1, [&] { seen = host_.deadline(); });
  loop_.performAfterDelay(&target_, "rest of the pass", 0.1, [] {});
  host_.advance(0.1);
  EXPECT_EQ(sinceStart(seen), 0.6);
}

TEST_F(RunLoopTest, EveryPassTellsTheDeadlineAnew) {
  loop_.performAfterDelay(&target_, "later", 5, [] {});
  const int before = host_.announcements;
  loop_.service();
  EXPECT_GT(host_.announcements, before);
}

TEST_F(RunLoopTest, AnUnchangedDeadlineIsNotToldAgain) {
  loop_.performAfterDelay(&target_, "soon", 1, [] {});
  const int before = host_.announcements;
  loop_.performAfterDelay(&target_, "later", 2, [] {});
  EXPECT_EQ(host_.announcements, before);
}

// Cancelling

TEST_F(RunLoopTest, CancelsByTargetAndSelector) {
  loop_.performAfterDelay(&target_, "one", 0.1, note("one"));
  loop_.performAfterDelay(&target_, "two", 0.1, note("two"));
  loop_.performAfterDelay(&target_, "one", 0.2, note("one again"));
  loop_.performAfterDelay(&otherTarget_, "one", 0.1, note("other's one"));
  loop_.cancelPreviousPerformRequests(&target_, "one");
  host_.advance(1);
  EXPECT_EQ(noted_, (Names{"two", "other's one"}));
}

TEST_F(RunLoopTest, CancelsAllOfATarget) {
  loop_.performAfterDelay(&target_, "one", 0.1, note("one"));
  loop_.performAfterDelay(&target_, "two", 0.1, note("two"));
  loop_.performAfterDelay(&otherTarget_, "one", 0.1, note("other's one"));
  loop_.cancelPreviousPerformRequests(&target_);
  host_.advance(1);
  EXPECT_EQ(noted_, Names{"other's one"});
}

TEST_F(RunLoopTest, CancellingTouchesNeitherTimersNorTheMainQueue) {
  loop_.scheduleTimer(0.1, false, tick("timer"));
  loop_.executeOnMainQueue(note("queued"), 0.1);
  loop_.cancelPreviousPerformRequests(nullptr);
  loop_.cancelPreviousPerformRequests(nullptr, "");
  host_.advance(1);
  EXPECT_EQ(noted_, (Names{"timer", "queued"}));
}

TEST_F(RunLoopTest, CancelsWhatIsLeftOfThePresentPass) {
  loop_.performAfterDelay(&target_, "one", 0,
                          [this] { loop_.cancelPreviousPerformRequests(&target_); });
  loop_.performAfterDelay(&target_, "two", 0, note("two"));
  loop_.service();
  EXPECT_TRUE(noted_.empty());
}

TEST_F(RunLoopTest, CancellingTakesTheDeadlineBack) {
  loop_.performAfterDelay(&target_, "one", 0.1, [] {});
  loop_.cancelPreviousPerformRequests(&target_);
  EXPECT_EQ(host_.deadline(), distantFuture);
}

TEST_F(RunLoopTest, WhatABlockHeldMayCancelWhileItIsDropped) {
  struct Owner {
    ~Owner() { RunLoop::main().cancelPreviousPerformRequests(this); }
  };
  auto owner = std::make_shared<Owner>();
  const void* const address = owner.get();
  loop_.performAfterDelay(address, "one", 0.1, [] {});
  loop_.performAfterDelay(&target_, "two", 0.1, [owner] {});
  loop_.performAfterDelay(address, "three", 0.1, note("three"));
  owner.reset();
  loop_.cancelPreviousPerformRequests(&target_);
  host_.advance(1);
  EXPECT_TRUE(noted_.empty());
}

// Modes

TEST_F(RunLoopTest, DefaultWorkStandsStillWhileEventsAreTracked) {
  loop_.scheduleTimer(0.1, false, tick("default timer"));
  loop_.scheduleTimer(0.1, false, tick("common timer"), RunLoopModes::common());
  loop_.performAfterDelay(&target_, "perform", 0.1, note("perform"));
  loop_.executeOnMainQueue(note("queued"), 0.1);
  bool done = false;
  loop_.executeOnMainQueue([&] { done = true; }, 1);

  loop_.runInMode(RunLoopMode::EventTracking, [&] { return done; });
  EXPECT_EQ(noted_, (Names{"common timer", "queued"}));
  EXPECT_EQ(loop_.currentMode(), RunLoopMode::Default);
  EXPECT_LE(host_.deadline(), host_.now());

  loop_.service();
  EXPECT_EQ(noted_, (Names{"common timer", "queued", "default timer", "perform"}));
}

TEST_F(RunLoopTest, TheMainQueueIsServedInADialog) {
  bool done = false;
  loop_.performAfterDelay(&target_, "perform", 0.1, note("perform"));
  executeBlockAfterDelay(note("queued"), 0.1);
  executeBlockAfterDelay([&] { done = true; }, 0.2);
  loop_.runInMode(RunLoopMode::ModalPanel, [&] { return done; });
  EXPECT_EQ(noted_, Names{"queued"});
}

TEST_F(RunLoopTest, TheMainQueueStandsStillOutsideTheCommonModes) {
  for (const RunLoopMode mode : {RunLoopMode::Graphics, RunLoopMode::EventOnly}) {
    noted_.clear();
    executeBlockAfterDelay(note("queued"), 0);
    bool done = false;
    loop_.scheduleTimer(
        1, false, [&](RunLoopTimer&) { done = true; }, mode);
    loop_.runInMode(mode, [&] { return done; });
    EXPECT_TRUE(noted_.empty());
    loop_.service();
    EXPECT_EQ(noted_, Names{"queued"});
  }
}

TEST_F(RunLoopTest, AModeScopeServesAHostWithALoopOfItsOwn) {
  loop_.performAfterDelay(&target_, "perform", 0.1, note("perform"));
  {
    const RunLoop::ModeScope scope(loop_, RunLoopMode::EventTracking);
    EXPECT_EQ(loop_.currentMode(), RunLoopMode::EventTracking);
    EXPECT_EQ(host_.deadline(), distantFuture);
    host_.advance(1);
    EXPECT_TRUE(noted_.empty());
  }
  EXPECT_EQ(loop_.currentMode(), RunLoopMode::Default);
  EXPECT_LT(host_.deadline(), host_.now());
  host_.advance(0);
  EXPECT_EQ(noted_, Names{"perform"});
}

TEST_F(RunLoopTest, AddingAModeLetsAWaitingTimerFireThere) {
  const auto timer = loop_.scheduleTimer(0.1, false, tick("timer"));
  const RunLoop::ModeScope scope(loop_, RunLoopMode::EventTracking);
  host_.advance(1);
  EXPECT_TRUE(noted_.empty());
  timer->addModes(RunLoopMode::EventTracking);
  host_.advance(0);
  EXPECT_EQ(noted_, Names{"timer"});
}

// Threads

TEST_F(RunLoopTest, BackgroundWorkBringsItsResultBackThroughTheMainQueue) {
  executeBlockInBackground([this] {
    noted_.push_back("background");
    executeBlockAfterDelay(note("back"), 0);
  });
  host_.advance(1);
  EXPECT_TRUE(noted_.empty());
  host_.runBackgroundBlocks();
  EXPECT_EQ(noted_, Names{"background"});
  host_.advance(0);
  EXPECT_EQ(noted_, (Names{"background", "back"}));
}

/// Runs background blocks on real threads, which `join` waits for.
class ThreadedHost : public test::VirtualHost {
 public:
  ~ThreadedHost() override { join(); }
  void runInBackground(Block block) override { threads_.emplace_back(std::move(block)); }
  void join() {
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
  }

 private:
  std::vector<std::thread> threads_;
};

TEST(RunLoopThreadTest, BlocksFromOtherThreadsRunOnTheMainThreadInTheirOrder) {
  ThreadedHost host;
  RunLoop loop(host);
  std::vector<int> seen[2];
  const auto mainThread = std::this_thread::get_id();
  bool onMain = true;
  for (int thread = 0; thread < 2; ++thread) {
    executeBlockInBackground([&, thread] {
      for (int i = 0; i < 100; ++i) {
        executeBlockAfterDelay(
            [&, thread, i] {
              onMain = onMain && std::this_thread::get_id() == mainThread;
              seen[thread].push_back(i);
            },
            0);
      }
    });
  }
  host.join();
  EXPECT_EQ(host.wakeUps, 200);
  EXPECT_TRUE(seen[0].empty());
  EXPECT_TRUE(loop.service());
  EXPECT_TRUE(onMain);
  std::vector<int> expected;
  for (int i = 0; i < 100; ++i) expected.push_back(i);
  EXPECT_EQ(seen[0], expected);
  EXPECT_EQ(seen[1], expected);
}

TEST(RunLoopThreadTest, ABlockFromAnotherThreadKeepsItsDelay) {
  ThreadedHost host;
  RunLoop loop(host);
  bool ran = false;
  executeBlockInBackground([&] { executeBlockAfterDelay([&] { ran = true; }, 0.5); });
  host.join();
  host.advance(0.4);
  EXPECT_FALSE(ran);
  host.advance(0.1);
  EXPECT_TRUE(ran);
}

TEST(RunLoopThreadTest, TheMainThreadDoesNotWakeItself) {
  ThreadedHost host;
  RunLoop loop(host);
  executeBlockAfterDelay([] {}, 0);
  EXPECT_EQ(host.wakeUps, 0);
  EXPECT_EQ(host.deadline(), host.now());
}

// The end

TEST(RunLoopEndTest, DropsItsWorkAndInvalidatesItsTimers) {
  test::VirtualHost host;
  auto held = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = held;
  std::shared_ptr<RunLoopTimer> timer;
  {
    RunLoop loop(host);
    timer = loop.scheduleTimer(1, true, [held](RunLoopTimer&) {});
    loop.performAfterDelay(&host, "perform", 1, [held] {});
    std::thread([&loop, held] { loop.executeOnMainQueue([held] {}, 1); }).join();
    held.reset();
    EXPECT_FALSE(watched.expired());
  }
  EXPECT_TRUE(watched.expired());
  EXPECT_FALSE(timer->isValid());
  timer->invalidate();
  timer->addModes(RunLoopMode::EventTracking);
}

TEST(RunLoopEndDeathTest, AskingForALoopThatIsNotThereIsABug) { EXPECT_DEATH(RunLoop::main(), ""); }

}  // namespace
}  // namespace qb
