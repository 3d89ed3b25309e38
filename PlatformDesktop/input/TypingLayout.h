#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "PlatformDesktop/input/XInput.h"

namespace qb {

/// One press of a key as a character needs it.
struct TypingStroke {
  std::uint8_t key = 0;
  /// The keyboard group that has to be in force.
  std::uint8_t group = 0;
  /// Modifier bits that have to be down.
  std::uint16_t modifiers = 0;

  friend bool operator==(const TypingStroke&, const TypingStroke&) = default;
};

/// What the server's keyboard can type at this moment. A value.
class TypingLayout {
 public:
  /// None when the server has no XKB.
  static std::optional<TypingLayout> read(xcb_connection_t* xcb);

  /// The easiest way to type a character: in the group that is in force, else in another one, with
  /// no modifiers but Shift and the third level's. None when the layout lacks it.
  std::optional<TypingStroke> strokeFor(char32_t character) const;
  std::uint8_t group() const { return group_; }
  bool capsLockIsOn() const { return capsLockIsOn_; }
  /// A key that gives this one modifier bit; 0 when there is none.
  std::uint8_t modifierKey(std::uint16_t bit) const;
  /// Keys without any meaning.
  const std::vector<std::uint8_t>& spareKeys() const { return spareKeys_; }

 private:
  class Reader;

  std::unordered_map<char32_t, TypingStroke> strokes_;
  std::array<std::uint8_t, 8> modifierKeys_{};
  std::vector<std::uint8_t> spareKeys_;
  std::uint8_t group_ = 0;
  bool capsLockIsOn_ = false;
};

/// The keysym of a character, for keys that get a new meaning.
std::uint32_t keysymOfCharacter(char32_t character);

}  // namespace qb
