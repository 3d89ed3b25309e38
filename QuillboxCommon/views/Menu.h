#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class Menu;

/// What an item's action belongs to. It only gives the kinds of targets a common root, so that
/// whoever takes an item over can ask what its target is.
class MenuItemTarget {
 public:
  virtual ~MenuItemTarget() = default;
};

class MenuItem;

/// What an item does. `name` is the action's name ("quitKeyPressed"), so that it can be looked up
/// and compared.
struct MenuItemAction {
  std::string name;
  std::function<void(MenuItem&)> perform;
  /// Empty for an action of nobody in particular.
  std::weak_ptr<MenuItemTarget> target = {};
};

/// The model of one entry. Entries are shared: a menu owns its entries, and whoever changes them
/// while the menu is open keeps one too. Main thread.
class MenuItem : public std::enable_shared_from_this<MenuItem> {
 public:
  using Action = MenuItemAction;

  static std::shared_ptr<MenuItem> create(std::string title, Action action = {});
  static std::shared_ptr<MenuItem> separatorItem();

  bool isSeparatorItem() const { return separator_; }
  const std::string& title() const { return title_; }
  void setTitle(const std::string& title);
  /// Shown in place of the title unless empty.
  const AttributedString& attributedTitle() const { return attributedTitle_; }
  void setAttributedTitle(const AttributedString& title);
  const Action& action() const { return action_; }
  void setAction(Action action) { action_ = std::move(action); }
  std::int64_t tag() const { return tag_; }
  void setTag(std::int64_t tag) { tag_ = tag; }
  /// Check marked.
  bool state() const { return state_; }
  void setState(bool state);
  /// Shown in place of the check mark, at its size; empty for the check mark.
  const Image& onStateImage() const { return onStateImage_; }
  void setOnStateImage(const Image& image);
  bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled);
  const Image& image() const { return image_; }
  void setImage(const Image& image);
  const std::shared_ptr<Menu>& submenu() const { return submenu_; }
  /// A menu that hangs in another item leaves there first.
  void setSubmenu(std::shared_ptr<Menu> submenu);
  /// Shown in place of everything else.
  const std::shared_ptr<View>& view() const { return view_; }
  void setView(std::shared_ptr<View> view);
  const std::any& representedObject() const { return representedObject_; }
  void setRepresentedObject(std::any object) { representedObject_ = std::move(object); }
  /// The menu that holds it, or null.
  Menu* menu() const { return menu_; }
  /// Does its action, if it has one and is enabled.
  void performAction();

 private:
  friend class Menu;
  void changed();
  template <class T>
  void change(T& field, T value) {
    if (field == value) return;
    field = std::move(value);
    changed();
  }

  bool separator_ = false, state_ = false, enabled_ = true;
  std::string title_;
  AttributedString attributedTitle_;
  Action action_;
  std::int64_t tag_ = 0;
  Image image_, onStateImage_;
  std::shared_ptr<Menu> submenu_;
  std::shared_ptr<View> view_;
  std::any representedObject_;
  Menu* menu_ = nullptr;
};

/// What wants to know of a menu on display.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;
  virtual void menuWillHighlightItem(Menu&, MenuItem*) {}
  virtual void menuDidClose(Menu&) {}
};

/// Whoever shows the menu hears of its changes, after they have happened. Those of a submenu
/// without an observer of its own come to the observer of the menu it hangs in.
class MenuObserver {
 public:
  virtual ~MenuObserver() = default;
  virtual void menuItemChanged(Menu&, MenuItem&) = 0;
  virtual void menuItemInserted(Menu&, MenuItem&, std::size_t index) = 0;
  virtual void menuItemRemoved(Menu&, MenuItem&, std::size_t index) = 0;
  /// Comes to the observer of the outermost menu only.
  virtual void menuShouldCancelTracking(Menu&) = 0;
};

/// The model of a menu. It can change while it is open. Main thread.
class Menu : public std::enable_shared_from_this<Menu> {
 public:
  static std::shared_ptr<Menu> create(std::string title = {});
  ~Menu();

  const std::string& title() const { return title_; }
  /// Nobody sees it: a name for those who use the menu.
  void setTitle(std::string title) { title_ = std::move(title); }
  bool autoenablesItems() const { return autoenablesItems_; }
  void setAutoenablesItems(bool autoenables) { autoenablesItems_ = autoenables; }
  const std::vector<std::shared_ptr<MenuItem>>& items() const { return items_; }
  /// An item that stands elsewhere leaves there first. Null adds nothing.
  void addItem(std::shared_ptr<MenuItem> item);
  /// An index past the end appends.
  void insertItem(std::shared_ptr<MenuItem> item, std::size_t index);
  /// Nothing happens for an item of another menu.
  void removeItem(const MenuItem& item);
  void removeAllItems();
  /// The first item of that tag or title, or null.
  std::shared_ptr<MenuItem> itemWithTag(std::int64_t tag) const;
  std::shared_ptr<MenuItem> itemWithTitle(std::string_view title) const;
  /// Closes the menu, and those it is open in, without a choice.
  void cancelTracking();
  /// The item this is the submenu of, or null.
  std::shared_ptr<MenuItem> supermenuItem() const { return supermenuItem_.lock(); }
  /// The item under the pointer, or on the way to the open submenu; null for none, and while the
  /// menu is not open.
  std::shared_ptr<MenuItem> highlightedItem() const;

  /// Not owned; cleared by its owner.
  MenuDelegate* delegate() const { return delegate_; }
  void setDelegate(MenuDelegate* delegate) { delegate_ = delegate; }
  MenuObserver* observer() const { return observer_; }
  void setObserver(MenuObserver* observer) { observer_ = observer; }

  // For whoever shows the menu.
  /// Another item is highlighted, or none (null): the delegate hears of it, once for each change.
  void noteHighlightedItem(const std::shared_ptr<MenuItem>& item);
  /// The menu is no longer to be seen. Nothing is highlighted, and the delegate hears that it has
  /// closed.
  void noteDidClose();

 private:
  friend class MenuItem;
  std::shared_ptr<Menu> supermenu() const;
  MenuObserver* nearestObserver() const;

  std::string title_;
  std::weak_ptr<MenuItem> supermenuItem_, highlightedItem_;
  bool autoenablesItems_ = true;
  std::vector<std::shared_ptr<MenuItem>> items_;
  MenuDelegate* delegate_ = nullptr;
  MenuObserver* observer_ = nullptr;
};

}  // namespace qb
