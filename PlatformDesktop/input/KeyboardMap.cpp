#include "PlatformDesktop/input/KeyboardMap.h"

#include "Platform/KeyCodes.h"
#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb {

namespace {

enum Keysym : xcb_keysym_t {
  KeysymNumLock = 0xff7f,
  KeysymShiftL = 0xffe1,
  KeysymShiftR = 0xffe2,
  KeysymControlL = 0xffe3,
  KeysymControlR = 0xffe4,
  KeysymCapsLock = 0xffe5,
  KeysymAltL = 0xffe9,
  KeysymAltR = 0xffea,
  KeysymSuperL = 0xffeb,
  KeysymSuperR = 0xffec,
};

std::optional<std::uint16_t> modifierKeyCode(xcb_keysym_t keysym) {
  switch (keysym) {
    case KeysymShiftL:
      return KeyCodeLeftShift;
    case KeysymShiftR:
      return KeyCodeRightShift;
    case KeysymControlL:
      return KeyCodeLeftControl;
    case KeysymControlR:
      return KeyCodeRightControl;
    case KeysymCapsLock:
      return KeyCodeCapsLock;
    case KeysymAltL:
      return KeyCodeLeftOption;
    case KeysymAltR:
      return KeyCodeRightOption;
    case KeysymSuperL:
      return KeyCodeLeftCommand;
    case KeysymSuperR:
      return KeyCodeRightCommand;
    default:
      return std::nullopt;
  }
}

/// The keysyms of every key, as the server lists them.
class Keysyms {
 public:
  explicit Keysyms(xcb_connection_t* xcb) {
    const auto* setup = xcb_get_setup(xcb);
    first_ = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - first_ + 1);
    reply_.reset(
        xcb_get_keyboard_mapping_reply(xcb, xcb_get_keyboard_mapping(xcb, first_, count), nullptr));
  }
  /// Empty for a key that does not exist.
  std::vector<xcb_keysym_t> of(std::uint8_t xCode) const {
    if (!reply_ || xCode < first_) return {};
    const int width = reply_->keysyms_per_keycode;
    const int start = (xCode - first_) * width;
    if (start + width > xcb_get_keyboard_mapping_keysyms_length(reply_.get())) return {};
    const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(reply_.get()) + start;
    return {keysyms, keysyms + width};
  }

 private:
  std::uint8_t first_ = 0;
  XcbPointer<xcb_get_keyboard_mapping_reply_t> reply_;
};

}  // namespace

XKeySet keySetFrom(const xcb_query_keymap_reply_t& reply) {
  XKeySet keys;
  for (std::size_t code = 0; code < keys.size(); ++code) {
    keys.set(code, (reply.keys[code / 8] >> code % 8 & 1) != 0);
  }
  return keys;
}

KeyboardMap KeyboardMap::read(xcb_connection_t* xcb) {
  KeyboardMap map;
  const auto cookie = xcb_get_modifier_mapping(xcb);
  const Keysyms keysyms(xcb);
  const XcbPointer<xcb_get_modifier_mapping_reply_t> reply(
      xcb_get_modifier_mapping_reply(xcb, cookie, nullptr));

  for (unsigned code = 0; code < 256; ++code) {
    map.keyCodes_[code] = KeyCodeTable::keyCodeFromX(static_cast<std::uint8_t>(code));
  }
  const int width = reply ? reply->keycodes_per_modifier : 0;
  for (int i = 0; i < 8 * width; ++i) {
    const std::uint8_t code = xcb_get_modifier_mapping_keycodes(reply.get())[i];
    if (code == 0) continue;
    const auto bit = static_cast<std::uint8_t>(1U << i / width);
    map.modifiersOfKey_[code] |= bit;
    const auto legends = keysyms.of(code);
    for (const xcb_keysym_t keysym : legends) {
      if (keysym == KeysymNumLock) map.num_ |= bit;
      if (keysym == KeysymAltL || keysym == KeysymAltR) map.option_ |= bit;
      if (keysym == KeysymSuperL || keysym == KeysymSuperR) map.command_ |= bit;
    }
    if (!legends.empty()) {
      map.keyCodes_[code] = modifierKeyCode(legends.front()).value_or(map.keyCodes_[code]);
    }
  }
  if (map.option_ == 0) map.option_ = XCB_MOD_MASK_1;
  if (map.command_ == 0) map.command_ = XCB_MOD_MASK_4;
  return map;
}

EventFlags KeyboardMap::flags(std::uint32_t modifiers) const {
  EventFlags flags = 0;
  if (modifiers & XCB_MOD_MASK_SHIFT) flags |= EventFlagShift;
  if (modifiers & XCB_MOD_MASK_LOCK) flags |= EventFlagCapsLock;
  if (modifiers & XCB_MOD_MASK_CONTROL) flags |= EventFlagControl;
  if (modifiers & option_) flags |= EventFlagOption;
  if (modifiers & command_) flags |= EventFlagCommand;
  return flags;
}

std::uint16_t KeyboardMap::modifiers(EventFlags flags) const {
  unsigned modifiers = 0;
  if (flags & EventFlagShift) modifiers |= XCB_MOD_MASK_SHIFT;
  if (flags & EventFlagControl) modifiers |= XCB_MOD_MASK_CONTROL;
  if (flags & EventFlagOption) modifiers |= option_;
  if (flags & EventFlagCommand) modifiers |= command_;
  return static_cast<std::uint16_t>(modifiers);
}

std::vector<std::uint16_t> KeyboardMap::lockVariants() const {
  std::vector<std::uint16_t> variants{0, XCB_MOD_MASK_LOCK};
  if (num_ != 0) {
    variants.push_back(num_);
    variants.push_back(lockMask());
  }
  return variants;
}

std::vector<std::uint8_t> KeyboardMap::xCodes(std::uint16_t keyCode) const {
  std::vector<std::uint8_t> codes;
  if (keyCode == KeyCodeTable::unknownKeyCode) return codes;
  const auto usual = KeyCodeTable::xCodeFromKeyCode(keyCode);
  if (usual && keyCodes_[*usual] == keyCode) codes.push_back(*usual);
  for (unsigned code = 0; code < 256; ++code) {
    if (keyCodes_[code] == keyCode && code != usual) {
      codes.push_back(static_cast<std::uint8_t>(code));
    }
  }
  return codes;
}

std::uint16_t KeyboardMap::modifiersOf(const XKeySet& keys) const {
  unsigned modifiers = 0;
  for (unsigned code = 0; code < 256; ++code) {
    if (keys.test(code)) modifiers |= modifiersOfKey_[code];
  }
  return static_cast<std::uint16_t>(modifiers);
}

}  // namespace qb
