#include "PlatformDesktop/session/AccessibilitySwitch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace qb {

namespace {

const QString service = QStringLiteral("org.a11y.Bus");
const QString path = QStringLiteral("/org/a11y/bus");
const QString statusInterface = QStringLiteral("org.a11y.Status");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace

AccessibilitySwitch::AccessibilitySwitch(SessionBus& bus) : bus_(bus) {
  bus.whenConnected([this](QDBusConnection& connection) { connectTo(connection); });
}

void AccessibilitySwitch::connectTo(QDBusConnection& connection) {
  // From anybody, who can only have it asked again: naming the sender would make this thread wait
  // for the bus to say who that is.
  connection.connect(QString(), path, propertiesInterface, QStringLiteral("PropertiesChanged"),
                     {statusInterface}, QString(), this, SLOT(ask()));
  connection.connect(QStringLiteral("org.freedesktop.DBus"), QString(),
                     QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"),
                     {service}, QString(), this, SLOT(ask()));
  ask();
}

void AccessibilitySwitch::ask() {
  bus_.whenConnected([this](QDBusConnection& connection) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("Get"));
    call.setArguments({statusInterface, QStringLiteral("IsEnabled")});
    // Looking at the switch is not to start the technologies.
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
              const QDBusPendingReply<QDBusVariant> reply = *finished;
              setOff(reply.isValid() && !reply.value().variant().toBool());
              finished->deleteLater();
            });
  });
}

void AccessibilitySwitch::setOff(bool off) {
  if (off == std::exchange(isOff_, off)) return;
  if (observer_) observer_();
}

}  // namespace qb
