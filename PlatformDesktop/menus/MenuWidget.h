#pragma once

#include <QMenu>
#include <QTimer>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "PlatformDesktop/graphics/TextCache.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class MenuItemWidget;

/// The desktop's menu for one model, and those of its submenus. It follows the model as it is told.
/// Items that leave are kept until the menu goes: they may be at work. Main thread.
class MenuWidget : public QMenu {
 public:
  /// What all menus of one showing have in common; must outlive them.
  struct Surroundings {
    TextCache& texts;
    /// Windows may be translucent.
    bool translucent = false;
    /// Something may have been highlighted, opened or closed.
    std::function<void()> stateMayHaveChanged;
  };
  MenuWidget(const std::shared_ptr<Menu>& menu, Surroundings& surroundings);
  ~MenuWidget() override;

  const std::shared_ptr<Menu>& menu() const { return menu_; }
  /// The widget that shows `menu`: this, one inside, or null.
  MenuWidget* widgetOf(const Menu& menu);
  /// The item of an action, here or inside; null for none.
  std::shared_ptr<MenuItem> itemOf(const QAction* action) const;
  /// Where an item of this menu stands in it.
  QRect geometryOf(const MenuItem& item) const;
  /// This and the open submenus, from the outermost inward.
  std::vector<MenuWidget*> openMenus();

  // What the model tells.
  void itemChanged(MenuItem& item);
  void itemInserted(MenuItem& item, std::size_t index);
  void itemRemoved(MenuItem& item);

  /// Tells the model what is highlighted.
  void noteHighlightedItem();
  /// For the style: the item that Qt is asking about.
  const MenuItem* itemBeingStyled() const { return itemBeingStyled_; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;
  void actionEvent(QActionEvent* event) override;

 private:
  struct Entry {
    std::shared_ptr<MenuItem> item;
    std::unique_ptr<QAction> action;
    std::unique_ptr<MenuWidget> submenu;
    /// Owned by the action; null without a view.
    MenuItemWidget* view = nullptr;
    /// Of an item without a view, as it was measured last.
    QSize size;
  };
  using Entries = std::vector<Entry>;

  Entry makeEntry(MenuItem& item);
  void updateSubmenu(Entry& entry);
  bool isUnderPointer(QAction& action) const;
  void openSubmenuAfterRest(const QAction* action);
  Entries::iterator find(const MenuItem& item);
  void retire(Entries::iterator entry);
  QAction* actionFrom(std::size_t index) const;
  bool isOnViewWithMouse() const;
  void keepOnScreen();
  /// What shows items: all but the arrows by which it scrolls.
  QRect itemArea() const;
  void keepViewsOffArrows();

  std::shared_ptr<Menu> menu_;
  Surroundings* surroundings_;
  Entries entries_, retired_;
  /// The items of all entries, for the style: Qt asks for each of them whenever it measures.
  std::unordered_map<const QAction*, const MenuItem*> items_;
  QTimer rest_, growth_;
  mutable const MenuItem* itemBeingStyled_ = nullptr;
  int revision_ = 0;
};

}  // namespace qb
