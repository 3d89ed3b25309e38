#include "QuillboxCommon/Timer.h"

#include <utility>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"

namespace qb {

std::shared_ptr<Timer> Timer::timerWithName(std::string name, TimeInterval timeInterval,
                                            TimerBlock block) {
  return create(std::move(name), timeInterval, std::move(block), {}, true);
}

std::shared_ptr<Timer> Timer::timerWithName(std::string name, TimeInterval timeInterval,
                                            TimerBlock block, std::any userInfo) {
  return create(std::move(name), timeInterval, std::move(block), std::move(userInfo), true);
}

std::shared_ptr<Timer> Timer::triggerWithName(std::string name, TimeInterval triggerAfter,
                                              TimerBlock block) {
  return create(std::move(name), triggerAfter, std::move(block), {}, false);
}

std::shared_ptr<Timer> Timer::create(std::string name, TimeInterval timeInterval, TimerBlock block,
                                     std::any userInfo, bool repeats) {
  std::shared_ptr<Timer> timer(
      new Timer(std::move(name), std::move(block), std::move(userInfo), repeats));
  timer->schedule(timeInterval, repeats);
  return timer;
}

Timer::Timer(std::string name, TimerBlock block, std::any userInfo, bool repeats)
    : userInfo_(std::move(userInfo)),
      name_(std::move(name)),
      dateOfIncpetion_(RunLoop::main().now()),
      block_(block ? std::make_shared<TimerBlock>(std::move(block)) : nullptr),
      repeats_(repeats) {}

Timer::~Timer() { timer_->invalidate(); }

void Timer::schedule(TimeInterval timeInterval, bool repeats) {
  timer_ = RunLoop::main().scheduleTimer(
      timeInterval, repeats, [self = shared_from_this()](RunLoopTimer&) { self->fire(); });
}

void Timer::fire() {
  // Held here, because the block may end the timer that it runs in.
  const std::shared_ptr<TimerBlock> block = block_;
  if (!block) {
    log(stringWithFormat("ERROR: Timer '%@' IS RUNNING WITH NO CODE BLOCK TO EXECUTE!", name_));
    return;
  }
  (*block)(userInfo_);
  if (!repeats_) done();
}

void Timer::addToAdditionalRunLoops() {
  timer_->addModes(RunLoopModes::common() | RunLoopMode::EventTracking | RunLoopMode::Default);
}

std::shared_ptr<Timer> Timer::done() {
  // The loop may be the only one that holds this.
  const std::shared_ptr<Timer> self = shared_from_this();
  timer_->invalidate();
  block_ = nullptr;
  return nullptr;
}

void Timer::resetTimeInterval(TimeInterval timeInterval) {
  const std::shared_ptr<Timer> self = shared_from_this();
  timer_->invalidate();
  schedule(timeInterval, true);
}

TimeInterval Timer::timeInterval() const { return timer_->timeInterval(); }

TimeInterval Timer::secondsSinceInception() const {
  return RunLoop::main().now() - dateOfIncpetion_;
}

}  // namespace qb
