#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/HotKeys.h"
#include "Quillbox/activation/shortcuts/MASShortcut.h"
#include "Quillbox/activation/shortcuts/MASShortcutStorage.h"

namespace qb {

/// Gets the identifier of the hot key that was pressed.
using MASShortcutHandler = std::function<void(const std::string& hotKeyIdentifier)>;

/// One stored hot key in force; its registration ends with it.
struct MASShortcutHotKey {
  MASShortcut shortcut;
  std::string hotKeyIdentifier;
  MASShortcutHandler handler;
  std::uint32_t carbonHotKeyID = 0;
  /// Null while the combination could not be had.
  std::unique_ptr<HotKeys::Registration> carbonHotKey;
};

/// The hot keys of items that are registered with the desktop. Main thread.
class MASRegisteredHotKeys {
 public:
  static constexpr std::uint32_t signature = fourCharacterCode("MASS");

  /// Both must outlive it.
  MASRegisteredHotKeys(HotKeys& hotKeys, const MASShortcutStorage& storage)
      : hotKeys_(hotKeys), storage_(storage) {}

  /// Registers what is stored for the key, in place of what was. Nothing when nothing is; a
  /// combination that cannot be had leaves the key without effect, silently.
  void registerGlobalShortcutWithUserDefaultsKey(const std::string& key,
                                                 MASShortcutHandler handler);
  void unregisterGlobalShortcutWithUserDefaultsKey(const std::string& key);
  void unregisterAllGlobalShortcuts();
  /// Tries again what this program itself held for a while. What another one holds stays with it.
  void registerLeftOutShortcuts();

  const std::vector<MASShortcutHotKey>& hotKeys() const { return registered_; }
  /// Null when there is none, or it could not be had.
  const MASShortcutHotKey* hotKeyWithID(std::uint32_t carbonHotKeyID) const;

 private:
  bool installHotkeyWithShortcut(MASShortcutHotKey& hotKey);

  HotKeys& hotKeys_;
  const MASShortcutStorage& storage_;
  std::vector<MASShortcutHotKey> registered_;
  /// Counts from 1 and never back, also when registrations have failed. Passes over the ids that
  /// the panel's own hot keys have: an item's would do what those do, too.
  std::uint32_t lastHotKeyID_ = 0;
};

}  // namespace qb
