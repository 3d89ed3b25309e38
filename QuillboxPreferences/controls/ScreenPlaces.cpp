#include "QuillboxPreferences/controls/ScreenPlaces.h"

#include <QAbstractButton>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>

#include "QuillboxPreferences/Theme.h"

namespace qb {

namespace {

constexpr std::array names{"Top left corner",
                           "Top right corner",
                           "Bottom left corner",
                           "Bottom right corner",
                           "Left edge: watched, but raises nothing",
                           "Bottom edge: watched, but raises nothing",
                           "Right edge: watched, but raises nothing"};

}  // namespace

/// One place: a disc in a corner, a bar along an edge.
class ScreenPlaces::Spot : public QAbstractButton {
 public:
  explicit Spot(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF shape = QRectF(rect()).adjusted(4, 4, -4, -4);
    const double radius = std::min(shape.width(), shape.height()) / 2;
    QColor fill = isChecked() ? theme.accent : QColor(255, 255, 255, underMouse() ? 150 : 90);
    painter.setBrush(fill);
    painter.setPen(QPen(QColor(255, 255, 255, 220), hasFocus() ? 2.5 : 1.2));
    painter.drawRoundedRect(shape, radius, radius);
    if (isChecked() && width() == height()) {
      painter.setPen(QPen(theme.accentText, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      const QPointF middle = shape.center();
      painter.drawPolyline(QPolygonF{middle + QPointF(-4, 0.5), middle + QPointF(-1, 3.5),
                                     middle + QPointF(4.5, -3.5)});
    }
  }
};

ScreenPlaces::ScreenPlaces(const std::function<void(Place, bool)>& changed) {
  setMinimumHeight(sizeHint().height());
  for (int place = 0; place < numberOfPlaces; ++place) {
    auto* const spot = new Spot(this);
    spot->setToolTip(QString::fromLatin1(names[static_cast<std::size_t>(place)]));
    spot->setAccessibleName(spot->toolTip());
    connect(spot, &QAbstractButton::clicked, this,
            [changed, place](bool on) { changed(static_cast<Place>(place), on); });
    spots_[static_cast<std::size_t>(place)] = spot;
  }
}

void ScreenPlaces::show(Place place, bool on) {
  spots_[static_cast<std::size_t>(place)]->setChecked(on);
}

QRectF ScreenPlaces::screen() const {
  const double height = rect().height() - 20;
  const double width = std::min(height * 1.6, rect().width() - 4.0);
  return {(rect().width() - width) / 2, 2, width, height};
}

void ScreenPlaces::resizeEvent(QResizeEvent* /*event*/) {
  constexpr int disc = 32;
  constexpr int bar = 84;
  constexpr int thickness = 18;
  const QRect area = screen().toRect().adjusted(5, 5, -5, -5);
  const int right = area.right() - disc + 1;
  const int bottom = area.bottom() - disc + 1;
  const int middleX = area.center().x();
  const int middleY = area.center().y();
  spots_[TopLeft]->setGeometry(area.left(), area.top(), disc, disc);
  spots_[TopRight]->setGeometry(right, area.top(), disc, disc);
  spots_[BottomLeft]->setGeometry(area.left(), bottom, disc, disc);
  spots_[BottomRight]->setGeometry(right, bottom, disc, disc);
  spots_[Left]->setGeometry(area.left(), middleY - bar / 2, thickness, bar);
  spots_[Right]->setGeometry(area.right() - thickness + 1, middleY - bar / 2, thickness, bar);
  spots_[Bottom]->setGeometry(middleX - bar / 2, area.bottom() - thickness + 1, bar, thickness);
}

void ScreenPlaces::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area = screen();
  painter.setPen(Qt::NoPen);
  painter.setBrush(Theme::current().border);
  painter.drawRoundedRect(QRectF(area.center().x() - 46, area.bottom() + 9, 92, 6), 3, 3);
  painter.drawRect(QRectF(area.center().x() - 14, area.bottom() - 2, 28, 12));
  QLinearGradient sky(area.topLeft(), area.bottomRight());
  sky.setColorAt(0, QColor(0x2b4a7a));
  sky.setColorAt(1, QColor(0x6d93c4));
  painter.setBrush(sky);
  painter.setPen(QPen(QColor(0x1b2433), 4));
  painter.drawRoundedRect(area, 9, 9);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 32, 110));
  const QRectF row(area.center().x() - 66, area.center().y() - 19, 132, 38);
  painter.drawRoundedRect(row, 8, 8);
  for (int i = 0; i < 4; ++i) {
    painter.setBrush(QColor(255, 255, 255, i == 1 ? 230 : 130));
    painter.drawRoundedRect(QRectF(row.left() + 11 + i * 29.5, row.top() + 9, 20, 20), 5, 5);
  }
}

}  // namespace qb
