#include "PlatformDesktop/input/KeyInjection.h"

#include <xcb/xtest.h>

#include <chrono>
#include <string_view>
#include <thread>

#include "PlatformDesktop/input/XKeyboard.h"

namespace qb {

namespace {

/// Hands leave a key combination well within that.
constexpr int modifierLooks = 70;
constexpr std::chrono::milliseconds lookInterval{10};

/// The slaves that stand for keyboards which can be touched: the server's own one for XTEST holds
/// what we send.
std::vector<std::uint16_t> realKeyboards(xcb_connection_t* xcb) {
  std::vector<std::uint16_t> keyboards;
  const XcbPointer<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
      xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
  if (!reply) return keyboards;
  auto devices = xcb_input_xi_query_device_infos_iterator(reply.get());
  for (; devices.rem > 0; xcb_input_xi_device_info_next(&devices)) {
    const std::string_view name(
        xcb_input_xi_device_info_name(devices.data),
        static_cast<std::size_t>(xcb_input_xi_device_info_name_length(devices.data)));
    const bool isReal = devices.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
                        name.find("XTEST") == std::string_view::npos;
    if (isReal) keyboards.push_back(devices.data->deviceid);
  }
  return keyboards;
}

/// Whether a keyboard holds `key` down by itself.
bool holdsKey(xcb_connection_t* xcb, std::uint16_t keyboard, std::uint8_t key) {
  const XcbPointer<xcb_input_query_device_state_reply_t> reply(xcb_input_query_device_state_reply(
      xcb, xcb_input_query_device_state(xcb, static_cast<std::uint8_t>(keyboard)), nullptr));
  if (!reply) return false;
  auto classes = xcb_input_query_device_state_classes_iterator(reply.get());
  for (; classes.rem > 0; xcb_input_input_state_next(&classes)) {
    if (classes.data->class_id != XCB_INPUT_INPUT_CLASS_KEY) continue;
    const auto* const state =
        static_cast<const xcb_input_key_state_t*>(static_cast<const void*>(classes.data));
    if ((state->keys[key / 8] >> (key % 8) & 1) != 0) return true;
  }
  return false;
}

}  // namespace

void KeyInjection::begin(const TypingLayout& layout) {
  waitForModifiers();
  thread_.ask([](InputWorker& worker) {
    worker.beginInjection();
    return true;
  });
  layout_ = &layout;
  group_ = layout.group();
  releaseModifiers();
  if (layout.capsLockIsOn()) setCapsLock(false);
}

XKeySet KeyInjection::heldModifiers() const {
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
  XKeySet held = reply ? keySetFrom(*reply) : XKeySet();
  for (unsigned key = 0; key < held.size(); ++key) {
    if (held.test(key) && !map_.isModifier(static_cast<std::uint8_t>(key))) held.reset(key);
  }
  return held;
}

void KeyInjection::waitForModifiers() {
  for (int i = 0; i < modifierLooks && heldModifiers().any(); ++i) {
    std::this_thread::sleep_for(lookInterval);
  }
}

void KeyInjection::releaseModifiers() {
  const XKeySet held = heldModifiers();
  for (unsigned key = 0; key < held.size(); ++key) {
    if (!held.test(key)) continue;
    released_.push_back(static_cast<std::uint8_t>(key));
    fake(XCB_KEY_RELEASE, released_.back());
  }
}

/// Only what is still held: the release of another one has passed by and would never come.
void KeyInjection::pressAgain() {
  for (const std::uint8_t key : released_) {
    if (isPhysicallyDown(key)) fake(XCB_KEY_PRESS, key);
  }
  released_.clear();
}

bool KeyInjection::isPhysicallyDown(std::uint8_t key) const {
  xcb_connection_t* xcb = connection_.xcb.get();
  for (const std::uint16_t keyboard : realKeyboards(xcb)) {
    if (holdsKey(xcb, keyboard, key)) return true;
  }
  return false;
}

void KeyInjection::press(const TypingStroke& stroke) {
  setGroup(stroke.group);
  setModifiers(stroke.modifiers);
  fake(XCB_KEY_PRESS, stroke.key);
  fake(XCB_KEY_RELEASE, stroke.key);
}

void KeyInjection::setModifiers(std::uint16_t modifiers) {
  for (unsigned bit = 1; bit < 256; bit <<= 1) {
    const bool wanted = (modifiers & bit) != 0;
    const std::uint8_t key = layout_->modifierKey(static_cast<std::uint16_t>(bit));
    if (wanted == ((modifiers_ & bit) != 0) || key == 0) continue;
    fake(wanted ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key);
  }
  modifiers_ = modifiers;
}

void KeyInjection::setGroup(std::uint8_t group) {
  if (group_ == group) return;
  group_ = group;
  lockKeyboardGroup(connection_.xcb.get(), group);
}

void KeyInjection::setCapsLock(bool on) {
  lockKeyboardModifiers(connection_.xcb.get(), XCB_MOD_MASK_LOCK, on);
}

void KeyInjection::fake(std::uint8_t type, std::uint8_t key) {
  xcb_test_fake_input(connection_.xcb.get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void KeyInjection::sync() {
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
  // Every change of the mapping is told to this connection too.
  while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_queued_event(xcb)}) continue;
}

void KeyInjection::end() {
  if (layout_ == nullptr) return;
  setModifiers(0);
  setGroup(layout_->group());
  if (layout_->capsLockIsOn()) setCapsLock(true);
  pressAgain();
  layout_ = nullptr;
  sync();
  thread_.ask([](InputWorker& worker) {
    worker.endInjection();
    return true;
  });
}

}  // namespace qb
