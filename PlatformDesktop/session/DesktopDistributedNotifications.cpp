#include "PlatformDesktop/session/DesktopDistributedNotifications.h"

#include <QDBusMessage>
#include <utility>
#include <vector>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

const QString path = QStringLiteral("/com/vorlane/Quillbox/DistributedNotifications");
const QString interfaceName = QStringLiteral("com.vorlane.Quillbox.DistributedNotifications");
const QString member = QStringLiteral("Posted");

}  // namespace

DesktopDistributedNotifications::DesktopDistributedNotifications(SessionBus& bus) : bus_(bus) {}

DesktopDistributedNotifications::~DesktopDistributedNotifications() = default;

void DesktopDistributedNotifications::post(const std::string& name, const std::string& object) {
  bus_.whenConnected([name = QString::fromStdString(name),
                      object = QString::fromStdString(object)](QDBusConnection& connection) {
    QDBusMessage signal = QDBusMessage::createSignal(path, interfaceName, member);
    signal << name << object;
    connection.send(signal);
  });
}

Subscription DesktopDistributedNotifications::addObserver(const std::string& name,
                                                          const std::string& object,
                                                          std::function<void()> handler) {
  const int number = nextObserver_++;
  observers_[number] = {name, object, std::move(handler)};
  if (!std::exchange(listens_, true)) {
    bus_.whenConnected([this](QDBusConnection& connection) {
      connection.connect(QString(), path, interfaceName, member, this,
                         SLOT(received(QString, QString)));
    });
  }
  return Subscription([this, number, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) observers_.erase(number);
  });
}

void DesktopDistributedNotifications::received(const QString& name, const QString& object) {
  // By the loop, so that a handler that runs the loop nested does so in a mode of ours.
  executeBlockAfterDelay(
      [this, alive = std::weak_ptr(alive_), name = name.toStdString(),
       object = object.toStdString()] {
        if (!alive.expired()) deliver(name, object);
      },
      0);
}

void DesktopDistributedNotifications::deliver(const std::string& name, const std::string& object) {
  std::vector<int> numbers;
  for (const auto& [number, observer] : observers_) numbers.push_back(number);
  const std::weak_ptr alive(alive_);
  for (const int number : numbers) {
    if (alive.expired()) return;
    const auto found = observers_.find(number);
    if (found == observers_.end() || found->second.name != name) continue;
    if (!found->second.object.empty() && found->second.object != object) continue;
    const auto handler = found->second.handler;
    handler();
  }
}

}  // namespace qb
