#include "PlatformDesktop/graphics/PixelImage.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <utility>

namespace qb {

namespace {

constexpr int smallestLevel = 16;
constexpr std::size_t keptSizes = 3;
/// A file that states a giant size must not fill the memory.
constexpr int largestSvgEdge = 4096;

}  // namespace

PixelImage::PixelImage(QImage pixels, Size naturalSize) : naturalSize_(naturalSize) {
  QImage level = std::move(pixels).convertToFormat(QImage::Format_ARGB32_Premultiplied);
  level.setDevicePixelRatio(1);
  levels_.push_back(level);
  while (level.width() >= 2 * smallestLevel && level.height() >= 2 * smallestLevel) {
    level = level.scaled((level.size() + QSize(1, 1)) / 2, Qt::IgnoreAspectRatio,
                         Qt::SmoothTransformation);
    levels_.push_back(level);
  }
}

QImage PixelImage::scaled(const QSize& pixels) const {
  if (pixels.isEmpty() || levels_.front().isNull()) return {};
  const std::lock_guard lock(mutex_);
  const auto known = std::find_if(drawn_.begin(), drawn_.end(),
                                  [&](const QImage& image) { return image.size() == pixels; });
  if (known != drawn_.end()) {
    std::rotate(drawn_.begin(), known, known + 1);
    return drawn_.front();
  }
  const QImage* nearest = &levels_.front();
  for (const QImage& level : levels_) {
    if (level.width() >= pixels.width() && level.height() >= pixels.height()) nearest = &level;
  }
  QImage result = nearest->size() == pixels
                      ? *nearest
                      : nearest->scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
  drawn_.insert(drawn_.begin(), result);
  if (drawn_.size() > keptSizes) drawn_.pop_back();
  return result;
}

QSize sizeOfSvg(const QByteArray& svg) {
  const QSvgRenderer renderer(svg);
  return renderer.isValid() ? renderer.defaultSize().boundedTo({largestSvgEdge, largestSvgEdge})
                            : QSize();
}

QImage renderSvg(const QByteArray& svg, const QSize& pixels) {
  QSvgRenderer renderer(svg);
  if (!renderer.isValid() || pixels.isEmpty()) return {};
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  renderer.render(&painter);
  return image;
}

}  // namespace qb
