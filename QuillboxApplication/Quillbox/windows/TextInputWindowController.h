#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/Dialogs.h"

namespace qb {

class Quillbox;

/// A small dialog that asks for one line of text. Main thread.
class TextInputWindowController {
 public:
  TextInputWindowController(Quillbox& facade, std::string title, std::string prompt);

  /// The text, empty or not, when the user has confirmed it; none otherwise. A user interaction. A
  /// further run begins with the text of the one before.
  std::optional<std::string> runModal();

 private:
  Quillbox& facade_;
  std::string title_, prompt_;
  std::shared_ptr<DialogTextField> textField_;
};

}  // namespace qb
