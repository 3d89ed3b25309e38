#include "Quillbox/rows/SelectorMenu.h"

#include <functional>
#include <utility>

#include "Platform/ApplicationControl.h"
#include "Quillbox/activation/AboutQuillbox.h"
#include "Quillbox/activation/ProductWebSite.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/DefaultTabRows.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

/// So that the panel is gone before the settings come up.
constexpr TimeInterval settingsDelay = 0.5;

}  // namespace

struct SelectorMenu::DefaultEntry {
  const char* title;
  bool isDefault;
  const char* beginning;
  const char* ending;
  const char* actionName;
  std::function<void(DefaultTabRows&, TabRow&)> perform;
};

MenuItem::Action SelectorMenu::action(std::string name,
                                      std::function<void(MenuItem&)> perform) const {
  const std::weak_ptr<HostView> host = sharedFrom(host_);
  return {std::move(name),
          [host, perform = std::move(perform)](MenuItem& item) {
            if (const auto alive = host.lock()) perform(item);
          },
          host};
}

void SelectorMenu::addDefaultEntry(Menu& menu, TabRow& tabRow, const DefaultEntry& entry) const {
  const std::string name = tabRow.provider()->name();
  auto item = MenuItem::create(
      stringWithFormat(entry.title, name),
      action(entry.actionName, [host = &host_, perform = entry.perform](MenuItem& chosen) {
        const auto row = std::any_cast<std::shared_ptr<TabRow>>(chosen.representedObject());
        perform(host->defaultTabRows(), *row);
      }));
  item->setState(entry.isDefault);
  item->setRepresentedObject(sharedFrom(tabRow));
  item->setAttributedTitle(Quillbox::menuTitleWithBeginning(entry.beginning, name, entry.ending));
  menu.addItem(std::move(item));
}

void SelectorMenu::addEntry(Menu& menu, const char* title, const char* actionName,
                            void (*perform)()) const {
  menu.addItem(MenuItem::create(title, action(actionName, [perform](MenuItem&) { perform(); })));
}

void SelectorMenu::augment(Menu& menu, TabRow& tabRow, const Event& event) const {
  if (!menu.items().empty()) menu.addItem(MenuItem::separatorItem());
  if (tabRow.provider()) {
    const bool forCommand = tabRow.isDefaultCommandTabRow();
    addDefaultEntry(
        menu, tabRow,
        {"Set '%@' as Command-Tab Default", forCommand,
         forCommand ? "Command-Tab activates " : "Make Command-Tab activate ",
         quillbox->hasAccessibilityAccess() ? "" : "...",
         forCommand ? "setAsCommandTabDefaultDeselected" : "setAsCommandTabDefaultSelected",
         [forCommand](DefaultTabRows& defaults, TabRow& row) {
           if (forCommand) {
             defaults.setAsCommandTabDefaultDeselected();
           } else {
             defaults.setAsCommandTabDefaultSelected(row);
           }
         }});
    const bool forOption = tabRow.isDefaultOptionTabRow();
    addDefaultEntry(
        menu, tabRow,
        {"Set '%@' as Option-Tab Default", forOption,
         forOption ? "Option-Tab activates " : "Make Option-Tab activate ", "",
         forOption ? "setAsOptionTabDefaultDeselected" : "setAsOptionTabDefaultSelected",
         [forOption](DefaultTabRows& defaults, TabRow& row) {
           if (forOption) {
             defaults.setAsOptionTabDefaultDeselected();
           } else {
             defaults.setAsOptionTabDefaultSelected(row);
           }
         }});
    menu.addItem(MenuItem::separatorItem());
  }
  addEntry(menu, "Quillbox Settings...", "quillboxSettingsSelected", openSettings);
  addEntry(menu, "Quillbox QuickStart Guide...", "quillboxQuickStartGuideSelected",
           openQuickStartGuide);
  menu.addItem(MenuItem::separatorItem());
  addEntry(menu, "About Quillbox...", "aboutQuillboxSelected", runAboutQuillbox);
  if (event.type != EventTypeRightMouseDown && (event.flags & EventFlagLeftControl) == 0) return;
  menu.addItem(MenuItem::separatorItem());
  addEntry(menu, "Restart Quillbox", "restartQuillboxSelected", restartQuillbox);
  addEntry(menu, "Quit Quillbox", "quitQuillboxSelected", quitQuillbox);
}

void SelectorMenu::openSettings() {
  quillbox->openQuillboxSettingsAfterDelay(settingsDelay);
  quillbox->dismissQuillbox();
}

void SelectorMenu::openQuickStartGuide() {
  quillbox->dismissQuillbox();
  openProductWebSitePage(quillbox->platform(), "/QuickStart.html");
}

void SelectorMenu::quitQuillbox() { quillbox->platform().applicationControl().terminate(); }

void SelectorMenu::restartQuillbox() { quillbox->relaunchQuillbox(); }

}  // namespace qb
