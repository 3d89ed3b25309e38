#pragma once

#include "Platform/Processes.h"
#include "Platform/UserNotifications.h"
#include "PlatformDesktop/session/SessionBus.h"

namespace qb {

/// Notifications by the session's notification daemon. Main thread.
class DesktopUserNotifications : public UserNotifications {
 public:
  /// Both must outlive it.
  DesktopUserNotifications(SessionBus& bus, Processes& processes)
      : bus_(bus), processes_(processes) {}

  void deliverNotification(const UserNotification& notification) override;

 private:
  SessionBus& bus_;
  Processes& processes_;
};

}  // namespace qb
