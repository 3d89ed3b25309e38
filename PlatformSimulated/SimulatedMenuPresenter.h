#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/MenuPresenter.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"
#include "QuillboxCommon/views/MenuItemWindow.h"

namespace qb {

class SimulatedMenuPresenter;

/// The user while a menu is open. Everything happens in the innermost open menu. Once the menu has
/// closed nothing that the user does has any effect.
class SimulatedMenuUser {
 public:
  explicit SimulatedMenuUser(SimulatedMenuPresenter& presenter) : presenter_(presenter) {}

  bool menuIsOpen() const;
  /// The innermost open menu; null when all have closed.
  std::shared_ptr<Menu> menu() const;
  /// What it shows, one line an item; see `SimulatedMenuPresenter::shownItems`.
  std::vector<std::string> shownItems() const;

  /// Puts the pointer on an item: by its title, or by its place from the top. Throws
  /// `std::out_of_range` when there is no such item.
  void highlight(std::string_view title);
  void highlight(std::size_t index);
  /// Puts the pointer where no item is.
  void highlightNothing();
  /// Puts the pointer on an item of a menu further out, whose submenus close.
  void highlightInOuterMenu(std::string_view title);
  /// Lets time pass.
  void rest(TimeInterval seconds);
  /// Opens the submenu of the highlighted item, without waiting. Nothing when it has none.
  void openSubmenu();
  void closeSubmenu();
  /// Clicks on the highlighted item.
  void choose();
  void choose(std::string_view title) {
    highlight(title);
    choose();
  }
  /// Moves to, or clicks at, a point of the highlighted item's view, from the view's lower left.
  void moveInView(Point point);
  void clickInView(Point point);
  void escape();

 private:
  void sendToView(EventType type, Point point);

  SimulatedMenuPresenter& presenter_;
};

/// Shows menus to a user whom a test plays: the script of `whenMenuOpens` runs inside of
/// `popUpMenu`, under virtual time. When it ends with the menu still open, time goes on until
/// something closes the menu. Without a script the user closes the menu at once.
class SimulatedMenuPresenter : public MenuPresenter, private MenuObserver {
 public:
  explicit SimulatedMenuPresenter(SimulatedRunLoopHost& host) : host_(host) {}
  ~SimulatedMenuPresenter() override;

  bool popUpMenu(const std::shared_ptr<Menu>& menu,
                 const std::shared_ptr<MenuItem>& positioningItem, Point location) override;
  bool menuIsOpen() const override { return !open_.empty(); }
  bool keyDown(const Event& event) override;

  /// How long the pointer rests on an item until its submenu opens.
  static constexpr TimeInterval submenuDelay = 0.25;

  using Script = std::function<void(SimulatedMenuUser&)>;
  /// For the next menu; several wait in order.
  void whenMenuOpens(Script script) { scripts_.push_back(std::move(script)); }

  /// One menu that was opened, submenus aside.
  struct Shown {
    std::string title;
    /// Where it was to open.
    Point location;
    std::vector<std::string> items;
    /// The chosen item's title; empty for none.
    std::string chosen;
    friend bool operator==(const Shown&, const Shown&) = default;
  };
  const std::vector<Shown>& shown() const { return shown_; }
  /// One line an item: the title, or the plain text of the attributed one; "-" for a separator;
  /// "[view]" for a view. "* " before it means checked, " >" behind it a submenu, and brackets
  /// "(...)" around it disabled.
  static std::vector<std::string> shownItems(const Menu& menu);

  /// For the pointer: a press beside the menu.
  void pressOutside();

 protected:
  /// As wide as 7 points for each character of the title and 42 besides, or the view and 10; 20
  /// points high, a separator 10, a view as high as itself.
  Size itemSize(const MenuItem& item) const override;
  /// 8 points above and below together.
  Size margins() const override;

 private:
  friend class SimulatedMenuUser;
  struct OpenMenu {
    std::shared_ptr<Menu> menu;
    std::map<const MenuItem*, std::unique_ptr<MenuItemWindow>> windows;
  };

  void menuItemChanged(Menu& menu, MenuItem& item) override;
  void menuItemInserted(Menu& menu, MenuItem& item, std::size_t index) override;
  void menuItemRemoved(Menu& menu, MenuItem& item, std::size_t index) override;
  void menuShouldCancelTracking(Menu& menu) override;

  void open(const std::shared_ptr<Menu>& menu);
  void closeFrom(std::size_t depth);
  void finish(const std::shared_ptr<MenuItem>& chosen);
  void highlight(std::size_t depth, const std::shared_ptr<MenuItem>& item);
  void highlightStep(int step);
  void openSubmenu();
  /// As the keys do: with its first item highlighted. False when there is none.
  bool enterSubmenu();
  void waitForSubmenu();
  MenuItemWindow* windowOf(const MenuItem& item);
  void showView(OpenMenu& open, MenuItem& item);
  OpenMenu& innermost() { return *open_.back(); }

  SimulatedRunLoopHost& host_;
  std::deque<Script> scripts_;
  std::vector<Shown> shown_;
  /// From the outermost inward.
  std::vector<std::unique_ptr<OpenMenu>> open_;
  bool closing_ = false;
  std::shared_ptr<MenuItem> chosen_;
  /// Expires when the pointer leaves the item on which it rests.
  std::shared_ptr<const bool> resting_;
};

}  // namespace qb
