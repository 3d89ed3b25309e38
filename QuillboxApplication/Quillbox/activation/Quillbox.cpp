#include "Quillbox/activation/Quillbox.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "Platform/Graphics.h"
#include "Platform/MenuPresenter.h"
#include "Platform/Scripts.h"
#include "Platform/Workspace.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/AccessibilityAccess.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/EventListener.h"
#include "Quillbox/activation/MenuHelpers.h"
#include "Quillbox/activation/PopUpViews.h"
#include "Quillbox/activation/PreferencePanes.h"
#include "Quillbox/activation/QuillboxDialogs.h"
#include "Quillbox/activation/QuillboxNotifications.h"
#include "Quillbox/activation/SavedDictionaries.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/activation/SystemVersion.h"
#include "Quillbox/activation/shortcuts/ItemHotKeys.h"
#include "Quillbox/activation/utilities/FileKinds.h"
#include "Quillbox/activation/utilities/ScriptFiles.h"
#include "Quillbox/activation/utilities/SystemUtilities.h"
#include "Quillbox/managers/ApplicationManager.h"
#include "Quillbox/managers/ClipboardManager.h"
#include "Quillbox/managers/DecorationManager.h"
#include "Quillbox/managers/DockManager.h"
#include "Quillbox/managers/DropboxManager.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/rows/DragOperations.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "Quillbox/windows/ItemChooserWindowController.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

Quillbox* quillbox = nullptr;

std::unique_ptr<Quillbox> Quillbox::quillboxWithAppDelegate(AppDelegate& appDelegate,
                                                            Platform& platform) {
  return std::unique_ptr<Quillbox>(new Quillbox(appDelegate, platform));
}

Quillbox::Quillbox(AppDelegate& appDelegate, Platform& platform)
    : appDelegate_(appDelegate), platform_(platform) {
  // From here on the global may be used, in the constructors below too.
  quillbox = this;
  systemVersion_ = std::make_unique<SystemVersion>(platform.applicationControl());
  accessibilityAccess_ = std::make_unique<AccessibilityAccess>(platform);
  preferencePanes_ = std::make_unique<PreferencePanes>(*this);
  dockManager_ = std::make_unique<DockManager>(platform.displays());
  applicationManager_ =
      std::make_unique<ApplicationManager>(platform.processes(), platform.workspace());
  imageManager_ = std::make_unique<ImageManager>(platform.graphics(), platform.fileSystem());
  dropboxManager_ = std::make_unique<DropboxManager>(*this);
  decorationManager_ =
      std::make_unique<DecorationManager>(platform.fileSystem(), platform.graphics());
  settings_ = Settings::sharedSettings(platform.fileSystem());
  menuHelpers_ = std::make_unique<MenuHelpers>(platform.graphics());
  scriptFiles_ = std::make_unique<ScriptFiles>(platform);
  savedDictionaries_ = std::make_unique<SavedDictionaries>(platform.fileSystem());
  dialogs_ = std::make_unique<QuillboxDialogs>(*this);
  dragOperations_ = std::make_unique<DragOperations>(*this);
  popUpViews_ = std::make_unique<PopUpViews>(*this);
  clipboardManager_ = ClipboardManager::create(platform.fileSystem(), platform.pasteboards());
  itemHotKeys_ = std::make_unique<ItemHotKeys>(*this);
  maintainItemHotKeys();
  notifications_ = std::make_unique<QuillboxNotifications>(*this);
  utilities_ = std::make_unique<SystemUtilities>(*this, platform.fileSystem());
  platform.scripts().setBeginUserInteraction([this] {
    beginUserInteraction();
    return Subscription([this] {
      if (quillbox == this) endUserInteraction();
    });
  });
}

Quillbox::~Quillbox() {
  platform_.scripts().setBeginUserInteraction({});
  if (quillbox == this) quillbox = nullptr;
}

// The panel.

HostView* Quillbox::hostView() const { return appDelegate_.hostView(); }
void Quillbox::dismissQuillbox() { appDelegate_.dismissQuillbox(); }
std::int32_t Quillbox::quillboxActivationState() const { return appDelegate_.state(); }

bool Quillbox::quillboxWindowIsVisible() {
  const Window* const window = appDelegate_.window();
  return window != nullptr && window->isVisible();
}

void Quillbox::orderOutQuillboxWindow() {
  if (Window* const window = appDelegate_.window()) window->orderOut();
}

const std::vector<std::shared_ptr<TabRow>>& Quillbox::tabRows() {
  static const std::vector<std::shared_ptr<TabRow>> none;
  const HostView* const host = hostView();
  return host != nullptr ? host->tabRows() : none;
}

std::shared_ptr<TabRow> Quillbox::addTabRowRelativeToTabRow(TabRow& tabRow,
                                                            std::int32_t relativePlacement) {
  HostView* const host = hostView();
  return host != nullptr ? host->addTabRowRelativeToTabRow(tabRow, relativePlacement) : nullptr;
}

void Quillbox::saveState() {
  if (HostView* const host = hostView()) host->saveState();
}

void Quillbox::saveStateCoallesced() {
  if (HostView* const host = hostView()) host->saveStateCoallesced();
}

Size Quillbox::tabRowItemSize() {
  return tabRows().empty() ? Size{} : tabRows().front()->itemSize();
}

Rect Quillbox::defaultTabRowItemFrame() { return {{0, 0}, tabRowItemSize()}; }

void Quillbox::beginUserInteraction() { appDelegate_.beginUserInteraction(); }
void Quillbox::endUserInteraction() { appDelegate_.endUserInteraction(); }

void Quillbox::noteMouseHasMovedSignificatly() {
  if (!appDelegate_.contentViewIsVisible()) return;
  switch (appDelegate_.activationMethod()) {
    case ActivationMethodCommandTab:
      if (!settings_->keepQuillboxActiveWhenMouseMovedWithCommandTabActivation()) return;
      break;
    case ActivationMethodOptionTab:
      if (!settings_->keepQuillboxActiveWhenMouseMovedWithOptionTabActivation()) return;
      break;
    default:
      break;
  }
  appDelegate_.setAllowableDismissalMethodsForPersistingUserInterface();
}

// Menus.

void Quillbox::popUpMenu(const std::shared_ptr<Menu>& menu,
                         const std::shared_ptr<MenuItem>& positioningItem, Point location,
                         View* view, const std::shared_ptr<MenuDelegate>& delegate) {
  if (!menu) return;
  const double height = platform_.menuPresenter().menuSize(*menu).height;
  appDelegate_.popUpMenu(menu, positioningItem, adjustedMenuLocation(location, height, view), view,
                         delegate);
}

bool Quillbox::popUpMenuIsBeingDisplayed() const {
  return appDelegate_.popUpMenuIsBeingDisplayed();
}

AttributedString Quillbox::menuTitleWithBeginning(const std::string& beginning,
                                                  const std::string& applicationName,
                                                  const std::string& ending) {
  return MenuHelpers::menuTitleWithBeginning(beginning, applicationName, ending);
}

std::shared_ptr<MenuItem> Quillbox::customMenuItemWithImage(const Image& image,
                                                            const std::string& label,
                                                            MenuItem::Action action) const {
  return menuHelpers_->customMenuItemWithImage(image, label, std::move(action));
}

// The system.

void Quillbox::systemVersionMajor(std::int16_t* major, std::int16_t* minor,
                                  std::int16_t* revision) const {
  systemVersion_->systemVersionMajor(major, minor, revision);
}

bool Quillbox::isMountainLionOrEarlier() const { return systemVersion_->isMountainLionOrEarlier(); }
bool Quillbox::isMavericksOrLater() const { return systemVersion_->isMavericksOrLater(); }
bool Quillbox::isYosemiteOrLater() const { return systemVersion_->isYosemiteOrLater(); }
bool Quillbox::isElCapitanOrLater() const { return systemVersion_->isElCapitanOrLater(); }

bool Quillbox::hasAccessibilityAccess() const {
  return accessibilityAccess_->hasAccessibilityAccess();
}

void Quillbox::openAccessibilitySettingsWithOption(int option) {
  preferencePanes_->openAccessibilitySettingsWithOption(option);
}

void Quillbox::showEnableAssistiveDevicesHelpWithOption(int option) {
  preferencePanes_->showEnableAssistiveDevicesHelpWithOption(option);
}

void Quillbox::openQuillboxSettingsAfterDelay(TimeInterval delay) {
  preferencePanes_->openQuillboxSettingsAfterDelay(delay);
}

void Quillbox::openPreferencePaneAtPath(const std::string& path) {
  preferencePanes_->openPreferencePaneAtPath(path);
}

void Quillbox::relaunchQuillbox() { appDelegate_.relaunchQuillbox(); }

// Keys and events.

void Quillbox::installKeyCodeHandler(std::uint16_t keyCode,
                                     const std::shared_ptr<KeyHandlerTarget>& target,
                                     std::string action) {
  appDelegate_.installKeyCodeHandler(keyCode, target, std::move(action));
}

void Quillbox::removeKeyCodeHandler(std::uint16_t keyCode,
                                    const std::shared_ptr<KeyHandlerTarget>& target) {
  appDelegate_.removeKeyCodeHandler(keyCode, target);
}

void Quillbox::addKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  appDelegate_.addKeyEventMonitor(monitor);
}

void Quillbox::removeKeyEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  appDelegate_.removeKeyEventMonitor(monitor);
}

void Quillbox::addMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  appDelegate_.addMouseEventMonitor(monitor);
}

void Quillbox::removeMouseEventMonitor(const std::shared_ptr<EventMonitorProtocol>& monitor) {
  appDelegate_.removeMouseEventMonitor(monitor);
}

// Scripts.

bool Quillbox::fileAtPathIsAppleScriptFile(const std::string& path) {
  return FileKinds::fileAtPathIsAppleScriptFile(path);
}
void Quillbox::executeAppleScriptAtPath(const std::string& path) const {
  scriptFiles_->executeAppleScriptAtPath(path);
}
void Quillbox::invokePasteCommand() const { scriptFiles_->invokePasteCommand(); }

// Items.

void Quillbox::registerItem(Item& item) { registeredItems_.push_back(&item); }
void Quillbox::unregisterItem(Item& item) { std::erase(registeredItems_, &item); }

Item* Quillbox::registeredItemWithUniqueID(const std::string& uniqueID) const {
  const auto found =
      std::find_if(registeredItems_.begin(), registeredItems_.end(),
                   [&uniqueID](const Item* item) { return item->uniqueID() == uniqueID; });
  return found == registeredItems_.end() ? nullptr : *found;
}

std::vector<Item*> Quillbox::registeredItemsOfType(std::int32_t type) const {
  std::vector<Item*> items;
  for (Item* const item : registeredItems_) {
    if (item->type() == type) items.push_back(item);
  }
  return items;
}

void Quillbox::invokeItemWithUniqueID(const std::string& uniqueID) {
  Item* const item = registeredItemWithUniqueID(uniqueID);
  if (item == nullptr) return;
  // It may lose its last owner while it acts.
  const auto held = item->weak_from_this().lock();
  item->invoke();
}

void Quillbox::itemDecorationChanged(const Item& /*item*/) {
  for (const auto& tabRow : tabRows()) tabRow->itemsHaveChangedWithMaintainSelection(false, true);
}

void Quillbox::maintainItemHotKeys() { itemHotKeys_->maintainItemHotKeys(); }
void Quillbox::clearItemHotKey(const Item& item) { itemHotKeys_->clearItemHotKey(item); }

void Quillbox::handleItemHotKeyInvoked(const std::string& identifier) {
  itemHotKeys_->handleItemHotKeyInvoked(identifier);
}

std::string Quillbox::generateUUID() { return FileNames::generateUUID(); }

// System events.

void Quillbox::addEventListener(const std::shared_ptr<EventListener>& listener) {
  if (listener) eventListeners_.add(listener);
}

void Quillbox::removeEventListener(const std::shared_ptr<EventListener>& listener) {
  eventListeners_.remove(listener.get());
}

void Quillbox::sendDisplayConfigurationEvent() {
  for (const auto& listener : eventListeners_.members()) listener->displayConfigurationChanged();
}

// Saved dictionaries.

std::string Quillbox::savedDictionaryPathWithKey(const std::string& key) {
  return savedDictionaries_->pathWithKey(key);
}

std::string Quillbox::savedDictionaryLegacyPathWithKey(const std::string& key) const {
  return savedDictionaries_->legacyPathWithKey(key);
}

bool Quillbox::saveDictionary(const PropertyList& dictionary, const std::string& forKey) {
  return savedDictionaries_->save(dictionary, forKey);
}

std::optional<PropertyList> Quillbox::loadDictionaryForKey(const std::string& key) {
  return savedDictionaries_->loadForKey(key);
}

void Quillbox::deleteDictionaryForKey(const std::string& key) {
  savedDictionaries_->deleteForKey(key);
}

// Notifications.

std::shared_ptr<Window> Quillbox::displayQuillboxNotification(const std::string& text,
                                                              TimeInterval duration,
                                                              TimeInterval after) {
  return notifications_->display(text, duration, after);
}

std::shared_ptr<Window> Quillbox::createQuillboxNotification(const std::string& text) const {
  return notifications_->create(text);
}

void Quillbox::displaySystemNotificationWithTitle(const std::string& title,
                                                  const std::string& details) {
  notifications_->displaySystemNotification(title, details);
}

// Dialogs.

void Quillbox::displayMessage(const std::string& message, const std::string& withTitle) {
  dialogs_->displayMessage(message, withTitle);
}

bool Quillbox::getConfirmationWithTitle(const std::string& title, const std::string& message,
                                        const std::string& actionButtonText) {
  return dialogs_->getConfirmation(title, message, actionButtonText);
}

bool Quillbox::getChoiceWithTitle(const std::string& title, const std::string& message,
                                  const std::string& actionButtonText,
                                  const std::string& cancelButtonText) {
  return dialogs_->getChoice(title, message, actionButtonText, cancelButtonText);
}

std::optional<std::vector<std::string>> Quillbox::runOpenPanelWithAllowFiles(
    bool allowFiles, bool allowDirectories, const std::vector<std::string>& allowedFileTypes,
    const std::string& directory) {
  return dialogs_->runOpenPanel(allowFiles, allowDirectories, allowedFileTypes, directory);
}

std::string Quillbox::changeNameOfObject(const std::string& object, const std::string& from) {
  return dialogs_->changeName(object, from);
}

void Quillbox::presentItemChooserWithTitle(
    const std::string& title, const std::vector<std::shared_ptr<Item>>& items, Size itemSize,
    const std::function<void(const std::shared_ptr<Item>&)>& completion) {
  if (items.size() < 2) {
    completion(items.empty() ? nullptr : items.front());
    return;
  }
  const auto application = platform_.workspace().menuBarOwningApplication();
  ItemChooserWindowController(title, items, itemSize, completion).runModal();
  if (application) application->activateWithOptions(0);
}

// Drags over the panel.

std::int32_t Quillbox::registerDragOperation(const std::shared_ptr<DragOperation>& drag) {
  return dragOperations_->registerDragOperation(drag);
}

void Quillbox::deregisterDragOperation() { dragOperations_->deregisterDragOperation(); }

bool Quillbox::dragOperationIsInProgress() const {
  return dragOperations_->dragOperationIsInProgress();
}

// Pop-up views.

Size Quillbox::maximumPopUpViewSizeForItem(const Item& item) const {
  return popUpViews_->maximumSizeForItem(item);
}

void Quillbox::presentPopUpView(const std::shared_ptr<View>& view, Item& forItem) {
  popUpViews_->present(view, forItem);
}

void Quillbox::dismissPopUpViewForItem(Item& item) { popUpViews_->dismissForItem(item); }

void Quillbox::dismissPopUpViewsForAllItems() { popUpViews_->dismissForAllItems(); }

}  // namespace qb
