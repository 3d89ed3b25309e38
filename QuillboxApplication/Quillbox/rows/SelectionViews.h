#pragma once

#include <memory>

#include "Quillbox/rows/RowButton.h"
#include "Quillbox/rows/SelectionHalo.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/EventCaptureView.h"

namespace qb {

class Item;

/// What a row shows around its selected item: a halo, a label with the name, over both a view that
/// takes the clicks, and at the upper corners two small buttons. Main thread.
class SelectionViews {
 public:
  SelectionViews();

  /// Puts the views into a row, label at the back. The delegate outlives them.
  void addToRow(View& row, EventCaptureViewDelegate& delegate);
  /// Brings to the front what must stay above the items.
  void bringToFront(View& row);
  /// Shows them at an item, the buttons aside.
  void showAtItem(const Item& item, Size haloSize, Size rowSize);
  void hide();
  /// Fades in those of the buttons that apply to the item. Both are there from now on, also one
  /// that cannot be seen.
  void showButtons(const Item& item);
  /// The panel opens or closes: neither is there.
  void hideButtons();
  /// The panel has opened: both are there, at alpha 0.
  void makeButtonsReady();
  /// Whether a point of the row is on a button that is there.
  bool buttonsAreHitBy(Point point) const;
  /// Border and corners of the halo by its height.
  void setLookForHaloHeight(double height) { halo_.setLookForHaloHeight(height); }

  RoundedRectangleView& halo() { return halo_.halo(); }
  LabelView& label() { return halo_.label(); }
  EventCaptureView& eventCaptureView() { return *eventCaptureView_; }
  RowButton& removeButton() { return *removeButton_; }
  RowButton& configureButton() { return *configureButton_; }

 private:
  SelectionHalo halo_;
  std::shared_ptr<EventCaptureView> eventCaptureView_;
  std::shared_ptr<RowButton> removeButton_, configureButton_;
};

}  // namespace qb
