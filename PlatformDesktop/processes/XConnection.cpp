#include "PlatformDesktop/processes/XConnection.h"

#include <algorithm>

namespace qb {

XConnection::XConnection() {
  int screenNumber = 0;
  connection_ = xcb_connect(nullptr, &screenNumber);
  if (!isUsable()) return;
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
  for (int i = 0; i < screenNumber && screens.rem > 1; ++i) xcb_screen_next(&screens);
  root_ = screens.data->root;
}

XConnection::~XConnection() { xcb_disconnect(connection_); }

xcb_atom_t XConnection::atom(std::string_view name) const {
  const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection_,
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
      nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_get_property_cookie_t XConnection::ask(xcb_window_t window, xcb_atom_t property,
                                           std::uint32_t words) const {
  return xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, words);
}

std::vector<std::uint32_t> XConnection::readNumbers(xcb_get_property_cookie_t cookie) const {
  const XReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + length / sizeof(std::uint32_t)};
}

std::string XConnection::readText(xcb_get_property_cookie_t cookie) const {
  const XReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 8) return {};
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  return {static_cast<const char*>(xcb_get_property_value(reply.get())), length};
}

void XConnection::sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                                      const std::vector<std::uint32_t>& values) const {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = type;
  for (std::size_t i = 0; i < std::min<std::size_t>(values.size(), 5); ++i) {
    event.data.data32[i] = values[i];
  }
  xcb_send_event(connection_, 0, root_,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
}

}  // namespace qb
