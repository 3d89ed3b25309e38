#include "PlatformDesktop/input/InputConnection.h"

#include <string_view>

namespace qb {

namespace {

bool hasExtension(xcb_connection_t* xcb, std::string_view name) {
  const auto cookie =
      xcb_query_extension(xcb, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbPointer<xcb_query_extension_reply_t> reply(
      xcb_query_extension_reply(xcb, cookie, nullptr));
  return reply && reply->present;
}

xcb_window_t rootOfScreen(xcb_connection_t* xcb, int number) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb));
  for (; number > 0 && screens.rem > 1; --number) xcb_screen_next(&screens);
  return screens.data->root;
}

xcb_input_device_id_t findMasterKeyboard(xcb_connection_t* xcb) {
  const XcbPointer<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
      xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL_MASTER), nullptr));
  if (!reply) return 0;
  auto devices = xcb_input_xi_query_device_infos_iterator(reply.get());
  for (; devices.rem > 0; xcb_input_xi_device_info_next(&devices)) {
    if (devices.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) return devices.data->deviceid;
  }
  return 0;
}

/// The server serves raw events by the rules of the version that the client has named.
bool negotiateXInput(xcb_connection_t* xcb) {
  const XcbPointer<xcb_input_xi_query_version_reply_t> reply(
      xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
  return reply &&
         (reply->major_version > 2 || (reply->major_version == 2 && reply->minor_version >= 2));
}

}  // namespace

std::variant<InputConnection, InputError> InputConnection::open(const char* display) {
  int screen = 0;
  InputConnection connection;
  connection.xcb.reset(xcb_connect(display, &screen));
  xcb_connection_t* xcb = connection.xcb.get();
  if (xcb_connection_has_error(xcb)) {
    return InputError{InputError::Kind::NoDisplay, "The X display cannot be opened."};
  }
  connection.root = rootOfScreen(xcb, screen);

  const auto* xinput = xcb_get_extension_data(xcb, &xcb_input_id);
  if (xinput && xinput->present && negotiateXInput(xcb)) {
    connection.xinputOpcode = xinput->major_opcode;
    connection.masterKeyboard = findMasterKeyboard(xcb);
  }
  if (connection.masterKeyboard == 0) {
    return InputError{InputError::Kind::NoXInput,
                      "The X server lacks the XInput extension in version 2.2 or later."};
  }
  if (!hasExtension(xcb, "XTEST")) {
    return InputError{InputError::Kind::NoXTest, "The X server lacks the XTEST extension."};
  }
  return connection;
}

}  // namespace qb
