#include "PlatformDesktop/session/SessionBus.h"

#include <QDBusError>
#include <QFileInfo>
#include <mutex>
#include <thread>
#include <utility>

#include "QuillboxCommon/Log.h"

namespace qb {

/// What the connecting thread and the bus share. The thread may outlive the bus by as long as an
/// unresponsive daemon holds it.
struct SessionBus::Attempt {
  std::mutex mutex;
  SessionBus* bus;
};

QString SessionBus::addressOfSession() {
  const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
  return socket.startsWith(u'/') && QFileInfo::exists(socket)
             ? QStringLiteral("unix:path=") + socket
             : QString();
}

SessionBus::SessionBus(const QString& address) : attempt_(std::make_shared<Attempt>()) {
  static int number = 0;
  name_ = QStringLiteral("quillbox-session-%1").arg(++number);
  attempt_->bus = this;
  if (address.isEmpty()) {
    giveUp(QStringLiteral("the session names none"));
    return;
  }
  std::thread([attempt = attempt_, name = name_, address] {
    const QDBusConnection connection = QDBusConnection::connectToBus(address, name);
    const QString error = connection.isConnected() ? QString() : connection.lastError().message();
    const bool connected = connection.isConnected();
    const std::lock_guard lock(attempt->mutex);
    if (attempt->bus == nullptr) {
      QDBusConnection::disconnectFromBus(name);
      return;
    }
    QMetaObject::invokeMethod(
        attempt->bus,
        [bus = attempt->bus, error, connected] {
          bus->finished(connected ? QString() : QStringLiteral("it does not answer: ") + error);
        },
        Qt::QueuedConnection);
  }).detach();
}

SessionBus::~SessionBus() {
  {
    const std::lock_guard lock(attempt_->mutex);
    attempt_->bus = nullptr;
  }
  connection_.reset();
  QDBusConnection::disconnectFromBus(name_);
}

void SessionBus::whenConnected(Task task) {
  switch (state_) {
    case State::Connecting:
      tasks_.push_back(std::move(task));
      break;
    case State::Connected:
      task(*connection_);
      break;
    case State::Absent:
      break;
  }
}

void SessionBus::finished(const QString& error) {
  if (!error.isEmpty()) {
    giveUp(error);
    return;
  }
  state_ = State::Connected;
  connection_.emplace(name_);
  connection_->connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                       this, SLOT(busHasGone()));
  for (const Task& task : std::exchange(tasks_, {})) task(*connection_);
}

void SessionBus::busHasGone() {
  if (state_ == State::Connected) giveUp(QStringLiteral("it has gone"));
}

void SessionBus::giveUp(const QString& why) {
  state_ = State::Absent;
  tasks_.clear();
  log("No session bus (" + why.toStdString() +
      "): changes made in Quillbox Preferences take effect at the next start.");
}

}  // namespace qb
