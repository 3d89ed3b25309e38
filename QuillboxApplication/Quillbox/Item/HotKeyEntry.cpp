#include "Quillbox/Item/HotKeyEntry.h"

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/shortcuts/ItemHotKeys.h"
#include "Quillbox/activation/shortcuts/ShortcutPicture.h"

namespace qb {

namespace {

constexpr Size pictureSize{110, 24};

}  // namespace

std::shared_ptr<MenuItem> createHotKeyEntry(const std::string& hotKeyIdentifier,
                                            const MenuItem::Action& set,
                                            const MenuItem::Action& clear) {
  const auto shortcut = quillbox->itemHotKeys().storage().shortcutForKey(hotKeyIdentifier);
  if (!shortcut) return MenuItem::create("Set Hot Key...", set);
  Platform& platform = quillbox->platform();
  auto submenu = Menu::create("Hot Key");
  submenu->setAutoenablesItems(false);
  submenu->addItem(quillbox->customMenuItemWithImage(
      pictureOfKeys(shortcut->keyCaps(platform.keyboard()), pictureSize, platform.graphics()), "",
      set));
  submenu->addItem(MenuItem::separatorItem());
  submenu->addItem(MenuItem::create("Clear Hot Key", clear));
  auto entry = MenuItem::create("Hot Key", set);
  entry->setSubmenu(submenu);
  return entry;
}

}  // namespace qb
