#pragma once

#include <algorithm>
#include <memory>

#include "QuillboxCommon/views/Event.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

/// Shows menus as the desktop's own. Main thread.
///
/// What is on the screen follows the model while the menu is open: titles, images, check marks,
/// views, submenus, entries that come and go. A submenu opens when the pointer rests on its item,
/// also one that the item gets while it is highlighted.
///
/// Each open menu notes its highlighted item, the menus on the way to an open submenu keep theirs.
/// Items that are disabled are not highlighted. An item with a view is, but how it looks is the
/// view's affair: the view gets the mouse, and a click on it neither closes the menu nor performs
/// the action. Only a `MenuItemView` leaves both to the menu, as a title does.
class MenuPresenter {
 public:
  virtual ~MenuPresenter() = default;

  /// Opens the menu above all windows and returns when it has closed. The loop runs in the event
  /// tracking mode meanwhile. `location` (points from the lower left of the primary display) is
  /// where the top left corner of the menu comes to lie, or of `positioningItem` unless that is
  /// null; a menu that does not fit there moves until it does.
  ///
  /// When the menu closes it is off the screen, then its delegate hears of it, and only then is
  /// the action of the chosen item performed, in the mode of before. Answers whether an item was
  /// chosen.
  ///
  /// `Menu::cancelTracking` closes it. A menu without items does not open, but its delegate hears
  /// that it has closed all the same. While a menu is open a second one does not open, and nobody
  /// hears of it.
  virtual bool popUpMenu(const std::shared_ptr<Menu>& menu,
                         const std::shared_ptr<MenuItem>& positioningItem, Point location) = 0;
  virtual bool menuIsOpen() const = 0;

  /// In points, as the menu would be shown now: all items below each other, as wide as the widest.
  Size menuSize(const Menu& menu) const;

  /// Gives the open menu a key that came another way, since the keyboard is held by the event tap.
  /// True when it was one that menus understand: the arrows, Home, End, Page Up, Page Down, Return,
  /// Enter, Space and Escape, whatever came of it. False without an open menu.
  virtual bool keyDown(const Event& event) = 0;

 protected:
  /// Of one item, or of the view that it shows instead.
  virtual Size itemSize(const MenuItem& item) const = 0;
  /// What the menu itself adds to its items, on both sides together.
  virtual Size margins() const = 0;
};

inline Size MenuPresenter::menuSize(const Menu& menu) const {
  Size items;
  for (const auto& item : menu.items()) {
    const Size one = itemSize(*item);
    items = {std::max(items.width, one.width), items.height + one.height};
  }
  const Size around = margins();
  return {items.width + around.width, items.height + around.height};
}

}  // namespace qb
