#include "PlatformDesktop/InstanceLock.h"

#include <poll.h>

#include <algorithm>
#include <chrono>

namespace qb {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// An instance that is just starting answers as soon as its loop runs.
constexpr std::chrono::milliseconds patience{10000};

constexpr std::uint8_t kindOfEvent(const xcb_generic_event_t& event) {
  return event.response_type & 0x7f;
}

}  // namespace

InstanceLock::InstanceLock() {
  if (!x_.isUsable()) return;
  selection_ = x_.atom("_QUILLBOX_S0");
  start_ = x_.atom("_QUILLBOX_START");
  window_ = xcb_generate_id(x_.get());
  xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window_, x_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

std::unique_ptr<InstanceLock> InstanceLock::acquire(Failure& failure) {
  std::unique_ptr<InstanceLock> lock(new InstanceLock);
  while (lock->x_.isUsable()) {
    const std::optional<xcb_window_t> owner = lock->otherOwner();
    if (!owner) return lock;
    const Answer answer = lock->askOwner(*owner);
    if (answer == Answer::OwnerHasGone) continue;
    failure = answer == Answer::Given ? Failure::HandedOver : Failure::NoAnswer;
    return nullptr;
  }
  failure = Failure::NoDisplay;
  return nullptr;
}

/// Takes the right if nobody has it.
std::optional<xcb_window_t> InstanceLock::otherOwner() {
  xcb_connection_t* const c = x_.get();
  // Between looking and taking nobody else may take it.
  xcb_grab_server(c);
  const std::optional<xcb_window_t> owner = currentOwner();
  const bool isFree = owner == XCB_NONE;
  if (isFree) xcb_set_selection_owner(c, window_, selection_, XCB_CURRENT_TIME);
  xcb_ungrab_server(c);
  xcb_flush(c);
  return isFree ? std::nullopt : std::optional(owner.value_or(XCB_NONE));
}

/// None when the server does not answer any more.
std::optional<xcb_window_t> InstanceLock::currentOwner() const {
  const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      x_.get(), xcb_get_selection_owner(x_.get(), selection_), nullptr));
  return reply ? std::optional(reply->owner) : std::nullopt;
}

InstanceLock::Answer InstanceLock::askOwner(xcb_window_t owner) {
  xcb_connection_t* const c = x_.get();
  // What watches for its end is refused if it has ended already.
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  const auto watched = xcb_change_window_attributes_checked(c, owner, XCB_CW_EVENT_MASK, &events);
  if (const XReply<xcb_generic_error_t> error{xcb_request_check(c, watched)}) {
    return Answer::OwnerHasGone;
  }
  xcb_convert_selection(c, window_, selection_, start_, start_, XCB_CURRENT_TIME);
  xcb_flush(c);
  const auto deadline = SteadyClock::now() + patience;
  while (x_.isUsable()) {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(c)}) {
      if (const auto answer = answerIn(*event, owner)) return *answer;
    }
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - SteadyClock::now());
    if (left.count() <= 0) return Answer::None;
    pollfd server{.fd = descriptor(), .events = POLLIN, .revents = 0};
    poll(&server, 1, static_cast<int>(left.count()));
  }
  return Answer::OwnerHasGone;
}

std::optional<InstanceLock::Answer> InstanceLock::answerIn(const xcb_generic_event_t& event,
                                                           xcb_window_t owner) const {
  switch (kindOfEvent(event)) {
    case XCB_SELECTION_NOTIFY: {
      const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
      if (notice.selection != selection_ || notice.target != start_) return std::nullopt;
      if (notice.property != XCB_NONE) return Answer::Given;
      // The server itself refuses when there is no owner any more.
      return currentOwner() == owner ? Answer::None : Answer::OwnerHasGone;
    }
    case XCB_DESTROY_NOTIFY:
      if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window != owner) break;
      return Answer::OwnerHasGone;
    default:
      break;
  }
  return std::nullopt;
}

int InstanceLock::descriptor() const { return xcb_get_file_descriptor(x_.get()); }

int InstanceLock::answerOtherStarts() {
  int count = 0;
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x_.get())}) {
    if (kindOfEvent(*event) != XCB_SELECTION_REQUEST) continue;
    if (answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event))) ++count;
  }
  x_.flush();
  return count;
}

/// False for questions that no instance asks, which are refused.
bool InstanceLock::answer(const xcb_selection_request_event_t& request) {
  const bool isStart = request.selection == selection_ && request.target == start_;
  // Events travel in 32 bytes, of which this one fills fewer.
  union {
    xcb_selection_notify_event_t notice;
    char bytes[32];
  } event{};
  event.notice.response_type = XCB_SELECTION_NOTIFY;
  event.notice.time = request.time;
  event.notice.requestor = request.requestor;
  event.notice.selection = request.selection;
  event.notice.target = request.target;
  if (isStart) {
    // Without content: that there is an answer says it all.
    event.notice.property = request.property == XCB_NONE ? request.target : request.property;
    xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, request.requestor, event.notice.property,
                        start_, 32, 0, nullptr);
  }
  xcb_send_event(x_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.bytes);
  return isStart;
}

}  // namespace qb
