#pragma once

#include <memory>

#include "QuillboxCommon/Geometry.h"

namespace qb {

class Item;
class Quillbox;
class View;

/// Where an item's pop-up view goes. All frames are in the host view's coordinates, but for
/// `itemFrame`, which is in those of the row.
struct PopUpViewPlaces {
  Size hostSize;
  Rect tabRowFrame;
  /// The item's view in its row.
  Rect itemFrame;
  /// The origin of the item's view in the host view.
  Point itemOrigin;
};

/// The frame for a pop-up of the wanted size, its margins in it: centred over the item, inside the
/// host view, and shrunk in proportion when it is taller than the region it goes to.
Rect popUpViewFrame(Size wanted, const PopUpViewPlaces& places);

/// The views that items show beside themselves in the panel, one at most for each. Main thread.
class PopUpViews {
 public:
  explicit PopUpViews(Quillbox& facade) : facade_(facade) {}

  /// How large an item may make its view; zero for an item that is in no row on show.
  Size maximumSizeForItem(const Item& item) const;
  /// Frames `view` and shows it beside the item in place of the one it has. Nothing happens for an
  /// absent or empty view.
  void present(const std::shared_ptr<View>& view, Item& item);
  void dismissForItem(Item& item);
  void dismissForAllItems();

 private:
  Quillbox& facade_;
};

}  // namespace qb
