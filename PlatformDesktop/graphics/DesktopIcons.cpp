#include "PlatformDesktop/graphics/DesktopIcons.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeDatabase>

#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/graphics/WindowIcon.h"
#include "PlatformDesktop/processes/DesktopEntry.h"
#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

constexpr qint64 largestSvg = 4 << 20;

QImage loadPicture(const std::string& path, int pixels) {
  const QString name = qtString(path);
  if (path.ends_with(".svg")) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return renderSvg(file.read(largestSvg), {pixels, pixels});
  }
  QImageReader reader(name);
  reader.setDecideFormatFromContent(true);
  return reader.read();
}

}  // namespace

std::shared_ptr<const IconTheme> DesktopIcons::theme() {
  std::call_once(once_, [this] { theme_ = IconTheme::ofUser(); });
  return theme_;
}

QImage DesktopIcons::named(const std::string& icon, int pixels) {
  const std::string file = theme()->fileOfIcon(icon, pixels);
  return file.empty() ? QImage() : loadPicture(file, pixels);
}

QImage DesktopIcons::ofKind(const std::string& path, int pixels) {
  const QFileInfo file(qtString(path));
  if (!file.exists()) return {};
  static const QMimeDatabase database;
  const QMimeType type = database.mimeTypeForFile(file, QMimeDatabase::MatchExtension);
  for (const QString& name : {type.iconName(), type.genericIconName()}) {
    if (QImage image = named(name.toStdString(), pixels); !image.isNull()) return image;
  }
  return {};
}

QImage DesktopIcons::icon(const std::string& path, int pixels) {
  if (path.ends_with(".desktop")) {
    const auto entry = DesktopEntry::parse(contentsOfFile(path), "", path, "C");
    if (entry) {
      if (QImage image = named(entry->icon, pixels); !image.isNull()) return image;
    }
  }
  if (const xcb_window_t window = windows_->windowOf(path)) {
    if (QImage image = iconOfWindow(window, pixels); !image.isNull()) return image;
  }
  return isApplication(path) ? QImage() : ofKind(path, pixels);
}

bool DesktopIcons::isApplication(const std::string& path) const {
  return path.ends_with(".desktop") || windows_->windowOf(path) != 0;
}

}  // namespace qb
