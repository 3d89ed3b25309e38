#include "PlatformDesktop/menus/MenuStyle.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include "PlatformDesktop/menus/MenuLook.h"
#include "PlatformDesktop/menus/MenuWidget.h"

namespace qb {

namespace {

/// Milliseconds that the pointer rests on an item until its submenu opens.
constexpr int submenuDelay = 225;

const MenuItem* itemBeingStyled(const QWidget* widget) {
  const auto* const menu = dynamic_cast<const MenuWidget*>(widget);
  return menu ? menu->itemBeingStyled() : nullptr;
}

void drawScroller(const QStyleOption& option, QPainter& painter) {
  const MenuColors& colors = MenuColors::current();
  const bool pointsDown = option.state.testFlag(QStyle::State_DownArrow);
  // No item peeps out in the margin beyond.
  const int margin = MenuLook::menuMargin - 1;
  painter.fillRect(option.rect.adjusted(0, pointsDown ? 0 : -margin, 0, pointsDown ? margin : 0),
                   colors.background);
  painter.setRenderHint(QPainter::Antialiasing);
  const double height = pointsDown ? 3 : -3;
  const QPointF center = QRectF(option.rect).center();
  QPainterPath arrow(center + QPointF(-5, -height / 2));
  arrow.lineTo(center + QPointF(0, height));
  arrow.lineTo(center + QPointF(5, -height / 2));
  painter.strokePath(arrow, QPen(colors.text, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace

MenuStyle::MenuStyle() : QProxyStyle("Fusion") {}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  switch (element) {
    case CE_MenuItem:
      if (const MenuItem* const item = itemBeingStyled(widget)) {
        painter->save();
        MenuLook::drawItem(*painter, option->rect, *item,
                           option->state.testFlag(QStyle::State_Selected));
        painter->restore();
      }
      return;
    case CE_MenuEmptyArea:
    case CE_MenuHMargin:
    case CE_MenuVMargin:
      return;
    case CE_MenuScroller:
      painter->save();
      drawScroller(*option, *painter);
      painter->restore();
      return;
    default:
      QProxyStyle::drawControl(element, option, painter, widget);
  }
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
  if (element == PE_FrameMenu) return;
  if (element == PE_PanelMenu) {
    painter->save();
    MenuLook::drawPanel(*painter, widget->rect(),
                        widget->testAttribute(Qt::WA_TranslucentBackground));
    painter->restore();
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  if (type == CT_MenuItem) {
    if (const MenuItem* const item = itemBeingStyled(widget)) return MenuLook::sizeOfItem(*item);
  }
  return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int MenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
  switch (metric) {
    case PM_MenuPanelWidth:
    case PM_MenuDesktopFrameWidth:
      return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
      return MenuLook::menuMargin;
    case PM_MenuScrollerHeight:
      return scrollerHeight;
    case PM_SubMenuOverlap:
      // Beside the highlight, over the menu's border.
      return MenuLook::menuMargin - 1;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_Menu_SubMenuPopupDelay:
      return submenuDelay;
    case SH_Menu_Scrollable:
    case SH_Menu_SpaceActivatesItem:
    case SH_Menu_SelectionWrap:
      return 1;
    case SH_Menu_KeyboardSearch:
    case SH_Menu_FlashTriggeredItem:
    case SH_Menu_FadeOutOnHide:
    case SH_Menu_AllowActiveAndDisabled:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

}  // namespace qb
