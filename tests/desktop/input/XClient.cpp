#include "XClient.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <set>

#include "../probe/TypedText.h"
#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb::test {

namespace {

const std::set<std::uint16_t> modifierKeys{54, 55, 56, 57, 58, 59, 60, 61, 62};

std::uint8_t xCode(std::uint16_t keyCode) {
  return KeyCodeTable::xCodeFromKeyCode(keyCode).value();
}

}  // namespace

bool waitUntil(const std::vector<Pump*>& pumps, const std::function<bool()>& predicate) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + std::chrono::seconds(60);
  for (;;) {
    for (Pump* pump : pumps) pump->pump();
    if (predicate()) return true;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - steady_clock::now()).count();
    if (left <= 0) return false;
    std::vector<pollfd> sources;
    for (const Pump* pump : pumps) sources.push_back({pump->descriptor(), POLLIN, 0});
    // Not every predicate has a descriptor to tell of it: the log, the server's grabs.
    poll(sources.data(), sources.size(), static_cast<int>(std::min<long>(left, 20)));
  }
}

XClient::XClient(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(xcb())) {
    ADD_FAILURE() << "no connection to " << display;
    return;
  }
  root_ = xcb_setup_roots_iterator(xcb_get_setup(xcb())).data->root;
}

void XClient::openWindow() {
  window_ = xcb_generate_id(xcb());
  const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                               XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, window_, root_, 100, 100, 300, 200, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                    &events);
  xcb_map_window(xcb(), window_);
  EXPECT_TRUE(waitUntil({this}, [&] { return managed_; })) << "the client got no frame";
}

void XClient::openBypassWindow(int x, int y, int width, int height) {
  window_ = xcb_generate_id(xcb());
  const std::uint32_t overrideRedirect = 1;
  xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, window_, root_, static_cast<std::int16_t>(x),
                    static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                    static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
  xcb_map_window(xcb(), window_);
  sync();
}

void XClient::takeFocus() {
  xcb_set_input_focus(xcb(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
  EXPECT_TRUE(waitUntil({this}, [&] { return focused_; })) << "the client got no focus";
}

void XClient::fake(std::uint8_t type, std::uint8_t detail, int x, int y) {
  xcb_test_fake_input(xcb(), type, detail, XCB_CURRENT_TIME, root_, static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), 0);
  xcb_flush(xcb());
}

void XClient::press(std::uint16_t keyCode) { fake(XCB_KEY_PRESS, xCode(keyCode)); }
void XClient::release(std::uint16_t keyCode) { fake(XCB_KEY_RELEASE, xCode(keyCode)); }
void XClient::tap(std::uint16_t keyCode) {
  press(keyCode);
  release(keyCode);
}
void XClient::button(std::uint8_t number, bool down) {
  fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number);
}
void XClient::movePointer(int x, int y) { fake(XCB_MOTION_NOTIFY, 0, x, y); }

void XClient::sync() {
  const XcbPointer<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr));
  EXPECT_TRUE(reply);
}

bool XClient::grabKeyboard() {
  const auto cookie = xcb_grab_keyboard(xcb(), 0, window_ != 0 ? window_ : root_, XCB_CURRENT_TIME,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbPointer<xcb_grab_keyboard_reply_t> reply(
      xcb_grab_keyboard_reply(xcb(), cookie, nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XClient::ungrabKeyboard() {
  xcb_ungrab_keyboard(xcb(), XCB_CURRENT_TIME);
  sync();
}

bool XClient::grabPointer() {
  const auto cookie = xcb_grab_pointer(xcb(), 0, root_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                       XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
  const XcbPointer<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(xcb(), cookie, nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XClient::ungrabPointer() {
  xcb_ungrab_pointer(xcb(), XCB_CURRENT_TIME);
  sync();
}

bool XClient::grabKey(std::uint16_t keyCode, std::uint16_t modifiers) {
  const XcbPointer<xcb_generic_error_t> error(
      xcb_request_check(xcb(), xcb_grab_key_checked(xcb(), 0, root_, modifiers, xCode(keyCode),
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
  return !error;
}

xcb_atom_t XClient::atom(const std::string& name) {
  const auto cookie =
      xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const XcbPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb(), cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_NONE);
}

xcb_window_t XClient::windowManager() { return windowInProperty("_NET_SUPPORTING_WM_CHECK"); }
xcb_window_t XClient::activeWindow() { return windowInProperty("_NET_ACTIVE_WINDOW"); }

xcb_window_t XClient::windowInProperty(const std::string& name) {
  const auto cookie = xcb_get_property(xcb(), 0, root_, atom(name), XCB_ATOM_WINDOW, 0, 1);
  const XcbPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb(), cookie, nullptr));
  if (!reply || xcb_get_property_value_length(reply.get()) != 4) return XCB_NONE;
  return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

void XClient::touchWindowManagerProperty() {
  const xcb_window_t present = windowManager();
  xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, root_, atom("_NET_SUPPORTING_WM_CHECK"),
                      XCB_ATOM_WINDOW, 32, 1, &present);
  sync();
}

int XClient::descriptor() const { return xcb_get_file_descriptor(xcb()); }

void XClient::pump() {
  xcb_flush(xcb());
  while (const auto event = XcbPointer<xcb_generic_event_t>(xcb_poll_for_event(xcb()))) {
    const auto type = event->response_type & 0x7f;
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
      const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
      if (modifierKeys.contains(KeyCodeTable::keyCodeFromX(key.detail))) continue;
      keys.push_back({type == XCB_KEY_PRESS, key.detail, key.state});
      if (type == XCB_KEY_PRESS) text += probe::typedText(xcb(), key.detail, key.state);
    } else if (type == XCB_FOCUS_IN || type == XCB_FOCUS_OUT) {
      const auto& focus = reinterpret_cast<const xcb_focus_in_event_t&>(*event);
      focused_ = type == XCB_FOCUS_IN;
      if (focus.mode == XCB_NOTIFY_MODE_GRAB) keyboardIsTaken = true;
      if (focus.mode == XCB_NOTIFY_MODE_UNGRAB) {
        keyboardIsTaken = false;
        ++keyboardReturns;
      }
    } else if (type == XCB_REPARENT_NOTIFY) {
      managed_ = reinterpret_cast<const xcb_reparent_notify_event_t&>(*event).parent != root_;
    } else if (type == XCB_MAPPING_NOTIFY) {
      ++mappingChanges;
    }
  }
}

}  // namespace qb::test
