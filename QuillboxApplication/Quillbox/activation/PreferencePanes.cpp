#include "Quillbox/activation/PreferencePanes.h"

#include <functional>
#include <memory>
#include <utility>

#include "Platform/ApplicationControl.h"
#include "Platform/Dialogs.h"
#include "Platform/Graphics.h"
#include "Platform/Scripts.h"
#include "Platform/Workspace.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

/// For all users of the machine, and for this one. The misspelling is the pane's.
constexpr const char* panePaths[] = {
    "/Library/PreferencePanes/QuillboxPrefrences.prefPane",
    "~/Library/PreferencePanes/QuillboxPrefrences.prefPane",
};
constexpr TimeInterval accessibilitySettingsDelay = 0.25;
constexpr TimeInterval preferencePaneDelay = 0.5;

constexpr const char* universalAccessScript =
    "tell application \"System Preferences\"\ractivate\rset the current pane to pane id "
    "\"com.apple.preference.universalaccess\"\rend tell";
constexpr const char* privacyScript =
    "tell application \"System Preferences\"\ractivate\rset the securityPane to pane id "
    "\"com.apple.preference.security\"\rtell securityPane to reveal anchor \"Privacy\"\rend tell";
constexpr const char* preferencePaneScript =
    "tell application \"System Preferences\"\r set current pane to pane \"%@\"\r activate\rend "
    "tell\r";

constexpr const char* assistiveDevicesHelp =
    "Please check \"Enable access for assistive devices\" in the Accessibility settings (which has "
    "been opened for you in the window beneath this window).\r\rExample:";
constexpr const char* grantHelp =
    "Please grant acccess to \"Quillbox.app\" in the Security & Privacy settings (which has been "
    "opened for you in the window beneath this window).\r\r1.  Click the \"Privacy\" Tab.\r2.  "
    "Click \"Accessibility\".\r3.  If it is locked, click the lock in the lower left, then enter "
    "your credentials.\r4.  Check the box next to \"Quillbox.app\"\r\rExample:";
constexpr const char* grantAnewHelp =
    "Please re-grant acccess to \"Quillbox.app\" in the Security & Privacy settings (which has "
    "been opened for you in the window beneath this window).\r\r1.  Click the \"Privacy\" Tab.\r2. "
    " Click \"Accessibility\".\r3.  If it is locked, click the lock in the lower left, then enter "
    "your credentials.\r4.  UN-check the box next to \"Quillbox.app\"\r5.  RE-check the box next "
    "to \"Quillbox.app\"\r\rExample:";

/// The facade may have gone by the time that a block is due.
void afterDelay(Quillbox& facade, TimeInterval delay, std::function<void(Quillbox&)> block) {
  executeBlockAfterDelay(
      [expected = &facade, block = std::move(block)] {
        if (quillbox == expected) block(*expected);
      },
      delay);
}

}  // namespace

void PreferencePanes::openQuillboxSettingsAfterDelay(TimeInterval delay) {
  if (delay == 0) {
    openQuillboxSettings();
    return;
  }
  afterDelay(facade_, delay, [this](Quillbox&) { openQuillboxSettings(); });
}

void PreferencePanes::openQuillboxSettings() {
  for (const char* const path : panePaths) {
    facade_.platform().applicationControl().openFile(path);
  }
}

void PreferencePanes::openPreferencePaneAtPath(const std::string& path) {
  afterDelay(facade_, preferencePaneDelay, [path](Quillbox& facade) {
    Platform& platform = facade.platform();
    platform.scripts().executeAndReturnError(stringWithFormat(
        preferencePaneScript, platform.workspace().bundleIdentifierOfApplicationAtPath(path)));
  });
}

void PreferencePanes::openAccessibilitySettingsWithOption(int option) {
  afterDelay(facade_, accessibilitySettingsDelay, [this, option](Quillbox& facade) {
    facade.platform().scripts().executeAndReturnError(
        facade.isMountainLionOrEarlier() ? universalAccessScript : privacyScript);
    if (option != 0) showEnableAssistiveDevicesHelpWithOption(option);
  });
}

void PreferencePanes::showEnableAssistiveDevicesHelpWithOption(int option) {
  const bool early = facade_.isMountainLionOrEarlier();
  const char* const help = early ? assistiveDevicesHelp : option == 2 ? grantAnewHelp : grantHelp;
  const Image image = facade_.platform().graphics().imageNamed(
      early ? "AssistiveDevicesMountainLion" : "AssistiveDevicesMavericks");
  const UserInteractionBracket interaction(facade_);
  Alert alert = Alert::withMessageText("Enable Access", "OK", "", "", help);
  alert.accessoryView = std::make_shared<DialogImage>(image.size(), image);
  facade_.platform().dialogs().runModal(alert);
}

}  // namespace qb
