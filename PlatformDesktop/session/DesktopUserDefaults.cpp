#include "PlatformDesktop/session/DesktopUserDefaults.h"

#include <QDir>
#include <QFileInfo>

namespace qb {

DesktopUserDefaults::DesktopUserDefaults(FileSystem& fileSystem, const std::string& path)
    : fileSystem_(fileSystem), path_(fileSystem.stringByExpandingTildeInPath(path)) {
  const QString folder = QFileInfo(QString::fromStdString(path_)).path();
  QDir().mkpath(folder);
  // The folder, since a file that is replaced is no longer watched; the file as well, since its
  // user may edit it in place.
  watcher_.addPath(folder);
  values_ = read();
  watchFile();
  const auto readAgain = [this] {
    take(read());
    watchFile();
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
  if (fileSystem_.writeToFile(values, path_)) take(std::move(values));
}

void DesktopUserDefaults::watchFile() {
  const QString file = QString::fromStdString(path_);
  if (!watcher_.files().contains(file) && QFileInfo::exists(file)) watcher_.addPath(file);
}

PropertyList DesktopUserDefaults::read() const {
  return fileSystem_.dictionaryWithContentsOfFile(path_).value_or(PropertyList::dictionary());
}

void DesktopUserDefaults::take(PropertyList values) {
  if (values == values_) return;
  values_ = std::move(values);
  valuesChanged().signal();
  if (onChange_) onChange_();
}

}  // namespace qb
