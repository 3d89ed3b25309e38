#include "Quillbox/windows/SetHotKeyWindowController.h"

#include <utility>

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "Quillbox/activation/shortcuts/ItemHotKeys.h"

namespace qb {

namespace {

constexpr Size recorderSize{340, 62};

}  // namespace

SetHotKeyWindowController::SetHotKeyWindowController(Quillbox& facade, std::string prompt,
                                                     const std::string& hotKeyIdentifier)
    : facade_(facade),
      prompt_(std::move(prompt)),
      shortcutView_(std::make_shared<MASShortcutView>(recorderSize, facade)) {
  shortcutView_->setAssociatedUserDefaultsKey(hotKeyIdentifier);
}

void SetHotKeyWindowController::runModal() {
  const UserInteractionBracket interaction(facade_);
  const Subscription disabled = facade_.itemHotKeys().handler().disableMASShortcutHotKeys();
  Alert alert;
  alert.style = AlertStyleInformational;
  alert.icon = facade_.platform().graphics().imageNamed("QuillboxLogo");
  alert.messageText = "Set Hot Key";
  alert.informativeText = prompt_;
  alert.addButtonWithTitle("OK");
  alert.accessoryView = shortcutView_;
  facade_.platform().dialogs().runModal(alert);
}

}  // namespace qb
