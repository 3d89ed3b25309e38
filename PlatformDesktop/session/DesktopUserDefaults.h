#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "Platform/FileSystem.h"
#include "Platform/UserDefaults.h"

namespace qb {

/// The defaults in a property list file that all programs of this product share. Changes of others
/// are seen by watching the folder.
class DesktopUserDefaults : public QObject, public UserDefaults {
 public:
  /// `path` may begin with "~". Its folder is made, to be watched; without a folder the changes of
  /// others are not seen.
  explicit DesktopUserDefaults(FileSystem& fileSystem, const std::string& path = defaultPath);

  PropertyList objectForKey(const std::string& key) const override;
  void setObject(const PropertyList& value, const std::string& key) override;

  /// Called after each change, beside the notice.
  void setOnChange(std::function<void()> onChange) { onChange_ = std::move(onChange); }

  static constexpr const char* defaultPath = "~/Library/Preferences/com.vorlane.quillbox.plist";

 private:
  /// What the file holds, and what it could not be given.
  PropertyList read() const;
  void watch();
  void take(PropertyList values);

  FileSystem& fileSystem_;
  std::string path_;
  PropertyList values_;
  std::map<std::string, PropertyList> unsaved_;
  QFileSystemWatcher watcher_;
  std::function<void()> onChange_;
};

}  // namespace qb
