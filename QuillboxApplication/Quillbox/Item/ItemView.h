#pragma once

#include "QuillboxCommon/views/ImageView.h"

namespace qb {

class Item;

/// The picture of one item in its cell. The picture is always as large as the view.
class ItemView : public ImageView {
 public:
  explicit ItemView(const Rect& frame = {}) : ImageView(frame) {}

  /// The item that it shows, or null once that has gone.
  Item* item() const { return item_; }
  void setItem(Item* item) { item_ = item; }

  using ImageView::setFrame;
  void setFrame(const Rect& frame) override;

 private:
  Item* item_ = nullptr;
};

}  // namespace qb
