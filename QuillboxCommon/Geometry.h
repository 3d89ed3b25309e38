#pragma once

namespace qb {

/// A location in points. Which way y grows belongs to the coordinate system it is used in.
struct Point {
  double x = 0;
  double y = 0;

  friend bool operator==(const Point&, const Point&) = default;
};

/// An extent in points.
struct Size {
  double width = 0;
  double height = 0;

  friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle in points: the corner nearest the origin of its coordinate system, and the extent.
struct Rect {
  Point origin;
  Size size;

  static constexpr Rect make(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
  }

  constexpr double x() const { return origin.x; }
  constexpr double y() const { return origin.y; }
  constexpr double width() const { return size.width; }
  constexpr double height() const { return size.height; }
  constexpr double maxX() const { return origin.x + size.width; }
  constexpr double maxY() const { return origin.y + size.height; }
  constexpr Point center() const { return {origin.x + size.width / 2, origin.y + size.height / 2}; }
  constexpr bool isEmpty() const { return !(size.width > 0 && size.height > 0); }

  friend bool operator==(const Rect&, const Rect&) = default;
};

constexpr Rect offset(const Rect& rect, double dx, double dy) {
  return {{rect.origin.x + dx, rect.origin.y + dy}, rect.size};
}

/// `rect` with each side moved inward by `dx` and `dy`; negative values grow it.
constexpr Rect inset(const Rect& rect, double dx, double dy) {
  return Rect::make(rect.x() + dx, rect.y() + dy, rect.width() - 2 * dx, rect.height() - 2 * dy);
}

/// The least and greatest edges belong differently: the near ones are inside, the far ones are not.
constexpr bool contains(const Rect& rect, Point point) {
  return point.x >= rect.x() && point.x < rect.maxX() && point.y >= rect.y() &&
         point.y < rect.maxY();
}

/// True when every point of `inner` lies in `outer`, shared edges included.
constexpr bool contains(const Rect& outer, const Rect& inner) {
  return inner.x() >= outer.x() && inner.y() >= outer.y() && inner.maxX() <= outer.maxX() &&
         inner.maxY() <= outer.maxY();
}

/// True when the two share an area: touching edges do not count, and an empty one shares none.
bool intersects(const Rect& a, const Rect& b);
/// The common part of two rectangles; the zero rectangle when there is none.
Rect intersection(const Rect& a, const Rect& b);
/// The smallest rectangle around both; an empty one adds nothing, and two of them make the zero
/// rectangle.
Rect unionOf(const Rect& a, const Rect& b);
/// The smallest rectangle with whole-number edges around `rect`: near edges go down, far ones up.
Rect integral(const Rect& rect);
/// A rectangle of `size` with the same centre as `around`.
Rect centered(Size size, const Rect& around);

}  // namespace qb
