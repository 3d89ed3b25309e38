#include "PlatformDesktop/runloop/ThreadPool.h"

#include <utility>

namespace qb {

ThreadPool::~ThreadPool() { finish(); }

void ThreadPool::run(std::function<void()> block) {
  const std::lock_guard lock(mutex_);
  if (finished_) return;
  blocks_.push_back(std::move(block));
  if (idleThreads_ < blocks_.size() && threads_.size() < maximumThreads_) {
    threads_.emplace_back([this] { work(); });
  }
  changed_.notify_one();
}

void ThreadPool::finish() {
  std::vector<std::thread> threads;
  std::deque<std::function<void()>> dropped;
  {
    const std::lock_guard lock(mutex_);
    finished_ = true;
    threads.swap(threads_);
    dropped.swap(blocks_);
  }
  changed_.notify_all();
  for (std::thread& thread : threads) thread.join();
}

void ThreadPool::work() {
  std::unique_lock lock(mutex_);
  while (true) {
    ++idleThreads_;
    changed_.wait(lock, [this] { return finished_ || !blocks_.empty(); });
    --idleThreads_;
    if (finished_) return;
    std::function<void()> block = std::move(blocks_.front());
    blocks_.pop_front();
    lock.unlock();
    block();
    block = nullptr;
    lock.lock();
  }
}

}  // namespace qb
