#pragma once

#include <QPainter>
#include <QRegion>
#include <vector>

#include "PlatformDesktop/graphics/TextCache.h"
#include "QuillboxCommon/views/Canvas.h"

namespace qb {

/// A canvas over a premultiplied picture of device pixels. Never touches the disk.
class QPainterCanvas : public Canvas {
 public:
  /// Draws only inside `region` (device pixels), at `scale` device pixels a point. `target` and
  /// `texts` must outlive it.
  QPainterCanvas(QImage& target, const QRegion& region, double scale, TextCache& texts);

  /// Where something has been drawn, in device pixels: a few rectangles around it.
  const QRegion& touched() const { return touched_; }

  void save() override;
  void restore() override;
  void translate(double dx, double dy) override;
  void scale(double sx, double sy) override;
  void clip(const Rect& rect) override;
  void multiplyAlpha(double alpha) override;
  void setShadow(const Shadow& shadow) override;
  bool needsDrawing(const Rect& rect) const override;
  void fill(const Rect& rect, const Color& color) override;
  void fillUsingOperation(const Rect& rect, const Color& color,
                          CompositingOperation operation) override;
  void fill(const Path& path, const Color& color) override;
  void stroke(const Path& path, const Color& color, double lineWidth) override;
  void drawImage(const Image& image, const Rect& rect, CompositingOperation operation,
                 double fraction) override;
  void drawText(std::string_view text, const Rect& rect, const Font& font, const Color& color,
                TextAlignment alignment) override;

 private:
  struct State {
    double dx = 0, dy = 0, alpha = 1;
    double sx = 1, sy = 1;
    /// In device pixels.
    QRect clip;
    Shadow shadow;
  };

  QPointF devicePoint(double x, double y) const;
  QRectF deviceRect(const Rect& rect) const;
  void touch(const QRectF& deviceRect);
  /// Draws a picture of device pixels with its corner at a device pixel.
  void drawPixels(const QImage& image, const QPoint& corner, double opacity);
  /// Draws the shadow that such a picture casts.
  void drawShadow(const QImage& image, const QPoint& corner, double opacity);
  void drawShadow(const QPainterPath& outline, const QColor& color);
  void drawLine(std::string_view line, double top, const Rect& rect, const Font& font,
                const Color& color, TextAlignment alignment);

  QPainter painter_;
  double scale_;
  QRegion region_, touched_;
  TextCache& texts_;
  State state_;
  std::vector<State> saved_;
};

}  // namespace qb
