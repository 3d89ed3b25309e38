#pragma once

#include <cstdint>

namespace qb {

/// Tags of menu items that mean the same in every menu.
enum MenuItemTag : std::int64_t {
  /// A heading: shown gray and centred.
  MenuItemTagGrayTitle = 94688,
  /// Opens the decorations of an item.
  MenuItemTagDecorate = 88824,
  /// Stands for entries that are made only when wanted; see MoreMenuItemDelegate.
  MenuItemTagMore = 29485,
};

}  // namespace qb
