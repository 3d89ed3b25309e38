#include "PlatformDesktop/input/DesktopKeyboard.h"

namespace qb {

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

EventFlags DesktopKeyboard::modifierFlags() const {
  xcb_connection_t* xcb = queries_.xcb.get();
  const XcbPointer<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, queries_.root), nullptr));
  return reply ? queue_.map().flags(reply->mask) : 0;
}

}  // namespace qb
