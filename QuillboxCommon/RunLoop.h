#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

namespace qb {

/// A span of time in seconds.
using TimeInterval = double;
/// A moment of the monotonic clock in seconds; only differences mean anything.
using Moment = double;
/// A moment of the wall clock: seconds since 2001-01-01T00:00:00Z.
using Date = double;

inline constexpr Moment distantFuture = 1e300;

using Block = std::function<void()>;

/// The modes in which the loop can run. Exactly one is current at any moment.
enum class RunLoopMode : std::uint8_t { Default, EventTracking, Graphics, ModalPanel, EventOnly };

/// The system's name of a mode, "kCFRunLoopDefaultMode" and so on.
std::string_view runLoopModeName(RunLoopMode mode);

/// A set of run-loop modes.
class RunLoopModes {
 public:
  constexpr RunLoopModes() = default;
  constexpr RunLoopModes(RunLoopMode mode) : bits_(bit(mode)) {}
  constexpr bool contains(RunLoopMode mode) const { return (bits_ & bit(mode)) != 0; }
  constexpr RunLoopModes operator|(RunLoopModes other) const {
    RunLoopModes both = *this;
    both.bits_ |= other.bits_;
    return both;
  }
  constexpr RunLoopModes& operator|=(RunLoopModes other) { return *this = *this | other; }
  friend constexpr bool operator==(RunLoopModes, RunLoopModes) = default;

  /// The common set: default, event tracking and modal panel.
  static constexpr RunLoopModes common() {
    return RunLoopModes(RunLoopMode::Default) | RunLoopMode::EventTracking |
           RunLoopMode::ModalPanel;
  }

 private:
  static constexpr std::uint8_t bit(RunLoopMode mode) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(mode));
  }
  std::uint8_t bits_ = 0;
};

/// The two clocks, injected: the simulated desktop moves them by hand.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Any thread.
  virtual Moment now() const = 0;
  /// Any thread.
  virtual Date date() const = 0;
};

/// What the loop stands on: the clock, the waiting and the threads of the host.
class RunLoopHost : public Clock {
 public:
  /// The loop's next deadline has changed. `distantFuture` means that nothing is due; the host
  /// then sleeps until something outside happens. Called often: store it, arm lazily. Main thread.
  virtual void setNextDeadline(Moment deadline) = 0;
  /// Handles events of the host and what is due in the loop (by `RunLoop::service`) until `done`
  /// answers true, looking after each event, or the program ends. Main thread; may nest.
  virtual void runUntil(const std::function<bool()>& done) = 0;
  /// Makes the main thread call `RunLoop::service` soon. Any thread.
  virtual void wakeUp() = 0;
  /// Runs a block on a background thread. Any thread.
  virtual void runInBackground(Block block) = 0;
};

class RunLoop;
class RunLoopTimer;

/// Something that a resting timer watches, such as "the keyboard has changed". Whoever knows of
/// the change calls `signal`. Any number of timers may watch one notice; which of the notice, the
/// timers and the loop goes first does not matter. Main thread.
class ChangeNotice {
 public:
  ChangeNotice() = default;
  /// Ends the rest of whoever watches, as a signal does: with nobody left to call, waking is safe.
  ~ChangeNotice();
  ChangeNotice(const ChangeNotice&) = delete;
  ChangeNotice& operator=(const ChangeNotice&) = delete;

  void signal();
  /// How often `signal` has been called.
  std::uint64_t generation() const { return generation_; }

 private:
  friend class RunLoopTimer;
  void wakeWatchers();

  std::uint64_t generation_ = 0;
  std::vector<RunLoopTimer*> watchers_;
};

/// A timer of the loop. It runs while it is scheduled, whoever holds it: the loop keeps it alive,
/// as it keeps what its block holds. Made by `RunLoop::scheduleTimer`. Main thread.
///
/// A repeating timer is set for its next tick before its block is called. So a loop that runs
/// nested inside the block does not fire it again for the same tick, but does for a later one.
/// Ticks that pass while the block is busy are skipped.
class RunLoopTimer {
 public:
  /// One that is not scheduled, hence not valid.
  RunLoopTimer() = default;
  ~RunLoopTimer();
  RunLoopTimer(const RunLoopTimer&) = delete;
  RunLoopTimer& operator=(const RunLoopTimer&) = delete;

  /// Ends the timer for good and lets go of its block, at once or, called from inside the block,
  /// when that returns. Harmless when repeated.
  void invalidate();
  /// True until it is invalidated, has fired for the only time, or its loop has gone.
  bool isValid() const { return loop_ != nullptr; }
  /// Seconds between firings; 0 for a timer that fires once.
  TimeInterval timeInterval() const { return interval_; }
  /// The next moment of its grid, whether or not it rests.
  Moment fireMoment() const;
  /// Adds modes in which it fires.
  void addModes(RunLoopModes modes);
  RunLoopModes modes() const { return modes_; }

  /// Skips wake-ups whose answer cannot have changed: from now until one of `notices` is
  /// signalled the loop does not wake for this timer. The grid of ticks goes on, so the firing
  /// after the signal comes at the first tick that had not passed when it came, exactly when it
  /// would have come without the rest. A tick at the very moment of the signal has passed only if
  /// the loop has already served that moment beyond the timer's turn.
  ///
  /// Replaces an earlier rest. Without notices, and for a timer that does not repeat or is not
  /// valid, nothing happens.
  void restUntilSignalled(std::initializer_list<ChangeNotice*> notices);
  bool isResting() const { return !rest_.empty(); }

 private:
  friend class RunLoop;
  friend class ChangeNotice;
  bool repeats() const { return interval_ > 0; }
  Moment momentOfTick(std::int64_t tick) const;
  std::int64_t firstTickFrom(Moment moment) const;
  void moveToTick(std::int64_t tick);
  void moveToNextTick();
  void fire();
  void wake();
  void stopWatching();

  RunLoop* loop_ = nullptr;
  std::function<void(RunLoopTimer&)> block_;
  TimeInterval interval_ = 0;
  Moment firstTick_ = 0;
  std::int64_t tick_ = 0;
  Moment due_ = 0;
  std::uint64_t order_ = 0;
  RunLoopModes modes_;
  int firingDepth_ = 0;
  std::vector<ChangeNotice*> rest_;
};

/// The one loop of the main thread. What is due is kept in order of time, and within one moment
/// in order of arrival; a nested run goes on with the older work first.
///
/// One pass (`service`) runs what was due when the pass began. Work that a pass schedules with
/// delay 0 runs in the next pass.
///
/// Moments are compared in whole microseconds, so that one moment reached by different sums is one.
///
/// Main thread only, except where a function says otherwise.
class RunLoop {
 public:
  /// Becomes `RunLoop::main()` while it lives, and its thread the main thread. The host must
  /// outlive it, and ends its background blocks before the loop goes.
  explicit RunLoop(RunLoopHost& host);
  /// Invalidates the timers and drops all other work unperformed.
  ~RunLoop();
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;

  /// The loop of the main thread. One must be alive.
  static RunLoop& main();

  Clock& clock() { return host_; }
  Moment now() const { return host_.now(); }
  Date date() const { return host_.date(); }

  /// Starts a timer whose first firing comes `interval` from now. A repeating one keeps to the
  /// grid of its start: a late firing is not made up for and does not shift the next. Intervals
  /// under 0.0001 second count as that.
  std::shared_ptr<RunLoopTimer> scheduleTimer(TimeInterval interval, bool repeats,
                                              std::function<void(RunLoopTimer&)> block,
                                              RunLoopModes modes = RunLoopMode::Default);

  /// Performs `block` once, in the default mode, `delay` seconds from now; with 0, in the next
  /// pass. `target` and `selector` serve to cancel; `selector` must be a string literal.
  void performAfterDelay(const void* target, std::string_view selector, TimeInterval delay,
                         Block block);
  void cancelPreviousPerformRequests(const void* target, std::string_view selector);
  /// Cancels all requests of a target: its destructor calls this.
  void cancelPreviousPerformRequests(const void* target);

  /// Runs `block` once on the main queue, which is served in the common modes, `delay` seconds
  /// from now; with 0 or less, in the next pass. Any thread.
  void executeOnMainQueue(Block block, TimeInterval delay);
  /// Runs `block` on a background thread. Any thread.
  void executeInBackground(Block block);

  RunLoopMode currentMode() const { return mode_; }
  /// Runs nested in the present mode until `moment` of the monotonic clock, including what is due
  /// at that moment; with one that has passed, makes one pass.
  void runUntilDate(Moment moment);
  /// Runs nested in `mode` until `done` answers true.
  void runInMode(RunLoopMode mode, const std::function<bool()>& done);
  /// Makes `mode` current while it lives: for hosts whose own nested loop (a menu, a drag) calls
  /// `service`.
  class ModeScope {
   public:
    ModeScope(RunLoop& loop, RunLoopMode mode);
    ~ModeScope();
    ModeScope(const ModeScope&) = delete;
    ModeScope& operator=(const ModeScope&) = delete;

   private:
    RunLoop& loop_;
    RunLoopMode outer_;
  };

  /// For the host: one pass. Answers whether anything ran.
  bool service();
  /// For the host: the earliest moment at which `service` has work in the current mode.
  Moment nextDeadline() const;

 private:
  friend class RunLoopTimer;
  friend class ModeScope;
  struct Work;
  struct Queue;
  /// How far the loop has got: everything of the mode before it has been served.
  struct Position {
    Moment moment = -distantFuture;
    std::uint64_t order = 0;
    RunLoopMode mode = RunLoopMode::Default;
  };

  static Moment wholeMicroseconds(Moment moment);
  Moment wholeNow() const { return wholeMicroseconds(host_.now()); }
  Moment momentAfter(TimeInterval delay) const;
  bool hasServed(Moment moment, std::uint64_t order, RunLoopModes modes) const;
  void reschedule(RunLoopTimer& timer, Moment due);
  std::shared_ptr<RunLoopTimer> release(RunLoopTimer& timer);
  void takeInbox();
  bool runNext(Moment start, std::uint64_t limit);
  void cancelPerforms(const void* target, const std::string_view* selector);
  void announceDeadline();
  void deadlineMayHaveChanged();

  RunLoopHost& host_;
  RunLoopMode mode_ = RunLoopMode::Default;
  Position position_;
  Moment announcedDeadline_ = distantFuture;
  std::unique_ptr<Queue> queue_;
};

/// Runs a block on the main queue after a delay in seconds, never inside the caller's own
/// event. The main queue is served in menus and dialogs too. Any thread.
void executeBlockAfterDelay(Block block, TimeInterval delay);

/// Runs a block on a background thread: the one road there. It brings its results back by
/// `executeBlockAfterDelay`. Any thread.
void executeBlockInBackground(Block block);

}  // namespace qb
