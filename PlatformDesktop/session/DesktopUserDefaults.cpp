#include "PlatformDesktop/session/DesktopUserDefaults.h"

#include <QDir>
#include <QFileInfo>

namespace qb {

DesktopUserDefaults::DesktopUserDefaults(FileSystem& fileSystem, const std::string& path)
    : fileSystem_(fileSystem), path_(fileSystem.stringByExpandingTildeInPath(path)) {
  QDir().mkpath(QFileInfo(QString::fromStdString(path_)).path());
  values_ = read();
  watch();
  const auto readAgain = [this] {
    take(read());
    watch();
  };
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, readAgain);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, readAgain);
}

PropertyList DesktopUserDefaults::objectForKey(const std::string& key) const {
  return values_.objectForKey(key);
}

void DesktopUserDefaults::setObject(const PropertyList& value, const std::string& key) {
  // From the file: another program may have changed another key a moment ago.
  PropertyList values = read();
  values.setObject(value, key);
  if (fileSystem_.writeToFile(values, path_)) {
    unsaved_.clear();
    watch();
  } else {
    unsaved_[key] = value;
  }
  take(std::move(values));
}

void DesktopUserDefaults::watch() {
  // The folder, since a file that is replaced is no longer watched; the file as well, since its
  // user may edit it in place.
  const QString file = QString::fromStdString(path_);
  const QString folder = QFileInfo(file).path();
  if (!watcher_.directories().contains(folder) && QFileInfo(folder).isDir()) {
    watcher_.addPath(folder);
  }
  if (!watcher_.files().contains(file) && QFileInfo::exists(file)) watcher_.addPath(file);
}

PropertyList DesktopUserDefaults::read() const {
  PropertyList values =
      fileSystem_.dictionaryWithContentsOfFile(path_).value_or(PropertyList::dictionary());
  for (const auto& [key, value] : unsaved_) values.setObject(value, key);
  return values;
}

void DesktopUserDefaults::take(PropertyList values) {
  if (values == values_) return;
  values_ = std::move(values);
  valuesChanged().signal();
  if (onChange_) onChange_();
}

}  // namespace qb
