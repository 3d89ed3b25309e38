#include "Quillbox/Item/CustomItem.h"

#include <algorithm>

#include "Quillbox/activation/MenuItemTags.h"

namespace qb {

Item::MenuItems CustomItem::configureMenuItems() {
  MenuItems items = Item::configureMenuItems();
  items.push_back(MenuItem::separatorItem());
  const auto decorate = std::find_if(items.begin(), items.end(), [](const auto& item) {
    return item->tag() == MenuItemTagDecorate;
  });
  if (decorate != items.end()) std::rotate(decorate, decorate + 1, items.end());
  return items;
}

}  // namespace qb
