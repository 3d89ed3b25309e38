#pragma once

#include <string>

#include "Quillbox/activation/shortcuts/MASRegisteredHotKeys.h"
#include "Quillbox/activation/shortcuts/MASShortcutHotKeyHandler.h"
#include "Quillbox/activation/shortcuts/MASShortcutStorage.h"

namespace qb {

class Item;
class Quillbox;

/// The hot keys that the user has given to items. Main thread.
class ItemHotKeys {
 public:
  explicit ItemHotKeys(Quillbox& facade);

  /// Registers all that are stored anew.
  void maintainItemHotKeys();
  /// Takes the item's hot key away for good.
  void clearItemHotKey(const Item& item);
  /// Invokes the first item that goes by the identifier. Without one, opens the file whose path it
  /// is: so an item is reached whose row has not been loaded.
  void handleItemHotKeyInvoked(const std::string& identifier);

  MASShortcutStorage& storage() { return storage_; }
  MASRegisteredHotKeys& registered() { return registered_; }
  MASShortcutHotKeyHandler& handler() { return handler_; }

 private:
  Quillbox& facade_;
  MASShortcutStorage storage_;
  MASRegisteredHotKeys registered_;
  MASShortcutHotKeyHandler handler_;
};

}  // namespace qb
