#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace qb {

/// A few background threads, started when there is work for them. Blocks start in order.
class ThreadPool {
 public:
  explicit ThreadPool(unsigned maximumThreads) : maximumThreads_(maximumThreads) {}
  /// Lets the blocks under way end and drops those that have not started.
  ~ThreadPool();
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  /// Any thread.
  void run(std::function<void()> block);
  /// What the destructor does; nothing runs afterwards.
  void finish();

 private:
  void work();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> blocks_;
  std::vector<std::thread> threads_;
  unsigned maximumThreads_;
  unsigned idleThreads_ = 0;
  bool finished_ = false;
};

}  // namespace qb
