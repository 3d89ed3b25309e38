#include "QuillboxCommon/RunLoop.h"

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace qb {

namespace {

constexpr TimeInterval shortestInterval = 0.0001;
constexpr double microsecondsPerSecond = 1e6;
/// Past this no double is exact to the microsecond; no machine stays up so long.
constexpr Moment endOfTime = 1e9;

std::atomic<RunLoop*> mainLoop = nullptr;

}  // namespace

std::string_view runLoopModeName(RunLoopMode mode) {
  switch (mode) {
    case RunLoopMode::Default:
      return "kCFRunLoopDefaultMode";
    case RunLoopMode::EventTracking:
      return "NSEventTrackingRunLoopMode";
    case RunLoopMode::Graphics:
      return "NSGraphicsRunLoopMode";
    case RunLoopMode::ModalPanel:
      return "NSModalPanelRunLoopMode";
    case RunLoopMode::EventOnly:
      return "EventOnlyMode";
  }
  return {};
}

struct RunLoop::Work {
  Moment due = distantFuture;
  std::uint64_t order = 0;
  RunLoopModes modes = {};
  Block block = {};
  /// Of a perform request: what it can be cancelled by.
  bool isPerform = false;
  const void* target = nullptr;
  std::string_view selector = {};
  /// The timer to fire, instead of the block.
  std::shared_ptr<RunLoopTimer> timer = {};

  bool runsIn(RunLoopMode mode) const { return (timer ? timer->modes() : modes).contains(mode); }
};

struct RunLoop::Queue {
  struct Key {
    Moment due;
    std::uint64_t order;
  };
  struct Earlier {
    using is_transparent = void;
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
      return a.due < b.due || (a.due == b.due && a.order < b.order);
    }
  };
  /// Nodes are taken out and put back, so that a repeating timer costs no allocation.
  std::set<Work, Earlier> work;
  std::atomic<std::uint64_t> nextOrder = 1;
  const std::thread::id mainThread = std::this_thread::get_id();
  std::mutex inboxMutex;
  std::vector<Work> inbox;
};

RunLoop::RunLoop(RunLoopHost& host) : host_(host), queue_(std::make_unique<Queue>()) {
  mainLoop = this;
}

RunLoop::~RunLoop() {
  takeInbox();
  // What the dropped blocks hold may cancel, invalidate or schedule while it goes.
  while (!queue_->work.empty()) {
    const auto node = queue_->work.extract(queue_->work.begin());
    if (node.value().timer) node.value().timer->invalidate();
  }
  RunLoop* self = this;
  mainLoop.compare_exchange_strong(self, nullptr);
}

RunLoop& RunLoop::main() {
  RunLoop* const loop = mainLoop;
  if (loop == nullptr) std::abort();
  return *loop;
}

Moment RunLoop::wholeMicroseconds(Moment moment) {
  if (!(moment < endOfTime)) return distantFuture;
  return std::round(moment * microsecondsPerSecond) / microsecondsPerSecond;
}

Moment RunLoop::momentAfter(TimeInterval delay) const {
  return wholeMicroseconds(host_.now() + (delay > 0 ? delay : 0));
}

std::shared_ptr<RunLoopTimer> RunLoop::scheduleTimer(TimeInterval interval, bool repeats,
                                                     std::function<void(RunLoopTimer&)> block,
                                                     RunLoopModes modes) {
  const TimeInterval seconds = interval >= shortestInterval ? interval : shortestInterval;
  auto timer = std::make_shared<RunLoopTimer>();
  timer->loop_ = this;
  timer->block_ = std::move(block);
  timer->interval_ = repeats ? seconds : 0;
  timer->firstTick_ = host_.now() + seconds;
  timer->due_ = wholeMicroseconds(timer->firstTick_);
  timer->order_ = queue_->nextOrder++;
  timer->modes_ = modes;
  queue_->work.insert({.due = timer->due_, .order = timer->order_, .timer = timer});
  deadlineMayHaveChanged();
  return timer;
}

void RunLoop::reschedule(RunLoopTimer& timer, Moment due) {
  const auto found = queue_->work.find(Queue::Key{timer.due_, timer.order_});
  auto node = queue_->work.extract(found);
  // The order stays: it is what makes a rest invisible among timers of one moment.
  node.value().due = timer.due_ = due;
  queue_->work.insert(std::move(node));
}

std::shared_ptr<RunLoopTimer> RunLoop::release(RunLoopTimer& timer) {
  const auto found = queue_->work.find(Queue::Key{timer.due_, timer.order_});
  if (found == queue_->work.end()) return nullptr;
  return std::move(queue_->work.extract(found).value().timer);
}

void RunLoop::performAfterDelay(const void* target, std::string_view selector, TimeInterval delay,
                                Block block) {
  queue_->work.insert({.due = momentAfter(delay),
                       .order = queue_->nextOrder++,
                       .modes = RunLoopMode::Default,
                       .block = std::move(block),
                       .isPerform = true,
                       .target = target,
                       .selector = selector});
  deadlineMayHaveChanged();
}

void RunLoop::cancelPreviousPerformRequests(const void* target, std::string_view selector) {
  cancelPerforms(target, &selector);
}

void RunLoop::cancelPreviousPerformRequests(const void* target) { cancelPerforms(target, nullptr); }

void RunLoop::cancelPerforms(const void* target, const std::string_view* selector) {
  // Dropping a block may bring about further cancelling, so the walk must be over by then.
  std::vector<decltype(queue_->work)::node_type> cancelled;
  for (auto each = queue_->work.begin(); each != queue_->work.end();) {
    const auto work = each++;
    if (!work->isPerform || work->target != target) continue;
    if (selector != nullptr && work->selector != *selector) continue;
    cancelled.push_back(queue_->work.extract(work));
  }
  if (!cancelled.empty()) deadlineMayHaveChanged();
}

void RunLoop::executeOnMainQueue(Block block, TimeInterval delay) {
  Work work{.due = momentAfter(delay),
            .order = queue_->nextOrder++,
            .modes = RunLoopModes::common(),
            .block = std::move(block)};
  if (std::this_thread::get_id() == queue_->mainThread) {
    queue_->work.insert(std::move(work));
    deadlineMayHaveChanged();
    return;
  }
  {
    const std::lock_guard lock(queue_->inboxMutex);
    queue_->inbox.push_back(std::move(work));
  }
  host_.wakeUp();
}

void RunLoop::executeInBackground(Block block) { host_.runInBackground(std::move(block)); }

void RunLoop::takeInbox() {
  const std::lock_guard lock(queue_->inboxMutex);
  for (Work& work : queue_->inbox) queue_->work.insert(std::move(work));
  queue_->inbox.clear();
}

bool RunLoop::service() {
  takeInbox();
  const Moment start = wholeNow();
  const std::uint64_t limit = queue_->nextOrder;
  announceDeadline();
  bool ran = false;
  while (runNext(start, limit)) ran = true;
  position_ = {start, limit, mode_};
  announceDeadline();
  return ran;
}

bool RunLoop::runNext(Moment start, std::uint64_t limit) {
  auto next = queue_->work.begin();
  for (; next != queue_->work.end() && next->due <= start; ++next) {
    if (next->order < limit && next->runsIn(mode_)) break;
  }
  if (next == queue_->work.end() || next->due > start) return false;

  position_ = {next->due, next->order, mode_};
  if (next->timer && next->timer->repeats()) {
    const std::shared_ptr<RunLoopTimer> timer = next->timer;
    timer->moveToNextTick();
    deadlineMayHaveChanged();
    timer->fire();
    return true;
  }
  const auto node = queue_->work.extract(next);
  // Told before the block runs: the block may hand the thread to a loop of the host's own.
  deadlineMayHaveChanged();
  if (node.value().timer) {
    node.value().timer->fire();
  } else {
    node.value().block();
  }
  return true;
}

bool RunLoop::hasServed(Moment moment, std::uint64_t order, RunLoopModes modes) const {
  if (!modes.contains(position_.mode)) return false;
  return moment < position_.moment || (moment == position_.moment && order <= position_.order);
}

void RunLoop::runUntilDate(Moment moment) {
  bool reached = false;
  const Queue::Key key{wholeMicroseconds(moment), queue_->nextOrder++};
  queue_->work.insert({.due = key.due, .order = key.order, .modes = mode_, .block = [&reached] {
                         reached = true;
                       }});
  deadlineMayHaveChanged();
  host_.runUntil([&reached] { return reached; });
  if (reached) return;
  queue_->work.erase(queue_->work.find(key));
  deadlineMayHaveChanged();
}

void RunLoop::runInMode(RunLoopMode mode, const std::function<bool()>& done) {
  const ModeScope scope(*this, mode);
  host_.runUntil(done);
}

RunLoop::ModeScope::ModeScope(RunLoop& loop, RunLoopMode mode)
    : loop_(loop), outer_(std::exchange(loop.mode_, mode)) {
  loop_.deadlineMayHaveChanged();
}

RunLoop::ModeScope::~ModeScope() {
  loop_.mode_ = outer_;
  loop_.deadlineMayHaveChanged();
}

Moment RunLoop::nextDeadline() const {
  for (const Work& work : queue_->work) {
    if (work.runsIn(mode_)) return work.due;
  }
  return distantFuture;
}

void RunLoop::announceDeadline() {
  announcedDeadline_ = nextDeadline();
  host_.setNextDeadline(announcedDeadline_);
}

void RunLoop::deadlineMayHaveChanged() {
  if (nextDeadline() != announcedDeadline_) announceDeadline();
}

void executeBlockAfterDelay(Block block, TimeInterval delay) {
  RunLoop::main().executeOnMainQueue(std::move(block), delay);
}

void executeBlockInBackground(Block block) {
  RunLoop::main().executeInBackground(std::move(block));
}

}  // namespace qb
