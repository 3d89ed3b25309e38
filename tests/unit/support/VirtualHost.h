#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <functional>
#include <utility>

#include "QuillboxCommon/RunLoop.h"

namespace qb::test {

/// A host for the run loop whose clock is moved by hand. It goes by the announced deadlines alone,
/// so a deadline that is not announced shows as work that is not done. Background blocks wait for
/// `runBackgroundBlocks`.
class VirtualHost : public RunLoopHost {
 public:
  Moment now() const override { return now_; }
  Date date() const override { return now_ + 600000000; }

  void setNextDeadline(Moment deadline) override {
    deadline_ = deadline;
    ++announcements;
  }

  /// Moves the clock from deadline to deadline; a wait for nothing is a failure.
  void runUntil(const std::function<bool()>& done) override {
    for (int rounds = 0; !done(); ++rounds) {
      if (deadline_ >= distantFuture || rounds > 100000) {
        ADD_FAILURE() << "the loop waits for something that never comes";
        return;
      }
      moveTo(deadline_);
      RunLoop::main().service();
    }
  }

  void wakeUp() override { ++wakeUps; }
  void runInBackground(Block block) override { background_.push_back(std::move(block)); }

  /// Lets `seconds` pass, serving all that falls due, the last moment included.
  void advance(TimeInterval seconds) {
    const Moment end = now_ + seconds;
    RunLoop::main().service();
    for (int rounds = 0; deadline_ <= end; ++rounds) {
      ASSERT_LT(rounds, 100000) << "the loop never comes to rest";
      moveTo(deadline_);
      RunLoop::main().service();
      ++servedDeadlines;
    }
    moveTo(end);
    RunLoop::main().service();
  }

  /// Lets `seconds` pass while the main thread is busy.
  void stall(TimeInterval seconds) { now_ += seconds; }

  void runBackgroundBlocks() {
    while (!background_.empty()) {
      const Block block = std::move(background_.front());
      background_.pop_front();
      block();
    }
  }

  Moment deadline() const { return deadline_; }

  int announcements = 0;
  int servedDeadlines = 0;
  std::atomic<int> wakeUps = 0;

 private:
  void moveTo(Moment moment) { now_ = std::max(now_, moment); }

  Moment now_ = 1000;
  Moment deadline_ = distantFuture;
  std::deque<Block> background_;
};

}  // namespace qb::test
