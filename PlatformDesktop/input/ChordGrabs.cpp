#include "PlatformDesktop/input/ChordGrabs.h"

#include <algorithm>
#include <utility>

#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

std::vector<std::uint32_t> widened(const std::vector<std::uint16_t>& modifiers) {
  return {modifiers.begin(), modifiers.end()};
}

}  // namespace

void ChordGrabs::setWanted(const std::set<Combination>& wanted) {
  const auto gone = std::erase_if(grabs_, [&](const auto& entry) {
    if (wanted.contains(entry.first)) return false;
    let(entry.second);
    return true;
  });
  for (const Combination& combination : wanted) {
    const auto [entry, isNew] = grabs_.try_emplace(combination);
    if (isNew && !acquire(combination, entry->second)) noteRefusal(combination);
  }
  if (gone != 0) waitForServer();
}

/// What is ours stays ours without a gap: window managers use such a change to grab anew.
void ChordGrabs::setMap(const KeyboardMap& map) {
  if (map == map_) return;
  map_ = map;
  for (auto& [combination, grab] : grabs_) {
    if (grab.keys.empty()) continue;
    const Grab old = std::exchange(grab, {});
    if (!acquire(combination, grab)) noteRefusal(combination);
    for (const std::uint8_t key : old.keys) {
      Grab obsolete{{key}, old.modifiers};
      if (std::find(grab.keys.begin(), grab.keys.end(), key) != grab.keys.end()) {
        for (const std::uint16_t set : grab.modifiers) std::erase(obsolete.modifiers, set);
      }
      if (!obsolete.modifiers.empty()) let(obsolete);
    }
  }
}

void ChordGrabs::noteRefusal(const Combination& combination) {
  // A chord that has been refused may come back as a hot key, and the other way round.
  if (refused_.insert(combination).second) {
    log(nameOf(combination) + " is held by another program");
  }
}

bool ChordGrabs::owns(const Combination& combination) const {
  const auto entry = grabs_.find(combination);
  return entry != grabs_.end() && !entry->second.keys.empty();
}

void ChordGrabs::retryRefused() {
  for (auto& [combination, grab] : grabs_) {
    if (grab.keys.empty()) acquire(combination, grab);
  }
}

bool ChordGrabs::isHeldByAnotherProgram(const Combination& combination) {
  if (owns(combination)) return false;
  Grab trial;
  if (!acquire(combination, trial)) return true;
  let(trial);
  waitForServer();
  return false;
}

/// The claim comes first, so that the device grab lies before it in the server's list and is the
/// one that fires. All is sent at once: a press between the two would be lost to the claim.
bool ChordGrabs::acquire(const Combination& combination, Grab& grab) {
  Grab wanted{map_.xCodes(combination.keyCode), {}};
  for (const std::uint16_t locks : map_.lockVariants()) {
    wanted.modifiers.push_back(
        static_cast<std::uint16_t>(map_.modifiers(combination.flags) | locks));
  }
  std::vector<xcb_void_cookie_t> claims;
  std::vector<xcb_input_xi_passive_grab_device_cookie_t> deviceGrabs;
  for (const std::uint8_t key : wanted.keys) {
    sendClaims(key, wanted.modifiers, claims);
    deviceGrabs.push_back(sendDeviceGrab(key, wanted.modifiers));
  }

  xcb_connection_t* xcb = connection_.xcb.get();
  bool granted = true;
  for (const auto claim : claims) {
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(xcb, claim));
    if (error) granted = false;
  }
  for (const auto deviceGrab : deviceGrabs) {
    const XcbPointer<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(xcb, deviceGrab, nullptr));
    // The reply lists the sets of modifiers that failed.
    if (!reply || reply->num_modifiers != 0) granted = false;
  }
  if (!granted) {
    let(wanted);
    xcb_flush(xcb);
    return false;
  }
  grab = std::move(wanted);
  refused_.erase(combination);
  return true;
}

void ChordGrabs::sendClaims(std::uint8_t key, const std::vector<std::uint16_t>& modifiers,
                            std::vector<xcb_void_cookie_t>& cookies) {
  for (const std::uint16_t set : modifiers) {
    cookies.push_back(xcb_grab_key_checked(connection_.xcb.get(), 0, connection_.root, set, key,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  }
}

xcb_input_xi_passive_grab_device_cookie_t ChordGrabs::sendDeviceGrab(
    std::uint8_t key, const std::vector<std::uint16_t>& modifiers) {
  const std::uint32_t mask =
      XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
  const auto sets = widened(modifiers);
  // By the keyboard's own id: for "all master devices" the server takes the two modes for each
  // other, and nothing would freeze.
  return xcb_input_xi_passive_grab_device(
      connection_.xcb.get(), XCB_CURRENT_TIME, connection_.root, XCB_NONE, key,
      connection_.masterKeyboard, static_cast<std::uint16_t>(sets.size()), 1,
      XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
      XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, sets.data());
}

void ChordGrabs::let(const Grab& grab) {
  xcb_connection_t* xcb = connection_.xcb.get();
  const auto sets = widened(grab.modifiers);
  for (const std::uint8_t key : grab.keys) {
    xcb_input_xi_passive_ungrab_device(xcb, connection_.root, key, connection_.masterKeyboard,
                                       static_cast<std::uint16_t>(sets.size()),
                                       XCB_INPUT_GRAB_TYPE_KEYCODE, sets.data());
    for (const std::uint16_t set : grab.modifiers) xcb_ungrab_key(xcb, key, connection_.root, set);
  }
}

/// What was let go is gone when the caller goes on.
void ChordGrabs::waitForServer() {
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

}  // namespace qb
