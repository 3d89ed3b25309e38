#include "Quillbox/activation/shortcuts/MASRegisteredHotKeys.h"

#include <algorithm>
#include <utility>

#include "Quillbox/activation/HotKeyIDs.h"

namespace qb {

void MASRegisteredHotKeys::registerGlobalShortcutWithUserDefaultsKey(const std::string& key,
                                                                     MASShortcutHandler handler) {
  unregisterGlobalShortcutWithUserDefaultsKey(key);
  const auto shortcut = storage_.shortcutForKey(key);
  if (!shortcut) return;
  MASShortcutHotKey hotKey{.shortcut = *shortcut,
                           .hotKeyIdentifier = key,
                           .handler = std::move(handler),
                           .carbonHotKey = nullptr};
  installHotkeyWithShortcut(hotKey);
  registered_.push_back(std::move(hotKey));
}

void MASRegisteredHotKeys::unregisterGlobalShortcutWithUserDefaultsKey(const std::string& key) {
  std::erase_if(registered_,
                [&key](const MASShortcutHotKey& hotKey) { return hotKey.hotKeyIdentifier == key; });
}

void MASRegisteredHotKeys::unregisterAllGlobalShortcuts() { registered_.clear(); }

void MASRegisteredHotKeys::registerLeftOutShortcuts() {
  for (MASShortcutHotKey& hotKey : registered_) {
    if (hotKey.carbonHotKey) continue;
    const MASShortcut& shortcut = hotKey.shortcut;
    if (hotKeys_.isHeldByAnotherProgram(shortcut.keyCode(), shortcut.carbonFlags())) continue;
    installHotkeyWithShortcut(hotKey);
  }
}

const MASShortcutHotKey* MASRegisteredHotKeys::hotKeyWithID(std::uint32_t carbonHotKeyID) const {
  const auto found =
      std::find_if(registered_.begin(), registered_.end(), [&](const MASShortcutHotKey& hotKey) {
        return hotKey.carbonHotKey && hotKey.carbonHotKeyID == carbonHotKeyID;
      });
  return found == registered_.end() ? nullptr : &*found;
}

bool MASRegisteredHotKeys::installHotkeyWithShortcut(MASShortcutHotKey& hotKey) {
  if (++lastHotKeyID_ == firstHotKeyIDThatIsNoKeyCode) lastHotKeyID_ = lastHotKeyIDOfThePanel + 1;
  hotKey.carbonHotKeyID = lastHotKeyID_;
  hotKey.carbonHotKey = hotKeys_.registerEventHotKey(
      hotKey.shortcut.keyCode(), hotKey.shortcut.carbonFlags(), {signature, hotKey.carbonHotKeyID});
  return hotKey.carbonHotKey != nullptr;
}

}  // namespace qb
