#pragma once

#include "Platform/UserDefaults.h"
#include "PlatformDesktop/session/AccessibilitySwitch.h"

namespace qb {

/// Whether the user lets this program see and take the desktop's input. Main thread.
class InputPermission {
 public:
  /// Both must outlive it.
  InputPermission(const UserDefaults& userDefaults, const AccessibilitySwitch& accessibilitySwitch)
      : userDefaults_(userDefaults), accessibilitySwitch_(accessibilitySwitch) {}

  /// Until the user says otherwise; and where the desktop's switch is to be heeded, while that is
  /// not off.
  bool isGranted() const;

 private:
  const UserDefaults& userDefaults_;
  const AccessibilitySwitch& accessibilitySwitch_;
};

}  // namespace qb
