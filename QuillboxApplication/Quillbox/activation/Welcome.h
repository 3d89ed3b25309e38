#pragma once

#include <cstdint>

namespace qb {

class AppDelegate;
class Quillbox;
struct Alert;

/// What the user is told at the first run, at the first run of a new version and at the first
/// activation. Main thread.
class Welcome {
 public:
  explicit Welcome(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}

  /// Once for each user: the login item and the greeting.
  void performOneTimeStartUp();
  /// Once for each version. A first run has been greeted already.
  void welcomeUserIfNewVersion();
  /// Any value under the version in the defaults counts.
  bool isCurrentVersionMarkedAsHavingBeenWelcomed() const;
  void markCurrentVersionAsHavingBeenWelcomed();
  void showAccessibilityPermissionRegrantDialog();

  /// Whether the tips are due.
  bool userTipsAreDue() const { return showUserTips_; }
  /// Shows the tips, if they are due; they are not any more then.
  void showUserTips();

 private:
  Quillbox& facade() const;
  std::int32_t run(Alert& alert);

  AppDelegate& appDelegate_;
  bool showUserTips_ = false;
};

}  // namespace qb
