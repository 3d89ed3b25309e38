#include "PlatformDesktop/session/DesktopUserDefaults.h"

#include <QDir>
#include <QFileInfo>

namespace qb {

DesktopUserDefaults::DesktopUserDefaults(FileSystem& fileSystem, const std::string& path)
    : fileSystem_(fileSystem), path_(fileSystem.stringByExpandingTildeInPath(path)) {
  const QString folder = QFileInfo(QString::fromStdString(path_)).path();
  QDir().mkpath(folder);
  // The file itself is replaced at each change, which would end a watch of it.
  watcher_.addPath(folder);
  values_ = read();
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { take(read()); });
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
