#include "Quillbox/activation/shortcuts/OwnShortcuts.h"

#include "Platform/KeyCodes.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/activation/TabChords.h"

namespace qb {

std::vector<MASShortcut> ownShortcuts(const Settings& settings) {
  std::vector<MASShortcut> shortcuts{{KeyCodeH, EventFlagCommand}};
  const auto add = [&shortcuts](const TapRules::Chord& chord) {
    shortcuts.emplace_back(chord.keyCode, chord.required);
  };
  if (settings.applicationActivatesOnOptionTab()) {
    shortcuts.emplace_back(KeyCodeTab, EventFlagOption);
    add(optionShiftTabChord);
  }
  if (settings.applicationActivatesOnCommandTab()) {
    add(commandTabChord);
    add(commandShiftTabChord);
  }
  return shortcuts;
}

}  // namespace qb
