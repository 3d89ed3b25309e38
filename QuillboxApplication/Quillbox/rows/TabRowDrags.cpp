// What is dragged over a row.

#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

bool TabRow::receiveDragOperation(const DragOperation& drag,
                                  const std::vector<std::shared_ptr<DragItem>>& dragItems) {
  // With no gap opened for it, it goes before the last: what stands there may be a button.
  const std::int64_t dropIndex = numberOfItems() - 1;
  if (!source().canReceiveDragOperation(drag, drag.dragTypes())) return false;
  if (source().receiveDragOperation(drag, dragItems, dropIndex)) quillbox->dismissQuillbox();
  return false;
}

void TabRow::setupForDragOperation(const DragOperation& drag, std::uint32_t dragTypes) {
  setSelectedItem(nullptr, SelectionMethodProgram);
  rowButtons_.fadeOut(true);
  for (const auto& item : items_) item->setupForDragOperation(drag, dragTypes);
}

void TabRow::tearDownAfterDragOperation(const DragOperation& drag) {
  setHilited(false);
  for (const auto& item : items_) item->tearDownAfterDragOperation(drag);
}

void TabRow::dragItem(const std::shared_ptr<Item>& item) {
  draggingItem_ = true;
  source().itemDidBeginBeingDragged(*item);
}

}  // namespace qb
