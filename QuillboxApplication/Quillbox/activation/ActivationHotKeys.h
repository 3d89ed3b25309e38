#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "Platform/HotKeys.h"
#include "Platform/KeyCodes.h"
#include "Quillbox/activation/HotKeyIDs.h"

namespace qb {

class AppDelegate;

/// The engine's own hot keys: the road of keys that works without any grant. Three groups come and
/// go on their own: Command-H from launch to exit, Option-Tab by the settings, and
/// those for navigation with each activation by a key.
class ActivationHotKeys {
 public:
  enum class Group { Primary, OptionTab, Secondary };
  struct Entry {
    std::int32_t id;
    std::uint32_t signature;
    std::uint16_t keyCode;
    /// None stands for the modifier of the activation's method.
    std::optional<std::uint32_t> modifiers;
    Group group;
  };
  /// In order of registration.
  static constexpr std::array table{
      Entry{HotKeyHideFrontmostApplication, fourCharacterCode("QB11"), KeyCodeH,
            HotKeyModifierCommand, Group::Primary},
      Entry{HotKeyOptionTab, fourCharacterCode("QBb1"), KeyCodeTab, HotKeyModifierOption,
            Group::OptionTab},
      Entry{HotKeyOptionShiftTab, fourCharacterCode("QBb2"), KeyCodeTab,
            HotKeyModifierOption | HotKeyModifierShift, Group::OptionTab},
      Entry{HotKeyPreviousTabRow, fourCharacterCode("QBb3"), KeyCodeUp, std::nullopt,
            Group::Secondary},
      Entry{HotKeyNextTabRow, fourCharacterCode("QBb4"), KeyCodeDown, std::nullopt,
            Group::Secondary},
      Entry{HotKeyPreviousItem, fourCharacterCode("QBb5"), KeyCodeLeft, std::nullopt,
            Group::Secondary},
      Entry{HotKeyNextItem, fourCharacterCode("QBb6"), KeyCodeRight, std::nullopt,
            Group::Secondary},
      Entry{HotKeyPreviousTabRowByLetter, fourCharacterCode("QBb7"), KeyCodeA, std::nullopt,
            Group::Secondary},
      Entry{HotKeyNextTabRowByLetter, fourCharacterCode("QBb8"), KeyCodeZ, std::nullopt,
            Group::Secondary},
      Entry{HotKeyEscape, fourCharacterCode("QBb9"), KeyCodeEscape, std::nullopt, Group::Secondary},
      Entry{HotKeyPreview, fourCharacterCode("QB10"), KeyCodeSpace, std::nullopt, Group::Secondary},
      // These two carry Option under Command-Tab too. Intended.
      Entry{HotKeyAlternatePreviousItem, fourCharacterCode("QB12"), KeyCodeBackquote,
            HotKeyModifierOption, Group::Secondary},
      // Taken from other programs and then ignored, since no row asks for it. Intended.
      Entry{KeyCodeW, fourCharacterCode("QB13"), KeyCodeW, HotKeyModifierOption, Group::Secondary},
  };

  explicit ActivationHotKeys(AppDelegate& appDelegate);
  ~ActivationHotKeys();
  ActivationHotKeys(const ActivationHotKeys&) = delete;
  ActivationHotKeys& operator=(const ActivationHotKeys&) = delete;

  // Repeated installing and removing is harmless.
  void installPrimaryHotKeys();
  void removePrimaryHotKeys();
  void installPrimaryHotKeysForOptionTabActivationMethod();
  void removePrimaryHotKeysForOptionTabActivationMethod();
  /// Nothing for the methods without a key, and while the method's setting is off.
  void installSecondaryHotKeysForActivationMethod(std::int32_t method);
  void removeSecondaryHotKeys();

 private:
  /// Whether the press has been dealt with.
  bool hotKeyEventHandler(const HotKeyPress& press);
  void install(Group group, std::uint32_t methodModifier);
  void remove(Group group);
  bool& isInstalled(Group group) { return installed_[static_cast<std::size_t>(group)]; }

  AppDelegate& appDelegate_;
  HotKeys& hotKeys_;
  /// By position in the table; a refused registration leaves none.
  std::array<std::unique_ptr<HotKeys::Registration>, table.size()> references_;
  std::array<bool, 3> installed_{};
};

}  // namespace qb
