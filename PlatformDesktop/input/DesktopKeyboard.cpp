#include "PlatformDesktop/input/DesktopKeyboard.h"

namespace qb {

/// The events tell without asking when nothing is down. What they say is down is asked for: a
/// release can get lost, and a key may have been let go this moment.
KeyMap DesktopKeyboard::getKeys() const {
  KeyMap keys;
  XKeySet down = queue_.keys();
  if (down.none()) return keys;
  xcb_connection_t* xcb = queries_.xcb.get();
  const XcbPointer<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
  if (reply) down = keySetFrom(*reply);
  const KeyboardMap map = queue_.map();
  for (unsigned code = 0; code < down.size(); ++code) {
    if (down.test(code)) keys.set(map.keyCode(static_cast<std::uint8_t>(code)), true);
  }
  return keys;
}

EventFlags DesktopKeyboard::modifierFlags() const {
  xcb_connection_t* xcb = queries_.xcb.get();
  const XcbPointer<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, queries_.root), nullptr));
  return reply ? queue_.map().flags(reply->mask) : 0;
}

}  // namespace qb
