#pragma once

#include <vector>

#include "QuillboxCommon/Geometry.h"

namespace qb {

/// A rectangle of the X screen in pixels, origin at the top left.
struct PixelRect {
  int x = 0, y = 0, width = 0, height = 0;
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// Between the X screen's pixels and the points of the system's displays: points have their origin
/// at the lower left of the primary display, y grows upward, and one point is `scale` pixels of its
/// display. The places of displays are scaled by the primary's scale, so that displays of one scale
/// touch in points where they touch in pixels. Any thread; immutable.
class DisplayMap {
 public:
  struct Display {
    PixelRect pixels;
    double scale = 1;
    /// In points; set by the map.
    Rect frame;
  };

  DisplayMap() = default;
  /// The primary display comes first.
  explicit DisplayMap(std::vector<Display> displays);

  const std::vector<Display>& displays() const { return displays_; }
  /// The display with the greatest part of `frame`, or the primary one; null without displays.
  const Display* displayForFrame(const Rect& frame) const;
  /// The scale of `displayForFrame`.
  double scaleForFrame(const Rect& frame) const;
  PixelRect pixelsForFrame(const Rect& frame) const;
  /// The point that a place in pixels has; by the primary display's scale outside all displays.
  Point pointForPixel(double x, double y) const;
  /// The point from the top left of the primary display instead of its lower left, and back.
  Point flipped(Point point) const;

 private:
  std::vector<Display> displays_;
};

}  // namespace qb
