#pragma once

#include <functional>
#include <memory>
#include <string>

#include "QuillboxCommon/views/GridView.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Menu.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

class RoundedRectangleView;

/// What menus of several parts of the program have in common: an item that is one large picture,
/// and titles with a name in them. Main thread.
class MenuHelpers {
 public:
  /// The measurer must outlive it.
  explicit MenuHelpers(const TextMeasurer& measurer);

  /// The name stands out in bold.
  static AttributedString menuTitleWithBeginning(const std::string& beginning,
                                                 const std::string& applicationName,
                                                 const std::string& ending);

  /// An item that shows `image` in a tile, framed while the pointer is over it, with `label`
  /// (unless empty) in the frame. A click on the tile closes the menu and performs the action half
  /// a second later. Its represented object is the tile's `std::shared_ptr<GridView>`.
  std::shared_ptr<MenuItem> customMenuItemWithImage(const Image& image, const std::string& label,
                                                    MenuItem::Action action) const;

  /// What marks the picture under the pointer in a menu of pictures.
  static std::shared_ptr<RoundedRectangleView> createHighlightFrame(Size size);

 private:
  /// Performs the action of the item to which the clicked tile belongs.
  class TileDelegate : public GridViewDelegate {
   public:
    void itemWasSelected(GridViewItem& item, GridView& grid) override;
    void itemWillBeHighlighted(GridViewItem&, GridView&) override {}
  };

  std::shared_ptr<View> createHighlightView(Size tile, const std::string& label) const;

  const TextMeasurer& measurer_;
  std::shared_ptr<TileDelegate> tileDelegate_;
};

/// Where a menu of `menuHeight` that is wanted at `location` (in the coordinates of `view`) is to
/// open: there, or above the view where it would come too near to the top of the view's window.
/// Intended: the place in the window is the plain sum of all frame origins, whichever way y grows
/// in each view. Without a view, there.
Point adjustedMenuLocation(Point location, double menuHeight, const View* view);

}  // namespace qb
