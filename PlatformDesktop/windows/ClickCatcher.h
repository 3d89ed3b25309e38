#pragma once

#include <xcb/xcb.h>

#include <functional>

#include "PlatformDesktop/windows/PointerInput.h"

namespace qb {

/// An invisible window over the whole X screen, just beneath our own: while a panel is up, presses
/// and scrolls beside what it shows must not reach another program. Main thread.
class ClickCatcher {
 public:
  using Receiver = std::function<void(const PixelEvent&)>;
  ClickCatcher(xcb_connection_t* connection, xcb_window_t root, Receiver receiver);
  ~ClickCatcher();
  ClickCatcher(const ClickCatcher&) = delete;
  ClickCatcher& operator=(const ClickCatcher&) = delete;

  void setUp(bool up);
  xcb_window_t id() const { return window_; }
  bool isUp() const { return up_; }
  /// On top of all windows; ours go above it afterwards.
  void raise();
  /// True when the event was its own.
  bool handleEvent(const xcb_generic_event_t& event);

 private:
  xcb_connection_t* connection_;
  xcb_window_t window_;
  Receiver receiver_;
  bool up_ = false;
};

}  // namespace qb
