#include "QuillboxCommon/Geometry.h"

#include <algorithm>
#include <cmath>

namespace qb {

namespace {

Rect withEdges(double nearX, double nearY, double farX, double farY) {
  return Rect::make(nearX, nearY, farX - nearX, farY - nearY);
}

}  // namespace

bool intersects(const Rect& a, const Rect& b) {
  if (a.isEmpty() || b.isEmpty()) return false;
  return a.x() < b.maxX() && b.x() < a.maxX() && a.y() < b.maxY() && b.y() < a.maxY();
}

Rect intersection(const Rect& a, const Rect& b) {
  if (!intersects(a, b)) return {};
  return withEdges(std::max(a.x(), b.x()), std::max(a.y(), b.y()), std::min(a.maxX(), b.maxX()),
                   std::min(a.maxY(), b.maxY()));
}

Rect unionOf(const Rect& a, const Rect& b) {
  if (a.isEmpty()) return b.isEmpty() ? Rect{} : b;
  if (b.isEmpty()) return a;
  return withEdges(std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.maxX(), b.maxX()),
                   std::max(a.maxY(), b.maxY()));
}

Rect integral(const Rect& rect) {
  return withEdges(std::floor(rect.x()), std::floor(rect.y()), std::ceil(rect.maxX()),
                   std::ceil(rect.maxY()));
}

Rect centered(Size size, const Rect& around) {
  const Point center = around.center();
  return {{center.x - size.width / 2, center.y - size.height / 2}, size};
}

}  // namespace qb
