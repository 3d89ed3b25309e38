#include "PlatformDesktop/session/InputPermission.h"

#include "Platform/Accessibility.h"

namespace qb {

bool InputPermission::isGranted() const {
  if (userDefaults_.boolForKey(kInputAccessIsDeniedKey)) return false;
  return !accessibilitySwitch_.isOff() || !userDefaults_.boolForKey(kInputAccessFollowsDesktopKey);
}

}  // namespace qb
