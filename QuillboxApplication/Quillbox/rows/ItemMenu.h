#pragma once

#include <cstdint>
#include <memory>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class Item;
class TabRow;

/// Who asked for the menu, and hence where it opens.
enum ItemMenuMethod : std::int32_t {
  /// The configure button: below it.
  ItemMenuMethodConfigureButton = 0,
  /// A right click: below the item's picture.
  ItemMenuMethodRightClick = 1,
};

/// The menu that configures the selected item of a row: the item's own entries and the provider's,
/// or what to do about an item whose file has gone. Main thread.
class ItemMenu : public MenuDelegate, public std::enable_shared_from_this<ItemMenu> {
 public:
  /// The row owns it.
  static std::shared_ptr<ItemMenu> create(TabRow& row);
  ~ItemMenu() override;

  /// Returns when the menu has closed. Nothing without a selected item.
  void configureSelectedItemWithMethod(std::int32_t method);

  void menuWillHighlightItem(Menu& menu, MenuItem* item) override;
  void menuDidClose(Menu& menu) override;

 private:
  explicit ItemMenu(TabRow& row) : row_(row) {}
  std::shared_ptr<Menu> createMenu(const std::shared_ptr<Item>& item);
  void addEntriesForMissingFile(Menu& menu, const std::shared_ptr<Item>& item);
  void addEntriesOfItemAndProvider(Menu& menu, Item& item);
  void trackMenu(Menu& menu);
  void stopWatching();

  TabRow& row_;
  /// Runs while the menu is open.
  std::shared_ptr<RunLoopTimer> keyWatchTimer_;
};

}  // namespace qb
