#pragma once

#include <cstdint>

namespace qb {

/// What is being dragged over the panel. Main thread.
class DragOperation {
 public:
  virtual ~DragOperation() = default;
  /// Bits of what it carries.
  virtual std::uint32_t dragTypes() const = 0;
};

/// What may become of a drag: anything.
inline constexpr std::int32_t DragOperationEvery = -1;

}  // namespace qb
