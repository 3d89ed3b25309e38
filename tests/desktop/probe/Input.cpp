// The hands of the probe: keys, buttons, pointer, grabs.
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>

#include "Desktop.h"

namespace probe {

xcb_keycode_t Desktop::keycode(xcb_keysym_t keysym) {
  const auto* setup = xcb_get_setup(connection_);
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  Reply<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
      connection_, xcb_get_keyboard_mapping(connection_, setup->min_keycode, count), nullptr));
  if (!map) return 0;
  const auto* keysyms = xcb_get_keyboard_mapping_keysyms(map.get());
  // Unshifted positions first: a name that stands on two keys means the plain one.
  for (int level = 0; level < map->keysyms_per_keycode; ++level) {
    for (int i = 0; i < count; ++i) {
      if (keysyms[i * map->keysyms_per_keycode + level] == keysym) {
        return static_cast<xcb_keycode_t>(setup->min_keycode + i);
      }
    }
  }
  return 0;
}

xcb_keycode_t Desktop::keycode(const std::string& name) {
  return keycode(xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS));
}

void Desktop::fake(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
  xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root(), x, y, 0);
}

bool Desktop::key(const std::string& name, bool down) {
  const auto code = keycode(name);
  if (!code) return false;
  fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code);
  xcb_flush(connection_);
  return true;
}

bool Desktop::tap(const std::vector<std::string>& names) {
  std::vector<xcb_keycode_t> codes;
  for (const std::string& name : names) codes.push_back(keycode(name));
  if (std::find(codes.begin(), codes.end(), 0) != codes.end()) return false;
  for (const auto code : codes) fake(XCB_KEY_PRESS, code);
  std::for_each(codes.rbegin(), codes.rend(), [this](auto code) { fake(XCB_KEY_RELEASE, code); });
  xcb_flush(connection_);
  return true;
}

void Desktop::stopAutoRepeat() {
  const std::uint32_t off = XCB_AUTO_REPEAT_MODE_OFF;
  xcb_change_keyboard_control(connection_, XCB_KB_AUTO_REPEAT_MODE, &off);
  synchronize();
}

void Desktop::button(std::uint8_t number, bool down) {
  fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number);
  xcb_flush(connection_);
}

void Desktop::movePointer(std::int16_t x, std::int16_t y) {
  fake(XCB_MOTION_NOTIFY, 0, x, y);
  xcb_flush(connection_);
}

void Desktop::releaseAll() {
  Reply<xcb_query_keymap_reply_t> map(
      xcb_query_keymap_reply(connection_, xcb_query_keymap(connection_), nullptr));
  for (int code = 8; map && code < 256; ++code) {
    if (map->keys[code / 8] & (1 << (code % 8))) {
      fake(XCB_KEY_RELEASE, static_cast<std::uint8_t>(code));
    }
  }
  for (std::uint8_t number = 1; number <= 3; ++number) button(number, false);
  synchronize();
}

bool Desktop::inputIsFree() {
  Reply<xcb_grab_keyboard_reply_t> keyboard(
      xcb_grab_keyboard_reply(connection_,
                              xcb_grab_keyboard(connection_, 1, root(), XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  Reply<xcb_grab_pointer_reply_t> pointer(xcb_grab_pointer_reply(
      connection_,
      xcb_grab_pointer(connection_, 1, root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                       XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
      nullptr));
  xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
  xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
  synchronize();
  return keyboard && keyboard->status == XCB_GRAB_STATUS_SUCCESS && pointer &&
         pointer->status == XCB_GRAB_STATUS_SUCCESS;
}

bool Desktop::chordIsTaken(std::uint16_t modifiers, const std::string& name) {
  const auto code = keycode(name);
  Reply<xcb_generic_error_t> error(xcb_request_check(
      connection_, xcb_grab_key_checked(connection_, 0, root(), modifiers, code,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
  if (error) return true;
  xcb_ungrab_key(connection_, code, root(), modifiers);
  synchronize();
  return false;
}

}  // namespace probe
