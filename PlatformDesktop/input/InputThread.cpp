#include "PlatformDesktop/input/InputThread.h"

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <future>
#include <memory>
#include <utility>

#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

/// Signals belong to the main thread: none is delivered to threads started while this lives.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;

 private:
  sigset_t before_{};
};

int millisecondsUntil(std::optional<Moment> deadline) {
  if (!deadline) return -1;
  const auto now =
      std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
  return static_cast<int>(std::ceil(std::clamp(*deadline - now, 0.0, 3600.0) * 1000));
}

}  // namespace

InputThread::InputThread(InputConnection connection, InputQueue& queue)
    : connection_(std::move(connection)),
      worker_(connection_, queue),
      bell_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  const SignalsBlocked blocked;
  thread_ = std::thread([this] { run(); });
}

InputThread::~InputThread() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  ring();
  thread_.join();
  close(bell_);
}

void InputThread::post(Command command) {
  {
    const std::lock_guard lock(mutex_);
    // Dropping it here breaks the promise of a question, whose asker then goes on.
    if (ended_) return;
    commands_.push_back(std::move(command));
  }
  ring();
}

bool InputThread::ask(std::function<bool(InputWorker&)> question) {
  auto promise = std::make_shared<std::promise<bool>>();
  auto answer = promise->get_future();
  post([promise = std::move(promise), question = std::move(question)](InputWorker& worker) {
    promise->set_value(question(worker));
  });
  try {
    return answer.get();
  } catch (const std::future_error&) {
    return false;
  }
}

void InputThread::ring() const {
  const std::uint64_t one = 1;
  // Only fails when the bell is ringing to the limit already.
  [[maybe_unused]] const auto written = write(bell_, &one, sizeof one);
}

void InputThread::run() {
  xcb_connection_t* xcb = connection_.xcb.get();
  for (;;) {
    if (xcb_connection_has_error(xcb)) {
      log("The connection for input to the X server has broken");
      break;
    }
    {
      const std::lock_guard lock(mutex_);
      if (stop_ && commands_.empty()) break;
    }
    const bool commanded = runCommands();
    // Replies that commands and due work wait for bring events into the queue: look there again
    // before sleeping.
    if (worker_.handleNextEvent() || commanded || worker_.handleDueWork()) continue;
    waitForWork();
  }
  if (!xcb_connection_has_error(xcb)) worker_.finish();
  const std::lock_guard lock(mutex_);
  ended_ = true;
  commands_.clear();
}

bool InputThread::runCommands() {
  std::vector<Command> commands;
  {
    const std::lock_guard lock(mutex_);
    commands.swap(commands_);
  }
  for (const Command& command : commands) command(worker_);
  return !commands.empty();
}

void InputThread::waitForWork() {
  xcb_connection_t* xcb = connection_.xcb.get();
  xcb_flush(xcb);
  pollfd sources[] = {{xcb_get_file_descriptor(xcb), POLLIN, 0}, {bell_, POLLIN, 0}};
  poll(sources, 2, millisecondsUntil(worker_.nextDeadline()));
  if (sources[1].revents & POLLIN) {
    std::uint64_t rings = 0;
    [[maybe_unused]] const auto got = read(bell_, &rings, sizeof rings);
  }
}

}  // namespace qb
