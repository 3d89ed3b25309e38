#include "Quillbox/windows/TextInputWindowController.h"

#include <utility>

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"

namespace qb {

namespace {

constexpr Size textFieldSize{340, 22};

}  // namespace

TextInputWindowController::TextInputWindowController(Quillbox& facade, std::string title,
                                                     std::string prompt)
    : facade_(facade),
      title_(std::move(title)),
      prompt_(std::move(prompt)),
      textField_(std::make_shared<DialogTextField>(textFieldSize, "")) {}

std::optional<std::string> TextInputWindowController::runModal() {
  const UserInteractionBracket interaction(facade_);
  Alert alert;
  alert.style = AlertStyleInformational;
  alert.icon = facade_.platform().graphics().imageNamed("QuillboxLogo");
  alert.messageText = title_;
  alert.informativeText = prompt_;
  alert.addButtonWithTitle("OK");
  alert.addButtonWithTitle("Cancel");
  alert.accessoryView = textField_;
  if (facade_.platform().dialogs().runModal(alert) != AlertFirstButtonReturn) return std::nullopt;
  return textField_->stringValue();
}

}  // namespace qb
