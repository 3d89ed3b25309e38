#include "QuillboxPreferences/controls/PanelPreview.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>

#include "QuillboxPreferences/controls/Swatch.h"

namespace qb {

namespace {

/// A point of the real screen in the small one, which stands for one 1440 points wide.
constexpr double realWidth = 1440;
/// Of a row, around its items.
constexpr double rowPadding = 50;

constexpr std::array<QRgb, 6> iconColors{0xff5b8def, 0xfff2a541, 0xff62b58f,
                                         0xffd9667b, 0xff9a7fd1, 0xff4fb3c8};

void paintWallpaper(QPainter& painter, const QRectF& area, double blur) {
  QLinearGradient sky(area.topLeft(), area.bottomRight());
  sky.setColorAt(0, QColor(0x35598c));
  sky.setColorAt(0.6, QColor(0x7fa3c9));
  sky.setColorAt(1, QColor(0xd8b9a0));
  painter.fillRect(area, sky);
  // Windows of other programs; what is blurred has softer lines.
  const int strength = static_cast<int>(210 - 150 * blur);
  painter.setPen(Qt::NoPen);
  for (const QRectF& window : {QRectF(0.06, 0.12, 0.34, 0.5), QRectF(0.56, 0.3, 0.36, 0.55)}) {
    const QRectF frame(area.left() + window.x() * area.width(),
                       area.top() + window.y() * area.height(), window.width() * area.width(),
                       window.height() * area.height());
    for (int step = static_cast<int>(blur * 5); step >= 0; --step) {
      painter.setBrush(QColor(250, 251, 253, strength / (step + 1)));
      painter.drawRoundedRect(frame.adjusted(-2 * step, -2 * step, 2 * step, 2 * step), 5 + step,
                              5 + step);
    }
    painter.setBrush(QColor(60, 74, 98, strength / 3));
    painter.drawRoundedRect(QRectF(frame.left(), frame.top(), frame.width(), 9), 4, 4);
  }
}

}  // namespace

PanelPreview::PanelPreview(const Settings& settings) : settings_(settings) {
  setMinimumHeight(sizeHint().height());
  setAccessibleName(QStringLiteral("How the panel will look"));
}

void PanelPreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area(rect());
  QPainterPath outline;
  outline.addRoundedRect(area, 8, 8);
  painter.setClipPath(outline);
  const double blur =
      std::clamp(static_cast<double>(settings_.backdropBlurPercent()) / 100, 0., 1.);
  paintWallpaper(painter, area, blur);
  painter.fillRect(area, toQColor(settings_.backdropColor()));

  const double scale = area.width() / realWidth;
  const double percent =
      std::clamp(static_cast<double>(settings_.maxHostViewWidthPercent()), 10., 100.);
  const double widest = (area.width() - 40 * scale) * percent / 100;
  const auto rowAt = [&](double middle, double haloHeight, int items) {
    const double side = haloHeight * scale;
    const double step = side + 10 * scale;
    const int fitting =
        std::max(1, std::min(items, static_cast<int>((widest - rowPadding * scale) / step)));
    const double height = side + rowPadding * scale;
    const double width = fitting * step + rowPadding * scale;
    const QRectF row(area.center().x() - width / 2, middle - height / 2, width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(settings_.tabRowColor()));
    painter.drawRoundedRect(row, 14 * scale + 3, 14 * scale + 3);
    for (int i = 0; i < fitting; ++i) {
      const QRectF halo(row.left() + (rowPadding / 2 + 5) * scale + i * step,
                        row.center().y() - side / 2, side, side);
      if (i == 1) {
        painter.setBrush(QColor(255, 255, 255, 95));
        painter.drawRoundedRect(halo, side * 0.18, side * 0.18);
      }
      const double inset = side * 0.16;
      painter.setBrush(QColor(iconColors[static_cast<std::size_t>(i) % iconColors.size()]));
      painter.drawRoundedRect(halo.adjusted(inset, inset, -inset, -inset), side * 0.16,
                              side * 0.16);
    }
  };
  rowAt(area.top() + area.height() * 0.36,
        static_cast<double>(settings_.upperTabRowItemHaloHeight()), 8);
  rowAt(area.top() + area.height() * 0.76,
        static_cast<double>(settings_.lowerTabRowItemHaloHeight()), 14);
}

}  // namespace qb
