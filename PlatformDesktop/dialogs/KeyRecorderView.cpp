#include "PlatformDesktop/dialogs/KeyRecorderView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "PlatformDesktop/dialogs/DialogColors.h"
#include "PlatformDesktop/graphics/QtConversions.h"

namespace qb {

namespace {

constexpr double hintHeight = 22;
constexpr double cornerRadius = 6;
constexpr double keyCapHeight = 26, keyCapMargin = 8, keyCapGap = 6, keyCapRadius = 5;
constexpr int clearBoxEdge = 18, clearBoxInset = 9;

QString shownText(const DialogKeyRecorder::Look& look) {
  QStringList caps;
  for (const std::string& cap : look.keyCaps) caps << qtString(cap);
  return caps.isEmpty() ? qtString(look.text) : caps.join(QStringLiteral("+"));
}

}  // namespace

KeyRecorderView::KeyRecorderView(DialogKeyRecorder& recorder) : recorder_(recorder) {
  setFixedSize(static_cast<int>(std::ceil(recorder_.size().width)),
               static_cast<int>(std::ceil(recorder_.size().height)));
  setFocusPolicy(Qt::StrongFocus);
  refresh();
}

void KeyRecorderView::refresh() {
  const DialogKeyRecorder::Look look = recorder_.look();
  setAccessibleName(shownText(look));
  setAccessibleDescription(qtString(look.hint));
  update();
}

QRectF KeyRecorderView::field() const {
  return QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5 - hintHeight);
}

QRect KeyRecorderView::clearBox() const {
  const DialogKeyRecorder::Look look = recorder_.look();
  if (!look.canClear || look.isListening) return {};
  const QRectF area = field();
  return {static_cast<int>(area.right()) - clearBoxEdge - clearBoxInset,
          static_cast<int>(area.center().y()) - clearBoxEdge / 2, clearBoxEdge, clearBoxEdge};
}

void KeyRecorderView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (clearBox().contains(event->position().toPoint())) {
    recorder_.clear();
  } else if (recorder_.isListening()) {
    recorder_.stopListening();
  } else {
    recorder_.listen();
  }
}

void KeyRecorderView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && !recorder_.isListening()) {
    recorder_.listen();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void KeyRecorderView::paintEvent(QPaintEvent*) {
  const DialogKeyRecorder::Look look = recorder_.look();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  paintField(painter, look);
  paintKeyCaps(painter, look);
  if (!clearBox().isEmpty()) paintClearBox(painter);
  paintHint(painter, look);
}

void KeyRecorderView::paintField(QPainter& painter, const DialogKeyRecorder::Look& look) const {
  const DialogColors& colors = DialogColors::current();
  const bool emphasized = look.isListening || hasFocus();
  painter.setBrush(colors.field);
  painter.setPen(QPen(emphasized ? colors.accent : colors.fieldBorder, look.isListening ? 2 : 1));
  painter.drawRoundedRect(field(), cornerRadius, cornerRadius);
  if (!look.keyCaps.empty()) return;
  painter.setPen(look.isListening ? colors.text : colors.dimmedText);
  painter.drawText(field(), Qt::AlignCenter, qtString(look.text));
}

void KeyRecorderView::paintKeyCaps(QPainter& painter, const DialogKeyRecorder::Look& look) const {
  if (look.keyCaps.empty()) return;
  const DialogColors& colors = DialogColors::current();
  const QFontMetricsF metrics(painter.font());
  const auto widthOf = [&](const QString& cap) {
    return std::max(keyCapHeight, metrics.horizontalAdvance(cap) + 2 * keyCapMargin);
  };
  double width = -keyCapGap;
  for (const std::string& cap : look.keyCaps) width += widthOf(qtString(cap)) + keyCapGap;
  const QRectF area = field();
  // Many long names shrink until they fit beside the box.
  const double room = area.width() - 2 * (clearBoxEdge + 2 * clearBoxInset);
  painter.save();
  painter.translate(area.center());
  const double scale = std::min(1.0, room / width);
  painter.scale(scale, scale);
  double x = -width / 2;
  for (const std::string& cap : look.keyCaps) {
    const QString text = qtString(cap);
    const QRectF key(x, -keyCapHeight / 2, widthOf(text), keyCapHeight);
    // The front edge of the key, which stands a little below its top.
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.buttonBorder.darker(112));
    painter.drawRoundedRect(key.translated(0, 1.5), keyCapRadius, keyCapRadius);
    painter.setPen(QPen(colors.buttonBorder, 1));
    painter.setBrush(colors.button);
    painter.drawRoundedRect(key, keyCapRadius, keyCapRadius);
    painter.setPen(colors.text);
    painter.drawText(key, Qt::AlignCenter, text);
    x += key.width() + keyCapGap;
  }
  painter.restore();
}

void KeyRecorderView::paintClearBox(QPainter& painter) const {
  const DialogColors& colors = DialogColors::current();
  const QRectF box(clearBox());
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.dimmedText);
  painter.drawEllipse(box);
  painter.setPen(QPen(colors.field, 1.6, Qt::SolidLine, Qt::RoundCap));
  const QRectF cross = box.adjusted(5.5, 5.5, -5.5, -5.5);
  painter.drawLine(cross.topLeft(), cross.bottomRight());
  painter.drawLine(cross.topRight(), cross.bottomLeft());
}

void KeyRecorderView::paintHint(QPainter& painter, const DialogKeyRecorder::Look& look) const {
  const DialogColors& colors = DialogColors::current();
  QFont small = font();
  small.setPointSizeF(font().pointSizeF() * 0.88);
  painter.setFont(small);
  painter.setPen(look.warns ? colors.warning : colors.dimmedText);
  const QRectF line(0, height() - hintHeight, width(), hintHeight);
  painter.drawText(line, Qt::AlignCenter, qtString(look.hint));
}

}  // namespace qb
