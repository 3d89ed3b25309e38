#pragma once

#include <cstdint>

#include "QuillboxCommon/Geometry.h"

namespace qb {

/// The pointer as it stands. Main thread.
class Pointer {
 public:
  virtual ~Pointer() = default;
  /// Points from the lower left of the primary display.
  virtual Point mouseLocation() const = 0;
  /// Bit n is set while button n is down: 0 left, 1 right, 2 middle.
  virtual std::uint32_t pressedMouseButtons() const = 0;
};

}  // namespace qb
