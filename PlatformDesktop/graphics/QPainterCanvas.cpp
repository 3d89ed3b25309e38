#include "PlatformDesktop/graphics/QPainterCanvas.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <cmath>

#include "PlatformDesktop/graphics/PixelImage.h"
#include "PlatformDesktop/graphics/QtConversions.h"

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
    case CompositingOperation::SourceOver:
      break;
  }
  return QPainter::CompositionMode_SourceOver;
}

/// Whole device pixels around a rectangle, with the fringe that antialiasing may reach.
QRect pixelsAround(const QRectF& rect) { return rect.toAlignedRect(); }

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
  return {(rect.x() + state_.dx) * scale_, (rect.y() + state_.dy) * scale_, rect.width() * scale_,
          rect.height() * scale_};
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
  state_.dx += dx;
  state_.dy += dy;
}

void QPainterCanvas::clip(const Rect& rect) {
  painter_.setClipRect(qtRect(rect), Qt::IntersectClip);
  state_.clip &= pixelsAround(deviceRect(rect));
}

void QPainterCanvas::multiplyAlpha(double alpha) {
  state_.alpha *= alpha;
  painter_.setOpacity(state_.alpha);
}

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

void QPainterCanvas::fill(const Path& path, const Color& color) {
  if (color.alpha() <= 0) return;
  const QPainterPath outline = qtPath(path);
  touch(deviceRect(Rect::make(outline.boundingRect().x(), outline.boundingRect().y(),
                              outline.boundingRect().width(), outline.boundingRect().height())));
  painter_.fillPath(outline, qtColor(color));
}

void QPainterCanvas::stroke(const Path& path, const Color& color, double lineWidth) {
  if (color.alpha() <= 0 || lineWidth <= 0) return;
  const QPainterPath outline = qtPath(path);
  const QRectF bounds = outline.boundingRect();
  touch(deviceRect(inset(Rect::make(bounds.x(), bounds.y(), bounds.width(), bounds.height()),
                         -lineWidth, -lineWidth)));
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

void QPainterCanvas::drawImage(const Image& image, const Rect& rect, CompositingOperation operation,
                               double fraction) {
  const auto source = std::dynamic_pointer_cast<const PixelImage>(image.source());
  if (!source || rect.isEmpty()) return;
  const QRectF target = deviceRect(rect);
  const QPoint corner(static_cast<int>(std::lround(target.x())),
                      static_cast<int>(std::lround(target.y())));
  const QSize size(static_cast<int>(std::lround(target.width())),
                   static_cast<int>(std::lround(target.height())));
  painter_.setCompositionMode(compositionMode(operation));
  drawPixels(source->scaled(size.expandedTo({1, 1})), corner, fraction);
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
  // On whole device pixels: labels stay crisp wherever a row stands.
  const QPoint corner(static_cast<int>(std::lround((left + state_.dx) * scale_)),
                      static_cast<int>(std::lround((top + state_.dy) * scale_)));
  drawPixels(picture.image, corner + picture.offset, 1);
}

}  // namespace qb
