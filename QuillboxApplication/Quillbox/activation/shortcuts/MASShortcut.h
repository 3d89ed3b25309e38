#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Archiver.h"
#include "Platform/HotKeys.h"
#include "Platform/Keyboard.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// A key with the modifiers that are held with it. A value.
class MASShortcut {
 public:
  /// Of the flags, those of the device itself are dropped.
  constexpr MASShortcut(std::uint16_t keyCode, EventFlags modifierFlags)
      : keyCode_(keyCode), modifierFlags_(modifierFlags & deviceIndependentFlags) {}

  std::uint16_t keyCode() const { return keyCode_; }
  EventFlags modifierFlags() const { return modifierFlags_; }
  /// The same modifiers as bits of `HotKeyModifier`.
  std::uint32_t carbonFlags() const;

  /// The form in which it is kept.
  PropertyList::Data archivedData(const Archiver& archiver) const;
  /// None for anything but what `archivedData` has made.
  static std::optional<MASShortcut> shortcutWithData(const PropertyList& data,
                                                     const Archiver& archiver);

  /// Whether it may be taken from every other program: not a key that is needed for typing.
  bool isValid() const;
  /// Command-W and Command-Q may be used even where this program has them for itself.
  bool shouldBypass() const;
  /// Whether another program has it, or this one for itself, by `ownShortcuts`. `error` then tells
  /// the user who; it may be null.
  bool isTakenError(HotKeys& hotKeys, const std::vector<MASShortcut>& ownShortcuts,
                    std::string* error) const;

  /// The name of the key, by the user's present layout.
  std::string keyCodeString(const Keyboard& keyboard) const;
  /// The glyphs of the modifiers.
  std::string modifierFlagsString() const;
  /// Both, such as "⌃⌥T".
  std::string description(const Keyboard& keyboard) const;
  /// The same as it is printed on the keys of this desktop: "Ctrl", "Alt", "T".
  std::vector<std::string> keyCaps(const Keyboard& keyboard) const;
  static std::vector<std::string> modifierKeyCaps(EventFlags modifierFlags);

  /// Whether Option alone makes any key valid, and not just Space and Esc. Off: on this desktop
  /// Option with a letter opens the menus of other programs.
  static bool allowsAnyHotkeyWithOptionModifier() { return allowsAnyHotkeyWithOptionModifier_; }
  static void setAllowsAnyHotkeyWithOptionModifier(bool allows) {
    allowsAnyHotkeyWithOptionModifier_ = allows;
  }

  /// Locks do not tell two shortcuts apart.
  friend bool operator==(const MASShortcut& a, const MASShortcut& b) {
    return a.keyCode_ == b.keyCode_ && a.carbonFlags() == b.carbonFlags();
  }

 private:
  static constexpr EventFlags deviceIndependentFlags = 0xFFFF0000;

  std::uint16_t keyCode_;
  EventFlags modifierFlags_;
  static inline bool allowsAnyHotkeyWithOptionModifier_ = false;
};

}  // namespace qb
