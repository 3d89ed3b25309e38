#include "PlatformDesktop/input/InputWorker.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

// A menu that closes lets go soon; later tries only watch for a program that lets go late.
constexpr int quickGrabAttempts = 25;
constexpr TimeInterval quickGrabInterval = 0.02;
constexpr TimeInterval slowGrabInterval = 0.25;
// A window manager has come or gone, and its combinations with it; one that comes binds its own
// first.
constexpr TimeInterval claimsRetryDelay = 1;
// Releases can get lost on a switch of the virtual console.
constexpr TimeInterval keysCheckInterval = 1;

xcb_window_t createGrabWindow(const InputConnection& connection) {
  xcb_connection_t* xcb = connection.xcb.get();
  const xcb_window_t window = xcb_generate_id(xcb);
  const std::uint32_t overrideRedirect = 1;
  xcb_create_window(xcb, 0, window, connection.root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
  xcb_map_window(xcb, window);
  return window;
}

void selectRawEvents(const InputConnection& connection) {
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
              XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                  XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS};
  xcb_input_xi_select_events(connection.xcb.get(), connection.root, 1, &selection.head);
}

xcb_atom_t internAtom(xcb_connection_t* xcb, std::string_view name) {
  const auto cookie = xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_NONE);
}

/// All combinations that one chord of the rules stands for: what it neither requires nor forbids
/// may be down or up.
std::vector<Combination> combinationsOf(const TapRules::Chord& chord) {
  constexpr EventFlags each[] = {EventFlagShift, EventFlagControl, EventFlagOption,
                                 EventFlagCommand};
  std::vector<Combination> combinations;
  for (unsigned subset = 0; subset < 16; ++subset) {
    EventFlags flags = 0;
    for (unsigned i = 0; i < 4; ++i) {
      if (subset >> i & 1) flags |= each[i];
    }
    if ((flags & chord.required) == chord.required && (flags & chord.forbidden) == 0) {
      combinations.push_back({chord.keyCode, flags});
    }
  }
  return combinations;
}

}  // namespace

InputWorker::InputWorker(InputConnection& connection, InputQueue& queue)
    : connection_(connection),
      queue_(queue),
      map_(KeyboardMap::read(connection.xcb.get())),
      grabs_(connection, map_),
      window_(createGrabWindow(connection)),
      windowManagerAtom_(internAtom(connection.xcb.get(), "_NET_SUPPORTING_WM_CHECK")) {
  selectRawEvents(connection_);
  const std::uint32_t rootEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection_.xcb.get(), connection_.root, XCB_CW_EVENT_MASK,
                               &rootEvents);
  queue_.setMap(map_);
  verifyPhysicalKeys();
}

Moment InputWorker::now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The main thread's wishes.

void InputWorker::setRules(const TapRules& rules) {
  rules_ = rules;
  chords_ = rules;
  chords_.everyKeyDown = false;
  hold_.setEveryKeyDown(rules.everyKeyDown);
  applyWantedCombinations();
  applyHold();
}

bool InputWorker::addHotKey(const Combination& combination) {
  hotKeys_.insert(combination);
  applyWantedCombinations();
  if (span_.isOpen() || rules_.everyKeyDown || grabs_.owns(combination)) return true;
  removeHotKey(combination);
  return false;
}

void InputWorker::removeHotKey(const Combination& combination) {
  hotKeys_.erase(combination);
  applyWantedCombinations();
}

void InputWorker::setHandled(std::uint32_t serial) { hold_.handled(serial, now()); }

void InputWorker::beginInjection() {
  isInjecting_ = true;
  if (span_.isOpen()) letKeyboardGo();
}

void InputWorker::endInjection() {
  catchUpWithServer();
  isInjecting_ = false;
  verifyPhysicalKeys();
  applyHold();
}

void InputWorker::catchUpWithServer() {
  // A grab that has caught one of the keys holds back those behind it until that one is passed on.
  bool handled = true;
  while (handled) {
    waitForServer();
    handled = false;
    while (handleNextEvent()) handled = true;
  }
}

void InputWorker::waitForServer() const {
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
}

void InputWorker::finish() {
  if (span_.isOpen()) letKeyboardGo();
  grabs_.clear();
  xcb_flush(connection_.xcb.get());
}

// Events.

bool InputWorker::handleNextEvent() {
  const XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(connection_.xcb.get()));
  if (event) handleEvent(*event);
  return event != nullptr;
}

void InputWorker::handleEvent(const xcb_generic_event_t& event) {
  const auto as = [&]<typename T>() -> const T& { return reinterpret_cast<const T&>(event); };
  switch (event.response_type & 0x7f) {
    case XCB_MAPPING_NOTIFY:
      mapChanged_ = true;
      return;
    case XCB_PROPERTY_NOTIFY:
      if (as.operator()<xcb_property_notify_event_t>().atom == windowManagerAtom_) {
        claimsRetry_ = now() + claimsRetryDelay;
      }
      return;
    case XCB_GE_GENERIC:
      break;
    default:
      return;
  }
  const auto& generic = as.operator()<xcb_ge_generic_event_t>();
  if (generic.extension != connection_.xinputOpcode) return;
  switch (generic.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
      return handleRawKey(as.operator()<xcb_input_raw_key_press_event_t>(), true);
    case XCB_INPUT_RAW_KEY_RELEASE:
      return handleRawKey(as.operator()<xcb_input_raw_key_press_event_t>(), false);
    case XCB_INPUT_RAW_BUTTON_PRESS:
      return handleRawButton(as.operator()<xcb_input_raw_button_press_event_t>());
    case XCB_INPUT_KEY_PRESS:
      return handleKey(as.operator()<xcb_input_key_press_event_t>(), true);
    case XCB_INPUT_KEY_RELEASE:
      return handleKey(as.operator()<xcb_input_key_press_event_t>(), false);
    default:
      return;
  }
}

void InputWorker::handleRawKey(const xcb_input_raw_key_press_event_t& event, bool down) {
  if (isInjecting_) return;
  const auto key = static_cast<std::uint8_t>(event.detail);
  queue_.setUserTime(event.time);
  XKeySet keys = physical_;
  keys.set(key, down);
  setPhysicalKeys(keys);
  if (map_.isModifier(key)) {
    applyHold();
    return;
  }
  if (down) {
    InputEvent seen;
    seen.kind = InputEvent::Kind::KeyDownSeen;
    queue_.push(seen);
  }
  if (span_.contains(event.full_sequence)) return;
  observeKey(key, down);
  // The press came while the keyboard was ours, the release does not: it is another program's.
  if (!down && taken_.test(key)) {
    taken_.reset(key);
    applyHold();
  }
}

/// A key on its way to another program, unless one of our grabs brings it in its own event.
void InputWorker::observeKey(std::uint8_t key, bool down) {
  const std::uint16_t modifiers = map_.modifiersOf(physical_);
  const Combination combination = combinationOf(key, modifiers);
  if (down) {
    if (grabs_.owns(combination)) {
      awaited_ = key;
      return;
    }
    // A chord that another program holds does that program's work, not ours.
    if (isChord(combination)) return;
  } else if (awaited_ == key) {
    awaited_ = 0;
    log(nameOf(combination) + " did not arrive, another program may hold the keyboard");
    return;
  } else if (!observed_.test(key)) {
    return;
  }
  observed_.set(key, down);
  InputEvent observed;
  observed.type = down ? EventTypeKeyDown : EventTypeKeyUp;
  observed.flags = map_.flags(modifiers);
  observed.keyCode = combination.keyCode;
  queue_.push(observed);
}

void InputWorker::handleRawButton(const xcb_input_raw_button_press_event_t& event) {
  queue_.setUserTime(event.time);
  InputEvent press;
  press.kind = InputEvent::Kind::Button;
  switch (event.detail) {
    case 1:
      press.type = EventTypeLeftMouseDown;
      break;
    case 3:
      press.type = EventTypeRightMouseDown;
      break;
    case 4:
    case 5:
    case 6:
    case 7:
      press.type = EventTypeScrollWheel;
      break;
    default:
      return;
  }
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_query_pointer_reply_t> pointer(
      xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, connection_.root), nullptr));
  if (!pointer) return;
  press.flags = map_.flags(pointer->mask);
  press.x = pointer->root_x;
  press.y = pointer->root_y;
  press.window = pointer->child;
  queue_.push(press);
}

void InputWorker::handleKey(const xcb_input_key_press_event_t& event, bool down) {
  queue_.setUserTime(event.time);
  if (span_.contains(event.full_sequence)) {
    handleOwnKey(event, down);
  } else if (down) {
    handleFrozenPress(event);
  }
}

/// A passive grab has fired: the whole desktop's keyboard stands still until `allow`.
void InputWorker::handleFrozenPress(const xcb_input_key_press_event_t& event) {
  if (isInjecting_) return allow(event.deviceid, XCB_INPUT_EVENT_MODE_REPLAY_DEVICE);
  const auto key = static_cast<std::uint8_t>(event.detail);
  awaited_ = 0;
  const Combination combination = combinationOf(key, event.mods.effective);
  const std::uint32_t serial = grabs_.owns(combination) ? armHold(combination) : 0;
  if (serial == 0 && !rules_.everyKeyDown) {
    allow(event.deviceid, XCB_INPUT_EVENT_MODE_REPLAY_DEVICE);
    return;
  }
  // Keys that follow are ours from the press on, also those that came while all stood still.
  if (grabKeyboard(event.deviceid)) span_.begin(event.full_sequence);
  allow(event.deviceid, XCB_INPUT_EVENT_MODE_ASYNC_DEVICE);
  taken_.set(key);
  pushKey(event, true, serial);
}

void InputWorker::handleOwnKey(const xcb_input_key_press_event_t& event, bool down) {
  const auto key = static_cast<std::uint8_t>(event.detail);
  if (map_.isModifier(key)) return;
  taken_.set(key, down);
  observed_.reset(key);
  pushKey(event, down, down ? armHold(combinationOf(key, event.mods.effective)) : 0);
  if (!down) applyHold();
}

void InputWorker::pushKey(const xcb_input_key_press_event_t& event, bool down,
                          std::uint32_t serial) {
  InputEvent owned;
  owned.type = down ? EventTypeKeyDown : EventTypeKeyUp;
  owned.flags = map_.flags(event.mods.effective);
  owned.keyCode = map_.keyCode(static_cast<std::uint8_t>(event.detail));
  owned.isRepeat = (event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0;
  owned.isOwned = true;
  owned.serial = serial;
  queue_.push(owned);
}

// Combinations.

std::uint32_t InputWorker::armHold(const Combination& combination) {
  const bool chord = isChord(combination);
  if (!chord && !hotKeys_.contains(combination)) return 0;
  std::uint16_t modifier = 0;
  if (chord) {
    // Shift only tells the direction; the hold is the other key's.
    const EventFlags others = combination.flags & ~EventFlagShift;
    modifier = map_.modifiers(others != 0 ? others : combination.flags);
  }
  hold_.pressed(++presses_, modifier, now());
  hold_.setModifiersDown(map_.modifiersOf(physical_));
  return presses_;
}

bool InputWorker::isChord(const Combination& combination) const {
  return chords_.swallows(EventTypeKeyDown, combination.keyCode, combination.flags);
}

Combination InputWorker::combinationOf(std::uint8_t key, std::uint32_t modifiers) const {
  return {map_.keyCode(key), map_.flags(modifiers) & combinationFlags};
}

void InputWorker::allow(xcb_input_device_id_t device, std::uint8_t mode) {
  xcb_connection_t* xcb = connection_.xcb.get();
  xcb_input_xi_allow_events(xcb, XCB_CURRENT_TIME, device, mode, 0, XCB_NONE);
  xcb_flush(xcb);
}

/// While the keyboard is ours no combination can fire, so the server need not hear of changes.
void InputWorker::applyWantedCombinations() {
  if (span_.isOpen() || rules_.everyKeyDown) return;
  std::set<Combination> wanted = hotKeys_;
  for (const TapRules::Chord& chord : rules_.chords) {
    const auto combinations = combinationsOf(chord);
    wanted.insert(combinations.begin(), combinations.end());
  }
  grabs_.setWanted(wanted);
}

void InputWorker::rereadMap() {
  const KeyboardMap map = KeyboardMap::read(connection_.xcb.get());
  if (map != map_) {
    map_ = map;
    queue_.setMap(map);
    grabs_.setMap(map);
    setPhysicalKeys(physical_);
  }
}

// Keeping the keyboard.

void InputWorker::applyHold() {
  if (isInjecting_) return;
  const bool wanted = hold_.isWanted(now());
  if (span_.isOpen()) {
    if (!wanted && taken_.none()) letKeyboardGo();
    return;
  }
  if (!rules_.everyKeyDown) {
    grabRetry_.reset();
    grabAttempts_ = 0;
    return;
  }
  if (!grabRetry_ && !grabKeyboard(connection_.masterKeyboard)) scheduleGrabRetry();
}

/// Over a passive grab of ours that has fired this replaces it without a gap.
bool InputWorker::grabKeyboard(xcb_input_device_id_t device) {
  xcb_connection_t* xcb = connection_.xcb.get();
  const std::uint32_t mask =
      XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
  const auto cookie = xcb_input_xi_grab_device(
      xcb, window_, XCB_CURRENT_TIME, XCB_NONE, device, XCB_INPUT_GRAB_MODE_22_ASYNC,
      XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, 1, &mask);
  const XcbPointer<xcb_input_xi_grab_device_reply_t> reply(
      xcb_input_xi_grab_device_reply(xcb, cookie, nullptr));
  if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) return false;
  heldDevice_ = device;
  span_.begin(cookie.sequence);
  grabRetry_.reset();
  grabAttempts_ = 0;
  return true;
}

void InputWorker::letKeyboardGo() {
  xcb_connection_t* xcb = connection_.xcb.get();
  const auto cookie = xcb_input_xi_ungrab_device(xcb, XCB_CURRENT_TIME, heldDevice_);
  xcb_flush(xcb);
  span_.end(cookie.sequence);
  hold_.end();
  taken_.reset();
  applyWantedCombinations();
}

void InputWorker::scheduleGrabRetry() {
  if (++grabAttempts_ == quickGrabAttempts) {
    log("The keyboard is held by another program");
  }
  grabRetry_ = now() + (grabAttempts_ < quickGrabAttempts ? quickGrabInterval : slowGrabInterval);
}

// What time brings.

bool InputWorker::handleDueWork() {
  bool worked = false;
  if (std::exchange(mapChanged_, false)) {
    rereadMap();
    worked = true;
  }
  const Moment moment = now();
  if (claimsRetry_ && moment >= *claimsRetry_) {
    claimsRetry_.reset();
    grabs_.retryRefused();
    worked = true;
  }
  if (grabRetry_ && moment >= *grabRetry_) {
    grabRetry_.reset();
    applyHold();
    worked = true;
  }
  if (keysCheck_ && moment >= *keysCheck_) {
    verifyPhysicalKeys();
    worked = true;
  }
  if (span_.isOpen() && taken_.none() && !hold_.isWanted(moment)) {
    letKeyboardGo();
    worked = true;
  }
  return worked;
}

std::optional<Moment> InputWorker::nextDeadline() const {
  std::optional<Moment> next;
  const auto consider = [&](std::optional<Moment> moment) {
    if (moment) next = std::min(next.value_or(*moment), *moment);
  };
  consider(grabRetry_);
  consider(keysCheck_);
  consider(claimsRetry_);
  if (span_.isOpen() && hold_.isWanted(now())) consider(hold_.nextDeadline());
  return next;
}

void InputWorker::setPhysicalKeys(const XKeySet& keys) {
  physical_ = keys;
  queue_.setKeys(keys);
  hold_.setModifiersDown(map_.modifiersOf(keys));
  if (keys.none()) {
    keysCheck_.reset();
  } else if (!keysCheck_) {
    keysCheck_ = now() + keysCheckInterval;
  }
}

void InputWorker::verifyPhysicalKeys() {
  keysCheck_.reset();
  xcb_connection_t* xcb = connection_.xcb.get();
  const XcbPointer<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
  if (!reply) return;
  // What came while the reply was on its way goes first, and tells as much.
  if (handleNextEvent()) {
    keysCheck_ = now() + keysCheckInterval;
    return;
  }
  const XKeySet keys = keySetFrom(*reply);
  taken_ &= keys;
  observed_ &= keys;
  setPhysicalKeys(keys);
  applyHold();
}

}  // namespace qb
