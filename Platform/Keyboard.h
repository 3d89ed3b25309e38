#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// Which keys are down, one bit each; eight key codes a byte, the lowest in its lowest bit.
struct KeyMap {
  std::array<std::uint8_t, 16> bytes{};

  bool isDown(unsigned keyCode) const {
    return keyCode < 128 && (bytes[keyCode / 8] >> (keyCode % 8) & 1) != 0;
  }
  void set(unsigned keyCode, bool down) {
    if (keyCode >= 128) return;
    const auto bit = static_cast<std::uint8_t>(1U << keyCode % 8);
    auto& byte = bytes[keyCode / 8];
    byte = static_cast<std::uint8_t>(down ? byte | bit : byte & ~bit);
  }
  friend bool operator==(const KeyMap&, const KeyMap&) = default;
};

/// The keyboard as it stands. Main thread.
class Keyboard {
 public:
  virtual ~Keyboard() = default;
  /// `GetKeys`: which keys are physically down, as of the last key event that has been handed on.
  virtual KeyMap getKeys() const = 0;
  /// The modifiers that are down now (`NSEvent modifierFlags`).
  virtual EventFlags modifierFlags() const = 0;
  /// What the user's present layout prints on a key: the character that it gives alone, a letter as
  /// a capital, in UTF-8. Empty for a key that gives none to be seen, and for one that is missing.
  virtual std::string legendOfKey(std::uint16_t keyCode) const = 0;
  /// Signalled when any key goes down or up.
  virtual ChangeNotice& keysChanged() = 0;
};

}  // namespace qb
