#pragma once

#include <cstdint>
#include <optional>
#include <set>

#include "Platform/EventTap.h"
#include "PlatformDesktop/input/ChordGrabs.h"
#include "PlatformDesktop/input/GrabSpan.h"
#include "PlatformDesktop/input/InputConnection.h"
#include "PlatformDesktop/input/InputQueue.h"
#include "PlatformDesktop/input/KeyboardHold.h"
#include "PlatformDesktop/input/KeyboardMap.h"

namespace qb {

/// What the input thread does: observes raw events, takes the combinations that are wanted, and
/// keeps the keyboard while it is to be kept. Input thread, but for the constructor.
class InputWorker {
 public:
  InputWorker(InputConnection& connection, InputQueue& queue);

  /// Replaces the rules of the tap; none without a tap.
  void setRules(const TapRules& rules);
  /// False when another program holds the combination. While the keyboard is kept anyway nothing
  /// is asked of the server, and a refusal shows only later, in the log.
  bool addHotKey(const Combination& combination);
  void removeHotKey(const Combination& combination);
  bool isHeldByAnotherProgram(const Combination& combination) {
    return grabs_.isHeldByAnotherProgram(combination);
  }
  /// The main thread has handled the press `serial`.
  void setHandled(std::uint32_t serial);
  /// From here on keys are of this program's own making: the keyboard is let go, the grabs pass on
  /// what they catch, and nothing is reported.
  void beginInjection();
  /// All of those have been sent: takes them in and goes on as before.
  void endInjection();
  /// Handles all that the server has sent by now, and what that brings about.
  void catchUpWithServer();
  /// Lets go of everything.
  void finish();

  /// Handles one event that has come, if any.
  bool handleNextEvent();
  /// Does what is due. True when something was done.
  bool handleDueWork();
  /// When `handleDueWork` has work next.
  std::optional<Moment> nextDeadline() const;

 private:
  static Moment now();

  void handleEvent(const xcb_generic_event_t& event);
  void handleRawKey(const xcb_input_raw_key_press_event_t& event, bool down);
  void observeKey(std::uint8_t key, bool down);
  void handleRawButton(const xcb_input_raw_button_press_event_t& event);
  void handleKey(const xcb_input_key_press_event_t& event, bool down);
  void handleFrozenPress(const xcb_input_key_press_event_t& event);
  void handleOwnKey(const xcb_input_key_press_event_t& event, bool down);
  void pushKey(const xcb_input_key_press_event_t& event, bool down, std::uint32_t serial);

  /// The serial that the press gets: not 0 when it is a combination that holds the keyboard.
  std::uint32_t armHold(const Combination& combination);
  bool isChord(const Combination& combination) const;
  Combination combinationOf(std::uint8_t key, std::uint32_t modifiers) const;
  void allow(xcb_input_device_id_t device, std::uint8_t mode);
  void waitForServer() const;

  /// Makes the keyboard kept or free, as the hold wants it.
  void applyHold();
  bool grabKeyboard(xcb_input_device_id_t device);
  void letKeyboardGo();
  void scheduleGrabRetry();

  void applyWantedCombinations();
  void rereadMap();
  void setPhysicalKeys(const XKeySet& keys);
  void verifyPhysicalKeys();

  InputConnection& connection_;
  InputQueue& queue_;
  KeyboardMap map_;
  ChordGrabs grabs_;
  KeyboardHold hold_;
  GrabSpan span_;

  TapRules rules_;
  /// The rules without `everyKeyDown`.
  TapRules chords_;
  std::set<Combination> hotKeys_;
  std::uint32_t presses_ = 0;

  /// A mapped window of its own: a grab on the root would silence our raw events.
  xcb_window_t window_ = XCB_NONE;
  xcb_atom_t windowManagerAtom_ = XCB_NONE;
  xcb_input_device_id_t heldDevice_ = 0;

  XKeySet physical_;
  /// Keys whose press came to us alone: their release must too.
  XKeySet taken_;
  /// Keys whose press the main thread was told of as observed.
  XKeySet observed_;
  /// The combination key whose press must follow its raw event, unless another program holds the
  /// keyboard.
  std::uint8_t awaited_ = 0;

  bool isInjecting_ = false;
  bool mapChanged_ = false;
  int grabAttempts_ = 0;
  std::optional<Moment> grabRetry_;
  std::optional<Moment> keysCheck_;
  std::optional<Moment> claimsRetry_;
};

}  // namespace qb
