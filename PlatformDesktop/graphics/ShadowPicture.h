#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>

namespace qb {

/// What a picture of device pixels casts on the ground beneath it.
class ShadowPicture {
 public:
  /// `blurRadius` is in device pixels; 0 casts a hard edge.
  ShadowPicture(const QImage& picture, const QColor& color, double blurRadius);

  /// Premultiplied, larger than what casts it by as much as its edge fades.
  const QImage& picture() const { return shadow_; }
  /// From the corner of what casts it, without any offset.
  QPoint corner() const { return corner_; }

 private:
  QImage shadow_;
  QPoint corner_;
};

}  // namespace qb
