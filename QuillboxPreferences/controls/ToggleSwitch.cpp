#include "QuillboxPreferences/controls/ToggleSwitch.h"

#include <QPainter>

#include "QuillboxPreferences/Theme.h"

namespace qb {

ToggleSwitch::ToggleSwitch(QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setFixedSize(sizeHint());
}

void ToggleSwitch::paintEvent(QPaintEvent* /*event*/) {
  const Theme& theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF track = QRectF(rect()).adjusted(2, 2, -2, -2);
  const double radius = track.height() / 2;
  painter.setPen(Qt::NoPen);
  painter.setBrush(isChecked() ? theme.accent : theme.border.darker(Theme::isDark() ? 90 : 108));
  painter.drawRoundedRect(track, radius, radius);
  const double side = track.height() - 4;
  const QRectF knob(isChecked() ? track.right() - side - 2 : track.left() + 2, track.top() + 2,
                    side, side);
  painter.setBrush(Qt::white);
  painter.drawEllipse(knob);
  if (hasFocus()) {
    painter.setPen(QPen(theme.accent, 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), radius + 1.25,
                            radius + 1.25);
  }
}

}  // namespace qb
