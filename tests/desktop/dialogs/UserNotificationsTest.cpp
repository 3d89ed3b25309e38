#include "PlatformDesktop/session/DesktopUserNotifications.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>

#include "DialogDesk.h"
#include "NotificationDaemon.h"
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
  QList<QVariant> notified;
  NotificationDaemon daemon{[this](const QList<QVariant>& arguments) { notified = arguments; }};
  const UserNotification notification{"Copied", "1 < 2 & 3", UserNotificationDefaultSoundName};
};

TEST_F(UserNotificationsTest, ADaemonGetsTitleDetailsAndSound) {
  PrivateBus daemonBus;
  ASSERT_FALSE(daemonBus.address().isEmpty());
  QDBusConnection connection = QDBusConnection::connectToBus(daemonBus.address(), "daemon");
  ASSERT_TRUE(daemon.serve(connection));
  SessionBus bus(daemonBus.address());
  DesktopUserNotifications notifications(bus, processes);
  notifications.deliverNotification(notification);
  EXPECT_TRUE(waitFor([&] { return !notified.isEmpty(); }));
  ASSERT_EQ(notified.size(), 8);
  EXPECT_EQ(notified[0].toString(), "Quillbox");
  EXPECT_EQ(notified[3].toString(), "Copied");
  EXPECT_EQ(notified[4].toString(), "1 &lt; 2 &amp; 3");
  const auto hints = qdbus_cast<QVariantMap>(notified[6]);
  EXPECT_EQ(hints.value("sound-name").toString(), "message");
  EXPECT_EQ(hints.value("desktop-entry").toString(), "quillbox");
  QDBusConnection::disconnectFromBus("daemon");
}

TEST_F(UserNotificationsTest, InFrontItIsShownOnlyWhenWanted) {
  PrivateBus daemonBus;
  QDBusConnection connection = QDBusConnection::connectToBus(daemonBus.address(), "daemon");
  ASSERT_TRUE(daemon.serve(connection));
  SessionBus bus(daemonBus.address());
  DesktopUserNotifications notifications(bus, processes);
  processes.inFront = true;
  notifications.deliverNotification({"Unwanted", "", ""});
  notifications.setShouldPresent([](const UserNotification&) { return true; });
  notifications.deliverNotification({"Wanted", "", ""});
  EXPECT_TRUE(waitFor([&] { return !notified.isEmpty(); }));
  EXPECT_EQ(notified.at(3).toString(), "Wanted");
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
