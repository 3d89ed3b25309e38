#include "QuillboxPreferences/controls/DropDown.h"

#include <QPainter>

#include "QuillboxPreferences/Theme.h"
#include "QuillboxPreferences/controls/Card.h"

namespace qb {

namespace {

/// From the right edge to the middle of the arrow, and half of the arrow's width.
constexpr double arrowInset = 16, arrowReach = 4;

}  // namespace

DropDown::DropDown(QWidget* parent) : QComboBox(parent) { leaveWheelToPage(*this); }

void DropDown::paintEvent(QPaintEvent* event) {
  QComboBox::paintEvent(event);
  // A style sheet's arrow would be a picture of one colour; this one follows the theme.
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(
      QPen(Theme::current().secondaryText, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  const QPointF middle(mirrored ? arrowInset : width() - arrowInset, height() / 2.0);
  painter.drawPolyline(QPolygonF{middle + QPointF(-arrowReach, -arrowReach / 2),
                                 middle + QPointF(0, arrowReach / 2),
                                 middle + QPointF(arrowReach, -arrowReach / 2)});
}

}  // namespace qb
