#include "PlatformSimulated/SimulatedRunLoopHost.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace qb {

namespace {

constexpr TimeInterval longestNestedRun = 3600;
/// More work than this in one moment keeps making itself anew.
constexpr int mostWorkInOneMoment = 1'000'000;

/// The loop keeps its deadlines in whole microseconds; so does this clock, that sums of spans meet
/// them exactly.
Moment wholeMicroseconds(Moment moment) { return std::round(moment * 1e6) / 1e6; }

}  // namespace

void SimulatedRunLoopHost::runFor(TimeInterval seconds) {
  const Moment end = wholeMicroseconds(now_ + std::max(seconds, 0.0));
  int work = 0;
  for (;;) {
    if (runOne()) {
      if (++work > mostWorkInOneMoment) {
        throw std::logic_error("work of one moment never ends");
      }
      continue;
    }
    work = 0;
    const Moment next = nextMoment();
    if (next > end) break;
    now_ = std::max(now_, next);
  }
  now_ = std::max(now_, end);
  // The loop has then served this moment too: what is signalled from here on comes after its ticks.
  RunLoop::main().service();
}

void SimulatedRunLoopHost::block(TimeInterval seconds) {
  now_ = wholeMicroseconds(now_ + std::max(seconds, 0.0));
}

void SimulatedRunLoopHost::runUntil(const std::function<bool()>& done) {
  const Moment start = now_;
  while (!done()) {
    if (runOne()) continue;
    const Moment next = nextMoment();
    if (next >= distantFuture) {
      throw std::logic_error("a nested run waits for something that nobody will do");
    }
    if (next > start + longestNestedRun) {
      throw std::logic_error("a nested run has waited for an hour");
    }
    now_ = std::max(now_, next);
  }
}

void SimulatedRunLoopHost::wakeUp() {
  const std::lock_guard lock(mutex_);
  awake_ = true;
}

void SimulatedRunLoopHost::runInBackground(Block block) {
  const std::lock_guard lock(mutex_);
  backgroundBlocks_.push_back(std::move(block));
}

void SimulatedRunLoopHost::schedule(TimeInterval delay, Block block) {
  const Moment moment = wholeMicroseconds(now_ + std::max(delay, 0.0));
  const auto later = std::find_if(outsideEvents_.begin(), outsideEvents_.end(),
                                  [moment](const auto& event) { return event.moment > moment; });
  outsideEvents_.insert(later, {moment, std::move(block)});
}

std::size_t SimulatedRunLoopHost::numberOfBackgroundBlocks() const {
  const std::lock_guard lock(mutex_);
  return backgroundBlocks_.size();
}

void SimulatedRunLoopHost::runBackgroundBlocks() {
  for (std::size_t count = numberOfBackgroundBlocks(); count > 0; --count) runBackgroundBlock();
}

void SimulatedRunLoopHost::forgetAll() {
  const auto events = std::exchange(outsideEvents_, {});
  std::deque<Block> blocks;
  {
    const std::lock_guard lock(mutex_);
    blocks.swap(backgroundBlocks_);
  }
}

bool SimulatedRunLoopHost::runOne() {
  return runOutsideEvent() || (!backgroundIsHeld_ && runBackgroundBlock()) || servicePass();
}

bool SimulatedRunLoopHost::runOutsideEvent() {
  if (outsideEvents_.empty() || outsideEvents_.front().moment > now_) return false;
  const Block block = std::move(outsideEvents_.front().block);
  outsideEvents_.erase(outsideEvents_.begin());
  block();
  return true;
}

bool SimulatedRunLoopHost::runBackgroundBlock() {
  Block block;
  {
    const std::lock_guard lock(mutex_);
    if (backgroundBlocks_.empty()) return false;
    block = std::move(backgroundBlocks_.front());
    backgroundBlocks_.pop_front();
  }
  block();
  return true;
}

bool SimulatedRunLoopHost::servicePass() {
  {
    const std::lock_guard lock(mutex_);
    if (!std::exchange(awake_, false) && deadline_ > now_) return false;
  }
  RunLoop::main().service();
  return true;
}

Moment SimulatedRunLoopHost::nextMoment() const {
  return outsideEvents_.empty() ? deadline_ : std::min(deadline_, outsideEvents_.front().moment);
}

}  // namespace qb
