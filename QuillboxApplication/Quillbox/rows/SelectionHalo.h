#pragma once

#include <memory>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

class Item;

/// The halo around a selected item, and the label with its name. Main thread.
class SelectionHalo {
 public:
  SelectionHalo();

  /// Adds them on top, the label at the back.
  void addToView(View& view);
  /// Shows them at an item. The label stays inside the row; one that is wider than the row sticks
  /// out on the left.
  void showAtItem(const Item& item, Size haloSize, Size rowSize);
  void hide();
  /// Border and corners of the halo by its height.
  void setLookForHaloHeight(double height);

  RoundedRectangleView& halo() const { return *halo_; }
  LabelView& label() const { return *label_; }

 private:
  void placeLabel(const Item& item, Size rowSize);

  std::shared_ptr<LabelView> label_;
  std::shared_ptr<RoundedRectangleView> halo_;
};

}  // namespace qb
