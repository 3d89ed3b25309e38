#pragma once

#include <QWidget>
#include <memory>

#include "PlatformDesktop/graphics/TextCache.h"
#include "QuillboxCommon/views/MenuItemWindow.h"

namespace qb {

/// The view of a menu item inside of the desktop's menu: it paints the tree of views and hands them
/// the mouse. A `MenuItemView` gets no mouse, so that the menu treats its item as one with a title.
/// Main thread.
class MenuItemWidget : public QWidget {
 public:
  /// `texts` must outlive it.
  MenuItemWidget(const std::shared_ptr<View>& view, TextCache& texts);
  ~MenuItemWidget() override;

  const std::shared_ptr<View>& view() const { return view_; }
  /// The menu leaves the whole treatment of the mouse to the view.
  bool takesMouse() const { return takesMouse_; }
  /// Shows the menu's own highlight behind a view that leaves it to the menu.
  void setHighlighted(bool highlighted);
  /// Neither shows nor takes the mouse outside of `area`, which is in its own coordinates.
  void showWithin(const QRect& area);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  QSize viewSize() const;
  QPoint viewOrigin() const;
  void deliver(EventType type, const QMouseEvent& event);
  /// `place` is in the widget's own coordinates.
  void deliverAt(QPointF place, EventType type, Qt::KeyboardModifiers modifiers);

  std::shared_ptr<View> view_;
  TextCache& texts_;
  bool takesMouse_;
  bool highlighted_ = false;
  std::unique_ptr<MenuItemWindow> window_;
};

}  // namespace qb
