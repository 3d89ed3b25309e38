#pragma once

#include <vector>

#include "Platform/UserNotifications.h"
#include "PlatformSimulated/SimulatedProcesses.h"

namespace qb {

/// Keeps what was delivered. While this process is the front one, it shows only what the delegate
/// wants shown.
class SimulatedUserNotifications : public UserNotifications {
 public:
  explicit SimulatedUserNotifications(SimulatedProcesses& processes) : processes_(processes) {}

  void deliverNotification(const UserNotification& notification) override {
    delivered_.push_back(notification);
    const bool inFront = processes_.getFrontProcess() == processes_.getCurrentProcess();
    if (!inFront || shouldPresentInFront(notification)) presented_.push_back(notification);
  }

  const std::vector<UserNotification>& delivered() const { return delivered_; }
  /// Those of them that the user has seen.
  const std::vector<UserNotification>& presented() const { return presented_; }

 private:
  SimulatedProcesses& processes_;
  std::vector<UserNotification> delivered_, presented_;
};

}  // namespace qb
