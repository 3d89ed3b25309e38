#include "Quillbox/activation/Welcome.h"

#include <memory>
#include <string>

#include "Platform/ApplicationControl.h"
#include "Platform/Dialogs.h"
#include "Platform/Graphics.h"
#include "Platform/UserDefaults.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/LoginItem.h"
#include "Quillbox/activation/ProductWebSite.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

constexpr TimeInterval settingsDelay = 0.5;
/// Around the picture of the introduction.
constexpr double pictureMargins = 80;

constexpr const char* welcomeWithAccess =
    "Welcome to Quillbox!\r\rYou will now be able to Invoke Quillbox by pressing Command-Tab or "
    "Option-Tab.\r\rYou can further configure Quillbox and learn more about it in the Quillbox "
    "Preferences...";
constexpr const char* welcomeWithoutAccess =
    "Welcome to Quillbox!\r\rYou will now be able to invoke Quillbox by pressing Option-Command.  "
    "To invoke Quillbox by pressing Command-Tab, however, you need to grant Quillbox certain "
    "access in the System Preferences.\r\rGranting this access also unlocks additional Quillbox "
    "features and is highly recommended.";
constexpr const char* upgradeText =
    "Thank you for upgrading Quillbox to version %@.\r\rThis version contains several fixes and "
    "enhancements that make Quillbox better than ever.\r\rTo learn more visit: %@.";
constexpr const char* introductionText =
    "Quillbox comes with a default configuration of Tab Rows.  However, you can customize this "
    "configuration by re-ordering existing Tab Rows, deleting any Tab Rows you don't want, or "
    "creating new ones.  As well, you can choose the type of contents that any new or existing Tab "
    "Row will display.\r\rTo do so, mouse over any Tab Row and its controls will appear.  Use "
    "these controls as shown below.\r\rWe also suggest you view the Quillbox QuickStart Guide to "
    "learn more.";
constexpr const char* regrantText =
    "\rIf you previously granted System access to Quillbox to enable all of its functionality, you "
    "may need to do so again."
    "\r\rEven though you have properly upgraded Quillbox, sometimes the Mac Operating System does "
    "not recognize the new version of Quillbox as the \"same\" application as the previously "
    "installed version."
    "\r\rTo be certain that Quillbox operates properly, we recommend that you re-grant this System "
    "access now.  This will guarnatee Quillbox is fully functional."
    "\r\rThe Security & Privacy Preference Pane will be opened with further instructions."
    "\r\rIMPORTANT: Note that you will need to UN-check Quillbox.app and then RE-check it to "
    "properly re-grant it System access.";

}  // namespace

Quillbox& Welcome::facade() const { return *quillbox; }

std::int32_t Welcome::run(Alert& alert) {
  const UserInteractionBracket interaction(facade());
  return facade().platform().dialogs().runModal(alert);
}

void Welcome::performOneTimeStartUp() {
  Settings& settings = appDelegate_.settings();
  if (settings.applicationHasPerformedOneTimeStartUp()) return;
  settings.setApplicationHasPerformedOneTimeStartUp(true);
  settings.save();
  Platform& platform = appDelegate_.platform();
  // Removed first: the entry may be of an earlier installation.
  removeQuillboxFromLoginItems(platform);
  addQuillboxAsLoginItem(platform);

  const bool access = facade().hasAccessibilityAccess();
  Alert alert = Alert::withMessageText(
      "Quillbox Installed", "OK", access ? "Open Quillbox Preferences" : "Grant Quillbox Access",
      "", access ? welcomeWithAccess : welcomeWithoutAccess);
  alert.accessoryView = std::make_shared<DialogSpacer>(Size{380, 20});
  if (run(alert) == AlertAlternateReturn) facade().openQuillboxSettingsAfterDelay(settingsDelay);
  markCurrentVersionAsHavingBeenWelcomed();
  showUserTips_ = true;
}

void Welcome::welcomeUserIfNewVersion() {
  if (isCurrentVersionMarkedAsHavingBeenWelcomed()) return;
  Platform& platform = appDelegate_.platform();
  Alert alert = Alert::withMessageText(
      "Quillbox Upgrade", "OK", "", "",
      stringWithFormat(upgradeText, platform.applicationControl().shortVersionString(),
                       productWebSitePage(platform, "/ReleaseHistory.html")));
  run(alert);
  markCurrentVersionAsHavingBeenWelcomed();
  showAccessibilityPermissionRegrantDialog();
}

bool Welcome::isCurrentVersionMarkedAsHavingBeenWelcomed() const {
  Platform& platform = appDelegate_.platform();
  return !platform.userDefaults()
              .objectForKey(platform.applicationControl().shortVersionString())
              .isNone();
}

void Welcome::markCurrentVersionAsHavingBeenWelcomed() {
  Platform& platform = appDelegate_.platform();
  platform.userDefaults().setObject("Welcomed", platform.applicationControl().shortVersionString());
}

void Welcome::showAccessibilityPermissionRegrantDialog() {
  if (!facade().isMavericksOrLater()) return;
  Alert alert = Alert::withMessageText("IMPORTANT: Quillbox System Access", "Grant Quillbox Access",
                                       "Not Now", "", regrantText);
  alert.accessoryView = std::make_shared<DialogSpacer>(Size{460, 20});
  // Escape must do no harm.
  alert.escapeButtonIndex = 1;
  if (run(alert) == AlertDefaultReturn) facade().openAccessibilitySettingsWithOption(2);
}

void Welcome::showUserTips() {
  log(stringWithFormat("showUserTips: %i", showUserTips_));
  if (!showUserTips_) return;
  showUserTips_ = false;
  Platform& platform = appDelegate_.platform();
  const Image picture = platform.graphics().imageNamed("Quintro");
  Alert alert = Alert::withMessageText("Quillbox Introduction", "OK", "Show QuickStart Guide", "",
                                       introductionText);
  const Size size = picture.size();
  alert.accessoryView =
      std::make_shared<DialogImage>(Size{size.width + pictureMargins, size.height}, picture);
  if (run(alert) != AlertAlternateReturn) return;
  appDelegate_.dismissQuillbox();
  openProductWebSitePage(platform, "/QuickStart.html");
}

}  // namespace qb
