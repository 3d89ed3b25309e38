#pragma once

#include <any>
#include <functional>
#include <memory>
#include <string>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Calls a block at intervals, or once. While it runs, the run loop keeps it alive; it ends by
/// `done` or, made by `triggerWithName`, after its one firing. Without a block it logs an error at
/// each firing and goes on. Main thread.
class Timer : public std::enable_shared_from_this<Timer> {
 public:
  using TimerBlock = std::function<void(const std::any& userInfo)>;

  /// Repeating, without user info.
  static std::shared_ptr<Timer> timerWithName(std::string name, TimeInterval timeInterval,
                                              TimerBlock block);
  static std::shared_ptr<Timer> timerWithName(std::string name, TimeInterval timeInterval,
                                              TimerBlock block, std::any userInfo);
  /// Fires once.
  static std::shared_ptr<Timer> triggerWithName(std::string name, TimeInterval triggerAfter,
                                                TimerBlock block);
  ~Timer();

  /// Makes it fire during menu tracking too.
  void addToAdditionalRunLoops();
  /// Ends it. Answers none, for `timer = timer->done()`. Harmless when repeated.
  std::shared_ptr<Timer> done();
  /// Starts anew with another interval, after `done` too, though the block is gone by then.
  /// Intended: only the default mode serves it from then on, whatever `addToAdditionalRunLoops` did
  /// before, and a trigger still ends with its first firing.
  void resetTimeInterval(TimeInterval timeInterval);
  /// Of the loop's timer: 0 for a trigger that has not been reset.
  TimeInterval timeInterval() const;
  TimeInterval secondsSinceInception() const;
  const std::string& name() const { return name_; }
  /// The loop's timer, to let it rest; another one after `resetTimeInterval`.
  RunLoopTimer& runLoopTimer() const { return *timer_; }

 private:
  Timer(std::string name, TimerBlock block, std::any userInfo, bool repeats);
  static std::shared_ptr<Timer> create(std::string name, TimeInterval timeInterval,
                                       TimerBlock block, std::any userInfo, bool repeats);
  void schedule(TimeInterval timeInterval, bool repeats);
  void fire();

  std::shared_ptr<RunLoopTimer> timer_;
  std::any userInfo_;
  std::string name_;
  Moment dateOfIncpetion_;
  std::shared_ptr<TimerBlock> block_;
  bool repeats_;
};

}  // namespace qb
