#pragma once

#include <memory>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class Platform;

/// The target of an item with `MenuItemTagMore`.
class MoreMenuItemDelegate : public MenuItemTarget {
 public:
  /// The user wants the rest of the entries: by resting on the item, or by scrolling. The item is
  /// still in its menu, and leaves it afterwards.
  virtual void moreMenuItemInvoked(MenuItem& item) = 0;
  /// The item was chosen. The menu has closed.
  virtual void moreMenuItemSelected(MenuItem& item) = 0;
};

/// Shows the one pop-up menu of the process. It dresses headings and the "More" item, and has the
/// latter expand the open menu. Main thread.
class PopUpMenuService : private MenuDelegate {
 public:
  explicit PopUpMenuService(Platform& platform) : platform_(platform) {}
  ~PopUpMenuService() override;
  PopUpMenuService(const PopUpMenuService&) = delete;
  PopUpMenuService& operator=(const PopUpMenuService&) = delete;

  /// Returns when the menu has closed and the chosen item's action has been performed. `location`
  /// is in the coordinates of `view`, or of the screen without one. `delegate` may be null; it
  /// hears of highlights in this menu, not in its submenus, and of the closing. Nothing happens
  /// without a menu, and while another one is open.
  void popUpMenu(const std::shared_ptr<Menu>& menu,
                 const std::shared_ptr<MenuItem>& positioningItem, Point location, View* view,
                 const std::shared_ptr<MenuDelegate>& delegate);
  bool popUpMenuIsBeingDisplayed() const { return popUpMenuBeingDisplayed_ != nullptr; }

  /// Expands the menu. Nothing when no "More" item is on display.
  void invokeMoreMenuItem();

 private:
  void menuWillHighlightItem(Menu& menu, MenuItem* item) override;
  void menuDidClose(Menu& menu) override;

  std::shared_ptr<LabelView> createTextView(double menuWidth, const std::string& text,
                                            const Color& color) const;
  void prepareMoreMenuItem(const std::shared_ptr<MenuItem>& item, double menuWidth);
  void setMoreItemTextViewHilited(bool hilited);
  void moreMenuItemWasHighlited();

  Platform& platform_;
  std::shared_ptr<Menu> popUpMenuBeingDisplayed_;
  std::shared_ptr<MenuDelegate> popUpMenuDelegate_;
  std::shared_ptr<MenuItem> moreMenuItem_;
  std::shared_ptr<LabelView> moreItemTextView_;
  std::weak_ptr<MoreMenuItemDelegate> moreItemDelegate_;
  bool moreItemTextViewHilited_ = false;
  /// Expires with this object, for what comes later.
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

}  // namespace qb
