#include "PlatformDesktop/session/DesktopLoginItems.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <optional>
#include <string_view>
#include <utility>

#include "PlatformDesktop/processes/DesktopEntry.h"
#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

/// As an argument of an Exec line: quoted there, and the backslashes once more for the value.
std::string execArgument(std::string_view text) {
  std::string quoted = "\"";
  for (const char character : text) {
    switch (character) {
      case '"':
      case '`':
      case '$':
        quoted += "\\\\";
        quoted += character;
        break;
      case '\\':
        quoted += "\\\\\\\\";
        break;
      case '%':
        quoted += "%%";
        break;
      case '\n':
        quoted += "\\n";
        break;
      default:
        quoted += character;
    }
  }
  return quoted + '"';
}

/// The program file that a command starts, by its own place and not by a link to it.
std::string programOf(const DesktopEntry& entry) {
  const auto words = entry.commandLine();
  if (words.empty()) return {};
  QString program = QString::fromStdString(words.front());
  if (!program.contains(u'/')) program = QStandardPaths::findExecutable(program);
  const QString canonical = QFileInfo(program).canonicalFilePath();
  // A program that has gone is still known by the name that the entry gives.
  return (canonical.isEmpty() ? program : canonical).toStdString();
}

std::optional<DesktopEntry> entryAt(const QFileInfo& file) {
  const std::string path = file.filePath().toStdString();
  auto entry =
      DesktopEntry::parse(contentsOfFile(path), file.completeBaseName().toStdString(), path, "");
  return entry && !entry->hidden ? entry : std::nullopt;
}

}  // namespace

DesktopLoginItems::DesktopLoginItems(std::string folder) : folder_(std::move(folder)) {}

std::string DesktopLoginItems::autostartFolder() {
  return DesktopFolders::configuration().front() + "/autostart";
}

std::vector<LoginItems::LoginItem> DesktopLoginItems::snapshot() const {
  std::vector<LoginItem> items;
  const QDir folder(QString::fromStdString(folder_));
  for (const QFileInfo& file :
       folder.entryInfoList({QStringLiteral("*.desktop")}, QDir::Files, QDir::Name)) {
    if (const auto entry = entryAt(file)) items.push_back({entry->path, programOf(*entry)});
  }
  return items;
}

bool DesktopLoginItems::insertItemLast(const std::string& path) {
  const QString folder = QString::fromStdString(folder_);
  if (path.empty() || !QDir().mkpath(folder)) return false;
  // One name for each program: a copy that has moved takes its own entry over.
  const QString program = QFileInfo(QString::fromStdString(path)).completeBaseName();
  QSaveFile file(folder + QStringLiteral("/com.vorlane.") + program + QStringLiteral(".desktop"));
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Quillbox\n"
      "Comment=Application switcher and launcher\n"
      "Icon=quillbox\n"
      "X-GNOME-Autostart-enabled=true\n"
      "Exec=");
  file.write(QByteArray::fromStdString(execArgument(path)));
  file.write("\n");
  return file.commit();
}

bool DesktopLoginItems::remove(const LoginItem& item) {
  return QFile::remove(QString::fromStdString(item.identifier));
}

}  // namespace qb
