#include "PlatformDesktop/input/XKeyboard.h"

// The generated header has a field of that name.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace qb {

void lockKeyboardGroup(xcb_connection_t* xcb, std::uint8_t group) {
  xcb_xkb_latch_lock_state(xcb, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
}

void lockKeyboardModifiers(xcb_connection_t* xcb, std::uint8_t modifiers, bool on) {
  xcb_xkb_latch_lock_state(xcb, XCB_XKB_ID_USE_CORE_KBD, modifiers, on ? modifiers : 0, 0, 0, 0, 0,
                           0);
}

}  // namespace qb
