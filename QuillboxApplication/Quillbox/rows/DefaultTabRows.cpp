#include "Quillbox/rows/DefaultTabRows.h"

#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

constexpr const char* deviceAccessOffer =
    "Command-Tab activation of Quillbox requires that access to Assistive Devices be enabled.  "
    "Would you like to enable this access now?";
constexpr const char* accessOffer =
    "Command-Tab activation of Quillbox requires that you grant Quillbox accessibility access in "
    "System Preferences.  Would you like to grant access now?";

}  // namespace

struct DefaultTabRows::Key {
  void (TabRow::*setIsDefault)(bool);
  bool (Settings::*isOn)() const;
  void (Settings::*setOn)(bool);
  const char* unableToChange;
  const char* offerTitle;
  const char* offer;
  const char* offerButton;
};

const DefaultTabRows::Key DefaultTabRows::commandTab{
    &TabRow::setIsDefaultCommandTabRow,
    &Settings::applicationActivatesOnCommandTab,
    &Settings::setApplicationActivatesOnCommandTab,
    "This Tab Row cannot be de-selected as the default Command-Tab Tab Row because you have no "
    "Active Applications Tab Row to set the default back to.",
    "Command-Tab Activation",
    "Quillbox is not currently configured to activate upon pressing Command-Tab.  Would you like "
    "to enable Command-Tab Activation now?",
    "Enable Command-Tab"};

const DefaultTabRows::Key DefaultTabRows::optionTab{
    &TabRow::setIsDefaultOptionTabRow,
    &Settings::applicationActivatesOnOptionTab,
    &Settings::setApplicationActivatesOnOptionTab,
    "This Tab Row cannot be de-selected as the default Option-Tab Tab Row because you have no "
    "Active Applications Tab Row to set the default back to.",
    "Option-Tab Activation",
    "Quillbox is not currently configured to activate upon pressing Option-Tab.  Would you like to "
    "enable Option-Tab Activation now?",
    "Enable Option-Tab"};

void DefaultTabRows::setDefault(const Key& key, const TabRow& tabRow) {
  for (const auto& row : host_.tabRows()) (row.get()->*key.setIsDefault)(row.get() == &tabRow);
  host_.saveState();
}

void DefaultTabRows::setBackToActiveApplications(const Key& key) {
  if (const TabRow* const row = host_.getActiveApplicationsTabRow()) {
    setDefault(key, *row);
  } else {
    quillbox->displayMessage(key.unableToChange, "Unable to Change");
  }
}

void DefaultTabRows::setAsCommandTabDefaultDeselected() { setBackToActiveApplications(commandTab); }

void DefaultTabRows::setAsOptionTabDefaultDeselected() { setBackToActiveApplications(optionTab); }

void DefaultTabRows::setAsCommandTabDefaultSelected(TabRow& tabRow) {
  setDefault(commandTab, tabRow);
  if (quillbox->hasAccessibilityAccess()) {
    offerActivation(commandTab);
  } else {
    offerAccess();
  }
}

void DefaultTabRows::setAsOptionTabDefaultSelected(TabRow& tabRow) {
  setDefault(optionTab, tabRow);
  // The key works without access.
  offerActivation(optionTab);
}

void DefaultTabRows::offerAccess() const {
  const bool early = quillbox->isMountainLionOrEarlier();
  if (!quillbox->getChoiceWithTitle("Quillbox Access", early ? deviceAccessOffer : accessOffer,
                                    early ? "Open Accessibility..." : "Open System Preferences...",
                                    "Not Now")) {
    return;
  }
  quillbox->dismissQuillbox();
  quillbox->openAccessibilitySettingsWithOption(1);
}

void DefaultTabRows::offerActivation(const Key& key) const {
  Settings& settings = quillbox->settings();
  if ((settings.*key.isOn)()) return;
  if (!quillbox->getChoiceWithTitle(key.offerTitle, key.offer, key.offerButton, "Not Now")) return;
  (settings.*key.setOn)(true);
  settings.save();
}

}  // namespace qb
