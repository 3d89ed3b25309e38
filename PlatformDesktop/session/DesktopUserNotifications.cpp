#include "PlatformDesktop/session/DesktopUserNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

#include "PlatformDesktop/graphics/QtConversions.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

constexpr int timeChosenByDaemon = -1;

QDBusMessage callFor(const UserNotification& notification) {
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.Notifications"),
      QStringLiteral("/org/freedesktop/Notifications"),
      QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
  QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("quillbox")}};
  if (!notification.soundName.empty()) {
    hints.insert(QStringLiteral("sound-name"), QStringLiteral("message"));
  }
  // The daemon reads markup in the body.
  call.setArguments({QStringLiteral("Quillbox"), 0U, QStringLiteral("quillbox"),
                     qtString(notification.title),
                     qtString(notification.informativeText).toHtmlEscaped(), QStringList(), hints,
                     timeChosenByDaemon});
  return call;
}

void logFailureOnce(const QString& reason) {
  static bool logged = false;
  if (logged) return;
  logged = true;
  log("No desktop notifications: " + reason.toStdString());
}

}  // namespace

void DesktopUserNotifications::deliverNotification(const UserNotification& notification) {
  const bool inFront = processes_.getFrontProcess() == processes_.getCurrentProcess();
  if (inFront && !shouldPresentInFront(notification)) return;
  bus_.whenConnected([call = callFor(notification)](QDBusConnection& connection) {
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [](QDBusPendingCallWatcher* finished) {
                       if (finished->isError()) logFailureOnce(finished->error().message());
                       finished->deleteLater();
                     });
  });
}

}  // namespace qb
