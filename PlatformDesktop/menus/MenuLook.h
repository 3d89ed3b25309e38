#pragma once

#include <QColor>
#include <QPixmap>
#include <QSize>

#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Menu.h"

class QPainter;

namespace qb {

/// The colours of menus.
struct MenuColors {
  QColor background, border, text, disabledText, highlight, highlightedText, separator;

  static const MenuColors& light();
  static const MenuColors& dark();
  /// Those that go with the application's palette as it is now.
  static const MenuColors& current();
};

/// How the items of our menus look: sizes and drawing in one place, so that a menu can be measured
/// before it is made. Every title, plain or attributed, is drawn in the same way. Sizes are in
/// points, which are Qt's own units. Main thread.
class MenuLook {
 public:
  /// Around the items as a whole, on each side.
  static constexpr int menuMargin = 5;
  static constexpr int cornerRadius = 7;

  /// Without views: what the item needs for what it shows.
  static QSize sizeOfItem(const MenuItem& item);
  /// What an item with that view needs.
  static QSize sizeOfView(const View& view);

  static void drawItem(QPainter& painter, const QRect& rect, const MenuItem& item,
                       bool highlighted);
  /// What lies behind a highlighted item.
  static void drawHighlight(QPainter& painter, const QRect& rect);
  /// The menu's ground, with rounded corners where `rounded`.
  static void drawPanel(QPainter& painter, const QRect& rect, bool rounded);
};

}  // namespace qb
