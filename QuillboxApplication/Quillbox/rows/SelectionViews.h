#pragma once

#include <memory>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/EventCaptureView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

class Item;

/// What a row shows around its selected item: a halo, a label with the name, and over both a view
/// that takes the clicks. Main thread.
class SelectionViews {
 public:
  SelectionViews();

  /// Puts the views into a row, label at the back.
  void addToRow(View& row, EventCaptureViewDelegate& delegate);
  /// Brings to the front what must stay above the items.
  void bringToFront(View& row);
  /// Shows them at an item. The label stays inside the row. One that is wider than the
  /// row sticks out on the left.
  void showAtItem(const Item& item, Size haloSize, Size rowSize);
  void hide();
  /// Border and corners of the halo by its height.
  void setLookForHaloHeight(double height);

  RoundedRectangleView& halo() { return *halo_; }
  LabelView& label() { return *label_; }
  EventCaptureView& eventCaptureView() { return *eventCaptureView_; }

 private:
  void placeLabel(const Item& item, Size rowSize);

  std::shared_ptr<LabelView> label_;
  std::shared_ptr<RoundedRectangleView> halo_;
  std::shared_ptr<EventCaptureView> eventCaptureView_;
};

}  // namespace qb
