#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <functional>
#include <string>
#include <utility>

#include "Platform/FileSystem.h"
#include "Platform/UserDefaults.h"

namespace qb {

/// The defaults in a property list file that all programs of this product share. Changes of others
/// are seen by watching the folder.
class DesktopUserDefaults : public QObject, public UserDefaults {
 public:
  /// `path` may begin with "~". Its folder is made, to be watched.
  explicit DesktopUserDefaults(FileSystem& fileSystem, const std::string& path = defaultPath);

  PropertyList objectForKey(const std::string& key) const override;
  void setObject(const PropertyList& value, const std::string& key) override;

  /// Called after each change, beside the notice.
  void setOnChange(std::function<void()> onChange) { onChange_ = std::move(onChange); }

  static constexpr const char* defaultPath = "~/Library/Preferences/com.vorlane.quillbox.plist";

 private:
  PropertyList read() const;
  void watchFile();
  void take(PropertyList values);

  FileSystem& fileSystem_;
  std::string path_;
  PropertyList values_;
  QFileSystemWatcher watcher_;
  std::function<void()> onChange_;
};

}  // namespace qb
