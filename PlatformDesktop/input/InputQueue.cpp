#include "PlatformDesktop/input/InputQueue.h"

#include <utility>

namespace qb {

void InputQueue::push(const InputEvent& event) {
  std::unique_lock lock(mutex_);
  events_.push_back(event);
  notify(std::move(lock));
}

void InputQueue::setKeys(const XKeySet& down) {
  std::unique_lock lock(mutex_);
  if (keys_ == down) return;
  keys_ = down;
  keysChanged_ = true;
  notify(std::move(lock));
}

void InputQueue::setMap(const KeyboardMap& map) {
  const std::lock_guard lock(mutex_);
  map_ = map;
}

/// One wake-up serves all that comes before the main thread takes it.
void InputQueue::notify(std::unique_lock<std::mutex> lock) {
  if (std::exchange(isAwaited_, true)) return;
  lock.unlock();
  wake_();
}

bool InputQueue::take(std::vector<InputEvent>& events) {
  const std::lock_guard lock(mutex_);
  isAwaited_ = false;
  events.insert(events.end(), events_.begin(), events_.end());
  events_.clear();
  takenKeys_ = keys_;
  return std::exchange(keysChanged_, false);
}

KeyboardMap InputQueue::map() const {
  const std::lock_guard lock(mutex_);
  return map_;
}

}  // namespace qb
