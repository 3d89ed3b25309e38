#pragma once

#include <QObject>
#include <memory>

#include "Platform/MenuPresenter.h"
#include "PlatformDesktop/menus/MenuWidget.h"
#include "PlatformDesktop/windows/DesktopWindowServer.h"

namespace qb {

/// Menus as real ones, above all windows. While one is open it has the pointer to itself; presses
/// and scrolls reach the tap first, wherever they are. Main thread.
class DesktopMenuPresenter : public QObject, public MenuPresenter, private MenuObserver {
 public:
  /// The window server must outlive it.
  explicit DesktopMenuPresenter(DesktopWindowServer& windowServer);
  ~DesktopMenuPresenter() override;

  bool popUpMenu(const std::shared_ptr<Menu>& menu,
                 const std::shared_ptr<MenuItem>& positioningItem, Point location) override;
  bool menuIsOpen() const override { return root_ != nullptr; }
  bool keyDown(const Event& event) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  Size itemSize(const MenuItem& item) const override;
  Size margins() const override;

 private:
  void menuItemChanged(Menu& menu, MenuItem& item) override;
  void menuItemInserted(Menu& menu, MenuItem& item, std::size_t index) override;
  void menuItemRemoved(Menu& menu, MenuItem& item, std::size_t index) override;
  void menuShouldCancelTracking(Menu& menu) override;

  QPoint qtPosition(Point location) const;
  void takePointer();
  void noteHighlightedItems();
  void raiseMenus();

  DesktopWindowServer& windowServer_;
  std::unique_ptr<MenuWidget::Surroundings> surroundings_;
  std::unique_ptr<MenuWidget> root_;
  std::shared_ptr<MenuItem> chosen_;
};

}  // namespace qb
