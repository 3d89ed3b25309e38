#include "QuillboxPreferences/controls/Swatch.h"

#include <QGridLayout>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <variant>

#include "Quillbox/activation/Settings.h"
#include "QuillboxPreferences/Theme.h"

namespace qb {

namespace {

constexpr int swatchesInRow = 10;

bool areAlike(double a, double b) { return std::abs(a - b) < 0.002; }

bool areAlike(const Color& a, const Color& b) {
  return areAlike(a.red(), b.red()) && areAlike(a.green(), b.green()) &&
         areAlike(a.blue(), b.blue()) && areAlike(a.alpha(), b.alpha());
}

}  // namespace

QColor toQColor(const Color& color) {
  // A file may hold anything.
  const auto part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
  return QColor::fromRgbF(part(color.red()), part(color.green()), part(color.blue()),
                          part(color.alpha()));
}

Swatch::Swatch(QColor color, QWidget* parent) : QAbstractButton(parent), color_(color) {
  setCheckable(true);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setFixedSize(sizeHint());
}

void Swatch::setColor(QColor color) {
  color_ = color;
  update();
}

void Swatch::paintEvent(QPaintEvent* /*event*/) {
  const Theme& theme = Theme::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF circle = QRectF(rect()).adjusted(5, 5, -5, -5);
  QPainterPath outline;
  outline.addEllipse(circle);
  painter.save();
  painter.setClipPath(outline);
  painter.fillRect(rect(), QColor(0xfafafa));
  for (int y = 0; y < height(); y += 6) {
    for (int x = (y / 6 % 2) * 6; x < width(); x += 12) {
      painter.fillRect(x, y, 6, 6, QColor(0xcfd3da));
    }
  }
  painter.fillRect(rect(), color_);
  // One half shows the hue itself, the other one how much shines through.
  painter.fillRect(0, 0, width() / 2, height(), color_.alpha() == 0 ? color_ : color_.rgb());
  painter.restore();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(theme.border, 1));
  painter.drawEllipse(circle);
  if (isChecked() || hasFocus()) {
    painter.setPen(QPen(theme.accent, isChecked() ? 2.5 : 1.5));
    painter.drawEllipse(QRectF(rect()).adjusted(2, 2, -2, -2));
  }
}

SwatchGrid::SwatchGrid(const std::function<void(const Color&)>& chosen) {
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(8);
  int index = 0;
  for (const auto& entry : Settings::appearanceColors()) {
    const Color color = std::get<Color>(entry.at(kColorKey));
    const auto name = QString::fromStdString(std::get<std::string>(entry.at(kColorNameKey)));
    auto* const swatch = new Swatch(toQColor(color));
    swatch->setToolTip(name);
    swatch->setAccessibleName(name);
    connect(swatch, &QAbstractButton::clicked, this, [this, color, chosen] {
      show(color);
      chosen(color);
    });
    grid->addWidget(swatch, index / swatchesInRow, index % swatchesInRow, Qt::AlignCenter);
    offers_.push_back({color, swatch});
    ++index;
  }
}

void SwatchGrid::show(const Color& color) {
  bool found = false;
  for (const Offer& offer : offers_) {
    const bool is = !found && areAlike(offer.color, color);
    found = found || is;
    offer.swatch->setChecked(is);
  }
}

}  // namespace qb
