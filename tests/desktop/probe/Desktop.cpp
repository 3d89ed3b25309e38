#include "Desktop.h"

#include <poll.h>
#include <sys/shm.h>

#include <algorithm>
#include <cstring>

namespace probe {

std::unique_ptr<Desktop> Desktop::connect(const std::string& display) {
  int screenNumber = 0;
  xcb_connection_t* connection =
      xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
  if (xcb_connection_has_error(connection)) {
    xcb_disconnect(connection);
    return nullptr;
  }
  return std::unique_ptr<Desktop>(new Desktop(connection, screenNumber));
}

Desktop::Desktop(xcb_connection_t* connection, int screenNumber) : connection_(connection) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (int i = 0; i < screenNumber; ++i) xcb_screen_next(&screens);
  screen_ = screens.data;
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root(), XCB_CW_EVENT_MASK, &events);
  attachSharedMemory();
  synchronize();
}

Desktop::~Desktop() {
  if (memory_) shmdt(memory_);
  xcb_disconnect(connection_);
}

Area Desktop::screen() const {
  // Asked anew each time: the size changes with the monitors.
  Reply<xcb_get_geometry_reply_t> reply(
      xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, root()), nullptr));
  if (!reply) return {};
  return {0, 0, reply->width, reply->height};
}

void Desktop::synchronize() {
  std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

xcb_atom_t Desktop::atom(const std::string& name) {
  auto known = atoms_.find(name);
  if (known != atoms_.end()) return known->second;
  Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection_,
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  return atoms_[name] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<std::uint32_t> Desktop::cardinals(xcb_window_t window, const std::string& property) {
  Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection_, xcb_get_property(connection_, 0, window, atom(property), XCB_ATOM_ANY, 0, 4096),
      nullptr));
  if (!reply || reply->format != 32) return {};
  auto* values = static_cast<std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + xcb_get_property_value_length(reply.get()) / 4};
}

xcb_window_t Desktop::activeWindow() {
  auto values = cardinals(root(), "_NET_ACTIVE_WINDOW");
  return values.empty() ? xcb_window_t{XCB_WINDOW_NONE} : values.front();
}

xcb_window_t Desktop::focusedWindow() {
  Reply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

std::string Desktop::text(xcb_window_t window, xcb_atom_t property) {
  Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection_, xcb_get_property(connection_, 0, window, property, XCB_ATOM_ANY, 0, 256),
      nullptr));
  if (!reply) return {};
  return {static_cast<char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::string Desktop::title(xcb_window_t window) {
  std::string result = text(window, atom("_NET_WM_NAME"));
  if (result.empty()) result = text(window, XCB_ATOM_WM_NAME);
  std::replace(result.begin(), result.end(), '\n', ' ');
  return result;
}

std::string Desktop::className(xcb_window_t window) {
  const std::string both = text(window, XCB_ATOM_WM_CLASS);
  auto end = both.find('\0');
  return end == std::string::npos ? both : std::string(both.c_str() + end + 1);
}

std::vector<Client> Desktop::clients() {
  std::vector<Client> result;
  for (auto window : cardinals(root(), "_NET_CLIENT_LIST")) {
    auto processId = cardinals(window, "_NET_WM_PID");
    result.push_back({window, className(window), processId.empty() ? 0 : processId.front()});
  }
  return result;
}

std::vector<xcb_window_t> Desktop::mappedWindows(const std::string& wanted) {
  std::vector<xcb_window_t> result;
  Reply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root()), nullptr));
  if (!tree) return result;
  auto* children = xcb_query_tree_children(tree.get());
  for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
    Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, children[i]), nullptr));
    const bool mapped = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    if (mapped && className(children[i]) == wanted) result.push_back(children[i]);
  }
  return result;
}

Area Desktop::geometry(xcb_window_t window) {
  Reply<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  Reply<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
      connection_, xcb_translate_coordinates(connection_, window, root(), 0, 0), nullptr));
  if (!size || !origin) return {};
  return {origin->dst_x, origin->dst_y, size->width, size->height};
}

bool Desktop::selectionIsOwned(const std::string& name) {
  Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection_, xcb_get_selection_owner(connection_, atom(name)), nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

void Desktop::activate(xcb_window_t window) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = atom("_NET_ACTIVE_WINDOW");
  event.data.data32[0] = 2;  // From a pager: obeyed without regard to time stamps.
  xcb_send_event(connection_, 0, root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection_);
}

bool Desktop::waitUntil(const std::function<bool()>& holds, Seconds timeout) {
  const auto deadline = Clock::now() + timeout;
  while (true) {
    while (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    }
    if (holds()) return true;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0) return false;
    // An event that came with the replies above is already in xcb's queue and wakes nobody: look
    // again now and then whatever the socket says. Some conditions send no event at all.
    pollfd socket{xcb_get_file_descriptor(connection_), POLLIN, 0};
    poll(&socket, 1, static_cast<int>(std::min<long>(left.count(), 10)));
  }
}

}  // namespace probe
