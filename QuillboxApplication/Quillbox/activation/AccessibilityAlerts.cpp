#include "Quillbox/activation/AccessibilityAlerts.h"

#include "Platform/Dialogs.h"
#include "Platform/Platform.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"

namespace qb {

namespace {

constexpr const char* devicesEnabled =
    "Thank you for enabling access to assistive devices.  As a result, all of Quillbox's features "
    "are now functional.";
constexpr const char* accessGranted =
    "Thank you for granting access to Quillbox.  As a result, all of Quillbox's features are now "
    "functional.";
constexpr const char* devicesDisabled =
    "Some of Quillbox's functionality relies on access to assistive devices.  By disabling this "
    "access, these features of Quillbox have become inactive.\r\rRe-enable access to assistive "
    "devices to regain full Quillbox functionality.";
constexpr const char* accessRevoked =
    "Some of Quillbox's functionality requires that you grant it certain access in the System "
    "Preferences.  By revoking this access, these features of Quillbox have become "
    "inactive.\r\rRe-grant this access to regain full Quillbox functionality.";

}  // namespace

AccessibilityAlerts::~AccessibilityAlerts() { RunLoop::main().cancelPreviousPerformRequests(this); }

void AccessibilityAlerts::scheduleFullyFunctionalAlert() {
  RunLoop::main().performAfterDelay(this, "displayFullyFunctionalAlert", 0,
                                    [this] { displayFullyFunctionalAlert(); });
}

void AccessibilityAlerts::scheduleLossInFunctionalityAlert() {
  RunLoop::main().performAfterDelay(this, "displayLossInFunctionalityAlert", 0,
                                    [this] { displayLossInFunctionalityAlert(); });
}

void AccessibilityAlerts::run(Alert& alert) {
  const UserInteractionBracket interaction(*quillbox);
  appDelegate_.platform().dialogs().runModal(alert);
}

void AccessibilityAlerts::displayFullyFunctionalAlert() {
  if (hasFullyFunctionalAlert_) return;
  hasFullyFunctionalAlert_ = true;
  Alert alert =
      Alert::withMessageText("Quillbox Fully Functional", "OK", "", "",
                             quillbox->isMountainLionOrEarlier() ? devicesEnabled : accessGranted);
  run(alert);
  // Whether or not the system's settings are open. Intended.
  quillbox->openQuillboxSettingsAfterDelay(0);
  if (quillbox->isMavericksOrLater()) appDelegate_.relaunchQuillbox();
}

void AccessibilityAlerts::displayLossInFunctionalityAlert() {
  if (hasLossInFunctionalityAlert_) return;
  hasLossInFunctionalityAlert_ = true;
  Alert alert =
      Alert::withMessageText("Quillbox Loss in Functionality", "OK", "", "",
                             quillbox->isMountainLionOrEarlier() ? devicesDisabled : accessRevoked);
  run(alert);
}

}  // namespace qb
