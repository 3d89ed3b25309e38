#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "PlatformDesktop/runloop/ThreadPool.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"

class QSocketNotifier;

namespace qb {

/// The run loop's host on top of Qt's event loop.
///
/// One timer descriptor carries the loop's next deadline and one event descriptor the wake-ups of
/// other threads, both watched by Qt: so what is due is served in every loop of Qt's own as well
/// (a menu, a dialog, a drag), and with nothing due the process sleeps without one wake-up.
class QtRunLoopHost : public QObject, public RunLoopHost {
 public:
  /// An application object of Qt must exist, and outlive it.
  QtRunLoopHost();
  ~QtRunLoopHost() override;

  /// The loop to serve; null before it goes away.
  void setRunLoop(RunLoop* loop) { loop_ = loop; }
  /// Called at each wake-up from another thread, before the loop is served.
  void setWakeObserver(std::function<void()> observer) { wakeObserver_ = std::move(observer); }
  /// Lets the background blocks under way end; later ones are dropped. Before the loop goes.
  void finishBackgroundWork() { pool_.finish(); }
  /// Calls `block` each time before the thread goes to sleep with nothing due: where what many
  /// events asked for (painting, requests to the X server) is done once. Main thread.
  [[nodiscard]] Subscription addBeforeSleep(std::function<void()> block);

  /// The program ends: nested runs (dialogs, menus, waits), those under way and those to come, end
  /// at once, and modal ones as aborted. Main thread.
  void endNestedRuns() { nestedRunsEnd_ = true; }

  Moment now() const override;
  Date date() const override;
  void setNextDeadline(Moment deadline) override { deadline_ = deadline; }
  void runUntil(const std::function<bool()>& done) override;
  void wakeUp() override;
  void runInBackground(Block block) override { pool_.run(std::move(block)); }

 private:
  struct Sleeper {
    std::uint64_t id;
    std::function<void()> block;
  };

  void service();
  void beforeSleep();
  void arm();

  RunLoop* loop_ = nullptr;
  int timer_;
  int wakeEvent_;
  std::unique_ptr<QSocketNotifier> timerNotifier_, wakeNotifier_;
  bool nestedRunsEnd_ = false;
  Moment deadline_ = distantFuture;
  Moment armedDeadline_ = distantFuture;
  std::function<void()> wakeObserver_;
  std::vector<Sleeper> sleepers_;
  std::uint64_t lastSleeper_ = 0;
  ThreadPool pool_{2};
};

}  // namespace qb
