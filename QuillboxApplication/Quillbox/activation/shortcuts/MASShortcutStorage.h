#pragma once

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Archiver.h"
#include "Platform/FileSystem.h"
#include "Quillbox/activation/shortcuts/MASShortcut.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

inline constexpr std::string_view kMASShortcutStorageDidChangeNotification =
    "NSMASShortcutStorageDidChangeNotification";

/// The file of hot keys, from hot-key identifiers to archived shortcuts. Nothing of it is kept in
/// memory: what another process has written counts at once. Main thread.
class MASShortcutStorage {
 public:
  /// Gets the notification's name.
  using Observer = std::function<void(std::string_view notification)>;

  /// Both must outlive it.
  MASShortcutStorage(FileSystem& fileSystem, const Archiver& archiver)
      : fileSystem_(fileSystem), archiver_(archiver) {}

  std::string path() const;
  /// What the file holds now; an empty dictionary when it is missing or cannot be read. Such a file
  /// is kept aside when it is written anew.
  PropertyList storage() const;
  /// False, with the file as it was, when it cannot be written. A success is a change, of which
  /// the observers are told; removing what is not there changes nothing.
  bool setObject(const PropertyList& object, const std::string& forKey);
  bool removeObjectForKey(const std::string& key);

  /// None when nothing is stored for the key, or something that is no shortcut.
  std::optional<MASShortcut> shortcutForKey(const std::string& key) const;
  bool setShortcut(const MASShortcut& shortcut, const std::string& forKey);

  /// Posts `kMASShortcutStorageDidChangeNotification`.
  void sendChangedNotification();
  [[nodiscard]] Subscription addObserver(Observer observer);

 private:
  bool write(const PropertyList& storage);

  FileSystem& fileSystem_;
  const Archiver& archiver_;
  /// Shared, since a subscription may outlive the storage.
  std::shared_ptr<std::list<Observer>> observers_ = std::make_shared<std::list<Observer>>();
};

}  // namespace qb
