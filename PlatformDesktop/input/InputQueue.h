#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

#include "PlatformDesktop/input/KeyboardMap.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// What the input thread reports to the main thread.
struct InputEvent {
  enum class Kind : std::uint8_t {
    /// A key that is no modifier went down somewhere.
    KeyDownSeen,
    /// A key event for the tap, and for the hot keys when it came to this process alone.
    Key,
    /// A press of a mouse button or a step of the wheel.
    Button,
  };
  Kind kind = Kind::Key;
  EventType type = EventTypeKeyDown;
  EventFlags flags = 0;
  std::uint16_t keyCode = 0;
  bool isRepeat = false;
  /// False for keys that were only observed on their way to another program.
  bool isOwned = false;
  /// Not 0 for a press that holds the keyboard until it is reported as handled.
  std::uint32_t serial = 0;
  /// Pixels from the top left of the root window, and its child under the pointer.
  int x = 0, y = 0;
  std::uint32_t window = 0;
};

/// The road from the input thread to the main thread.
class InputQueue {
 public:
  /// `wake` makes the main thread call for what has come; any thread.
  explicit InputQueue(std::function<void()> wake) : wake_(std::move(wake)) {}

  // Input thread.
  void push(const InputEvent& event);
  /// `down` is the physical state of all keys.
  void setKeys(const XKeySet& down);
  void setMap(const KeyboardMap& map);
  void setUserTime(std::uint32_t time) { userTime_ = time; }

  // Main thread.
  /// Appends what has come since the last call. Answers whether keys have gone down or up.
  bool take(std::vector<InputEvent>& events);
  /// The keys that were down at the last `take`: never ahead of the events that have been taken.
  const XKeySet& keys() const { return takenKeys_; }
  KeyboardMap map() const;
  std::uint32_t userTime() const { return userTime_; }

 private:
  void notify(std::unique_lock<std::mutex> lock);

  std::function<void()> wake_;
  mutable std::mutex mutex_;
  std::vector<InputEvent> events_;
  bool keysChanged_ = false;
  bool isAwaited_ = false;
  XKeySet keys_;
  XKeySet takenKeys_;  // Main thread.
  KeyboardMap map_;
  std::atomic<std::uint32_t> userTime_ = 0;
};

}  // namespace qb
