#pragma once

namespace qb {

class AppDelegate;
struct Alert;

/// Tells the user that access has been granted or taken back, each once in a run of the program.
/// Main thread.
class AccessibilityAlerts {
 public:
  explicit AccessibilityAlerts(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}
  ~AccessibilityAlerts();
  AccessibilityAlerts(const AccessibilityAlerts&) = delete;
  AccessibilityAlerts& operator=(const AccessibilityAlerts&) = delete;

  /// In the next pass in the default mode: not under another alert.
  void scheduleFullyFunctionalAlert();
  void scheduleLossInFunctionalityAlert();
  /// Afterwards the program starts itself anew, with all that it may do now.
  void displayFullyFunctionalAlert();
  void displayLossInFunctionalityAlert();
  /// True from the moment that it is shown, for good.
  bool hasFullyFunctionalAlert() const { return hasFullyFunctionalAlert_; }
  bool hasLossInFunctionalityAlert() const { return hasLossInFunctionalityAlert_; }

 private:
  void run(Alert& alert);

  AppDelegate& appDelegate_;
  bool hasFullyFunctionalAlert_ = false;
  bool hasLossInFunctionalityAlert_ = false;
};

}  // namespace qb
