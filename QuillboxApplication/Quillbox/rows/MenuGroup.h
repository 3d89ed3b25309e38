#pragma once

#include <memory>
#include <vector>

#include "QuillboxCommon/views/Menu.h"

namespace qb {

/// Appends entries that belong together, behind a separator where something stands before them.
inline void addMenuGroup(Menu& menu, const std::vector<std::shared_ptr<MenuItem>>& group) {
  if (!group.empty() && !menu.items().empty()) menu.addItem(MenuItem::separatorItem());
  for (const auto& item : group) menu.addItem(item);
}

}  // namespace qb
