#include "PlatformDesktop/session/AccessibilitySwitch.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include "EventWait.h"
#include "PrivateBus.h"

namespace qb::test {
namespace {

const QString objectPath = QStringLiteral("/org/a11y/bus");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// A desktop's assistive technologies.
class Assistance : public QDBusVirtualObject {
 public:
  Assistance(const QString& bus, bool enabled)
      : connection_(QDBusConnection::connectToBus(bus, QStringLiteral("assistance"))),
        enabled_(enabled) {
    EXPECT_TRUE(connection_.registerVirtualObject(objectPath, this));
    EXPECT_TRUE(connection_.registerService(QStringLiteral("org.a11y.Bus")));
  }
  ~Assistance() override { QDBusConnection::disconnectFromBus(QStringLiteral("assistance")); }

  void enable(bool enabled) {
    enabled_ = enabled;
    QDBusMessage signal =
        QDBusMessage::createSignal(objectPath, properties, QStringLiteral("PropertiesChanged"));
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
  QDBusConnection connection_;
  bool enabled_;
  int questions_ = 0;
};

TEST(AccessibilitySwitchTest, IsNotOffWithoutABus) {
  SessionBus bus{QString()};
  EXPECT_FALSE(AccessibilitySwitch(bus).isOff());
}

TEST(AccessibilitySwitchTest, IsFollowedWhereverItIsTurned) {
  const PrivateBus sessionBus;
  Assistance assistance(sessionBus.address(), false);
  SessionBus bus(sessionBus.address());
  AccessibilitySwitch desktopSwitch(bus);
  int changes = 0;
  desktopSwitch.setObserver([&] { ++changes; });
  EXPECT_FALSE(desktopSwitch.isOff()) << "before it is known";
  EXPECT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  assistance.enable(true);
  EXPECT_TRUE(waitFor([&] { return !desktopSwitch.isOff(); }));
  assistance.enable(false);
  EXPECT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  EXPECT_EQ(changes, 3);
}

TEST(AccessibilitySwitchTest, TheSameAgainIsNoChange) {
  const PrivateBus sessionBus;
  Assistance assistance(sessionBus.address(), true);
  SessionBus bus(sessionBus.address());
  AccessibilitySwitch desktopSwitch(bus);
  int changes = 0;
  desktopSwitch.setObserver([&] { ++changes; });
  ASSERT_TRUE(waitFor([&] { return assistance.questions() == 1; }));
  assistance.enable(true);
  ASSERT_TRUE(waitFor([&] { return assistance.questions() == 2; }));
  assistance.enable(false);
  ASSERT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  EXPECT_EQ(changes, 1);
}

TEST(AccessibilitySwitchTest, TechnologiesMayComeLaterAndGo) {
  const PrivateBus sessionBus;
  SessionBus bus(sessionBus.address());
  const AccessibilitySwitch desktopSwitch(bus);
  bool connected = false;
  bus.whenConnected([&](QDBusConnection&) { connected = true; });
  ASSERT_TRUE(waitFor([&] { return connected; }));
  {
    const Assistance assistance(sessionBus.address(), false);
    EXPECT_TRUE(waitFor([&] { return desktopSwitch.isOff(); }));
  }
  EXPECT_TRUE(waitFor([&] { return !desktopSwitch.isOff(); }));
}

}  // namespace
}  // namespace qb::test
