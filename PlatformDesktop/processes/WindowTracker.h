#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "PlatformDesktop/processes/XConnection.h"

namespace qb {

/// A window that the window manager manages, as its properties tell.
struct ManagedWindow {
  xcb_window_t id = 0;
  /// 0 where the program does not say, or runs on another machine.
  std::int32_t pid = 0;
  /// What keeps the windows of one program together where there is no process id.
  xcb_window_t leader = 0;
  /// The two halves of WM_CLASS.
  std::string instanceName, className;
  /// One that a user switches to: no desktop, dock, splash or tool-tip window, and not kept out of
  /// task bars.
  bool isOrdinary = true;
};

/// The managed windows of the X screen and the one that has the keyboard.
///
/// All of it is read when the window manager says that it has changed, over a connection of its
/// own, so that looking costs nothing. Without a window manager the windows are those that stand
/// on the root, and the keyboard's place is asked for at each look. Main thread.
class WindowTracker {
 public:
  WindowTracker();

  XConnection& connection() { return x_; }
  /// Takes in what has changed; true when anything has. Never waits when nothing has.
  bool update();

  /// In the order of their first showing.
  const std::vector<ManagedWindow>& windows() const { return windows_; }
  /// From back to front.
  const std::vector<xcb_window_t>& stacking() const { return stacking_; }
  /// None: 0.
  xcb_window_t activeWindow();
  const ManagedWindow* window(xcb_window_t id) const;

  // These wait for the server.
  bool isIconic(xcb_window_t window) const;
  /// On the desktop that is in sight, or on all.
  bool isOnCurrentDesktop(xcb_window_t window) const;
  bool canBeClosed(xcb_window_t window) const;

  /// Gives a window the keyboard, in front of all; `time` is that of the user's last event.
  void activate(xcb_window_t window, std::uint32_t time);
  void raiseBelow(xcb_window_t window, xcb_window_t sibling);
  void iconify(xcb_window_t window);
  void deiconify(xcb_window_t window);
  void close(xcb_window_t window, std::uint32_t time);

 private:
  struct Atoms {
    explicit Atoms(const XConnection& x);
    xcb_atom_t clientList, clientListStacking, activeWindow, supportingWmCheck, wmPid, wmWindowType,
        wmState, skipTaskbar, icccmState, changeState, protocols, deleteWindow, clientLeader,
        clientMachine, wmDesktop, currentDesktop, restackWindow;
    std::vector<xcb_atom_t> ordinaryTypes, auxiliaryTypes;
  };
  struct Pending;

  void takeEvents(xcb_generic_event_t* (*poll)(xcb_connection_t*));
  void handle(const xcb_generic_event_t& event);
  void checkWindowManager();
  void readWindows();
  void readActiveWindow();
  std::vector<xcb_window_t> windowsOnRoot() const;
  Pending ask(xcb_window_t id) const;
  ManagedWindow read(const Pending& pending) const;
  bool isOrdinary(const std::vector<std::uint32_t>& types,
                  const std::vector<std::uint32_t>& states) const;

  XConnection x_;
  Atoms atoms_;
  std::string hostName_;
  std::vector<ManagedWindow> windows_;
  std::vector<xcb_window_t> stacking_;
  xcb_window_t active_ = 0, windowManager_ = 0;
  bool managerChanged_ = true, windowsChanged_ = true, activeChanged_ = true;
};

}  // namespace qb
