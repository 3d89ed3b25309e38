#include "PlatformDesktop/input/DesktopKeyboard.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "Platform/KeyCodes.h"

namespace qb {

namespace {

/// Accents that wait for a letter, in the order of their keysyms.
constexpr const char* deadKeys[] = {"`", "´", "^", "~", "¯", "˘", "˙",
                                    "¨", "˚", "˝", "ˇ", "¸", "˛"};

}  // namespace

/// As the events tell, and no later: asked for, the server would tell of a release before a press
/// that came first has been handed on, and a Tab that ends one switch would begin another. The
/// input thread looks after releases that got lost.
KeyMap DesktopKeyboard::getKeys() const {
  KeyMap keys;
  const XKeySet& down = queue_.keys();
  if (down.none()) return keys;
  const KeyboardMap map = queue_.map();
  for (unsigned code = 0; code < down.size(); ++code) {
    if (down.test(code)) keys.set(map.keyCode(static_cast<std::uint8_t>(code)), true);
  }
  return keys;
}

std::uint32_t DesktopKeyboard::state() const {
  xcb_connection_t* xcb = queries_.xcb.get();
  const XcbPointer<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, queries_.root), nullptr));
  return reply ? reply->mask : 0;
}

EventFlags DesktopKeyboard::modifierFlags() const { return queue_.map().flags(state()); }

bool DesktopKeyboard::controlIsTheLeftOne() const {
  xcb_connection_t* xcb = queries_.xcb.get();
  const XcbPointer<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
  if (!reply) return true;
  const XKeySet down = keySetFrom(*reply);
  const KeyboardMap map = queue_.map();
  const auto isDown = [&](std::uint16_t keyCode) {
    const auto codes = map.xCodes(keyCode);
    return std::any_of(codes.begin(), codes.end(), [&](std::uint8_t code) { return down[code]; });
  };
  return isDown(KeyCodeLeftControl) || !isDown(KeyCodeRightControl);
}

/// Asked anew each time: it is wanted seldom, and the user may have another layout by then.
std::string DesktopKeyboard::legendOfKey(std::uint16_t keyCode) const {
  const auto codes = queue_.map().xCodes(keyCode);
  if (codes.empty()) return {};
  xcb_connection_t* xcb = queries_.xcb.get();
  const XcbPointer<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
      xcb, xcb_get_keyboard_mapping(xcb, codes.front(), 1), nullptr));
  if (!reply) return {};
  const int count = xcb_get_keyboard_mapping_keysyms_length(reply.get());
  const xcb_keysym_t* const keysyms = xcb_get_keyboard_mapping_keysyms(reply.get());
  // Two keysyms a layout: plain and with Shift. A key may have none in a second layout.
  const int plain = static_cast<int>(state() >> 13 & 3) * 2;
  xcb_keysym_t keysym = plain < count ? keysyms[plain] : XKB_KEY_NoSymbol;
  if (keysym == XKB_KEY_NoSymbol && count > 0) keysym = keysyms[0];
  if (keysym >= XKB_KEY_dead_grave && keysym < XKB_KEY_dead_grave + std::size(deadKeys)) {
    return deadKeys[keysym - XKB_KEY_dead_grave];
  }
  const std::uint32_t character = xkb_keysym_to_utf32(keysym);
  if (character <= ' ' || character == 0x7f || character == 0xa0) return {};
  std::array<char, 8> text{};
  xkb_keysym_to_utf8(xkb_keysym_to_upper(keysym), text.data(), text.size());
  return text.data();
}

}  // namespace qb
