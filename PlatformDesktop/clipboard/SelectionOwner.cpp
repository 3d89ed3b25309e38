#include "PlatformDesktop/clipboard/SelectionOwner.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace qb {

namespace {

/// What every server takes in one request, with room for the request itself.
constexpr std::size_t largestPart = 128 << 10;
/// Requestors that go away leave theirs unfinished.
constexpr std::size_t mostTransfers = 16;
constexpr std::chrono::milliseconds longestWaitUntilTaken{500};
/// Between the questions of one program.
constexpr std::chrono::milliseconds pauseAfterTaken{50};

}  // namespace

SelectionOwner::SelectionOwner() {
  if (!x_.isUsable()) return;
  clipboard_ = x_.atom("CLIPBOARD");
  targets_ = x_.atom("TARGETS");
  timestamp_ = x_.atom("TIMESTAMP");
  incr_ = x_.atom("INCR");
  window_ = xcb_generate_id(x_.get());
  xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window_, x_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  x_.flush();
  thread_ = std::thread([this] { serve(); });
}

SelectionOwner::~SelectionOwner() {
  if (!thread_.joinable()) return;
  // The one message that comes to its window ends it.
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window_;
  xcb_send_event(x_.get(), 0, window_, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  x_.flush();
  thread_.join();
}

bool SelectionOwner::own(std::vector<SelectionForm> forms, xcb_timestamp_t time) {
  if (!x_.isUsable()) return false;
  std::vector<Form> known;
  for (SelectionForm& form : forms) {
    known.push_back({x_.atom(form.target), std::move(form.bytes)});
  }
  const std::lock_guard lock(mutex_);
  xcb_set_selection_owner(x_.get(), window_, clipboard_, time);
  const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      x_.get(), xcb_get_selection_owner(x_.get(), clipboard_), nullptr));
  if (!reply || reply->owner != window_) return false;
  forms_ = std::move(known);
  since_ = time;
  return true;
}

void SelectionOwner::waitUntilTaken() {
  std::unique_lock lock(mutex_);
  const auto end = std::chrono::steady_clock::now() + longestWaitUntilTaken;
  std::uint64_t seen = timesTaken_;
  const auto isTakenAgain = [this, &seen] { return timesTaken_ != seen; };
  auto until = end;
  while (taken_.wait_until(lock, until, isTakenAgain)) {
    seen = timesTaken_;
    until = std::min(end, std::chrono::steady_clock::now() + pauseAfterTaken);
  }
}

void SelectionOwner::serve() {
  while (const XReply<xcb_generic_event_t> event{xcb_wait_for_event(x_.get())}) {
    if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE) return;
    handle(*event);
    x_.flush();
  }
}

void SelectionOwner::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7F) {
    case XCB_SELECTION_REQUEST:
      answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
      break;
    case XCB_SELECTION_CLEAR: {
      const auto& notice = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
      const std::lock_guard lock(mutex_);
      // One that was on its way while the clipboard was taken again says nothing.
      if (notice.time >= since_) forms_.clear();
      break;
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (notice.state == XCB_PROPERTY_DELETE) sendNextPart(notice.window, notice.atom);
      break;
    }
    default:
      break;
  }
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request) {
  // Programs of old name no property, and mean one that is called as what they ask for.
  const xcb_atom_t property = request.property == XCB_NONE ? request.target : request.property;
  const bool isGiven = give(request, property);
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = isGiven ? property : static_cast<xcb_atom_t>(XCB_NONE);
  xcb_send_event(x_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&notice));
}

bool SelectionOwner::give(const xcb_selection_request_event_t& request, xcb_atom_t property) {
  std::vector<Form> forms;
  xcb_timestamp_t since = 0;
  {
    const std::lock_guard lock(mutex_);
    forms = forms_;
    since = since_;
  }
  if (request.target == targets_) {
    giveTargets(request.requestor, property, forms);
    return true;
  }
  if (request.target == timestamp_) {
    xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
                        XCB_ATOM_INTEGER, 32, 1, &since);
    return true;
  }
  const auto form = std::find_if(forms.begin(), forms.end(), [&request](const Form& each) {
    return each.target == request.target;
  });
  if (form == forms.end()) return false;
  giveBytes(request.requestor, property, request.target, form->bytes());
  const std::lock_guard lock(mutex_);
  ++timesTaken_;
  taken_.notify_all();
  return true;
}

void SelectionOwner::giveTargets(xcb_window_t requestor, xcb_atom_t property,
                                 const std::vector<Form>& forms) {
  std::vector<xcb_atom_t> atoms = {targets_, timestamp_};
  for (const Form& form : forms) atoms.push_back(form.target);
  xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

void SelectionOwner::giveBytes(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                               PropertyList::Data bytes) {
  xcb_connection_t* const x = x_.get();
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (size <= largestPart) {
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, requestor, property, type, 8, size, bytes.data());
    return;
  }
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(x, requestor, XCB_CW_EVENT_MASK, &events);
  xcb_change_property(x, XCB_PROP_MODE_REPLACE, requestor, property, incr_, 32, 1, &size);
  transfers_.remove_if([&](const Transfer& each) {
    return each.requestor == requestor && each.property == property;
  });
  if (transfers_.size() == mostTransfers) transfers_.pop_front();
  transfers_.push_back({requestor, property, type, std::move(bytes)});
}

void SelectionOwner::sendNextPart(xcb_window_t requestor, xcb_atom_t property) {
  const auto transfer =
      std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& each) {
        return each.requestor == requestor && each.property == property;
      });
  if (transfer == transfers_.end()) return;
  const std::size_t size = std::min(largestPart, transfer->bytes.size() - transfer->sent);
  xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, requestor, property, transfer->type, 8,
                      static_cast<std::uint32_t>(size), transfer->bytes.data() + transfer->sent);
  xcb_flush(x_.get());
  transfer->sent += size;
  // An empty part has told the end.
  if (size == 0) transfers_.erase(transfer);
}

}  // namespace qb
