#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Platform.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/WeakList.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Menu.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

class AccessibilityAccess;
class AppDelegate;
class ApplicationManager;
class ClipboardManager;
class Cubby;
class DecorationManager;
class DockManager;
class DragOperation;
class DragOperations;
class DropboxManager;
class EventListener;
class EventMonitorProtocol;
class FileSystemItem;
class HostView;
class ImageManager;
class Item;
class ItemHotKeys;
class KeyHandlerTarget;
class MenuHelpers;
class PopUpViews;
class PreferencePanes;
class QuillboxDialogs;
class QuillboxNotifications;
class RunningApplication;
class SavedDictionaries;
class ScriptFiles;
class Settings;
struct MaximumSize;
struct SystemUtilities;
class SystemVersion;
class TabRow;
class View;
class Window;

/// The front door: items, providers and rows come by it to the managers, the settings and the
/// panel. `quillbox` points at it while it lives; the application delegate owns it. Main thread.
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
  DropboxManager& dropboxManager() { return *dropboxManager_; }
  DecorationManager& decorationManager() { return *decorationManager_; }
  ClipboardManager& clipboardManager() { return *clipboardManager_; }
  Settings& settings() { return *settings_; }
  ItemHotKeys& itemHotKeys() { return *itemHotKeys_; }
  /// None before the panel is made.
  HostView* hostView() const;

  // The panel.
  /// Ends the activation 0.01 second later, without invocation; nothing when there is none then.
  void dismissQuillbox();
  std::int32_t quillboxActivationState() const;
  bool quillboxWindowIsVisible();
  /// Takes the panel's window off the screen at once, ahead of its dismissal.
  void orderOutQuillboxWindow();
  /// The same, for a developer who wants to see what lies below.
  void hideQuillboxWindowForDebugPurposes() { orderOutQuillboxWindow(); }
  /// None before the panel is made.
  const std::vector<std::shared_ptr<TabRow>>& tabRows();
  /// See HostView, as for the next two. None before the panel is made.
  std::shared_ptr<TabRow> addTabRowRelativeToTabRow(TabRow& tabRow, std::int32_t relativePlacement);
  void saveState();
  void saveStateCoallesced();
  /// Of the first row; zero without one.
  Size tabRowItemSize();
  /// That size at the origin.
  Rect defaultTabRowItemFrame();
  /// Brackets every foreign use of the keyboard, such as an alert. Nests.
  void beginUserInteraction();
  void endUserInteraction();
  /// The pointer has moved for real while the panel is up: unless the settings say otherwise, the
  /// panel then stays when the keys are let go.
  void noteMouseHasMovedSignificatly();

  // Menus.
  /// Opens a menu over the panel, and returns when it has closed: see PopUpMenuService. Where it
  /// would come too near to the top of the view's window it opens above the view instead.
  void popUpMenu(const std::shared_ptr<Menu>& menu,
                 const std::shared_ptr<MenuItem>& positioningItem, Point location, View* view,
                 const std::shared_ptr<MenuDelegate>& delegate);
  bool popUpMenuIsBeingDisplayed() const;
  /// See MenuHelpers, also for the next.
  static AttributedString menuTitleWithBeginning(const std::string& beginning,
                                                 const std::string& applicationName,
                                                 const std::string& ending);
  std::shared_ptr<MenuItem> customMenuItemWithImage(const Image& image, const std::string& label,
                                                    MenuItem::Action action) const;

  // The system; see SystemVersion, AccessibilityAccess and PreferencePanes.
  void systemVersionMajor(std::int16_t* major, std::int16_t* minor, std::int16_t* revision) const;
  bool isMountainLionOrEarlier() const;
  bool isMavericksOrLater() const;
  bool isYosemiteOrLater() const;
  bool isElCapitanOrLater() const;
  bool hasAccessibilityAccess() const;
  void openAccessibilitySettingsWithOption(int option);
  void showEnableAssistiveDevicesHelpWithOption(int option);
  void openQuillboxSettingsAfterDelay(TimeInterval delay);
  void openPreferencePaneAtPath(const std::string& path);
  void relaunchQuillbox();

  bool hasInternetAccess() const;

  // Files and folders; see utilities/FileNames, SystemFolders, FileItems and FileOperations.
  static std::string fileNameFromFullPath(const std::string& path, bool withPathExtension);
  std::string availableFileNameInFolder(const std::string& folder, const std::string& withFileName,
                                        const std::string& extension,
                                        bool includePrecedingSlash) const;
  std::string desktopPathWithName(const std::string& name, const std::string& extension) const;
  std::string filePathForSystemFolderWithID(std::int32_t folderID) const;
  std::vector<std::string> contentsForSystemFolderWithID(std::int32_t folderID) const;
  std::string reconcileBogusFolderPath(const std::string& path) const;
  std::int32_t itemTypeForFileSystemObjectAtPath(const std::string& path) const;
  std::shared_ptr<FileSystemItem> createFileSystemItemWithFrame(const Rect& frame,
                                                                const std::string& name,
                                                                const std::string& atPath) const;
  void performSelectionActionForFileAtPath(const std::string& path);
  void moveItems(const std::vector<std::string>& paths, const std::string& toFolder);
  void copyItems(const std::vector<std::string>& paths, const std::string& toFolder);

  // Mail; see utilities/MailSharing.
  void shareFileViaEmail(const std::string& path);
  void shareTextViaEmail(const AttributedString& text);
  void shareImageViaEmail(const Image& image);
  void shareCubbiesViaEmail(const std::vector<std::shared_ptr<Cubby>>& cubbies);

  // Images.
  /// A picture of the program's own; empty when there is none of that name. From Yosemite on one
  /// that is made for it, where there is such a one.
  Image imageNamed(const std::string& name) const;
  /// See utilities/WindowImages, also for the next. The owner of the window is not looked at.
  Image generateWindowImageWithID(std::uint32_t windowID,
                                  const std::shared_ptr<RunningApplication>& owningApplication,
                                  Size size, double margin, const Image& defaultImage) const;
  Image generateWindowImageWithID(std::uint32_t windowID,
                                  const std::shared_ptr<RunningApplication>& owningApplication,
                                  const MaximumSize& maximumSize, double margin,
                                  const Image& defaultImage) const;

  // Diagnostics, for a developer.
  static void logRect(const Rect& rect);
  static void logPoint(Point point);
  bool debugFlag() const { return debugFlag_; }
  void setDebugFlag(bool flag) { debugFlag_ = flag; }
  /// A place to stop at in a debugger, once the flag is set.
  void breakOnDebugFlagSet() const;
  /// Logs where the panel's views are.
  void debug();

  // Keys and events.
  /// `target` gets single presses of a key while the panel is up; see KeyHandlerTarget.
  void installKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target,
                             std::string action);
  void removeKeyCodeHandler(std::uint16_t keyCode, const std::shared_ptr<KeyHandlerTarget>& target);
  void addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);
  void removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor);

  // Scripts; see ScriptFiles.
  static bool fileAtPathIsAppleScriptFile(const std::string& path);
  void executeAppleScriptAtPath(const std::string& path) const;
  void invokePasteCommand() const;

  // Items.
  /// Every item registers itself for as long as it lives.
  void registerItem(Item& item);
  void unregisterItem(Item& item);
  const std::vector<Item*>& registeredItems() const { return registeredItems_; }
  /// The first with that identity, or null.
  Item* registeredItemWithUniqueID(const std::string& uniqueID) const;
  /// All of one `ItemType`, in the order of their making.
  std::vector<Item*> registeredItemsOfType(std::int32_t type) const;
  /// Nothing when there is none with that identity.
  void invokeItemWithUniqueID(const std::string& uniqueID);
  /// Has all rows show their items anew, wherever the item is.
  void itemDecorationChanged(const Item& item);
  // The hot keys of items; see ItemHotKeys.
  void maintainItemHotKeys();
  void clearItemHotKey(const Item& item);
  void handleItemHotKeyInvoked(const std::string& identifier);
  /// A new identity, unlike any other.
  static std::string generateUUID();

  // System events. Listeners are not kept alive.
  void addEventListener(const std::shared_ptr<EventListener>& listener);
  void removeEventListener(const std::shared_ptr<EventListener>& listener);
  void sendDisplayConfigurationEvent();

  // Dictionaries that are kept between runs; see SavedDictionaries.
  std::string savedDictionaryPathWithKey(const std::string& key);
  std::string savedDictionaryLegacyPathWithKey(const std::string& key) const;
  bool saveDictionary(const PropertyList& dictionary, const std::string& forKey);
  std::optional<PropertyList> loadDictionaryForKey(const std::string& key);
  void deleteDictionaryForKey(const std::string& key);

  // Notifications; see QuillboxNotifications.
  std::shared_ptr<Window> displayQuillboxNotification(const std::string& text,
                                                      TimeInterval duration,
                                                      TimeInterval after = 0);
  std::shared_ptr<Window> createQuillboxNotification(const std::string& text) const;
  void displaySystemNotificationWithTitle(const std::string& title, const std::string& details);

  // Dialogs; see QuillboxDialogs.
  void displayMessage(const std::string& message, const std::string& withTitle);
  bool getConfirmationWithTitle(const std::string& title, const std::string& message,
                                const std::string& actionButtonText);
  bool getChoiceWithTitle(const std::string& title, const std::string& message,
                          const std::string& actionButtonText, const std::string& cancelButtonText);
  std::optional<std::vector<std::string>> runOpenPanelWithAllowFiles(
      bool allowFiles, bool allowDirectories, const std::vector<std::string>& allowedFileTypes,
      const std::string& directory);
  std::string changeNameOfObject(const std::string& object, const std::string& from);
  /// Has the user choose one of some items in a window of its own, and returns when the completion
  /// has got the choice: null for none. A single item needs no window.
  void presentItemChooserWithTitle(
      const std::string& title, const std::vector<std::shared_ptr<Item>>& items, Size itemSize,
      const std::function<void(const std::shared_ptr<Item>&)>& completion);

  // Drags over the panel; see DragOperations.
  std::int32_t registerDragOperation(const std::shared_ptr<DragOperation>& drag);
  void deregisterDragOperation();
  bool dragOperationIsInProgress() const;

  // Views that items show beside themselves; see PopUpViews.
  Size maximumPopUpViewSizeForItem(const Item& item) const;
  void presentPopUpView(const std::shared_ptr<View>& view, Item& forItem);
  void dismissPopUpViewForItem(Item& item);
  void dismissPopUpViewsForAllItems();

 private:
  Quillbox(AppDelegate& appDelegate, Platform& platform);

  AppDelegate& appDelegate_;
  Platform& platform_;
  std::unique_ptr<SystemVersion> systemVersion_;
  std::unique_ptr<AccessibilityAccess> accessibilityAccess_;
  std::unique_ptr<PreferencePanes> preferencePanes_;
  std::unique_ptr<DockManager> dockManager_;
  std::unique_ptr<ApplicationManager> applicationManager_;
  std::unique_ptr<ImageManager> imageManager_;
  std::unique_ptr<DropboxManager> dropboxManager_;
  std::unique_ptr<DecorationManager> decorationManager_;
  std::shared_ptr<Settings> settings_;
  std::unique_ptr<MenuHelpers> menuHelpers_;
  std::unique_ptr<ScriptFiles> scriptFiles_;
  std::vector<Item*> registeredItems_;
  WeakList<EventListener> eventListeners_;
  std::shared_ptr<ClipboardManager> clipboardManager_;
  std::unique_ptr<ItemHotKeys> itemHotKeys_;
  std::unique_ptr<SavedDictionaries> savedDictionaries_;
  std::unique_ptr<QuillboxNotifications> notifications_;
  std::unique_ptr<QuillboxDialogs> dialogs_;
  std::unique_ptr<PopUpViews> popUpViews_;
  std::unique_ptr<DragOperations> dragOperations_;
  std::unique_ptr<SystemUtilities> utilities_;
  bool debugFlag_ = false;
};

/// The one facade, or null while there is none.
extern Quillbox* quillbox;

}  // namespace qb
