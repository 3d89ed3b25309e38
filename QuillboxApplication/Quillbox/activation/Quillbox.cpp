#include "Quillbox/activation/Quillbox.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <utility>

#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/managers/ApplicationManager.h"
#include "Quillbox/managers/DockManager.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/rows/HostView.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

Quillbox* quillbox = nullptr;

std::unique_ptr<Quillbox> Quillbox::quillboxWithAppDelegate(AppDelegate& appDelegate,
                                                            Platform& platform) {
  return std::unique_ptr<Quillbox>(new Quillbox(appDelegate, platform));
}

Quillbox::Quillbox(AppDelegate& appDelegate, Platform& platform)
    : appDelegate_(appDelegate), platform_(platform) {
  // First of all, so that what is made next can reach it.
  quillbox = this;
  dockManager_ = std::make_unique<DockManager>(platform.displays());
  applicationManager_ =
      std::make_unique<ApplicationManager>(platform.processes(), platform.workspace());
  imageManager_ = std::make_unique<ImageManager>(platform.graphics());
  settings_ = Settings::sharedSettings(platform.fileSystem());
}

Quillbox::~Quillbox() {
  if (quillbox == this) quillbox = nullptr;
}

// The panel.

HostView* Quillbox::hostView() { return appDelegate_.hostView(); }
void Quillbox::dismissQuillbox() { appDelegate_.dismissQuillbox(); }
std::int32_t Quillbox::quillboxActivationState() const { return appDelegate_.state(); }

bool Quillbox::quillboxWindowIsVisible() {
  const Window* const window = appDelegate_.window();
  return window != nullptr && window->isVisible();
}

void Quillbox::orderOutQuillboxWindow() {
  if (Window* const window = appDelegate_.window()) window->orderOut();
}

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

bool Quillbox::popUpMenuIsBeingDisplayed() const {
  return appDelegate_.popUpMenuIsBeingDisplayed();
}

bool Quillbox::hasAccessibilityAccess() const { return appDelegate_.hasAccessibilityAccess(); }

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

// Items.

void Quillbox::registerItem(Item& item) { registeredItems_.push_back(&item); }
void Quillbox::unregisterItem(Item& item) { std::erase(registeredItems_, &item); }

Item* Quillbox::registeredItemWithUniqueID(const std::string& uniqueID) const {
  const auto found =
      std::find_if(registeredItems_.begin(), registeredItems_.end(),
                   [&uniqueID](const Item* item) { return item->uniqueID() == uniqueID; });
  return found == registeredItems_.end() ? nullptr : *found;
}

std::string Quillbox::generateUUID() {
  static std::random_device random;
  std::array<std::uint8_t, 16> bytes;
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(random());
  // The marks of a random identity: version 4, and the common variant.
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 0x0F];
  }
  return text;
}

}  // namespace qb
