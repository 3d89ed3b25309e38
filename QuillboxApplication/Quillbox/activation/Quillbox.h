#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Platform.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/WeakList.h"

namespace qb {

class AppDelegate;
class ApplicationManager;
class DockManager;
class EventMonitorProtocol;
class HostView;
class ImageManager;
class Item;
class KeyHandlerTarget;
class Settings;
class TabRow;

/// The one object through which everything reaches the managers, the panel and the settings. Held
/// in the global `quillbox` while it lives; owned by the application delegate. Main thread.
class Quillbox {
 public:
  /// Makes the managers. From here on `quillbox` points at the new object.
  static std::unique_ptr<Quillbox> quillboxWithAppDelegate(AppDelegate& appDelegate,
                                                           Platform& platform);
  ~Quillbox();
  Quillbox(const Quillbox&) = delete;
  Quillbox& operator=(const Quillbox&) = delete;

  Platform& platform() { return platform_; }
  AppDelegate& appDelegate() { return appDelegate_; }
  ApplicationManager& applicationManager() { return *applicationManager_; }
  DockManager& dockManager() { return *dockManager_; }
  ImageManager& imageManager() { return *imageManager_; }
  Settings& settings() { return *settings_; }
  /// None before the panel is made.
  HostView* hostView();

  // The panel.
  /// Ends the activation 0.01 second later, without invocation; nothing when there is none then.
  void dismissQuillbox();
  std::int32_t quillboxActivationState() const;
  bool quillboxWindowIsVisible();
  /// Takes the panel's window off the screen at once, ahead of its dismissal.
  void orderOutQuillboxWindow();
  /// Brackets every foreign use of the keyboard, such as an alert. Nests.
  void beginUserInteraction();
  void endUserInteraction();
  /// The pointer has moved for real while the panel is up: unless the settings say otherwise, the
  /// panel then stays when the keys are let go.
  void noteMouseHasMovedSignificatly();
  bool popUpMenuIsBeingDisplayed() const;
  bool hasAccessibilityAccess() const;

  // Keys and events.
  /// `target` gets single presses of a key while the panel is up; see KeyHandlerTarget.
  void installKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target,
                             std::string action);
  void removeKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target);
  void addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);

  // Items.
  /// Every item registers itself for as long as it lives.
  void registerItem(Item& item);
  void unregisterItem(Item& item);
  const std::vector<Item*>& registeredItems() const { return registeredItems_; }
  /// The first with that identity, or null.
  Item* registeredItemWithUniqueID(const std::string& uniqueID) const;
  /// A new identity, unlike any other.
  static std::string generateUUID();

 private:
  Quillbox(AppDelegate& appDelegate, Platform& platform);

  AppDelegate& appDelegate_;
  Platform& platform_;
  std::unique_ptr<DockManager> dockManager_;
  std::unique_ptr<ApplicationManager> applicationManager_;
  std::unique_ptr<ImageManager> imageManager_;
  std::shared_ptr<Settings> settings_;
  std::vector<Item*> registeredItems_;
};

/// The one facade, or null while there is none.
extern Quillbox* quillbox;

}  // namespace qb
