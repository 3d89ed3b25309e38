#pragma once

#include <memory>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

class Item;

/// What one drag carries out of a row.
struct DraggingItem {
  /// Says in which types it can be had, and gives them.
  std::shared_ptr<Item> pasteboardWriter;
  /// Where the picture under the pointer sets out from, in the row's coordinates.
  Rect draggingFrame;
  Image contents;
};

}  // namespace qb
