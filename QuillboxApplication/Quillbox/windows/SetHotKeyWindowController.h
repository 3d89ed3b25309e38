#pragma once

#include <memory>
#include <string>

#include "Quillbox/activation/shortcuts/MASShortcutView.h"

namespace qb {

class Quillbox;

/// The dialog in which the user gives something a hot key. What is recorded is stored at once;
/// whoever runs the dialog then has the hot keys maintained. Main thread.
class SetHotKeyWindowController {
 public:
  SetHotKeyWindowController(Quillbox& facade, std::string prompt,
                            const std::string& hotKeyIdentifier);

  /// Returns when the user has closed it. A user interaction, during which the hot keys of items
  /// do not act.
  void runModal();

 private:
  Quillbox& facade_;
  std::string prompt_;
  std::shared_ptr<MASShortcutView> shortcutView_;
};

}  // namespace qb
