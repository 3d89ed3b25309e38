#pragma once

#include <cstdint>
#include <memory>

#include "Quillbox/rows/DragOperation.h"

namespace qb {

class Quillbox;

/// Knows of the one drag over the panel, and prepares all rows for it. Main thread.
class DragOperations {
 public:
  explicit DragOperations(Quillbox& facade) : facade_(facade) {}

  /// A drag has come to the panel; one that is known already changes nothing. Answers what may
  /// become of it, a mask of bits.
  std::int32_t registerDragOperation(const std::shared_ptr<DragOperation>& drag);
  /// The drag is over. Harmless without one.
  void deregisterDragOperation();
  bool dragOperationIsInProgress() const { return currentDragOperation_ != nullptr; }
  /// Null without one.
  const std::shared_ptr<DragOperation>& currentDragOperation() const {
    return currentDragOperation_;
  }

 private:
  Quillbox& facade_;
  std::shared_ptr<DragOperation> currentDragOperation_;
};

}  // namespace qb
