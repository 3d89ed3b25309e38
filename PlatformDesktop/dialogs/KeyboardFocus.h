#pragma once

#include <xcb/xcb.h>

namespace qb {

/// Takes the X keyboard focus for windows past the window manager, and gives it back to whoever had
/// it. Main thread.
class KeyboardFocus {
 public:
  /// Notes who has the focus now.
  explicit KeyboardFocus(xcb_connection_t* connection);

  /// `window` must have been mapped by the same connection. It has the focus on return.
  void give(xcb_window_t window) const;
  /// Gives it back, unless the user has meanwhile moved on from `window` to another program. To be
  /// called while `window` still has it. Harmless when the earlier owner has gone.
  void restoreFrom(xcb_window_t window) const;

 private:
  xcb_window_t owner() const;
  void setChecked(xcb_window_t window) const;

  xcb_connection_t* connection_;
  xcb_window_t before_;
};

}  // namespace qb
