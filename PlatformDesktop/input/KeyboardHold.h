#pragma once

#include <cstdint>
#include <optional>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Whether the keyboard is to be kept from other programs now. Pure decisions; the input thread
/// asks them and acts.
///
/// The rules say so while the panel is up. Before that, from the press of a combination on, the
/// main thread has yet to decide, and what the user types meanwhile must not reach the program in
/// front: so a press holds the keyboard until the main thread has handled it and had the time of a
/// few passes to answer with rules. A chord of the tap also holds it while its modifier is down.
class KeyboardHold {
 public:
  /// From the handling of a press to the rules that it may bring.
  static constexpr TimeInterval settleTime = 0.1;
  /// A main thread that hangs must not cost the user the keyboard.
  static constexpr TimeInterval longestWait = 2;

  /// A press of a combination came; `serial` counts presses from 1 up. `modifier` is the modifier
  /// bits of which one must stay down for the hold to last, 0 where only the answer matters.
  void pressed(std::uint32_t serial, std::uint16_t modifier, Moment now);
  /// The main thread has handled the press `serial` and all before.
  void handled(std::uint32_t serial, Moment now);
  void setModifiersDown(std::uint16_t modifiers);
  void setEveryKeyDown(bool everyKeyDown);
  /// Forgets everything but the rules: the keyboard has been let go.
  void end();

  bool isWanted(Moment now) const;
  /// When the answer may change by itself.
  std::optional<Moment> nextDeadline() const;

 private:
  bool everyKeyDown_ = false;
  std::uint16_t modifier_ = 0;
  std::uint32_t lastPressed_ = 0, lastHandled_ = 0;
  Moment waitEnd_ = 0, settleEnd_ = 0;
};

}  // namespace qb
