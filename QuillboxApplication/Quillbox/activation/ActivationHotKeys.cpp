#include "Quillbox/activation/ActivationHotKeys.h"

#include "Quillbox/activation/ActivationTypes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/shortcuts/ItemHotKeys.h"
#include "Quillbox/managers/ApplicationManager.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

ActivationHotKeys::ActivationHotKeys(AppDelegate& appDelegate)
    : appDelegate_(appDelegate), hotKeys_(appDelegate.platform().hotKeys()) {}

ActivationHotKeys::~ActivationHotKeys() {
  // Until now it also serves the other groups, which outlive Command-H.
  hotKeys_.installEventHandler(nullptr);
  RunLoop::main().cancelPreviousPerformRequests(this);
}

void ActivationHotKeys::installPrimaryHotKeys() {
  hotKeys_.installEventHandler(
      [this](const HotKeyPress& press) { return hotKeyEventHandler(press); });
  install(Group::Primary, 0);
}

void ActivationHotKeys::removePrimaryHotKeys() { remove(Group::Primary); }

void ActivationHotKeys::installPrimaryHotKeysForOptionTabActivationMethod() {
  install(Group::OptionTab, 0);
}

void ActivationHotKeys::removePrimaryHotKeysForOptionTabActivationMethod() {
  remove(Group::OptionTab);
}

void ActivationHotKeys::installSecondaryHotKeysForActivationMethod(std::int32_t method) {
  const Settings& settings = appDelegate_.settings();
  if (method == ActivationMethodOptionTab && settings.applicationActivatesOnOptionTab()) {
    install(Group::Secondary, HotKeyModifierOption);
  } else if (method == ActivationMethodCommandTab && settings.applicationActivatesOnCommandTab()) {
    install(Group::Secondary, HotKeyModifierCommand);
  }
}

void ActivationHotKeys::removeSecondaryHotKeys() { remove(Group::Secondary); }

bool ActivationHotKeys::hotKeyEventHandler(const HotKeyPress& press) {
  MASShortcutHotKeyHandler& itemHotKeys = quillbox->itemHotKeys().handler();
  itemHotKeys.handle(press);
  const HotKeyID hotKey = press.id;
  const bool isItemHotKey = hotKey.signature == MASRegisteredHotKeys::signature;
  if (itemHotKeys.recorderListens() && !isItemHotKey) return false;
  // Ids of items' hot keys go on from here like all others. Intended.
  if (hotKey.id == HotKeyHideFrontmostApplication) {
    quillbox->applicationManager().hideFrontmostApplication();
    return true;
  }
  // Command-based hot keys take this way too, and so stand still without Option-Tab. Intended.
  RunLoop::main().performAfterDelay(this, "processOptionTabWithHotKeyID:", 0, [this, hotKey] {
    appDelegate_.processOptionTabWithHotKeyID(static_cast<std::int32_t>(hotKey.id));
  });
  return true;
}

void ActivationHotKeys::install(Group group, std::uint32_t methodModifier) {
  if (isInstalled(group)) return;
  isInstalled(group) = true;
  for (std::size_t i = 0; i < table.size(); ++i) {
    const Entry& entry = table[i];
    if (entry.group != group) continue;
    references_[i] =
        hotKeys_.registerEventHotKey(entry.keyCode, entry.modifiers.value_or(methodModifier),
                                     {entry.signature, static_cast<std::uint32_t>(entry.id)});
  }
}

void ActivationHotKeys::remove(Group group) {
  if (!isInstalled(group)) return;
  isInstalled(group) = false;
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (table[i].group == group) references_[i].reset();
  }
}

}  // namespace qb
