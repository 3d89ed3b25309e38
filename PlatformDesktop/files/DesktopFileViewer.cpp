#include "PlatformDesktop/files/DesktopFileViewer.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QStringList>

#include "PlatformDesktop/files/FileUrl.h"
#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

/// Whoever has got the call may still be starting: opening something else then would be too much.
bool hasNobodyGotIt(const QDBusError& error) {
  return error.type() != QDBusError::NoReply && error.type() != QDBusError::Timeout &&
         error.type() != QDBusError::TimedOut;
}

}  // namespace

void DesktopFileViewer::selectFile(const std::string& path) { callFileManager("ShowItems", path); }

void DesktopFileViewer::openInformationWindow(const std::string& path) {
  callFileManager("ShowItemProperties", path);
}

void DesktopFileViewer::previewFile(const std::string& path) {
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.gnome.NautilusPreviewer"), QStringLiteral("/org/gnome/NautilusPreviewer"),
      QStringLiteral("org.gnome.NautilusPreviewer2"), QStringLiteral("ShowFile"));
  const bool closesIfShown = false;
  call.setArguments({qtString(fileUrl(path)), QString(), closesIfShown});
  send(call, path);
}

void DesktopFileViewer::callFileManager(const char* method, const std::string& path) {
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"),
      QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QString::fromLatin1(method));
  call.setArguments({QStringList{qtString(fileUrl(path))}, QString()});
  send(call, folderOf(path));
}

void DesktopFileViewer::send(const QDBusMessage& call, const std::string& instead) {
  if (!bus_.isConnected()) {
    opener_.openFile(instead);
    return;
  }
  bus_.whenConnected([&](QDBusConnection& connection) {
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(call));
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher,
        [this, alive = std::weak_ptr(lifeSign_), instead](QDBusPendingCallWatcher* finished) {
          finished->deleteLater();
          if (!alive.expired() && finished->isError() && hasNobodyGotIt(finished->error())) {
            opener_.openFile(instead);
          }
        });
  });
}

}  // namespace qb
