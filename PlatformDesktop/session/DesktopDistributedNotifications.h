#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Platform/DistributedNotifications.h"
#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// Notifications as signals on the session bus: one signal, whose arguments are name and object.
class DesktopDistributedNotifications : public QObject, public DistributedNotifications {
  Q_OBJECT

 public:
  /// The bus must outlive it.
  explicit DesktopDistributedNotifications(SessionBus& bus);
  ~DesktopDistributedNotifications() override;

  void post(const std::string& name, const std::string& object) override;
  Subscription addObserver(const std::string& name, const std::string& object,
                           std::function<void()> handler) override;

 private Q_SLOTS:
  void received(const QString& name, const QString& object);

 private:
  struct Observer {
    std::string name, object;
    std::function<void()> handler;
  };
  void deliver(const std::string& name, const std::string& object);

  SessionBus& bus_;
  /// Tells what is still on its way through the main queue that nobody is there any more.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  std::map<int, Observer> observers_;
  int nextObserver_ = 0;
  bool listens_ = false;
};

}  // namespace qb
