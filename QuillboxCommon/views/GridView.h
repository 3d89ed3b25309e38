#pragma once

#include <any>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuillboxCommon/views/Menu.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class GridView;

/// One cell of a grid: its view and what its maker ties to it.
struct GridViewItem {
  std::shared_ptr<View> view;
  std::any userInfo;
};

/// What wants to know of choices in a grid.
class GridViewDelegate {
 public:
  virtual ~GridViewDelegate() = default;
  /// The click fell on a cell.
  virtual void itemWasSelected(GridViewItem& item, GridView& grid) = 0;
  /// Comes before the highlight moves.
  virtual void itemWillBeHighlighted(GridViewItem& item, GridView& grid) = 0;
};

/// How a grid lays out its cells, from the top left, row by row.
struct GridViewGeometry {
  std::int64_t rowCount = 1, columnCount = 1;
  /// In points.
  std::int64_t leftMargin = 0, topMargin = 0;
  /// From the origin of a cell to that of the highlight view over it.
  Point highlightViewOffset;
};

/// A grid of small views of one size, one of which is highlighted while the pointer is over it.
/// Meant for menu items: it follows the pointer only where something tells it of moves. A choice
/// closes nothing by itself. Main thread.
class GridView : public View {
 public:
  explicit GridView(const Rect& frame = {}) : View(frame) {}
  bool isFlipped() const override { return true; }

  const GridViewGeometry& geometry() const { return geometry_; }
  /// Counts for the next `setContentItems`.
  void setGeometry(const GridViewGeometry& geometry) { geometry_ = geometry; }
  /// Lays out the items; those beyond the last row are left out. The distance from cell to cell is
  /// the same both ways: the one at which the columns fill the width between equal margins.
  void setContentItems(std::vector<std::shared_ptr<GridViewItem>> items,
                       std::shared_ptr<View> highlightView);
  const std::vector<std::shared_ptr<GridViewItem>>& items() const { return items_; }
  /// Those that have a cell.
  std::size_t numberOfCells() const { return numberOfCells_; }
  const std::shared_ptr<View>& highlightView() const { return highlightView_; }
  /// Null while the pointer is over no cell.
  const std::shared_ptr<GridViewItem>& highlightedItem() const { return highlightedItem_; }

  void setDelegate(const std::shared_ptr<GridViewDelegate>& delegate) { delegate_ = delegate; }
  /// Tells the grids of one delegate apart; none unless set.
  std::optional<std::int64_t> alernateTag() const { return alernateTag_; }
  void setAlernateTag(std::int64_t tag) { alernateTag_ = tag; }
  const std::any& userInfo() const { return userInfo_; }
  void setUserInfo(std::any info) { userInfo_ = std::move(info); }
  /// The menu item whose view this is, or null.
  std::shared_ptr<MenuItem> owningMenuItem() const { return owningMenuItem_.lock(); }
  void setOwningMenuItem(const std::shared_ptr<MenuItem>& item) { owningMenuItem_ = item; }

  /// Always the grid itself: the cells take no events.
  View* hitTest(Point point) override;
  void mouseMoved(const Event& event) override;
  void mouseExited() override;
  void mouseUp(const Event& event) override;

 private:
  void setHighlightedItem(const std::shared_ptr<GridViewItem>& item);

  GridViewGeometry geometry_;
  std::vector<std::shared_ptr<GridViewItem>> items_;
  std::size_t numberOfCells_ = 0;
  std::shared_ptr<View> highlightView_;
  std::shared_ptr<GridViewItem> highlightedItem_;
  std::weak_ptr<GridViewDelegate> delegate_;
  std::optional<std::int64_t> alernateTag_;
  std::any userInfo_;
  std::weak_ptr<MenuItem> owningMenuItem_;
};

}  // namespace qb
