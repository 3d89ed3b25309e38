#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <variant>

#include "PlatformDesktop/input/DesktopAccessibility.h"
#include "PlatformDesktop/input/DesktopEventTap.h"
#include "PlatformDesktop/input/DesktopHotKeys.h"
#include "PlatformDesktop/input/DesktopKeyboard.h"
#include "PlatformDesktop/input/DesktopPointer.h"
#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/InputQueue.h"
#include "PlatformDesktop/input/InputThread.h"
#include "PlatformDesktop/input/TextTyper.h"

namespace qb {

/// What input needs of the program around it. All but `wake` are called on the main thread; none
/// but `isAllowed` and `deliverKey` may be empty.
struct DesktopInputHost {
  /// Makes the main thread call `DesktopInput::drain` soon. Any thread.
  std::function<void()> wake;
  std::function<RunLoopMode()> currentMode;
  std::function<PointerSpace()> pointerSpace;
  /// Whether a child of the root window is one of this process's own: presses on those come by
  /// `DesktopEventTap::tapPointerEvent`.
  std::function<bool(std::uint32_t window)> isOwnWindow;
  /// Whether the user grants the access that a tap needs.
  std::function<bool()> isAllowed;
  /// Gets the keys that are kept for this process and that neither the tap nor a hot key took. May
  /// be empty.
  std::function<void(const TappedEvent& key)> deliverKey;
};

/// Keyboard and pointer of the X desktop. Main thread.
class DesktopInput {
 public:
  /// `display` as in DISPLAY; null takes that.
  static std::variant<std::unique_ptr<DesktopInput>, InputError> create(
      DesktopInputHost host, const char* display = nullptr);

  DesktopEventTap& eventTap() { return eventTap_; }
  DesktopHotKeys& hotKeys() { return hotKeys_; }
  DesktopKeyboard& keyboard() { return keyboard_; }
  DesktopPointer& pointer() { return pointer_; }
  DesktopAccessibility& accessibility() { return accessibility_; }
  TextTyper& typer() { return typer_; }

  /// Hands on what the input thread has reported. To be called after each wake-up, and when the
  /// mode of the run loop has changed: events that the tap is not served for wait, in order.
  void drain();
  /// The same with all that the server knows of by now: what the user did before this call has been
  /// handed on after it. Waits for the input thread, some 0.1 milliseconds.
  void catchUp();
  /// Whoever handles a press now runs a dialog meanwhile: the keyboard is not to wait for its end.
  void settlePress();
  /// The server's time of the user's last key or button event; 0 before the first.
  std::uint32_t lastUserTime() const { return queue_.userTime(); }

 private:
  DesktopInput(DesktopInputHost host, InputConnection queries, InputConnection events);

  void takeEvents();
  void handOn(const InputEvent& event);
  void handOnKey(const InputEvent& event);
  void handOnButton(const InputEvent& event);

  DesktopInputHost host_;
  InputConnection queries_;
  InputQueue queue_;
  InputThread thread_;
  DesktopAccessibility accessibility_;
  DesktopEventTap eventTap_;
  DesktopHotKeys hotKeys_;
  DesktopKeyboard keyboard_;
  DesktopPointer pointer_;
  TextTyper typer_;
  std::deque<InputEvent> waiting_;
  /// The serial of the press that is being handled; 0 for none that holds the keyboard.
  std::uint32_t pressInHand_ = 0;
};

}  // namespace qb
