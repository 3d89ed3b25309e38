#pragma once

#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/InputQueue.h"
#include "PlatformDesktop/input/InputWorker.h"

namespace qb {

/// The thread that stands between the keyboard and the desktop. While it decides on a key the
/// whole desktop waits, so it never waits for the main thread; it runs with a connection of its
/// own.
///
/// Destruction ends the thread and lets go of everything. Should the server go, the thread ends.
class InputThread {
 public:
  using Command = std::function<void(InputWorker&)>;

  /// `queue` must outlive the thread.
  InputThread(InputConnection connection, InputQueue& queue);
  ~InputThread();
  InputThread(const InputThread&) = delete;
  InputThread& operator=(const InputThread&) = delete;

  /// Runs `command` on the thread, before any event that has not been handled yet. Commands keep
  /// their order. Any thread.
  void post(Command command);
  /// The same, waiting for the answer; false when the thread has ended. Not the input thread.
  bool ask(std::function<bool(InputWorker&)> question);

 private:
  void run();
  bool runCommands();
  void waitForWork();
  void ring() const;

  InputConnection connection_;
  InputWorker worker_;
  int bell_ = -1;
  std::mutex mutex_;
  std::vector<Command> commands_;
  bool stop_ = false;
  bool ended_ = false;
  std::thread thread_;
};

}  // namespace qb
