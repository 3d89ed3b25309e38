#pragma once

#include "Quillbox/Item/Item.h"

namespace qb {

/// The base of items that the user makes and that stand for no file. In its menu the decoration
/// comes last; subclasses put their entries around the list.
class CustomItem : public Item {
 public:
  MenuItems configureMenuItems() override;

 protected:
  using Item::Item;

  /// The action of an entry that only shows a state.
  void placeHolder(MenuItem& /*menuItem*/) {}
};

}  // namespace qb
