#include "PlatformSimulated/SimulatedKeyboard.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "PlatformSimulated/SimulatedLayout.h"

namespace qb {

namespace {

constexpr std::uint16_t keyCodeOfNoKey = 0xff;

struct ModifierKey {
  std::uint16_t keyCode;
  EventFlags flags;
};

constexpr ModifierKey modifierKeys[] = {
    {KeyCodeLeftCommand, EventFlagCommand},
    {KeyCodeRightCommand, EventFlagCommand},
    {KeyCodeLeftShift, EventFlagShift},
    {KeyCodeRightShift, EventFlagShift},
    {KeyCodeLeftOption, EventFlagOption},
    {KeyCodeRightOption, EventFlagOption},
    {KeyCodeLeftControl, EventFlagControl | EventFlagLeftControl},
    {KeyCodeRightControl, EventFlagControl},
};

bool isModifier(std::uint16_t keyCode) {
  return keyCode == KeyCodeCapsLock ||
         std::any_of(std::begin(modifierKeys), std::end(modifierKeys),
                     [keyCode](const ModifierKey& key) { return key.keyCode == keyCode; });
}

}  // namespace

std::string SimulatedKeyboard::legendOfKey(std::uint16_t keyCode) const {
  // By key code from 0 on; blanks stand for keys that have none.
  static constexpr std::string_view usual = "ASDFHGZXCV BQWERYT123465=97-80]OU[IP LJ'K;\\,/NM. ";
  if (const auto found = legends_.find(keyCode); found != legends_.end()) return found->second;
  if (keyCode == KeyCodeBackquote) return "`";
  if (keyCode >= usual.size() || usual[keyCode] == ' ') return {};
  return std::string(1, usual[keyCode]);
}

EventFlags SimulatedKeyboard::modifierFlags() const {
  EventFlags flags = capsLock_ ? EventFlagCapsLock : 0;
  for (const ModifierKey& key : modifierKeys) {
    if (keys_.isDown(key.keyCode)) flags |= key.flags;
  }
  return flags;
}

void SimulatedKeyboard::press(std::uint16_t keyCode) {
  keys_.set(keyCode, true);
  if (keyCode == KeyCodeCapsLock) capsLock_ = !capsLock_;
  keysChanged_.signal();
  if (!isModifier(keyCode)) send(EventTypeKeyDown, keyCode, false);
}

void SimulatedKeyboard::release(std::uint16_t keyCode) {
  keys_.set(keyCode, false);
  keysChanged_.signal();
  if (!isModifier(keyCode)) send(EventTypeKeyUp, keyCode, false);
}

void SimulatedKeyboard::repeat(std::uint16_t keyCode) {
  if (!isModifier(keyCode)) send(EventTypeKeyDown, keyCode, true);
}

void SimulatedKeyboard::type(std::uint16_t keyCode,
                             std::initializer_list<std::uint16_t> modifiers) {
  for (const std::uint16_t modifier : modifiers) press(modifier);
  press(keyCode);
  release(keyCode);
  for (auto each = std::rbegin(modifiers); each != std::rend(modifiers); ++each) release(*each);
}

void SimulatedKeyboard::send(EventType type, std::uint16_t keyCode, bool isRepeat) {
  TappedEvent event{.type = type,
                    .flags = modifierFlags(),
                    .keyCode = keyCode,
                    .isRepeat = isRepeat,
                    .location = {},
                    .unflippedLocation = {}};
  if (type == EventTypeKeyDown) parts_.eventTap.notifyKeyDownMonitors();
  if (!parts_.eventTap.process(event)) return;
  if (type == EventTypeKeyUp) {
    if (taken_.erase(keyCode) > 0) return;
  } else {
    const bool isKept = parts_.dialogs.keepsKeyboard();
    const bool isHotKey = parts_.hotKeys.processKeyDown(keyCode, event.flags, isRepeat, isKept);
    if (isKept && !isHotKey) parts_.dialogs.deliverKeyDown(keyCode, event.flags, isRepeat);
    if (isKept || isHotKey) {
      taken_.insert(keyCode);
      return;
    }
  }
  sendToFrontProcess(event);
}

std::string SimulatedKeyboard::typedCharacters() const {
  std::string typed;
  for (const Received& received : frontApplicationReceived_) {
    if (received.type == EventTypeKeyDown) typed += received.characters;
  }
  return typed;
}

void SimulatedKeyboard::receiveKey(std::uint16_t keyCode, EventFlags flags,
                                   const std::string& characters) {
  for (const EventType type : {EventTypeKeyDown, EventTypeKeyUp}) {
    sendToFrontProcess({.type = type,
                        .flags = flags,
                        .keyCode = keyCode,
                        .isRepeat = false,
                        .location = {},
                        .unflippedLocation = {}},
                       characters);
  }
}

void SimulatedKeyboard::receiveText(const std::string& text, EventFlags flags) {
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = start + 1;
    while (end < text.size() && (text[end] & 0xc0) == 0x80) ++end;
    const auto key =
        end - start == 1 ? simulatedKeyOf(static_cast<unsigned char>(text[start])) : std::nullopt;
    receiveKey(key ? key->keyCode : keyCodeOfNoKey,
               key && key->shift ? flags | EventFlagShift : flags, text.substr(start, end - start));
    start = end;
  }
}

void SimulatedKeyboard::sendToFrontProcess(const TappedEvent& event,
                                           const std::string& characters) {
  if (SimulatedWindowPeer* window = parts_.windowServer.keyWindow()) {
    Event own;
    own.type = event.type;
    own.flags = event.flags;
    own.keyCode = event.keyCode;
    own.isRepeat = event.isRepeat;
    own.characters = characters;
    window->deliver(own);
    return;
  }
  const ProcessSerialNumber front = parts_.processes.getFrontProcess();
  if (front.isNull() || parts_.eventTap.keepsKeyboard()) return;
  frontApplicationReceived_.push_back({front, event.type, event.keyCode, event.flags, characters});
}

}  // namespace qb
