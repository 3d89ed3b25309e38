#include "PlatformDesktop/runloop/QtRunLoopHost.h"

#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <algorithm>
#include <cmath>

#include "QuillboxCommon/ModalSession.h"

namespace qb {

namespace {

constexpr double nanoseconds = 1e9;
/// From 1970-01-01 to 2001-01-01.
constexpr double secondsBeforeReferenceDate = 978307200;
/// A pass that schedules the next without end must not keep events and painting waiting for ever.
constexpr int maximumPasses = 16;

double secondsOf(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / nanoseconds;
}

void drainDescriptor(int descriptor) {
  std::uint64_t count = 0;
  while (read(descriptor, &count, sizeof count) > 0) {
  }
}

}  // namespace

QtRunLoopHost::QtRunLoopHost()
    : timer_(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      wakeEvent_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      timerNotifier_(std::make_unique<QSocketNotifier>(timer_, QSocketNotifier::Read)),
      wakeNotifier_(std::make_unique<QSocketNotifier>(wakeEvent_, QSocketNotifier::Read)) {
  connect(timerNotifier_.get(), &QSocketNotifier::activated, this, [this] {
    drainDescriptor(timer_);
    armedDeadline_ = distantFuture;
    service();
  });
  connect(wakeNotifier_.get(), &QSocketNotifier::activated, this, [this] {
    drainDescriptor(wakeEvent_);
    if (wakeObserver_) wakeObserver_();
    service();
  });
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          [this] { beforeSleep(); });
}

QtRunLoopHost::~QtRunLoopHost() {
  pool_.finish();
  timerNotifier_.reset();
  wakeNotifier_.reset();
  close(timer_);
  close(wakeEvent_);
}

Subscription QtRunLoopHost::addBeforeSleep(std::function<void()> block) {
  const std::uint64_t id = ++lastSleeper_;
  sleepers_.push_back({id, std::move(block)});
  return Subscription([this, id] {
    std::erase_if(sleepers_, [id](const Sleeper& each) { return each.id == id; });
  });
}

Moment QtRunLoopHost::now() const { return secondsOf(CLOCK_MONOTONIC); }

Date QtRunLoopHost::date() const { return secondsOf(CLOCK_REALTIME) - secondsBeforeReferenceDate; }

void QtRunLoopHost::runUntil(const std::function<bool()>& done) {
  QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
  while (!done()) {
    if (nestedRunsEnd_) {
      ModalSession::abortModal();
      return;
    }
    dispatcher->processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void QtRunLoopHost::wakeUp() {
  const std::uint64_t one = 1;
  // Can fail only when the count is full, and then the wake-up is on its way.
  [[maybe_unused]] const ssize_t written = write(wakeEvent_, &one, sizeof one);
}

void QtRunLoopHost::service() {
  for (int pass = 0; pass < maximumPasses && loop_ != nullptr; ++pass) {
    loop_->service();
    if (deadline_ > now()) return;
  }
}

void QtRunLoopHost::beforeSleep() {
  if (deadline_ > now()) {
    // By number: a block may add or end others.
    for (std::size_t i = 0; i < sleepers_.size(); ++i) {
      const std::function<void()> block = sleepers_[i].block;
      block();
    }
  }
  arm();
}

void QtRunLoopHost::arm() {
  if (deadline_ == armedDeadline_) return;
  armedDeadline_ = deadline_;
  itimerspec setting{};
  if (deadline_ < distantFuture) {
    const double whole = std::floor(std::max(deadline_, 0.0));
    setting.it_value.tv_sec = static_cast<time_t>(whole);
    setting.it_value.tv_nsec = static_cast<long>((std::max(deadline_, 0.0) - whole) * nanoseconds);
    // All zero would disarm it.
    if (setting.it_value.tv_sec == 0 && setting.it_value.tv_nsec == 0) setting.it_value.tv_nsec = 1;
  }
  timerfd_settime(timer_, TFD_TIMER_ABSTIME, &setting, nullptr);
}

}  // namespace qb
