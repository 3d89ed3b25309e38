#include "QuillboxCommon/views/Canvas.h"

#include <algorithm>

namespace qb {

Path Path::roundedRect(const Rect& rect, double radius) {
  Path path;
  if (rect.isEmpty()) return path;
  const double r = std::clamp(radius, 0.0, std::min(rect.width(), rect.height()) / 2);
  path.moveTo({rect.x(), rect.y() + r});
  path.arc({rect.x() + r, rect.y() + r}, r, 180, 90);
  path.arc({rect.maxX() - r, rect.y() + r}, r, 270, 90);
  path.arc({rect.maxX() - r, rect.maxY() - r}, r, 0, 90);
  path.arc({rect.x() + r, rect.maxY() - r}, r, 90, 90);
  path.close();
  return path;
}

}  // namespace qb
