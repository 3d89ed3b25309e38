#include "PlatformDesktop/graphics/DesktopImage.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "PlatformDesktop/graphics/QPainterCanvas.h"

namespace qb {

namespace {

constexpr std::size_t keptSizes = 3;
/// A file that states a giant size must not fill the memory.
constexpr int largestSvgEdge = 4096;

Size naturalSizeOfSvg(const QByteArray& svg) {
  const QSizeF size = sizeOfSvg(svg);
  return {size.width(), size.height()};
}

}  // namespace

QImage DesktopImage::scaled(const QSize& pixels) const {
  if (pixels.isEmpty()) return {};
  const std::lock_guard lock(mutex_);
  const auto known = std::find_if(drawn_.begin(), drawn_.end(),
                                  [&](const QImage& image) { return image.size() == pixels; });
  if (known != drawn_.end()) {
    std::rotate(drawn_.begin(), known, known + 1);
    return drawn_.front();
  }
  QImage result = render(pixels);
  drawn_.insert(drawn_.begin(), result);
  if (drawn_.size() > keptSizes) drawn_.pop_back();
  return result;
}

QSize DesktopImage::ownPixels() const {
  return {static_cast<int>(std::ceil(naturalSize_.width)),
          static_cast<int>(std::ceil(naturalSize_.height))};
}

SvgImage::SvgImage(const QByteArray& svg) : DesktopImage(naturalSizeOfSvg(svg)), svg_(svg) {}

QImage SvgImage::render(const QSize& pixels) const { return renderSvg(svg_, pixels); }

QImage DrawnImage::render(const QSize& pixels) const {
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  const double scaleX = pixels.width() / naturalSize().width;
  const double scaleY = pixels.height() / naturalSize().height;
  TextCache texts;
  QPainterCanvas canvas(image, image.rect(), scaleX, texts);
  // Whoever stretches the picture stretches all that is in it.
  if (scaleY != scaleX) canvas.scale(1, scaleY / scaleX);
  drawing_(canvas);
  return image;
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
