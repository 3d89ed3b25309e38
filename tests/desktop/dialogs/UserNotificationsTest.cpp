#include "PlatformDesktop/session/DesktopUserNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include "DialogDesk.h"
#include "PrivateBus.h"
#include "QuillboxCommon/Log.h"

namespace qb::test {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

class LogLines : public LogSink {
 public:
  LogLines() : previous_(logSink()) { setLogSink(this); }
  ~LogLines() override { setLogSink(previous_); }
  void write(std::string_view text) override { lines.emplace_back(text); }
  bool standardErrorIsTerminal() const override { return false; }
  std::vector<std::string> lines;

 private:
  LogSink* previous_;
};

class Daemon : public QDBusVirtualObject {
 public:
  QList<QVariant> arguments;
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() != "Notify") return false;
    arguments = message.arguments();
    return connection.send(message.createReply(1U));
  }
};

/// This process is the front one if `inFront`.
class FewProcesses : public Processes {
 public:
  bool inFront = false;
  ProcessSerialNumber getCurrentProcess() const override { return {0, 1}; }
  ProcessSerialNumber getFrontProcess() const override {
    return inFront ? getCurrentProcess() : ProcessSerialNumber{0, 2};
  }
  std::optional<ProcessSerialNumber> getNextProcess(ProcessSerialNumber) const override {
    return std::nullopt;
  }
  std::optional<ProcessInformation> processInformation(ProcessSerialNumber) const override {
    return std::nullopt;
  }
  void setFrontProcess(ProcessSerialNumber) override {}
  ChangeNotice& processesChanged() override { return changed_; }

 private:
  ChangeNotice changed_;
};

class UserNotificationsTest : public DialogDesk {
 protected:
  LogLines log;
  FewProcesses processes;
  const UserNotification notification{"Copied", "1 < 2 & 3", UserNotificationDefaultSoundName};
};

TEST_F(UserNotificationsTest, ADaemonGetsTitleDetailsAndSound) {
  PrivateBus daemonBus;
  ASSERT_FALSE(daemonBus.address().isEmpty());
  QDBusConnection connection = QDBusConnection::connectToBus(daemonBus.address(), "daemon");
  Daemon daemon;
  ASSERT_TRUE(connection.registerVirtualObject("/org/freedesktop/Notifications", &daemon));
  ASSERT_TRUE(connection.registerService("org.freedesktop.Notifications"));
  SessionBus bus(daemonBus.address());
  DesktopUserNotifications notifications(bus, processes);
  notifications.deliverNotification(notification);
  EXPECT_TRUE(waitFor([&] { return !daemon.arguments.isEmpty(); }));
  ASSERT_EQ(daemon.arguments.size(), 8);
  EXPECT_EQ(daemon.arguments[0].toString(), "Quillbox");
  EXPECT_EQ(daemon.arguments[3].toString(), "Copied");
  EXPECT_EQ(daemon.arguments[4].toString(), "1 &lt; 2 &amp; 3");
  QDBusConnection::disconnectFromBus("daemon");
}

TEST_F(UserNotificationsTest, InFrontItIsShownOnlyWhenWanted) {
  PrivateBus daemonBus;
  QDBusConnection connection = QDBusConnection::connectToBus(daemonBus.address(), "daemon");
  Daemon daemon;
  ASSERT_TRUE(connection.registerVirtualObject("/org/freedesktop/Notifications", &daemon));
  ASSERT_TRUE(connection.registerService("org.freedesktop.Notifications"));
  SessionBus bus(daemonBus.address());
  DesktopUserNotifications notifications(bus, processes);
  processes.inFront = true;
  notifications.deliverNotification({"Unwanted", "", ""});
  notifications.setShouldPresent([](const UserNotification&) { return true; });
  notifications.deliverNotification({"Wanted", "", ""});
  EXPECT_TRUE(waitFor([&] { return !daemon.arguments.isEmpty(); }));
  EXPECT_EQ(daemon.arguments.at(3).toString(), "Wanted");
  QDBusConnection::disconnectFromBus("daemon");
}

TEST_F(UserNotificationsTest, WithoutADaemonTheLogSaysSoOnce) {
  PrivateBus emptyBus;
  SessionBus bus(emptyBus.address());
  DesktopUserNotifications notifications(bus, processes);
  notifications.deliverNotification(notification);
  notifications.deliverNotification(notification);
  EXPECT_TRUE(waitFor([&] { return !log.lines.empty(); }));
  bool served = false;
  bus.whenConnected([&](QDBusConnection& connection) {
    // Whatever was asked before has been answered when this is.
    connection.call(QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                   "org.freedesktop.DBus", "GetId"));
    served = true;
  });
  EXPECT_TRUE(waitFor([&] { return served; }));
  loop.runUntilDate(loop.now());
  ASSERT_THAT(log.lines, SizeIs(1));
  EXPECT_THAT(log.lines.front(), HasSubstr("No desktop notifications: "));
}

TEST_F(UserNotificationsTest, WithoutABusTheLogSaysSoOnceAndNothingWaits) {
  SessionBus bus{QString()};
  DesktopUserNotifications notifications(bus, processes);
  notifications.deliverNotification(notification);
  notifications.deliverNotification(notification);
  ASSERT_THAT(log.lines, SizeIs(1));
  EXPECT_THAT(log.lines.front(), HasSubstr("No session bus"));
}

}  // namespace
}  // namespace qb::test
