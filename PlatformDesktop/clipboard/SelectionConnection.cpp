#include "PlatformDesktop/clipboard/SelectionConnection.h"

#include <poll.h>

#include <algorithm>
#include <utility>

namespace qb {

namespace {

using EventPointer = XReply<xcb_generic_event_t>;
constexpr std::chrono::seconds longestWaitForServer{5};

}  // namespace

SelectionConnection::SelectionConnection(std::function<void(const Event&)> handle)
    : handle_(std::move(handle)) {
  if (!isUsable()) return;
  notifier_ =
      std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(get()), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { drain(); });
}

xcb_atom_t SelectionConnection::atom(const std::string& name) {
  const auto [known, isNew] = atoms_.try_emplace(name);
  if (isNew) {
    known->second = x_.atom(name);
    names_[known->second] = name;
  }
  return known->second;
}

std::string SelectionConnection::nameOfAtom(xcb_atom_t atom) {
  const auto [known, isNew] = names_.try_emplace(atom);
  if (!isNew) return known->second;
  const XReply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(get(), xcb_get_atom_name(get(), atom), nullptr));
  if (reply) {
    known->second = {xcb_get_atom_name_name(reply.get()),
                     static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
  }
  return known->second;
}

xcb_window_t SelectionConnection::makeWindow() const {
  const xcb_window_t window = xcb_generate_id(get());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(get(), XCB_COPY_FROM_PARENT, window, x_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

void SelectionConnection::drain() {
  if (!isUsable()) return;
  while (const EventPointer event{xcb_poll_for_event(get())}) handle_(*event);
  xcb_flush(get());
  // The connection has been lost: its descriptor would stay readable.
  if (!isUsable()) notifier_->setEnabled(false);
}

bool SelectionConnection::waitFor(const std::function<bool(const Event&)>& take,
                                  Deadline deadline) {
  xcb_flush(get());
  while (isUsable()) {
    while (const EventPointer event{xcb_poll_for_event(get())}) {
      if (take(*event)) return true;
      handle_(*event);
    }
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    pollfd source{xcb_get_file_descriptor(get()), POLLIN, 0};
    poll(&source, 1, static_cast<int>(left.count()));
  }
  return false;
}

xcb_timestamp_t SelectionConnection::serverTime(xcb_window_t window) {
  const xcb_atom_t property = atom("QUILLBOX_TIME");
  xcb_change_property(get(), XCB_PROP_MODE_APPEND, window, property, XCB_ATOM_INTEGER, 32, 0,
                      nullptr);
  xcb_timestamp_t time = 0;
  waitFor(
      [&](const Event& event) {
        if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return false;
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.window != window || notice.atom != property) return false;
        time = notice.time;
        return true;
      },
      std::chrono::steady_clock::now() + longestWaitForServer);
  return time;
}

}  // namespace qb
