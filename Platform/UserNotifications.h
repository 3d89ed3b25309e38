#pragma once

#include <functional>
#include <string>
#include <utility>

namespace qb {

inline constexpr char UserNotificationDefaultSoundName[] = "NSUserNotificationDefaultSoundName";

/// A message in the desktop's own style, which stays for a while and needs no answer.
struct UserNotification {
  std::string title;
  std::string informativeText;
  /// Empty for silence.
  std::string soundName;
  friend bool operator==(const UserNotification&, const UserNotification&) = default;
};

/// The desktop's notifications. Main thread.
class UserNotifications {
 public:
  using ShouldPresent = std::function<bool(const UserNotification&)>;

  virtual ~UserNotifications() = default;
  /// Asked whether a notification is shown although this process is the front one; without an
  /// answer it is not.
  void setShouldPresent(ShouldPresent shouldPresent) { shouldPresent_ = std::move(shouldPresent); }
  /// Returns at once. A desktop that has no notifications drops it, and the log says so once.
  virtual void deliverNotification(const UserNotification& notification) = 0;

 protected:
  bool shouldPresentInFront(const UserNotification& notification) const {
    return shouldPresent_ && shouldPresent_(notification);
  }

 private:
  ShouldPresent shouldPresent_;
};

}  // namespace qb
