#include "Quillbox/activation/AppDelegate.h"

#include <string_view>
#include <utility>

#include "Platform/ApplicationControl.h"
#include "Platform/Displays.h"
#include "Platform/UserDefaults.h"
#include "Quillbox/activation/AccessibilityAlerts.h"
#include "Quillbox/activation/ActivationHotKeys.h"
#include "Quillbox/activation/EventMonitors.h"
#include "Quillbox/activation/EventTaps.h"
#include "Quillbox/activation/InputMonitor.h"
#include "Quillbox/activation/KeyCommands.h"
#include "Quillbox/activation/KeyHandlers.h"
#include "Quillbox/activation/PanelWindow.h"
#include "Quillbox/activation/PopUpMenuService.h"
#include "Quillbox/activation/PreferenceNotifications.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/QuillboxApplication.h"
#include "Quillbox/activation/TappedEventProcessor.h"
#include "Quillbox/activation/UserInteraction.h"
#include "Quillbox/activation/UtilityTimer.h"
#include "Quillbox/activation/Welcome.h"
#include "Quillbox/activation/shortcuts/ItemHotKeys.h"
#include "Quillbox/managers/ClipboardManager.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

/// Time for a menu or an item to finish what it does when it asks for the dismissal.
constexpr TimeInterval dismissalDelay = 0.01;
constexpr std::string_view dismissalSelector = "dismissQuillbox";
/// After the first activation, when the panel has been seen.
constexpr TimeInterval userTipsDelay = 0.5;

/// The default that holds the date of the very first launch.
constexpr const char* kInitialApplicationLaunchKey = "kInitialApplicationLaunchVersionTwoKey";

constexpr const char* relauncherIdentifier = "vorlane.Quillbox-Relauncher";

constexpr std::int32_t persistingDismissalMethods =
    DismissalMethodEscapeKey | DismissalMethodCommandTap | DismissalMethodCorner |
    DismissalMethodExternalMouseDown;

}  // namespace

std::shared_ptr<AppDelegate> AppDelegate::create(Platform& platform) {
  return std::shared_ptr<AppDelegate>(new AppDelegate(platform));
}

AppDelegate::AppDelegate(Platform& platform)
    : platform_(platform),
      eventMonitors_(std::make_unique<EventMonitors>()),
      keyHandlers_(std::make_unique<KeyHandlers>(*this)),
      userInteraction_(std::make_unique<UserInteraction>(*this)),
      popUpMenuService_(std::make_unique<PopUpMenuService>(platform)),
      eventTaps_(std::make_unique<EventTaps>(*this)),
      inputMonitor_(std::make_unique<InputMonitor>(*this)),
      keyCommands_(std::make_unique<KeyCommands>(*this)),
      tappedEventProcessor_(std::make_unique<TappedEventProcessor>(*this)),
      hotKeys_(std::make_unique<ActivationHotKeys>(*this)),
      accessibilityAlerts_(std::make_unique<AccessibilityAlerts>(*this)),
      utilityTimer_(std::make_unique<UtilityTimer>(*this)),
      welcome_(std::make_unique<Welcome>(*this)),
      preferenceNotifications_(std::make_unique<PreferenceNotifications>(*this)) {}

AppDelegate::~AppDelegate() {
  applicationWillTerminate();
  RunLoop::main().cancelPreviousPerformRequests(this);
}

// Life.

void AppDelegate::applicationDidFinishLaunching() {
  log("Quillbox is launching...");
  quillbox_ = Quillbox::quillboxWithAppDelegate(*this, platform_);
  diagnosticsEnabled_ = true;
  settings().setDelegate(weak_from_this());
  launchDate_ = RunLoop::main().date();
  panelWindow_ = std::make_unique<PanelWindow>(*this);
  application_ = std::make_unique<QuillboxApplication>(*this);
  setupWindow();
  installGlobalKeyEventMonitor();
  settingsChanged();
  displayConfigurationChanged();
  installEventTaps();
  installUtilityTimer();
  installPrimaryHotKeys();
  displayCallback_ = platform_.displays().registerReconfigurationCallback(
      [this] { displayConfigurationChanged(); });
  preferenceNotifications_->addObservers();
  noteInitialLaunch();
  welcome_->performOneTimeStartUp();
  welcome_->welcomeUserIfNewVersion();
  quillbox_->displayQuillboxNotification("Quillbox is Running...", 2.0);
}

void AppDelegate::noteInitialLaunch() {
  UserDefaults& defaults = platform_.userDefaults();
  if (!defaults.objectForKey(kInitialApplicationLaunchKey).isNone()) return;
  defaults.setObject(PropertyList::Date{launchDate_}, kInitialApplicationLaunchKey);
}

void AppDelegate::applicationWillTerminate() {
  preferenceNotifications_->removeObservers();
  displayCallback_.cancel();
  // It would make the tap anew.
  utilityTimer_->cancelUtilityTimer();
  cancelInputMonitor();
  removePrimaryHotKeys();
  removeEventTaps();
}

void AppDelegate::settingsChanged() {
  cancelInputMonitor();
  installInputMonitor();
  if (settings().applicationActivatesOnOptionTab()) {
    installPrimaryHotKeysForOptionTabActivationMethod();
  } else {
    removePrimaryHotKeysForOptionTabActivationMethod();
  }
  maintainTapRules();
  quillbox_->clipboardManager().setHistoryCaptureMode(
      settings().clipboardManagerHistoryCaptureMode());
  hostView()->setMaximumFrame(hostViewMaximumFrame());
  hostView()->settingsChanged();
}

void AppDelegate::displayConfigurationChanged() {
  panelWindow_->notePrimaryScreenFrame();
  quillbox_->sendDisplayConfigurationEvent();
}

void AppDelegate::installUtilityTimer() { utilityTimer_->installUtilityTimer(); }
void AppDelegate::utilityTimer() { utilityTimer_->utilityTimer(); }

bool AppDelegate::hasAccessibilityAccess() const { return quillbox_->hasAccessibilityAccess(); }

void AppDelegate::relaunchQuillbox() {
  log("Quillbox is relaunching itself...");
  ApplicationControl& application = platform_.applicationControl();
  application.launchAppWithBundleIdentifier(relauncherIdentifier,
                                            LaunchWithoutActivation | LaunchAndHide);
  application.terminate();
}

void AppDelegate::settingsChangedInPreferencePane() {
  preferenceNotifications_->settingsChangedInPreferencePane();
}

void AppDelegate::previewQuillboxSettings() { preferenceNotifications_->previewQuillboxSettings(); }

Settings& AppDelegate::settings() const { return quillbox_->settings(); }

HostView* AppDelegate::hostView() const {
  return panelWindow_ ? panelWindow_->hostView() : nullptr;
}

Window* AppDelegate::window() const { return panelWindow_ ? &panelWindow_->window() : nullptr; }

// The activation.

bool AppDelegate::externalMouseDownsDismissApplication() const {
  return applicationActivationMethod_ != ActivationMethodCommandDoubleTap;
}

void AppDelegate::setActivationState(ActivationState state) {
  activationState_ = state;
  activationChanged_.signal();
  maintainTapRules();
}

void AppDelegate::setAllowableDismissalMethods(std::int32_t methods) {
  allowableDismissalMethods_ = methods;
  activationChanged_.signal();
}

void AppDelegate::activateApplicationWithActivationMethod(std::int32_t method) {
  if (activationState_ == ActivationStateActive) return;
  setActivationState(ActivationStateActive);
  applicationActivationMethod_ = method;
  installSecondaryHotKeysForActivationMethod(method);
  // A panel that is to outlive the keys is held as one that a corner has raised.
  const bool outlivesKeys = (method == ActivationMethodOptionTab &&
                             settings().keepQuillboxActiveUponOptionTabActivation()) ||
                            (method == ActivationMethodCommandTab &&
                             settings().keepQuillboxActiveUponCommandTabActivation());
  setAllowableDismissalMethodsForApplicationActivationMethod(outlivesKeys ? ActivationMethodCorner
                                                                          : method);
  presentWindowWithApplicationActivationMethod(method);
  resetCommandKeyDoubleTapActivation();
  if (!welcome_->userTipsAreDue()) return;
  executeBlockAfterDelay(
      [weak = weak_from_this()] {
        if (const auto appDelegate = weak.lock()) appDelegate->welcome_->showUserTips();
      },
      userTipsDelay);
}

void AppDelegate::dismissApplicationWithInvocation(bool invocation, bool reactivatePreviousApp) {
  if (activationState_ == ActivationStateInactive) return;
  setActivationState(ActivationStateInactive);
  RunLoop::main().cancelPreviousPerformRequests(this, dismissalSelector);
  inputMonitor_->noteDismissal();
  removeSecondaryHotKeys();
  dismissWindowWithInvocation(invocation, reactivatePreviousApp);
  // The navigation had keys that the user may have given to an item meanwhile.
  quillbox_->itemHotKeys().registered().registerLeftOutShortcuts();
}

void AppDelegate::dismissQuillbox() {
  // What an item asks for while its panel is going must not end one that comes up right after.
  if (activationState_ == ActivationStateInactive) return;
  RunLoop::main().performAfterDelay(this, dismissalSelector, dismissalDelay,
                                    [this] { dismissApplicationWithInvocation(false, false); });
}

void AppDelegate::dismissDueToMouseDownInOtherApplication() {
  dismissApplicationWithInvocation(false, false);
}

void AppDelegate::setAllowableDismissalMethodsForApplicationActivationMethod(std::int32_t method) {
  constexpr std::int32_t byEscapeOrMouse =
      DismissalMethodEscapeKey | DismissalMethodExternalMouseDown;
  switch (method) {
    case ActivationMethodCommandDoubleTap:
      setAllowableDismissalMethods(DismissalMethodEscapeKey | DismissalMethodCommandTap |
                                   DismissalMethodCorner);
      break;
    case ActivationMethodCommandTab:
      setAllowableDismissalMethods(byEscapeOrMouse | DismissalMethodCommandLifted);
      break;
    case ActivationMethodOptionTab:
      setAllowableDismissalMethods(byEscapeOrMouse | DismissalMethodOptionLifted);
      break;
    case ActivationMethodCorner:
      setAllowableDismissalMethods(byEscapeOrMouse | DismissalMethodCorner);
      break;
    default:
      break;
  }
}

void AppDelegate::setAllowableDismissalMethodsForPersistingUserInterface() {
  inputMonitor_->requireCommandKeyToBeLifted();
  setAllowableDismissalMethods(persistingDismissalMethods);
}

// Events at the tap.

void AppDelegate::installEventTaps() { eventTaps_->installEventTaps(); }
void AppDelegate::removeEventTaps() { eventTaps_->removeEventTaps(); }
void AppDelegate::maintainTapRules() { eventTaps_->maintainTapRules(); }

bool AppDelegate::tappedEventOccured(const TappedEvent& event) {
  return tappedEventProcessor_->tappedEventOccured(event);
}

void AppDelegate::installGlobalKeyEventMonitor() {
  // A key between two taps of Command makes them a shortcut.
  globalKeyEventMonitor_ = platform_.eventTap().addGlobalKeyDownMonitor(
      [this] { resetCommandKeyDoubleTapActivation(); });
}

void AppDelegate::removeGlobalKeyEventMonitor() { globalKeyEventMonitor_.cancel(); }

void AppDelegate::addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  eventMonitors_->addKeyEventMonitor(monitor);
  maintainTapRules();
}

void AppDelegate::removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  eventMonitors_->removeKeyEventMonitor(monitor);
  maintainTapRules();
}

void AppDelegate::addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  eventMonitors_->addMouseEventMonitor(monitor);
}

void AppDelegate::removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  eventMonitors_->removeMouseEventMonitor(monitor);
}

// Keys.

void AppDelegate::installPrimaryHotKeys() { hotKeys_->installPrimaryHotKeys(); }
void AppDelegate::removePrimaryHotKeys() { hotKeys_->removePrimaryHotKeys(); }

void AppDelegate::installPrimaryHotKeysForOptionTabActivationMethod() {
  hotKeys_->installPrimaryHotKeysForOptionTabActivationMethod();
}

void AppDelegate::removePrimaryHotKeysForOptionTabActivationMethod() {
  hotKeys_->removePrimaryHotKeysForOptionTabActivationMethod();
}

void AppDelegate::installSecondaryHotKeysForActivationMethod(std::int32_t method) {
  hotKeys_->installSecondaryHotKeysForActivationMethod(method);
}

void AppDelegate::removeSecondaryHotKeys() { hotKeys_->removeSecondaryHotKeys(); }

void AppDelegate::processCommandTabWithHotKeyID(std::int32_t hotKeyID) {
  keyCommands_->processCommandTabWithHotKeyID(hotKeyID);
}

void AppDelegate::processOptionTabWithHotKeyID(std::int32_t hotKeyID) {
  keyCommands_->processOptionTabWithHotKeyID(hotKeyID);
}

void AppDelegate::processHotKeyActivation(const HotKeyActivation& activation) {
  keyCommands_->processHotKeyActivation(activation);
}

void AppDelegate::installKeyCodeHandler(std::uint16_t keyCode,
                                        const std::shared_ptr<KeyHandlerTarget>& target,
                                        std::string action) {
  keyHandlers_->installKeyCodeHandler(keyCode, target, std::move(action));
}

void AppDelegate::removeKeyCodeHandler(std::uint16_t keyCode,
                                       const std::shared_ptr<KeyHandlerTarget>& target) {
  keyHandlers_->removeKeyCodeHandler(keyCode, target);
}

// Events of this process's own windows.

bool AppDelegate::keyDown(const Event& event) { return keyCommands_->keyDown(event); }

bool AppDelegate::scrollWheel(const Event& event) {
  if (userInteractionLevel() > 0) return false;
  hostView()->scrollWheel(event);
  return true;
}

void AppDelegate::monitorMouseDown(const Event& /*event*/) {
  tappedEventProcessor_->cancelDismissalDueToMouseDown();
}

void AppDelegate::monitorMouseUp(const Event& event) { hostView()->mouseUpEventMonitored(event); }

// The panel's window.

void AppDelegate::setupWindow() { panelWindow_->setupWindow(); }
Rect AppDelegate::hostViewMaximumFrame() const { return panelWindow_->hostViewMaximumFrame(); }
Rect AppDelegate::primaryScreenFrame() const { return panelWindow_->primaryScreenFrame(); }

void AppDelegate::adjustWindowSizeForEnvironment() {
  panelWindow_->adjustWindowSizeForEnvironment();
}

void AppDelegate::adjustWindowSizeToFrame(const Rect& frame) {
  panelWindow_->adjustWindowSizeToFrame(frame);
}

void AppDelegate::presentWindowWithApplicationActivationMethod(std::int32_t method) {
  panelWindow_->presentWindowWithApplicationActivationMethod(method);
}

void AppDelegate::dismissWindowWithInvocation(bool invocation, bool reactivatePreviousApp) {
  panelWindow_->dismissWindowWithInvocation(invocation, reactivatePreviousApp);
}

void AppDelegate::setContentViewAlphaValueToOne() { panelWindow_->setContentViewAlphaValueToOne(); }

void AppDelegate::setWindowBackgroundColor(const Color& color) {
  panelWindow_->setWindowBackgroundColor(color);
}

bool AppDelegate::contentViewIsVisible() const { return panelWindow_->contentViewIsVisible(); }
void AppDelegate::reactivatePreviousApp() { panelWindow_->reactivatePreviousApp(); }

// What no event reports.

void AppDelegate::installInputMonitor() { inputMonitor_->installInputMonitor(); }
void AppDelegate::cancelInputMonitor() { inputMonitor_->cancelInputMonitor(); }
void AppDelegate::monitorInput() { inputMonitor_->monitorInput(); }

void AppDelegate::resetCommandKeyDoubleTapActivation() {
  inputMonitor_->resetCommandKeyDoubleTapActivation();
}

// Foreign use of the keyboard.

void AppDelegate::beginUserInteraction() { userInteraction_->beginUserInteraction(); }
void AppDelegate::endUserInteraction() { userInteraction_->endUserInteraction(); }

std::int64_t AppDelegate::userInteractionLevel() const {
  return userInteraction_->userInteractionLevel();
}

// Menus.

void AppDelegate::popUpMenu(const std::shared_ptr<Menu>& menu,
                            const std::shared_ptr<MenuItem>& positioningItem, Point location,
                            View* view, const std::shared_ptr<MenuDelegate>& delegate) {
  popUpMenuService_->popUpMenu(menu, positioningItem, location, view, delegate);
}

bool AppDelegate::popUpMenuIsBeingDisplayed() const {
  return popUpMenuService_->popUpMenuIsBeingDisplayed();
}

void AppDelegate::invokeMoreMenuItem() { popUpMenuService_->invokeMoreMenuItem(); }

}  // namespace qb
