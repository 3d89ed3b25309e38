#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// An event as it passes the tap, before any other consumer sees it.
struct TappedEvent {
  EventType type = EventTypeKeyDown;
  EventFlags flags = 0;
  std::uint16_t keyCode = 0;
  bool isRepeat = false;
  /// Pointer position in points from the top left of the primary display.
  Point location;
  /// The same position from its lower left.
  Point unflippedLocation;
};

/// What the tap will swallow, told ahead of the events: the platform takes keys on a thread of its
/// own, which must decide at once and cannot wait for the main thread.
struct TapRules {
  /// A chord whose key-down and key-up are both taken.
  struct Chord {
    std::uint16_t keyCode = 0;
    EventFlags required = 0;
    EventFlags forbidden = 0;
    friend bool operator==(const Chord&, const Chord&) = default;
  };
  std::vector<Chord> chords;
  /// Every key-down is taken: the panel is up.
  bool everyKeyDown = false;

  /// True when an event of these values is taken.
  bool swallows(EventType type, std::uint16_t keyCode, EventFlags flags) const;
  friend bool operator==(const TapRules&, const TapRules&) = default;
};

inline bool TapRules::swallows(EventType type, std::uint16_t keyCode, EventFlags flags) const {
  if (everyKeyDown && type == EventTypeKeyDown) return true;
  for (const Chord& chord : chords) {
    if (chord.keyCode == keyCode && (flags & chord.required) == chord.required &&
        (flags & chord.forbidden) == 0) {
      return true;
    }
  }
  return false;
}

/// A tap into the events of the whole desktop: left and right mouse down, key down and up, scroll
/// wheel. Main thread, but for what the platform does inside.
class EventTap {
 public:
  /// Answers true to pass an event on, false to swallow it. Runs on the main thread, in the modes
  /// of the tap, and must return at once. For a key the answer must be the one that the rules
  /// give; a platform may have acted on the rules already. Mouse presses are held back only from
  /// this process's own windows: another program's window gets its press whatever the answer is.
  using Callback = std::function<bool(const TappedEvent&)>;

  virtual ~EventTap() = default;

  /// `CGEventTapCreate` with `CGEventTapEnable`. False without access to the desktop's input;
  /// nothing is reported then. Starts without rules. A second call replaces the first.
  virtual bool create(Callback callback) = 0;
  /// Disables and releases. Harmless when nothing stands.
  virtual void release() = 0;
  virtual bool exists() const = 0;
  virtual bool isEnabled() const = 0;
  virtual void enable(bool enabled) = 0;
  /// The tap's source, in the given run-loop modes: with all five it is served in menus too.
  virtual void addToRunLoop(RunLoopMode mode) = 0;
  virtual void removeFromRunLoop(RunLoopMode mode) = 0;
  virtual bool runLoopContains(RunLoopMode mode) const = 0;

  /// Replaces the rules at once, for all events from now on. With `everyKeyDown` the platform keeps
  /// the keyboard from every other program until the rules say otherwise.
  virtual void setRules(const TapRules& rules) = 0;

  /// Observes key-downs anywhere on the desktop, taken or not, without touching them.
  [[nodiscard]] virtual Subscription addGlobalKeyDownMonitor(std::function<void()> handler) = 0;

  /// The platform signals it when the tap has been disabled, released or taken from a mode by
  /// anything but the operations above.
  ChangeNotice& stateChanged() { return stateChanged_; }

 private:
  ChangeNotice stateChanged_;
};

}  // namespace qb
