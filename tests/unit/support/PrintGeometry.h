#pragma once

#include <ostream>

#include "QuillboxCommon/Geometry.h"

// So that a failed comparison shows numbers. In `qb`, where the test library looks for it.
namespace qb {

inline void PrintTo(const Point& point, std::ostream* out) {
  *out << "(" << point.x << ", " << point.y << ")";
}

inline void PrintTo(const Rect& rect, std::ostream* out) {
  *out << "[" << rect.x() << ", " << rect.y() << ", " << rect.width() << " x " << rect.height()
       << "]";
}

}  // namespace qb
