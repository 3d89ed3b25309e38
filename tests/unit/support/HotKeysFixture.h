#pragma once

#include <string>

#include "Quillbox/activation/shortcuts/ItemHotKeys.h"
#include "support/ActivationFixture.h"

namespace qb::test {

inline constexpr std::uint16_t keyCodeT = 17, keyCodeE = 14, keyCodeF5 = 96;
inline constexpr const char* hotKeysFile =
    "/home/user/Library/Preferences/com.vorlane.quillbox.hotkeys";

/// The launched program with items that can have hot keys.
class HotKeysFixture : public ActivationFixture {
 protected:
  HotKeysFixture() {
    // Its items come into being when the row is shown.
    open(ActivationMethodCorner);
    close();
    platform.runFor(1);
    provider->itemLog->clear();
  }

  ItemHotKeys& hotKeys() { return quillbox->itemHotKeys(); }
  MASShortcutStorage& storage() { return hotKeys().storage(); }
  void store(const std::string& identifier, std::uint16_t keyCode, EventFlags flags) {
    storage().setShortcut({keyCode, flags}, identifier);
  }
  /// Control and a key by hand.
  void typeControl(std::uint16_t keyCode) {
    keyboard().type(keyCode, {KeyCodeLeftControl});
    platform.runPending();
  }
  bool isRegistered(std::uint16_t keyCode, std::uint32_t modifiers = HotKeyModifierControl) {
    return platform.hotKeys().isRegistered(keyCode, modifiers);
  }
  const CallLog& itemLog() { return *provider->itemLog; }
};

}  // namespace qb::test
