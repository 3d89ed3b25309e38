#pragma once

#include <xcb/xcb.h>

#include <QSocketNotifier>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "PlatformDesktop/processes/XConnection.h"

namespace qb {

/// A connection of the clipboard's own: whoever has the clipboard may hang, and nothing else is to
/// wait for it. Main thread.
class SelectionConnection {
 public:
  using Event = xcb_generic_event_t;
  using Deadline = std::chrono::steady_clock::time_point;

  /// `handle` gets every event that nobody waits for, while the loop runs or someone waits.
  explicit SelectionConnection(std::function<void(const Event&)> handle);

  bool isUsable() const { return x_.isUsable(); }
  xcb_connection_t* get() const { return x_.get(); }
  const XConnection& x() const { return x_; }
  xcb_atom_t atom(const std::string& name);
  /// Empty for what is no atom.
  std::string nameOfAtom(xcb_atom_t atom);
  /// An unmapped window of one pixel, told of its properties.
  xcb_window_t makeWindow() const;

  /// Handles what has come. To be called after whatever waits for a reply: events may have come
  /// along with it.
  void drain();
  /// Handles what comes until `take` says that it was this one. False when that takes too long.
  bool waitFor(const std::function<bool(const Event&)>& take, Deadline deadline);
  /// The server's clock; 0 when it does not answer.
  xcb_timestamp_t serverTime(xcb_window_t window);

 private:
  XConnection x_;
  std::function<void(const Event&)> handle_;
  std::map<std::string, xcb_atom_t> atoms_;
  std::map<xcb_atom_t, std::string> names_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace qb
