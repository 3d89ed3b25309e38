#include "PlatformDesktop/graphics/PixelImage.h"

#include <utility>

namespace qb {

namespace {

constexpr int smallestLevel = 16;

}  // namespace

PixelImage::PixelImage(QImage pixels, Size naturalSize) : DesktopImage(naturalSize) {
  QImage level = std::move(pixels).convertToFormat(QImage::Format_ARGB32_Premultiplied);
  level.setDevicePixelRatio(1);
  levels_.push_back(level);
  while (level.width() >= 2 * smallestLevel && level.height() >= 2 * smallestLevel) {
    level = level.scaled((level.size() + QSize(1, 1)) / 2, Qt::IgnoreAspectRatio,
                         Qt::SmoothTransformation);
    levels_.push_back(level);
  }
}

QImage PixelImage::render(const QSize& pixels) const {
  if (levels_.front().isNull()) return {};
  const QImage* nearest = &levels_.front();
  for (const QImage& level : levels_) {
    if (level.width() >= pixels.width() && level.height() >= pixels.height()) nearest = &level;
  }
  if (nearest->size() == pixels) return *nearest;
  return nearest->scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace qb
