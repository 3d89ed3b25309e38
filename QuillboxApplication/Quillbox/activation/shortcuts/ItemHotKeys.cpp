#include "Quillbox/activation/shortcuts/ItemHotKeys.h"

#include <algorithm>

#include "Platform/ApplicationControl.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

ItemHotKeys::ItemHotKeys(Quillbox& facade)
    : facade_(facade),
      storage_(facade.platform().fileSystem(), facade.platform().archiver()),
      registered_(facade.platform().hotKeys(), storage_),
      handler_(facade, registered_) {}

void ItemHotKeys::maintainItemHotKeys() {
  registered_.unregisterAllGlobalShortcuts();
  const PropertyList storage = storage_.storage();
  for (const auto& [identifier, shortcut] : storage.dictionaryValue()) {
    registered_.registerGlobalShortcutWithUserDefaultsKey(
        identifier, [this](const std::string& pressed) { handleItemHotKeyInvoked(pressed); });
  }
}

void ItemHotKeys::clearItemHotKey(const Item& item) {
  const std::string identifier = item.hotKeyIdentifier();
  storage_.removeObjectForKey(identifier);
  registered_.unregisterGlobalShortcutWithUserDefaultsKey(identifier);
}

void ItemHotKeys::handleItemHotKeyInvoked(const std::string& identifier) {
  const auto& items = facade_.registeredItems();
  const auto found = std::find_if(items.begin(), items.end(), [&identifier](const Item* item) {
    return item->hotKeyIdentifier() == identifier;
  });
  if (found != items.end()) {
    // It may lose its last owner while it acts.
    const auto held = (*found)->weak_from_this().lock();
    (*found)->invoke();
    return;
  }
  Platform& platform = facade_.platform();
  if (platform.fileSystem().fileExistsAtPath(identifier)) {
    platform.applicationControl().openFile(identifier);
  }
}

}  // namespace qb
