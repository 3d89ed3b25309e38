#include "PlatformDesktop/dialogs/KeyboardFocus.h"

#include <cstdlib>
#include <memory>

namespace qb {

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

}  // namespace

KeyboardFocus::KeyboardFocus(xcb_connection_t* connection)
    : connection_(connection), before_(owner()) {}

xcb_window_t KeyboardFocus::owner() const {
  const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return reply ? reply->focus : static_cast<xcb_window_t>(XCB_NONE);
}

void KeyboardFocus::give(xcb_window_t window) const {
  // The time of the present: an older one may lie before somebody else's request.
  setChecked(window);
}

void KeyboardFocus::restoreFrom(xcb_window_t window) const {
  if (before_ != XCB_NONE && owner() == window) setChecked(before_);
}

/// Checked here, so that a window that has gone is not reported as an error of the program.
void KeyboardFocus::setChecked(xcb_window_t window) const {
  const std::unique_ptr<xcb_generic_error_t, Free> error(xcb_request_check(
      connection_, xcb_set_input_focus_checked(connection_, XCB_INPUT_FOCUS_POINTER_ROOT, window,
                                               XCB_CURRENT_TIME)));
}

}  // namespace qb
