#include "PlatformDesktop/input/ChordGrabs.h"

#include <utility>

#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

std::vector<std::uint32_t> widened(const std::vector<std::uint16_t>& modifiers) {
  return {modifiers.begin(), modifiers.end()};
}

}  // namespace

void ChordGrabs::setWanted(const std::set<Combination>& wanted) {
  std::erase_if(grabs_, [&](const auto& entry) {
    if (wanted.contains(entry.first)) return false;
    let(entry.second.key, entry.second.modifiers);
    return true;
  });
  for (const Combination& combination : wanted) {
    const auto [entry, isNew] = grabs_.try_emplace(combination);
    if (entry->second.key != 0) continue;
    if (!acquire(combination, entry->second) && isNew) {
      log(nameOf(combination) + " is held by another program");
    }
  }
}

void ChordGrabs::setMap(const KeyboardMap& map) {
  if (map == map_) return;
  for (auto& [combination, grab] : grabs_) let(std::exchange(grab.key, 0), grab.modifiers);
  map_ = map;
  for (auto& [combination, grab] : grabs_) {
    if (!acquire(combination, grab)) log(nameOf(combination) + " is held by another program");
  }
}

bool ChordGrabs::owns(const Combination& combination) const {
  const auto entry = grabs_.find(combination);
  return entry != grabs_.end() && entry->second.key != 0;
}

bool ChordGrabs::hasRefused() const {
  for (const auto& [combination, grab] : grabs_) {
    if (grab.key == 0) return true;
  }
  return false;
}

void ChordGrabs::retryRefused() {
  for (auto& [combination, grab] : grabs_) {
    if (grab.key == 0) acquire(combination, grab);
  }
}

/// The claim comes first, so that the device grab lies before it in the server's list and is the
/// one that fires.
bool ChordGrabs::acquire(const Combination& combination, Grab& grab) {
  const auto key = map_.xCode(combination.keyCode);
  if (!key) return true;
  std::vector<std::uint16_t> modifiers;
  for (const std::uint16_t locks : map_.lockVariants()) {
    modifiers.push_back(static_cast<std::uint16_t>(map_.modifiers(combination.flags) | locks));
  }
  if (!claimCore(*key, modifiers) || !grabDevice(*key, modifiers)) {
    let(*key, modifiers);
    return false;
  }
  grab.key = *key;
  grab.modifiers = std::move(modifiers);
  return true;
}

bool ChordGrabs::claimCore(std::uint8_t key, const std::vector<std::uint16_t>& modifiers) {
  xcb_connection_t* xcb = connection_.xcb.get();
  std::vector<xcb_void_cookie_t> cookies;
  for (const std::uint16_t set : modifiers) {
    cookies.push_back(xcb_grab_key_checked(xcb, 0, connection_.root, set, key, XCB_GRAB_MODE_ASYNC,
                                           XCB_GRAB_MODE_ASYNC));
  }
  bool granted = true;
  for (const auto cookie : cookies) {
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(xcb, cookie));
    if (error) granted = false;
  }
  return granted;
}

bool ChordGrabs::grabDevice(std::uint8_t key, const std::vector<std::uint16_t>& modifiers) {
  xcb_connection_t* xcb = connection_.xcb.get();
  const std::uint32_t mask =
      XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
  const auto sets = widened(modifiers);
  const auto cookie = xcb_input_xi_passive_grab_device(
      xcb, XCB_CURRENT_TIME, connection_.root, XCB_NONE, key, connection_.masterKeyboard,
      static_cast<std::uint16_t>(sets.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
      XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER,
      &mask, sets.data());
  const XcbPointer<xcb_input_xi_passive_grab_device_reply_t> reply(
      xcb_input_xi_passive_grab_device_reply(xcb, cookie, nullptr));
  // The reply lists the sets that failed.
  return reply && reply->num_modifiers == 0;
}

void ChordGrabs::let(std::uint8_t key, const std::vector<std::uint16_t>& modifiers) {
  if (key == 0) return;
  xcb_connection_t* xcb = connection_.xcb.get();
  const auto sets = widened(modifiers);
  xcb_input_xi_passive_ungrab_device(xcb, connection_.root, key, connection_.masterKeyboard,
                                     static_cast<std::uint16_t>(sets.size()),
                                     XCB_INPUT_GRAB_TYPE_KEYCODE, sets.data());
  for (const std::uint16_t set : modifiers) xcb_ungrab_key(xcb, key, connection_.root, set);
}

}  // namespace qb
