#pragma once

#include "QuillboxCommon/views/View.h"

namespace qb {

/// Holds what a menu item shows in place of its title, and leaves everything else to the menu: the
/// item is highlighted and chosen as if it had a title.
class MenuItemView : public View {
 public:
  explicit MenuItemView(const Rect& frame = {}) : View(frame) {}
};

}  // namespace qb
