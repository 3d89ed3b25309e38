// What a key press types, as a plain client finds it out: by the mapping of the moment in which it
// looks.
#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace probe {

/// UTF-8 of the key with the modifiers and the group of `state`; empty for keys that type nothing.
/// Two groups and a third level by Mod5 are known.
inline std::string typedText(xcb_connection_t* connection, xcb_keycode_t key, std::uint16_t state) {
  const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> map(
      xcb_get_keyboard_mapping_reply(connection, xcb_get_keyboard_mapping(connection, key, 1),
                                     nullptr),
      &std::free);
  if (!map) return {};
  const int width = map->keysyms_per_keycode;
  const xcb_keysym_t* const keysyms = xcb_get_keyboard_mapping_keysyms(map.get());
  const int shift = (state & XCB_MOD_MASK_SHIFT) != 0 ? 1 : 0;
  const int column = (state & XCB_MOD_MASK_5) != 0 ? 4 : (state >> 13 & 3) == 1 ? 2 : 0;
  xcb_keysym_t keysym = XCB_NO_SYMBOL;
  for (const int place : {column + shift, column, shift, 0}) {
    if (keysym == XCB_NO_SYMBOL && place < width) keysym = keysyms[place];
  }
  if ((state & XCB_MOD_MASK_LOCK) != 0) keysym = xkb_keysym_to_upper(keysym);
  char text[8] = "";
  xkb_keysym_to_utf8(keysym, text, sizeof text);
  const bool isControl = static_cast<unsigned char>(text[0]) < 0x20 || text[0] == 0x7f;
  return isControl ? std::string() : std::string(text);
}

}  // namespace probe
