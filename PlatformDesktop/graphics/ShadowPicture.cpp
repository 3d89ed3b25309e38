#include "PlatformDesktop/graphics/ShadowPicture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace qb {

namespace {

/// That many means of neighbours one after the other look like the soft edge of a lens.
constexpr int passes = 3;

/// Replaces each of `count` bytes, `step` apart, by the mean of itself and `radius` neighbours on
/// both sides; beyond the ends everything is 0.
void blurLine(uchar* line, int count, qsizetype step, int radius, std::vector<uchar>& copy) {
  copy.resize(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) copy[static_cast<std::size_t>(i)] = line[i * step];
  const auto at = [&copy, count](int i) {
    return i < 0 || i >= count ? 0 : int{copy[static_cast<std::size_t>(i)]};
  };
  const int width = 2 * radius + 1;
  int sum = 0;
  for (int i = -radius; i < radius; ++i) sum += at(i);
  for (int i = 0; i < count; ++i) {
    sum += at(i + radius);
    line[i * step] = static_cast<uchar>((sum + width / 2) / width);
    sum -= at(i - radius);
  }
}

void blur(QImage& mask, int radius) {
  std::vector<uchar> copy;
  for (int pass = 0; pass < passes; ++pass) {
    for (int y = 0; y < mask.height(); ++y) {
      blurLine(mask.scanLine(y), mask.width(), 1, radius, copy);
    }
    for (int x = 0; x < mask.width(); ++x) {
      blurLine(mask.bits() + x, mask.height(), mask.bytesPerLine(), radius, copy);
    }
  }
}

}  // namespace

ShadowPicture::ShadowPicture(const QImage& picture, const QColor& color, double blurRadius) {
  // The radius is twice the standard deviation, and three boxes of half width r have a variance of
  // r (r + 1).
  const double deviation = std::max(0.0, blurRadius) / 2;
  const int radius =
      static_cast<int>(std::lround((std::sqrt(1 + 4 * deviation * deviation) - 1) / 2));
  const int margin = passes * radius;
  corner_ = {-margin, -margin};
  const QSize size = picture.size() + QSize(2 * margin, 2 * margin);
  shadow_ = QImage(size, QImage::Format_ARGB32_Premultiplied);
  shadow_.fill(Qt::transparent);
  QPainter painter(&shadow_);
  painter.drawImage(margin, margin, picture);
  painter.end();
  QImage mask = shadow_.convertToFormat(QImage::Format_Alpha8);
  if (radius > 0) blur(mask, radius);
  shadow_.fill(color);
  painter.begin(&shadow_);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.drawImage(0, 0, mask);
}

}  // namespace qb
