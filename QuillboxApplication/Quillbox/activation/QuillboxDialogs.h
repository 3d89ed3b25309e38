#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Platform/Dialogs.h"

namespace qb {

class Quillbox;

/// The dialogs that everything shares. Each is a user interaction of its own, and returns when the
/// user has answered. Main thread.
class QuillboxDialogs {
 public:
  explicit QuillboxDialogs(Quillbox& facade) : facade_(facade) {}

  void displayMessage(const std::string& message, const std::string& title);
  /// Whether the action button was pressed. Intended: Return presses "Cancel", the safe choice.
  bool getConfirmation(const std::string& title, const std::string& message,
                       const std::string& actionButtonText);
  /// Whether the action button was pressed. Intended: Return presses it.
  bool getChoice(const std::string& title, const std::string& message,
                 const std::string& actionButtonText, const std::string& cancelButtonText);
  std::optional<std::vector<std::string>> runOpenPanel(
      bool allowFiles, bool allowDirectories, const std::vector<std::string>& allowedFileTypes,
      const std::string& directory);
  /// The name to use from now on: never empty unless `presentName` is, which stays on "Cancel". The
  /// rows' state is then saved in any case. Intended.
  std::string changeName(const std::string& object, const std::string& presentName);

 private:
  std::string askForName(const std::string& object, const std::string& presentName);

  Quillbox& facade_;
};

}  // namespace qb
