#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "PlatformDesktop/input/XInput.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

using XKeySet = std::bitset<256>;

/// The keys of `reply` that are down.
XKeySet keySetFrom(const xcb_query_keymap_reply_t& reply);

/// What the server's present mapping makes of keys and modifier bits. A value; read anew after each
/// MappingNotify.
///
/// Keys are known by position, but a key that serves as Super, Alt, Control, Shift or Caps Lock is
/// known as that: users swap them, and the Command key is the one that gives Super.
class KeyboardMap {
 public:
  static KeyboardMap read(xcb_connection_t* xcb);

  EventFlags flags(std::uint32_t modifiers) const;
  /// The modifier bits of the four flags of combinations.
  std::uint16_t modifiers(EventFlags flags) const;
  /// Every set of locks that may be on without mattering, none included.
  std::vector<std::uint16_t> lockVariants() const;
  std::uint16_t lockMask() const { return static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | num_); }

  std::uint16_t keyCode(std::uint8_t xCode) const { return keyCodes_[xCode]; }
  /// All keys that go by the virtual key code, the one of the usual place first. None for codes
  /// without a key.
  std::vector<std::uint8_t> xCodes(std::uint16_t keyCode) const;
  bool isModifier(std::uint8_t xCode) const { return modifiersOfKey_[xCode] != 0; }
  /// The modifier bits that the held keys give.
  std::uint16_t modifiersOf(const XKeySet& keys) const;

  friend bool operator==(const KeyboardMap&, const KeyboardMap&) = default;

 private:
  std::uint16_t num_ = 0, option_ = 0, command_ = 0;
  std::array<std::uint8_t, 256> modifiersOfKey_{};
  std::array<std::uint16_t, 256> keyCodes_{};
};

}  // namespace qb
