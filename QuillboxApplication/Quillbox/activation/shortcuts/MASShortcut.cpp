#include "Quillbox/activation/shortcuts/MASShortcut.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "Platform/KeyCodes.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

constexpr const char* kKeyCodeKey = "keyCode";
constexpr const char* kModifierFlagsKey = "modifierFlags";

struct Modifier {
  EventFlags flag;
  HotKeyModifier carbonFlag;
  const char* glyph;
  const char* keyCap;
};
/// In the order in which they are told.
constexpr std::array modifiers{
    Modifier{EventFlagControl, HotKeyModifierControl, "⌃", "Ctrl"},
    Modifier{EventFlagOption, HotKeyModifierOption, "⌥", "Alt"},
    Modifier{EventFlagShift, HotKeyModifierShift, "⇧", "Shift"},
    Modifier{EventFlagCommand, HotKeyModifierCommand, "⌘", "Super"},
};

/// F1 to F20, in order.
constexpr std::uint16_t functionKeys[] = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                          103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

struct KeyName {
  std::uint16_t keyCode;
  const char* name;
};
/// Keys that are not known by a character.
constexpr KeyName keyNames[] = {
    {KeyCodeReturn, "Return"},
    {KeyCodeTab, "Tab"},
    {KeyCodeSpace, "Space"},
    {KeyCodeDelete, "Backspace"},
    {KeyCodeEscape, "Esc"},
    {KeyCodeCapsLock, "Caps Lock"},
    {65, "Keypad ."},
    {67, "Keypad *"},
    {69, "Keypad +"},
    {71, "Num Lock"},
    {72, "Volume Up"},
    {73, "Volume Down"},
    {74, "Mute"},
    {75, "Keypad /"},
    {KeyCodeEnter, "Enter"},
    {78, "Keypad -"},
    {81, "Keypad ="},
    {82, "Keypad 0"},
    {83, "Keypad 1"},
    {84, "Keypad 2"},
    {85, "Keypad 3"},
    {86, "Keypad 4"},
    {87, "Keypad 5"},
    {88, "Keypad 6"},
    {89, "Keypad 7"},
    {91, "Keypad 8"},
    {92, "Keypad 9"},
    {95, "Keypad ,"},
    {110, "Menu"},
    {114, "Insert"},
    {KeyCodeHome, "Home"},
    {KeyCodePageUp, "Page Up"},
    {117, "Delete"},
    {KeyCodeEnd, "End"},
    {KeyCodePageDown, "Page Down"},
    {KeyCodeLeft, "←"},
    {KeyCodeRight, "→"},
    {KeyCodeDown, "↓"},
    {KeyCodeUp, "↑"},
};

const std::uint16_t* functionKey(std::uint16_t keyCode) {
  return std::find(std::begin(functionKeys), std::end(functionKeys), keyCode);
}

}  // namespace

std::uint32_t MASShortcut::carbonFlags() const {
  std::uint32_t flags = 0;
  for (const Modifier& modifier : modifiers) {
    if ((modifierFlags_ & modifier.flag) != 0) flags |= modifier.carbonFlag;
  }
  return flags;
}

PropertyList::Data MASShortcut::archivedData(const Archiver& archiver) const {
  return archiver.archivedDataWithRootObject(
      PropertyList::dictionary({{kKeyCodeKey, static_cast<long long>(keyCode_)},
                                {kModifierFlagsKey, static_cast<long long>(modifierFlags_)}}));
}

std::optional<MASShortcut> MASShortcut::shortcutWithData(const PropertyList& data,
                                                         const Archiver& archiver) {
  if (data.kind() != PropertyList::Kind::Data) return std::nullopt;
  const auto archived = archiver.unarchiveObjectWithData(data.dataValue());
  if (!archived) return std::nullopt;
  const PropertyList& keyCode = archived->objectForKey(kKeyCodeKey);
  const PropertyList& modifierFlags = archived->objectForKey(kModifierFlagsKey);
  if (keyCode.kind() != PropertyList::Kind::Integer ||
      modifierFlags.kind() != PropertyList::Kind::Integer || keyCode.longValue() < 0 ||
      keyCode.longValue() > UINT16_MAX || modifierFlags.longValue() < 0) {
    return std::nullopt;
  }
  return MASShortcut(static_cast<std::uint16_t>(keyCode.longValue()),
                     static_cast<EventFlags>(modifierFlags.longValue()));
}

bool MASShortcut::isValid() const {
  if (functionKey(keyCode_) != std::end(functionKeys)) return true;
  if ((modifierFlags_ & (EventFlagCommand | EventFlagControl)) != 0) return true;
  if ((modifierFlags_ & EventFlagOption) == 0) return false;
  return keyCode_ == KeyCodeSpace || keyCode_ == KeyCodeEscape ||
         allowsAnyHotkeyWithOptionModifier_;
}

bool MASShortcut::shouldBypass() const {
  return carbonFlags() == HotKeyModifierCommand && (keyCode_ == KeyCodeW || keyCode_ == KeyCodeQ);
}

bool MASShortcut::isTakenError(HotKeys& hotKeys, const std::vector<MASShortcut>& ownShortcuts,
                               std::string* error) const {
  const char* reason = nullptr;
  if (hotKeys.isHeldByAnotherProgram(keyCode_, carbonFlags())) {
    reason = "Another program or the desktop uses it already.";
  } else if (!shouldBypass() &&
             std::find(ownShortcuts.begin(), ownShortcuts.end(), *this) != ownShortcuts.end()) {
    reason = "Quillbox itself uses it.";
  }
  if (reason != nullptr && error != nullptr) *error = reason;
  return reason != nullptr;
}

std::string MASShortcut::keyCodeString(const Keyboard& keyboard) const {
  if (const auto* const found = functionKey(keyCode_); found != std::end(functionKeys)) {
    return stringWithFormat("F%ld", found - std::begin(functionKeys) + 1);
  }
  const auto* const named =
      std::find_if(std::begin(keyNames), std::end(keyNames),
                   [this](const KeyName& name) { return name.keyCode == keyCode_; });
  if (named != std::end(keyNames)) return named->name;
  const std::string legend = keyboard.legendOfKey(keyCode_);
  return legend.empty() ? stringWithFormat("Key %ld", keyCode_) : legend;
}

std::string MASShortcut::modifierFlagsString() const {
  std::string glyphs;
  for (const Modifier& modifier : modifiers) {
    if ((modifierFlags_ & modifier.flag) != 0) glyphs += modifier.glyph;
  }
  return glyphs;
}

std::string MASShortcut::description(const Keyboard& keyboard) const {
  return modifierFlagsString() + keyCodeString(keyboard);
}

std::vector<std::string> MASShortcut::keyCaps(const Keyboard& keyboard) const {
  std::vector<std::string> caps = modifierKeyCaps(modifierFlags_);
  caps.push_back(keyCodeString(keyboard));
  return caps;
}

std::vector<std::string> MASShortcut::modifierKeyCaps(EventFlags modifierFlags) {
  std::vector<std::string> caps;
  for (const Modifier& modifier : modifiers) {
    if ((modifierFlags & modifier.flag) != 0) caps.emplace_back(modifier.keyCap);
  }
  return caps;
}

}  // namespace qb
