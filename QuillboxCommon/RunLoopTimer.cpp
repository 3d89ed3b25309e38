#include <algorithm>
#include <cmath>
#include <utility>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

ChangeNotice::~ChangeNotice() { wakeWatchers(); }

void ChangeNotice::signal() {
  ++generation_;
  wakeWatchers();
}

void ChangeNotice::wakeWatchers() {
  // Each takes itself off the list when it wakes.
  while (!watchers_.empty()) watchers_.back()->wake();
}

RunLoopTimer::~RunLoopTimer() { stopWatching(); }

Moment RunLoopTimer::momentOfTick(std::int64_t tick) const {
  return RunLoop::wholeMicroseconds(firstTick_ + static_cast<double>(tick) * interval_);
}

std::int64_t RunLoopTimer::firstTickFrom(Moment moment) const {
  if (momentOfTick(tick_) >= moment) return tick_;
  // The quotient can be off by one either way; start one low and let the grid itself decide.
  const auto estimate = static_cast<std::int64_t>((moment - firstTick_) / interval_) - 1;
  std::int64_t tick = std::max(tick_, estimate);
  while (momentOfTick(tick) < moment) ++tick;
  return tick;
}

void RunLoopTimer::moveToTick(std::int64_t tick) {
  tick_ = tick;
  loop_->reschedule(*this, momentOfTick(tick));
}

void RunLoopTimer::moveToNextTick() {
  const Moment now = loop_->wholeNow();
  ++tick_;
  const std::int64_t tick = firstTickFrom(now);
  // A tick at just this moment is as late as the others, and skipped with them.
  moveToTick(momentOfTick(tick) > now ? tick : tick + 1);
}

Moment RunLoopTimer::fireMoment() const {
  if (!isResting()) return due_;
  return momentOfTick(firstTickFrom(loop_->wholeNow()));
}

void RunLoopTimer::fire() {
  struct Depth {
    explicit Depth(RunLoopTimer& owner) : timer(owner) { ++timer.firingDepth_; }
    ~Depth() {
      if (--timer.firingDepth_ > 0) return;
      if (!timer.repeats()) timer.invalidate();
      if (timer.isValid()) return;
      const auto block = std::exchange(timer.block_, nullptr);
    }
    RunLoopTimer& timer;
  };
  const Depth depth(*this);
  block_(*this);
  if (isValid() && repeats() && !isResting() && due_ < loop_->wholeNow()) {
    moveToTick(firstTickFrom(loop_->wholeNow()));
  }
}

void RunLoopTimer::invalidate() {
  if (!isValid()) return;
  stopWatching();
  RunLoop& loop = *std::exchange(loop_, nullptr);
  // Either of these may be the last that keeps this timer, so nothing of it is touched below.
  const std::shared_ptr<RunLoopTimer> held = loop.release(*this);
  const auto block = firingDepth_ == 0 ? std::exchange(block_, nullptr) : nullptr;
  loop.deadlineMayHaveChanged();
}

void RunLoopTimer::addModes(RunLoopModes modes) {
  modes_ |= modes;
  if (isValid()) loop_->deadlineMayHaveChanged();
}

void RunLoopTimer::restUntilSignalled(std::initializer_list<ChangeNotice*> notices) {
  if (!isValid() || !repeats()) return;
  const bool rested = isResting();
  stopWatching();
  for (ChangeNotice* notice : notices) {
    if (notice == nullptr || std::find(rest_.begin(), rest_.end(), notice) != rest_.end()) continue;
    rest_.push_back(notice);
    notice->watchers_.push_back(this);
  }
  if (isResting() && !rested) {
    loop_->reschedule(*this, distantFuture);
    loop_->deadlineMayHaveChanged();
  }
}

void RunLoopTimer::wake() {
  stopWatching();
  const std::int64_t tick = firstTickFrom(loop_->wholeNow());
  moveToTick(loop_->hasServed(momentOfTick(tick), order_, modes_) ? tick + 1 : tick);
  loop_->deadlineMayHaveChanged();
}

void RunLoopTimer::stopWatching() {
  for (ChangeNotice* notice : rest_) std::erase(notice->watchers_, this);
  rest_.clear();
}

}  // namespace qb
