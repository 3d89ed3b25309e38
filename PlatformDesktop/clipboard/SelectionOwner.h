#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "PlatformDesktop/processes/XConnection.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// One form in which the content of the clipboard can be had. `bytes` is called on any thread.
struct SelectionForm {
  std::string target;
  std::function<PropertyList::Data()> bytes;
};

/// Has the clipboard, and gives other programs what is on it, long content in parts. On a thread
/// and a connection of its own: this program's own text fields also ask, and wait for the answer on
/// the main thread.
class SelectionOwner {
 public:
  SelectionOwner();
  ~SelectionOwner();
  SelectionOwner(const SelectionOwner&) = delete;
  SelectionOwner& operator=(const SelectionOwner&) = delete;

  /// Takes the clipboard at that time of the server with that content. False when the server
  /// refuses. Main thread.
  bool own(std::vector<SelectionForm> forms, xcb_timestamp_t time);
  /// Waits until another program takes some of the content, and then until none has for a moment;
  /// half a second at most. Main thread.
  void waitUntilTaken();
  xcb_window_t window() const { return window_; }

 private:
  struct Form {
    xcb_atom_t target;
    std::function<PropertyList::Data()> bytes;
  };
  /// Content on its way in parts.
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    PropertyList::Data bytes;
    std::size_t sent = 0;
  };

  void serve();
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  /// Puts what is asked for in the property; false when there is no such thing.
  bool give(const xcb_selection_request_event_t& request, xcb_atom_t property);
  void giveTargets(xcb_window_t requestor, xcb_atom_t property, const std::vector<Form>& forms);
  void giveBytes(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                 PropertyList::Data bytes);
  void sendNextPart(xcb_window_t requestor, xcb_atom_t property);

  XConnection x_;
  xcb_window_t window_ = XCB_NONE;
  xcb_atom_t clipboard_ = XCB_NONE, targets_ = XCB_NONE, timestamp_ = XCB_NONE, incr_ = XCB_NONE;
  std::mutex mutex_;
  std::vector<Form> forms_;
  xcb_timestamp_t since_ = 0;
  /// How often some of the content has been given.
  std::uint64_t timesTaken_ = 0;
  std::condition_variable taken_;
  std::list<Transfer> transfers_;
  std::thread thread_;
};

}  // namespace qb
