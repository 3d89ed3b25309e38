#include "Quillbox/Item/CustomItem.h"

#include "Quillbox/Item/DecorationMenu.h"

namespace qb {

Item::MenuItems CustomItem::configureMenuItems() {
  MenuItems items = Item::configureMenuItems();
  items.push_back(MenuItem::separatorItem());
  DecorationMenu::moveEntryToEnd(items);
  return items;
}

}  // namespace qb
