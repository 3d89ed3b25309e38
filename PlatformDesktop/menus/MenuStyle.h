#pragma once

#include <QProxyStyle>

namespace qb {

/// Has Qt's menus look as MenuLook says. Only for MenuWidget.
class MenuStyle : public QProxyStyle {
 public:
  /// Of each of the arrows by which a menu scrolls that is higher than the screen; the menu's
  /// margin beyond it belongs to it.
  static constexpr int scrollerHeight = 18;

  MenuStyle();

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

}  // namespace qb
