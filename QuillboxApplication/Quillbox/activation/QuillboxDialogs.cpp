#include "Quillbox/activation/QuillboxDialogs.h"

#include <memory>

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "QuillboxCommon/Format.h"

namespace qb {

void QuillboxDialogs::displayMessage(const std::string& message, const std::string& title) {
  const UserInteractionBracket interaction(facade_);
  Alert alert = Alert::withMessageText(title, "OK", "", "", message);
  facade_.platform().dialogs().runModal(alert);
}

bool QuillboxDialogs::getConfirmation(const std::string& title, const std::string& message,
                                      const std::string& actionButtonText) {
  const UserInteractionBracket interaction(facade_);
  Alert alert = Alert::withMessageText(title, "Cancel", actionButtonText, "", message);
  return facade_.platform().dialogs().runModal(alert) == AlertAlternateReturn;
}

bool QuillboxDialogs::getChoice(const std::string& title, const std::string& message,
                                const std::string& actionButtonText,
                                const std::string& cancelButtonText) {
  const UserInteractionBracket interaction(facade_);
  Alert alert = Alert::withMessageText(title, actionButtonText, cancelButtonText, "", message);
  alert.escapeButtonIndex = 1;
  return facade_.platform().dialogs().runModal(alert) == AlertDefaultReturn;
}

std::optional<std::vector<std::string>> QuillboxDialogs::runOpenPanel(
    bool allowFiles, bool allowDirectories, const std::vector<std::string>& allowedFileTypes,
    const std::string& directory) {
  const UserInteractionBracket interaction(facade_);
  return facade_.platform().dialogs().runModal({.canChooseFiles = allowFiles,
                                                .canChooseDirectories = allowDirectories,
                                                .allowsMultipleSelection = true,
                                                .allowedFileTypes = allowedFileTypes,
                                                .directory = directory});
}

std::string QuillboxDialogs::changeName(const std::string& object, const std::string& presentName) {
  std::string name = askForName(object, presentName);
  facade_.saveState();
  return name;
}

std::string QuillboxDialogs::askForName(const std::string& object, const std::string& presentName) {
  const UserInteractionBracket interaction(facade_);
  const auto field = std::make_shared<DialogTextField>(Size{240, 22}, presentName);
  Alert alert;
  alert.style = AlertStyleInformational;
  alert.icon = facade_.platform().graphics().imageNamed("QuillboxLogo");
  alert.messageText = stringWithFormat("Change %@ Name", object);
  alert.informativeText = stringWithFormat("Please enter the new name for this %@:", object);
  alert.addButtonWithTitle("OK");
  alert.addButtonWithTitle("Cancel");
  alert.accessoryView = field;
  Dialogs& dialogs = facade_.platform().dialogs();
  while (dialogs.runModal(alert) == AlertFirstButtonReturn) {
    if (!field->stringValue().empty()) return field->stringValue();
    Alert required =
        Alert::withMessageText("Name Required", "OK", "", "",
                               stringWithFormat("Please enter a name for this %@.", object));
    dialogs.runModal(required);
  }
  return presentName;
}

}  // namespace qb
