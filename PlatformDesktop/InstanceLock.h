#pragma once

#include <memory>
#include <optional>

#include "PlatformDesktop/processes/XConnection.h"

namespace qb {

/// The right to be the one instance on an X display: the ownership of a selection, which the
/// server takes back when the owner ends, however it ends. A later instance hands its start over
/// by asking the owner to convert that selection.
class InstanceLock {
 public:
  enum class Failure {
    NoDisplay,
    /// Another instance has the right, and has taken this start for its own.
    HandedOver,
    /// Another instance has the right and does not answer.
    NoAnswer,
  };

  /// Null with `failure` set when there is no X server or another instance has the right. Waits
  /// some seconds for that one to answer; should it end meanwhile, its right passes on.
  static std::unique_ptr<InstanceLock> acquire(Failure& failure);

  /// Readable when another instance may have asked.
  int descriptor() const;
  /// Answers those that have asked since the last time; how many there were. Once it should be
  /// called without waiting for the descriptor.
  int answerOtherStarts();

 private:
  enum class Answer { Given, OwnerHasGone, None };

  InstanceLock();

  std::optional<xcb_window_t> otherOwner();
  std::optional<xcb_window_t> currentOwner() const;
  Answer askOwner(xcb_window_t owner);
  std::optional<Answer> answerIn(const xcb_generic_event_t& event, xcb_window_t owner) const;

  bool answer(const xcb_selection_request_event_t& request);

  XConnection x_;
  xcb_window_t window_ = XCB_NONE;
  xcb_atom_t selection_ = XCB_NONE, start_ = XCB_NONE;
};

}  // namespace qb
