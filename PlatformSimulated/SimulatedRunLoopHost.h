#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// The virtual clock and what happens under it. Time stands still while code runs and jumps from
/// deadline to deadline when the loop waits. Within one moment the order is: what was scheduled
/// from outside, background blocks, one pass of the loop; and again until nothing is due.
class SimulatedRunLoopHost : public RunLoopHost {
 public:
  Moment now() const override { return now_; }
  Date date() const override { return dateAtStart_ + (now_ - startMoment); }
  void setNextDeadline(Moment deadline) override { deadline_ = deadline; }
  /// Throws `std::logic_error` when `done` can no longer come true: nothing is left to happen, or
  /// an hour of virtual time has passed.
  void runUntil(const std::function<bool()>& done) override;
  void wakeUp() override;
  /// Queues the block. It runs on this same thread, ahead of the next pass.
  void runInBackground(Block block) override;

  /// Fires everything that comes due within `seconds`, in order, moving the clock to each deadline
  /// and at last to the end.
  void runFor(TimeInterval seconds);
  /// Passes until nothing is due now.
  void runPending() { runFor(0); }
  /// The program is busy or waits outside of its loop: time passes and nothing happens in it.
  void block(TimeInterval seconds);
  /// Something of the outside world (a user, another program) `delay` seconds from now. It happens
  /// in nested runs and in every mode too.
  void schedule(TimeInterval delay, Block block);

  /// Makes now read as `date` by the wall clock.
  void setDate(Date date) { dateAtStart_ = date - (now_ - startMoment); }

  /// While held, background blocks stay queued until `runBackgroundBlocks`.
  void holdBackgroundBlocks(bool hold) { backgroundIsHeld_ = hold; }
  std::size_t numberOfBackgroundBlocks() const;
  /// Runs the blocks that are queued now, held or not.
  void runBackgroundBlocks();

  /// Drops all that was scheduled or queued.
  void forgetAll();

 private:
  struct OutsideEvent {
    Moment moment;
    Block block;
  };
  /// The clock starts away from 0, so that a moment and "no moment" differ.
  static constexpr Moment startMoment = 1000;

  bool runOne();
  bool runOutsideEvent();
  bool runBackgroundBlock();
  bool servicePass();
  Moment nextMoment() const;

  Moment now_ = startMoment;
  /// 2023-11-14, some time in the afternoon.
  Date dateAtStart_ = 721'692'800;
  Moment deadline_ = distantFuture;
  /// By moment; within one moment in order of arrival.
  std::vector<OutsideEvent> outsideEvents_;
  bool backgroundIsHeld_ = false;

  mutable std::mutex mutex_;
  bool awake_ = false;
  std::deque<Block> backgroundBlocks_;
};

}  // namespace qb
