// A plain X application for the tests: one managed window that takes the focus and tells on its
// standard output, line by line, each key and button that reaches it.
//
//   xclient CLASS X Y WIDTH HEIGHT COLOUR [text]
//
// "ready" (mapped), "press NAME", "release NAME", "button N", "focus", "blur". With "text" also
// "types TEXT" for each press that types something, and "command NAME MODIFIERS" for each with
// Control or Alt.
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "Desktop.h"
#include "TypedText.h"

namespace {

using probe::Reply;

std::string keyName(xcb_connection_t* connection, xcb_keycode_t code) {
  Reply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
      connection, xcb_get_keyboard_mapping(connection, code, 1), nullptr));
  if (!map) return "none";
  char name[64] = "none";
  xkb_keysym_get_name(xcb_get_keyboard_mapping_keysyms(map.get())[0], name, sizeof name);
  return name;
}

xcb_window_t makeWindow(probe::Desktop& desktop, char** arguments) {
  auto* connection = desktop.connection();
  const auto number = [&](int i) { return std::atoi(arguments[i]); };
  const xcb_window_t window = xcb_generate_id(connection);
  const std::uint32_t values[] = {
      static_cast<std::uint32_t>(std::strtoul(arguments[6], nullptr, 16)),
      XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_BUTTON_PRESS |
          XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, desktop.root(),
                    static_cast<std::int16_t>(number(2)), static_cast<std::int16_t>(number(3)),
                    static_cast<std::uint16_t>(number(4)), static_cast<std::uint16_t>(number(5)), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);

  const std::string name = arguments[1];
  const std::string both = name + '\0' + name + '\0';
  xcb_icccm_set_wm_class(connection, window, static_cast<std::uint32_t>(both.size()), both.c_str());
  xcb_icccm_set_wm_name(connection, window, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(name.size()), name.c_str());
  xcb_size_hints_t size{};
  xcb_icccm_size_hints_set_position(&size, 1, number(2), number(3));
  xcb_icccm_set_wm_normal_hints(connection, window, &size);
  xcb_icccm_wm_hints_t hints{};
  xcb_icccm_wm_hints_set_input(&hints, 1);
  xcb_icccm_wm_hints_set_normal(&hints);
  xcb_icccm_set_wm_hints(connection, window, &hints);
  const std::uint32_t processId = static_cast<std::uint32_t>(getpid());
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, desktop.atom("_NET_WM_PID"),
                      XCB_ATOM_CARDINAL, 32, 1, &processId);
  xcb_map_window(connection, window);
  xcb_flush(connection);
  return window;
}

void tellText(xcb_connection_t* connection, const xcb_key_press_event_t& key) {
  std::string modifiers;
  if ((key.state & XCB_MOD_MASK_CONTROL) != 0) modifiers += " control";
  if ((key.state & XCB_MOD_MASK_1) != 0) modifiers += " alt";
  if (!modifiers.empty()) {
    if ((key.state & XCB_MOD_MASK_SHIFT) != 0) modifiers += " shift";
    std::cout << "command " << keyName(connection, key.detail) << modifiers << std::endl;
  } else if (const auto text = probe::typedText(connection, key.detail, key.state); !text.empty()) {
    std::cout << "types " << text << std::endl;
  }
}

void tell(xcb_connection_t* connection, const xcb_generic_event_t& event, bool tellsText) {
  const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
  switch (event.response_type & 0x7f) {
    case XCB_MAP_NOTIFY:
      std::cout << "ready" << std::endl;
      break;
    case XCB_KEY_PRESS:
      std::cout << "press " << keyName(connection, key.detail) << std::endl;
      if (tellsText) tellText(connection, key);
      break;
    case XCB_KEY_RELEASE:
      std::cout << "release " << keyName(connection, key.detail) << std::endl;
      break;
    case XCB_BUTTON_PRESS:
      std::cout << "button " << int{key.detail} << std::endl;
      break;
    case XCB_FOCUS_IN:
      std::cout << "focus" << std::endl;
      break;
    case XCB_FOCUS_OUT:
      std::cout << "blur" << std::endl;
      break;
    default:
      break;
  }
}

}  // namespace

int main(int count, char** arguments) {
  const bool tellsText = count == 8 && std::string_view(arguments[7]) == "text";
  if (count != 7 && !tellsText) {
    std::cerr << "usage: xclient CLASS X Y WIDTH HEIGHT COLOUR [text]" << std::endl;
    return 64;
  }
  auto desktop = probe::Desktop::connect("");
  if (!desktop) return 1;
  // The probe's own interest in the root window is of no use here.
  const std::uint32_t none = 0;
  xcb_change_window_attributes(desktop->connection(), desktop->root(), XCB_CW_EVENT_MASK, &none);
  makeWindow(*desktop, arguments);
  while (Reply<xcb_generic_event_t> event{xcb_wait_for_event(desktop->connection())}) {
    tell(desktop->connection(), *event, tellsText);
  }
  return 0;
}
