#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <algorithm>
#include <string_view>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"

namespace qb {

/// Components outside 0 to 1 count as the nearer end.
inline QColor qtColor(const Color& color) {
  const auto component = [](double value) {
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
  };
  return QColor::fromRgbF(component(color.red()), component(color.green()), component(color.blue()),
                          component(color.alpha()));
}

inline QRectF qtRect(const Rect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

inline Rect rectOf(const QRect& rect) {
  return Rect::make(rect.x(), rect.y(), rect.width(), rect.height());
}

inline QString qtString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace qb
