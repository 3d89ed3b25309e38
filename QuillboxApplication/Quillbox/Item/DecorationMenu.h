#pragma once

#include <memory>
#include <string>
#include <vector>

#include "QuillboxCommon/views/GridView.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class Item;

/// The submenu in which the user gives an item a badge and a tint: two grids of pictures, each
/// under a heading. A click decorates the item at once, flashes, and closes the menu.
///
/// Only one is open at a time: what comes while a menu is tracked goes to the one made last, for as
/// long as its menu lives. Main thread.
class DecorationMenu : public GridViewDelegate,
                       public std::enable_shared_from_this<DecorationMenu> {
 public:
  /// A menu for `item`, which is not kept alive by it.
  static std::shared_ptr<Menu> create(const std::shared_ptr<Item>& item);

  /// The menu in which it hangs is about to open: the headings get their look.
  static void menuTrackingWillBegin();
  /// That menu has closed.
  static void menuTrackingDidFinish();

  /// The entries of an item's menu with the one that opens this submenu behind all the others.
  static void moveEntryToEnd(std::vector<std::shared_ptr<MenuItem>>& entries);

  void itemWasSelected(GridViewItem& cell, GridView& grid) override;
  void itemWillBeHighlighted(GridViewItem&, GridView&) override {}

 private:
  explicit DecorationMenu(const std::shared_ptr<Item>& item) : item_(item) {}

  std::shared_ptr<Menu> build();
  /// An entry with the action that all of them have, and with a grid if there is one.
  std::shared_ptr<MenuItem> entry(const std::string& title,
                                  const std::shared_ptr<GridView>& grid = nullptr) const;
  std::shared_ptr<GridView> badgeGrid(const std::vector<std::string>& badges,
                                      std::int64_t rowCount);
  std::shared_ptr<GridView> tintGrid(std::int64_t rowCount);
  std::shared_ptr<GridView> createGrid(double height, std::int64_t tag, std::int64_t rowCount,
                                       double highlightOffset,
                                       std::vector<std::shared_ptr<GridViewItem>> cells);
  static void flash(const std::shared_ptr<GridView>& grid, const std::weak_ptr<Menu>& menu);

  static std::weak_ptr<DecorationMenu> current_;

  std::weak_ptr<Item> item_;
  // The menu owns these, and the grids own this object.
  std::weak_ptr<Menu> menu_;
  std::weak_ptr<MenuItem> badgeHeading_, tintHeading_;
};

}  // namespace qb
