#include "Quillbox/activation/UtilityTimer.h"

#include "Platform/Accessibility.h"
#include "Platform/Dialogs.h"
#include "Platform/EventTap.h"
#include "Quillbox/activation/AccessibilityAlerts.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/EventTaps.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

constexpr TimeInterval utilityInterval = 1.0;

}  // namespace

UtilityTimer::~UtilityTimer() { cancelUtilityTimer(); }

void UtilityTimer::installUtilityTimer() {
  timer_ = RunLoop::main().scheduleTimer(
      utilityInterval, true, [this](RunLoopTimer& timer) { tick(timer); }, RunLoopModes::common());
}

void UtilityTimer::cancelUtilityTimer() {
  if (timer_) timer_->invalidate();
  timer_.reset();
}

void UtilityTimer::tick(RunLoopTimer& timer) {
  const std::uint64_t changesBefore = changes();
  appDelegate_.utilityTimer();
  if (!timer.isValid() || changes() != changesBefore || !hasNothingToDo()) return;
  Platform& platform = appDelegate_.platform();
  timer.restUntilSignalled(
      {&platform.accessibility().trustChanged(), &platform.eventTap().stateChanged()});
}

std::uint64_t UtilityTimer::changes() const {
  Platform& platform = appDelegate_.platform();
  return platform.accessibility().trustChanged().generation() +
         platform.eventTap().stateChanged().generation();
}

bool UtilityTimer::hasNothingToDo() const {
  const bool access = appDelegate_.hasAccessibilityAccess();
  if (abortsAlerts(access)) return false;
  // Without access every attempt at a tap fails until it is granted.
  if (!access) return true;
  const EventTap& eventTap = appDelegate_.platform().eventTap();
  return eventTap.exists() && eventTap.isEnabled() && appDelegate_.eventTaps().isServedInAllModes();
}

bool UtilityTimer::abortsAlerts(bool access) const {
  const AccessibilityAlerts& alerts = appDelegate_.accessibilityAlerts();
  return access ? alerts.hasLossInFunctionalityAlert() : alerts.hasFullyFunctionalAlert();
}

void UtilityTimer::utilityTimer() {
  EventTap& eventTap = appDelegate_.platform().eventTap();
  const bool wasEnabled = eventTap.exists() && eventTap.isEnabled();
  const bool access = appDelegate_.hasAccessibilityAccess();
  const auto reinstall = [this] {
    appDelegate_.removeEventTaps();
    appDelegate_.installEventTaps();
  };
  if (access && lastAccess_ == LastAccess::None) {
    reinstall();
    if (appDelegate_.diagnosticsEnabled()) {
      log("Re-installing event taps after Accessibilty Enabled");
    }
    appDelegate_.accessibilityAlerts().scheduleFullyFunctionalAlert();
  }
  if (!access && lastAccess_ == LastAccess::Granted &&
      AppDelegate::isQuillboxConfiguredToRequireAccessibilityAPIS()) {
    appDelegate_.accessibilityAlerts().scheduleLossInFunctionalityAlert();
  }
  if (abortsAlerts(access)) appDelegate_.platform().dialogs().abortModal();
  lastAccess_ = access ? LastAccess::Granted : LastAccess::None;
  if (!appDelegate_.eventTaps().isServedInAllModes()) reinstall();
  if (!wasEnabled && eventTap.exists()) eventTap.enable(true);
}

}  // namespace qb
