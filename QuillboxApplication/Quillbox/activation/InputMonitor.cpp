#include "Quillbox/activation/InputMonitor.h"

#include <utility>

#include "Platform/KeyCodes.h"
#include "Platform/Pointer.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/PanelWindow.h"

namespace qb {

namespace {

constexpr TimeInterval fineInterval = 0.05;
constexpr TimeInterval coarseInterval = 0.25;
constexpr std::int32_t dismissalsByKeys =
    DismissalMethodCommandTap | DismissalMethodOptionLifted | DismissalMethodCommandLifted;

}  // namespace

InputMonitor::InputMonitor(AppDelegate& appDelegate) : appDelegate_(appDelegate) {}

InputMonitor::~InputMonitor() { cancelInputMonitor(); }

void InputMonitor::installInputMonitor() {
  const TimeInterval interval = appDelegate_.settings().applicationActivatesOnCommandKeyDoubleTap()
                                    ? fineInterval
                                    : coarseInterval;
  if (inputMonitor_ && inputMonitorFrequency_ == interval) return;
  cancelInputMonitor();
  inputMonitorFrequency_ = interval;
  inputMonitor_ =
      RunLoop::main().scheduleTimer(interval, true, [this](RunLoopTimer& timer) { tick(timer); });
}

void InputMonitor::cancelInputMonitor() {
  if (!inputMonitor_) return;
  inputMonitor_->invalidate();
  inputMonitor_.reset();
}

void InputMonitor::tick(RunLoopTimer& timer) {
  if (keysUnderWay_ > 0) {
    lookIsPutOff_ = true;
    return;
  }
  const std::uint64_t changesBefore = changes();
  monitorInput();
  // What has changed meanwhile is to be looked at by the next tick.
  if (!timer.isValid() || changes() != changesBefore || pointerMatters()) return;
  timer.restUntilSignalled(
      {&appDelegate_.activationChanged(), &appDelegate_.settings().valuesChanged(),
       keysMatter() ? &appDelegate_.platform().keyboard().keysChanged() : nullptr});
}

void InputMonitor::makeUpForPutOffLook() {
  if (keysUnderWay_ == 0 && std::exchange(lookIsPutOff_, false)) monitorInput();
}

std::uint64_t InputMonitor::changes() const {
  return appDelegate_.activationChanged().generation() +
         appDelegate_.settings().valuesChanged().generation() +
         appDelegate_.platform().keyboard().keysChanged().generation();
}

bool InputMonitor::pointerMatters() const {
  if (appDelegate_.state() == ActivationStateInactive) {
    return appDelegate_.settings().applicationActivationViaCornerIsInPlay();
  }
  return (appDelegate_.allowableDismissalMethods() & DismissalMethodCorner) != 0;
}

bool InputMonitor::keysMatter() const {
  if (appDelegate_.state() == ActivationStateInactive) {
    // The age of a first tap is looked at when a key has changed again: before that it can answer
    // nothing.
    return appDelegate_.settings().applicationActivatesOnCommandKeyDoubleTap();
  }
  return (appDelegate_.allowableDismissalMethods() & dismissalsByKeys) != 0;
}

void InputMonitor::monitorInput() {
  const KeyMap keys = appDelegate_.platform().keyboard().getKeys();
  if (appDelegate_.state() == ActivationStateInactive) {
    monitorForActivation(keys);
  } else {
    monitorForDismissal(keys);
  }
}

void InputMonitor::monitorForActivation(const KeyMap& keys) {
  const Settings& settings = appDelegate_.settings();
  if (settings.applicationActivatesOnCommandKeyDoubleTap() &&
      doubleTap_.monitorKeysForCommandKeyDoubleTapActivation(keys.isDown(KeyCodeLeftCommand),
                                                             RunLoop::main().now())) {
    appDelegate_.activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  } else if (settings.applicationActivationViaCornerIsInPlay() &&
             monitorMouseForCornerActivation()) {
    appDelegate_.activateApplicationWithActivationMethod(ActivationMethodCorner);
  }
}

void InputMonitor::monitorForDismissal(const KeyMap& keys) {
  const std::int32_t allowed = appDelegate_.allowableDismissalMethods();
  if ((allowed & DismissalMethodCommandTap) != 0 && monitorKeysForCommandTapKeyDismissal(keys)) {
    appDelegate_.dismissApplicationWithInvocation(false, true);
  } else if ((allowed & DismissalMethodOptionLifted) != 0 &&
             monitorKeysForOptionKeyDismissal(keys)) {
    appDelegate_.dismissApplicationWithInvocation(true, false);
  } else if ((allowed & DismissalMethodCommandLifted) != 0 &&
             monitorKeysForCommandKeyLiftedDismissal(keys)) {
    appDelegate_.dismissApplicationWithInvocation(true, false);
  } else if ((allowed & DismissalMethodCorner) != 0 && monitorMouseForCornerDismissal()) {
    appDelegate_.dismissApplicationWithInvocation(false, true);
  }
}

bool InputMonitor::monitorKeysForCommandTapKeyDismissal(const KeyMap& keys) {
  const bool isDown = keys.isDown(KeyCodeLeftCommand);
  if (isDown && commandKeyMustBeLiftedBeforeItCanDismissQuillbox_) return false;
  commandKeyMustBeLiftedBeforeItCanDismissQuillbox_ = false;
  return isDown;
}

// The keys on the right are never looked at: with only those held, the panel goes at the next tick.
// Intended.
bool InputMonitor::monitorKeysForOptionKeyDismissal(const KeyMap& keys) {
  return !keys.isDown(KeyCodeLeftOption);
}

bool InputMonitor::monitorKeysForCommandKeyLiftedDismissal(const KeyMap& keys) {
  return !keys.isDown(KeyCodeLeftCommand);
}

bool InputMonitor::monitorMouseForCornerActivation() {
  return corners_.monitorMouseForCornerActivation(
      appDelegate_.platform().pointer().mouseLocation(),
      appDelegate_.panelWindow().notedPrimaryScreenFrame(), appDelegate_.settings());
}

bool InputMonitor::monitorMouseForCornerDismissal() {
  return corners_.monitorMouseForCornerDismissal(
      appDelegate_.platform().pointer().mouseLocation(),
      appDelegate_.panelWindow().notedPrimaryScreenFrame());
}

}  // namespace qb
