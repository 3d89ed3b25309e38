#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Platform/EventTap.h"
#include "Platform/Platform.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/HotKeyActivation.h"
#include "Quillbox/activation/Settings.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

class AccessibilityAlerts;
class ActivationHotKeys;
class EventMonitorProtocol;
class EventMonitors;
class EventTaps;
class HostView;
class InputMonitor;
class KeyCommands;
class KeyHandlers;
class KeyHandlerTarget;
class Menu;
class MenuDelegate;
class MenuItem;
class PanelWindow;
class PopUpMenuService;
class PreferenceNotifications;
class Quillbox;
class QuillboxApplication;
class TappedEventProcessor;
class UserInteraction;
class UtilityTimer;
class View;
class Welcome;
class Window;

/// Where everything of the resident process meets: it launches, holds whether the panel is up and
/// why, and owns the small objects that do the work, each named after it. Main thread.
class AppDelegate : public SettingsDelegate, public std::enable_shared_from_this<AppDelegate> {
 public:
  /// The platform must outlive it.
  static std::shared_ptr<AppDelegate> create(Platform& platform);
  ~AppDelegate() override;
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  // Life. Nothing else may be called before the launch.
  void applicationDidFinishLaunching();
  /// Gives back all that the process holds of the desktop. Harmless when repeated.
  void applicationWillTerminate();
  void settingsChanged() override;
  void displayConfigurationChanged();
  void installUtilityTimer();
  void utilityTimer();
  bool hasAccessibilityAccess() const;
  /// Some of what this program does cannot be had without.
  static constexpr bool isQuillboxConfiguredToRequireAccessibilityAPIS() { return true; }
  /// A helper program starts this one anew when it has gone. It goes in any case.
  void relaunchQuillbox();
  void settingsChangedInPreferencePane();
  void previewQuillboxSettings();
  /// When this program was launched.
  Date launchDate() const { return launchDate_; }
  bool diagnosticsEnabled() const { return diagnosticsEnabled_; }

  // The activation.
  std::int32_t state() const { return activationState_; }
  /// The method of the present activation, or of the last one.
  std::int32_t activationMethod() const { return applicationActivationMethod_; }
  std::int32_t allowableDismissalMethods() const { return allowableDismissalMethods_; }
  bool externalMouseDownsDismissApplication() const;
  /// Signalled when the state or the mask changes.
  ChangeNotice& activationChanged() { return activationChanged_; }
  /// Nothing when the panel is up already: activations do not nest.
  void activateApplicationWithActivationMethod(std::int32_t method);
  void dismissApplicationWithInvocation(bool invocation, bool reactivatePreviousApp);
  void dismissQuillbox();
  void dismissDueToMouseDownInOtherApplication();
  void setAllowableDismissalMethodsForApplicationActivationMethod(std::int32_t method);
  /// From now on letting the keys go does not end the panel; a fresh press of Command does.
  void setAllowableDismissalMethodsForPersistingUserInterface();

  // Events at the tap. True passes an event on, false swallows it.
  void installEventTaps();
  void removeEventTaps();
  void maintainTapRules();
  bool tappedEventOccured(const TappedEvent& event);
  void installGlobalKeyEventMonitor();
  void removeGlobalKeyEventMonitor();
  void addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);

  // Keys.
  void installPrimaryHotKeys();
  void removePrimaryHotKeys();
  void installPrimaryHotKeysForOptionTabActivationMethod();
  void removePrimaryHotKeysForOptionTabActivationMethod();
  void installSecondaryHotKeysForActivationMethod(std::int32_t method);
  void removeSecondaryHotKeys();
  void processCommandTabWithHotKeyID(std::int32_t hotKeyID);
  void processOptionTabWithHotKeyID(std::int32_t hotKeyID);
  void processHotKeyActivation(const HotKeyActivation& activation);
  void installKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target,
                             std::string action);
  void removeKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target);

  // Events of this process's own windows.
  /// Whether the key was taken.
  bool keyDown(const Event& event);
  /// Whether the scrolling was taken.
  bool scrollWheel(const Event& event);
  void monitorMouseDown(const Event& event);
  void monitorMouseUp(const Event& event);

  // The panel's window.
  void setupWindow();
  Rect hostViewMaximumFrame() const;
  /// The frame of the screen at the origin as it is now; the zero rectangle without one.
  Rect primaryScreenFrame() const;
  void adjustWindowSizeForEnvironment();
  void adjustWindowSizeToFrame(const Rect& frame);
  void presentWindowWithApplicationActivationMethod(std::int32_t method);
  void dismissWindowWithInvocation(bool invocation, bool reactivatePreviousApp);
  void setContentViewAlphaValueToOne();
  void setWindowBackgroundColor(const Color& color);
  bool contentViewIsVisible() const;
  void reactivatePreviousApp();

  // What no event reports.
  void installInputMonitor();
  void cancelInputMonitor();
  void monitorInput();
  void resetCommandKeyDoubleTapActivation();

  // Foreign use of the keyboard.
  void beginUserInteraction();
  void endUserInteraction();
  std::int64_t userInteractionLevel() const;

  // Menus; see PopUpMenuService.
  void popUpMenu(const std::shared_ptr<Menu>& menu,
                 const std::shared_ptr<MenuItem>& positioningItem, Point location, View* view,
                 const std::shared_ptr<MenuDelegate>& delegate);
  bool popUpMenuIsBeingDisplayed() const;
  void invokeMoreMenuItem();

  Platform& platform() const { return platform_; }
  Settings& settings() const;
  /// Null before the launch.
  HostView* hostView() const;
  Window* window() const;
  PanelWindow& panelWindow() const { return *panelWindow_; }
  EventMonitors& eventMonitors() const { return *eventMonitors_; }
  EventTaps& eventTaps() const { return *eventTaps_; }
  AccessibilityAlerts& accessibilityAlerts() const { return *accessibilityAlerts_; }
  Welcome& welcome() const { return *welcome_; }
  KeyHandlers& keyHandlers() const { return *keyHandlers_; }
  KeyCommands& keyCommands() const { return *keyCommands_; }
  InputMonitor& inputMonitor() const { return *inputMonitor_; }

 private:
  explicit AppDelegate(Platform& platform);
  void noteInitialLaunch();
  void setActivationState(ActivationState state);
  void setAllowableDismissalMethods(std::int32_t methods);

  Platform& platform_;
  ChangeNotice activationChanged_;
  std::int32_t activationState_ = ActivationStateInactive;
  std::int32_t applicationActivationMethod_ = ActivationMethodCommandDoubleTap;
  std::int32_t allowableDismissalMethods_ = 0;
  Date launchDate_ = 0;
  bool diagnosticsEnabled_ = false;

  // In order of need: what stands below may use what stands above until it goes.
  std::unique_ptr<Quillbox> quillbox_;
  std::unique_ptr<EventMonitors> eventMonitors_;
  std::unique_ptr<KeyHandlers> keyHandlers_;
  std::unique_ptr<UserInteraction> userInteraction_;
  std::unique_ptr<PopUpMenuService> popUpMenuService_;
  std::unique_ptr<EventTaps> eventTaps_;
  std::unique_ptr<InputMonitor> inputMonitor_;
  std::unique_ptr<PanelWindow> panelWindow_;
  std::unique_ptr<KeyCommands> keyCommands_;
  std::unique_ptr<TappedEventProcessor> tappedEventProcessor_;
  std::unique_ptr<ActivationHotKeys> hotKeys_;
  std::unique_ptr<AccessibilityAlerts> accessibilityAlerts_;
  std::unique_ptr<UtilityTimer> utilityTimer_;
  std::unique_ptr<Welcome> welcome_;
  std::unique_ptr<PreferenceNotifications> preferenceNotifications_;
  std::unique_ptr<QuillboxApplication> application_;
  Subscription globalKeyEventMonitor_;
  Subscription displayCallback_;
};

}  // namespace qb
