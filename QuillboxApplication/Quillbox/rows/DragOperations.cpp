#include "Quillbox/rows/DragOperations.h"

#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

std::int32_t DragOperations::registerDragOperation(const std::shared_ptr<DragOperation>& drag) {
  if (drag && drag != currentDragOperation_) {
    currentDragOperation_ = drag;
    for (const auto& row : facade_.tabRows()) row->setupForDragOperation(*drag, drag->dragTypes());
  }
  return DragOperationEvery;
}

void DragOperations::deregisterDragOperation() {
  const auto drag = currentDragOperation_;
  if (!drag) return;
  for (const auto& row : facade_.tabRows()) row->tearDownAfterDragOperation(*drag);
  currentDragOperation_.reset();
}

}  // namespace qb
