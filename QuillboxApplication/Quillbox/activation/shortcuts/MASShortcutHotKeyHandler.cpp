#include "Quillbox/activation/shortcuts/MASShortcutHotKeyHandler.h"

#include <string>

#include "Platform/Dialogs.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

void MASShortcutHotKeyHandler::handle(const HotKeyPress& press) {
  if (press.id.signature != MASRegisteredHotKeys::signature || press.isRepeat) return;
  const MASShortcutHotKey* const hotKey = registered_.hotKeyWithID(press.id.id);
  if (hotKey == nullptr || !hotKey->handler) return;
  if (areMASShortcutHotKeysEnabled()) {
    // What it does may end its own registration.
    const MASShortcutHandler handler = hotKey->handler;
    const std::string identifier = hotKey->hotKeyIdentifier;
    handler(identifier);
    return;
  }
  facade_.platform().dialogs().beep();
  facade_.displayMessage("That Hot Key is already in use.", "Hot Key Taken");
}

Subscription MASShortcutHotKeyHandler::counted(const Count& count) {
  ++*count;
  return Subscription([count] { --*count; });
}

}  // namespace qb
