#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <functional>
#include <utility>

namespace qb::test {

/// What a desktop has to show the notifications of its programs. Notes each one instead.
class NotificationDaemon : public QDBusVirtualObject {
 public:
  /// `notified` gets what a notification consists of, in the order of the desktops' own interface.
  explicit NotificationDaemon(std::function<void(const QList<QVariant>&)> notified)
      : notified_(std::move(notified)) {}

  /// Whether that bus had no such daemon before.
  bool serve(QDBusConnection& connection) {
    return connection.registerVirtualObject("/org/freedesktop/Notifications", this) &&
           connection.registerService("org.freedesktop.Notifications");
  }

  QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() != "Notify") return false;
    notified_(message.arguments());
    return connection.send(message.createReply(1U));
  }

 private:
  std::function<void(const QList<QVariant>&)> notified_;
};

}  // namespace qb::test
