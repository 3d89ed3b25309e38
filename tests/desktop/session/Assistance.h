#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

namespace qb::test {

/// A desktop's assistive technologies.
class Assistance : public QDBusVirtualObject {
 public:
  Assistance(const QString& bus, bool enabled)
      : connection_(QDBusConnection::connectToBus(bus, QStringLiteral("assistance"))),
        enabled_(enabled) {
    EXPECT_TRUE(connection_.registerVirtualObject(path(), this));
    EXPECT_TRUE(connection_.registerService(QStringLiteral("org.a11y.Bus")));
  }
  ~Assistance() override { QDBusConnection::disconnectFromBus(QStringLiteral("assistance")); }

  void enable(bool enabled) {
    enabled_ = enabled;
    QDBusMessage signal =
        QDBusMessage::createSignal(path(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    signal << QStringLiteral("org.a11y.Status")
           << QVariantMap{{QStringLiteral("IsEnabled"), enabled}} << QStringList();
    EXPECT_TRUE(connection_.send(signal));
  }
  int questions() const { return questions_; }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const QList<QVariant> wanted{QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled")};
    if (message.member() != "Get" || message.arguments() != wanted) return false;
    ++questions_;
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(enabled_))));
  }

 private:
  static QString path() { return QStringLiteral("/org/a11y/bus"); }

  QDBusConnection connection_;
  bool enabled_;
  int questions_ = 0;
};

}  // namespace qb::test
