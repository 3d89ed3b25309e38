#include "Quillbox/activation/shortcuts/MASShortcutStorage.h"

#include <utility>

namespace qb {

std::string MASShortcutStorage::path() const {
  return fileSystem_.stringByExpandingTildeInPath(
      "~/Library/Preferences/com.vorlane.quillbox.hotkeys");
}

PropertyList MASShortcutStorage::storage() const {
  return fileSystem_.dictionaryWithContentsOfFile(path()).value_or(PropertyList::dictionary());
}

bool MASShortcutStorage::setObject(const PropertyList& object, const std::string& forKey) {
  PropertyList changed = storage();
  changed.setObject(object, forKey);
  return write(changed);
}

bool MASShortcutStorage::removeObjectForKey(const std::string& key) {
  PropertyList changed = storage();
  if (!changed.hasKey(key)) return true;
  changed.removeObjectForKey(key);
  return write(changed);
}

std::optional<MASShortcut> MASShortcutStorage::shortcutForKey(const std::string& key) const {
  return MASShortcut::shortcutWithData(storage().objectForKey(key), archiver_);
}

bool MASShortcutStorage::setShortcut(const MASShortcut& shortcut, const std::string& forKey) {
  return setObject(shortcut.archivedData(archiver_), forKey);
}

bool MASShortcutStorage::write(const PropertyList& storage) {
  if (!fileSystem_.writeToFile(storage, path())) return false;
  sendChangedNotification();
  return true;
}

void MASShortcutStorage::sendChangedNotification() {
  // An observer may end its own subscription.
  for (auto each = observers_->begin(); each != observers_->end();) {
    const Observer observer = *each++;
    observer(kMASShortcutStorageDidChangeNotification);
  }
}

Subscription MASShortcutStorage::addObserver(Observer observer) {
  const auto entry = observers_->insert(observers_->end(), std::move(observer));
  return Subscription([weak = std::weak_ptr(observers_), entry] {
    if (const auto observers = weak.lock()) observers->erase(entry);
  });
}

}  // namespace qb
