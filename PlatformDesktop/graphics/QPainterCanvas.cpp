#include "PlatformDesktop/graphics/QPainterCanvas.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <cmath>

#include "PlatformDesktop/graphics/DesktopImage.h"
#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/graphics/ShadowPicture.h"

namespace qb {

namespace {

QPainterPath qtPath(const Path& path) {
  QPainterPath result;
  bool begun = false;
  for (const Path::Element& element : path.elements()) {
    const QPointF point(element.point.x, element.point.y);
    switch (element.kind) {
      case Path::Element::Kind::Move:
        result.moveTo(point);
        begun = true;
        break;
      case Path::Element::Kind::Line:
        result.lineTo(point);
        begun = true;
        break;
      case Path::Element::Kind::Arc: {
        if (element.radius <= 0) {
          // Qt leaves it out; it is still a corner.
          if (begun) {
            result.lineTo(point);
          } else {
            result.moveTo(point);
          }
          begun = true;
          break;
        }
        // Qt counts angles the other way round. An outline that begins with an arc begins on it.
        const QRectF circle(point.x() - element.radius, point.y() - element.radius,
                            2 * element.radius, 2 * element.radius);
        if (!begun) result.arcMoveTo(circle, -element.startAngle);
        result.arcTo(circle, -element.startAngle, -element.sweepAngle);
        begun = true;
        break;
      }
      case Path::Element::Kind::Close:
        result.closeSubpath();
        break;
    }
  }
  return result;
}

QPainter::CompositionMode compositionMode(CompositingOperation operation) {
  switch (operation) {
    case CompositingOperation::Copy:
      return QPainter::CompositionMode_Source;
    case CompositingOperation::SourceAtop:
      return QPainter::CompositionMode_SourceAtop;
    case CompositingOperation::DestinationOut:
      return QPainter::CompositionMode_DestinationOut;
    case CompositingOperation::DestinationOver:
      return QPainter::CompositionMode_DestinationOver;
    case CompositingOperation::SourceOver:
      break;
  }
  return QPainter::CompositionMode_SourceOver;
}

/// Whole device pixels around a rectangle, with the fringe that antialiasing may reach.
QRect pixelsAround(const QRectF& rect) { return rect.toAlignedRect(); }

Rect boundsOf(const QPainterPath& outline) {
  const QRectF bounds = outline.boundingRect();
  return Rect::make(bounds.x(), bounds.y(), bounds.width(), bounds.height());
}

}  // namespace

QPainterCanvas::QPainterCanvas(QImage& target, const QRegion& region, double scale,
                               TextCache& texts)
    : painter_(&target), scale_(scale), region_(region), texts_(texts) {
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter_.setPen(Qt::NoPen);
  painter_.setClipRegion(region);
  painter_.scale(scale, scale);
  state_.clip = region.boundingRect();
}

QRectF QPainterCanvas::deviceRect(const Rect& rect) const {
  return QRectF(devicePoint(rect.x(), rect.y()),
                QSizeF(rect.width() * state_.sx, rect.height() * state_.sy) * scale_)
      .normalized();
}

QPointF QPainterCanvas::devicePoint(double x, double y) const {
  return {(x * state_.sx + state_.dx) * scale_, (y * state_.sy + state_.dy) * scale_};
}

void QPainterCanvas::touch(const QRectF& rect) {
  const QRect pixels = pixelsAround(rect) & state_.clip;
  // Most of what is drawn lies on what has been drawn before.
  for (const QRect& known : touched_) {
    if (known.contains(pixels)) return;
  }
  touched_ += region_ & pixels;
}

void QPainterCanvas::save() {
  painter_.save();
  saved_.push_back(state_);
}

void QPainterCanvas::restore() {
  if (saved_.empty()) return;
  painter_.restore();
  state_ = saved_.back();
  saved_.pop_back();
}

void QPainterCanvas::translate(double dx, double dy) {
  painter_.translate(dx, dy);
  state_.dx += dx * state_.sx;
  state_.dy += dy * state_.sy;
}

void QPainterCanvas::scale(double sx, double sy) {
  painter_.scale(sx, sy);
  state_.sx *= sx;
  state_.sy *= sy;
}

void QPainterCanvas::clip(const Rect& rect) {
  painter_.setClipRect(qtRect(rect), Qt::IntersectClip);
  state_.clip &= pixelsAround(deviceRect(rect));
}

void QPainterCanvas::multiplyAlpha(double alpha) {
  state_.alpha *= alpha;
  painter_.setOpacity(state_.alpha);
}

void QPainterCanvas::setShadow(const Shadow& shadow) { state_.shadow = shadow; }

bool QPainterCanvas::needsDrawing(const Rect& rect) const {
  if (state_.alpha <= 0) return false;
  const QRect pixels = pixelsAround(deviceRect(rect)) & state_.clip;
  return region_.intersects(pixels);
}

void QPainterCanvas::fill(const Rect& rect, const Color& color) {
  if (color.alpha() <= 0 || rect.isEmpty()) return;
  touch(deviceRect(rect));
  painter_.fillRect(qtRect(rect), qtColor(color));
}

void QPainterCanvas::fillUsingOperation(const Rect& rect, const Color& color,
                                        CompositingOperation operation) {
  if (rect.isEmpty()) return;
  touch(deviceRect(rect));
  painter_.setCompositionMode(compositionMode(operation));
  painter_.fillRect(qtRect(rect), qtColor(color));
  painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QPainterCanvas::fill(const Path& path, const Color& color) {
  if (color.alpha() <= 0) return;
  const QPainterPath outline = qtPath(path);
  if (state_.shadow.color.alpha() > 0) drawShadow(outline, qtColor(color));
  touch(deviceRect(boundsOf(outline)));
  painter_.fillPath(outline, qtColor(color));
}

void QPainterCanvas::stroke(const Path& path, const Color& color, double lineWidth) {
  if (color.alpha() <= 0 || lineWidth <= 0) return;
  const QPainterPath outline = qtPath(path);
  touch(deviceRect(inset(boundsOf(outline), -lineWidth, -lineWidth)));
  painter_.strokePath(outline, QPen(qtColor(color), lineWidth));
}

void QPainterCanvas::drawPixels(const QImage& image, const QPoint& corner, double opacity) {
  touch(QRectF(QRect(corner, image.size())));
  const QTransform transform = painter_.worldTransform();
  painter_.setWorldTransform(QTransform());
  painter_.setOpacity(state_.alpha * opacity);
  painter_.drawImage(corner, image);
  painter_.setOpacity(state_.alpha);
  painter_.setWorldTransform(transform);
}

void QPainterCanvas::drawShadow(const QImage& image, const QPoint& corner, double opacity) {
  const ShadowPicture shadow(image, qtColor(state_.shadow.color),
                             state_.shadow.blurRadius * scale_);
  const QPointF offset = QPointF(state_.shadow.offset.x, state_.shadow.offset.y) * scale_;
  drawPixels(shadow.picture(), corner + shadow.corner() + offset.toPoint(), opacity);
}

void QPainterCanvas::drawShadow(const QPainterPath& outline, const QColor& color) {
  const QRect pixels = pixelsAround(deviceRect(boundsOf(outline)));
  if (pixels.isEmpty()) return;
  QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-pixels.topLeft());
  painter.setWorldTransform(painter_.worldTransform(), true);
  painter.fillPath(outline, color);
  painter.end();
  drawShadow(image, pixels.topLeft(), 1);
}

void QPainterCanvas::drawImage(const Image& image, const Rect& rect, CompositingOperation operation,
                               double fraction) {
  const auto source = std::dynamic_pointer_cast<const DesktopImage>(image.source());
  if (!source || rect.isEmpty()) return;
  const QRectF target = deviceRect(rect);
  const QPoint corner(static_cast<int>(std::lround(target.x())),
                      static_cast<int>(std::lround(target.y())));
  const QSize size(static_cast<int>(std::lround(target.width())),
                   static_cast<int>(std::lround(target.height())));
  QImage pixels = source->scaled(size.expandedTo({1, 1}));
  if (state_.sx < 0 || state_.sy < 0) pixels = pixels.mirrored(state_.sx < 0, state_.sy < 0);
  if (state_.shadow.color.alpha() > 0) drawShadow(pixels, corner, fraction);
  painter_.setCompositionMode(compositionMode(operation));
  drawPixels(pixels, corner, fraction);
  painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QPainterCanvas::drawText(std::string_view text, const Rect& rect, const Font& font,
                              const Color& color, TextAlignment alignment) {
  const double lineHeight = QFontMetricsF(qtFont(font)).height();
  double top = rect.y();
  for (const std::string_view line : linesOfText(text)) {
    if (!line.empty()) drawLine(line, top, rect, font, color, alignment);
    top += lineHeight;
  }
}

void QPainterCanvas::drawLine(std::string_view line, double top, const Rect& rect, const Font& font,
                              const Color& color, TextAlignment alignment) {
  double left = rect.x();
  if (alignment != TextAlignmentLeft) {
    const double room =
        rect.width() - QFontMetricsF(qtFont(font)).horizontalAdvance(qtString(line));
    left += alignment == TextAlignmentCenter ? room / 2 : room;
  }
  const TextCache::Line& picture = texts_.line(line, font, color, scale_);
  if (state_.sx != 1 || state_.sy != 1) {
    // Only in pictures: there a line may be stretched.
    const QRectF place(QPointF(left, top) + QPointF(picture.offset) / scale_,
                       QSizeF(picture.image.size()) / scale_);
    touch(deviceRect(Rect::make(place.x(), place.y(), place.width(), place.height())));
    painter_.drawImage(place, picture.image);
    return;
  }
  // On whole device pixels: labels stay crisp wherever a row stands.
  const QPoint corner = devicePoint(left, top).toPoint();
  drawPixels(picture.image, corner + picture.offset, 1);
}

}  // namespace qb
