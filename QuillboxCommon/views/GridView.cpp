#include "QuillboxCommon/views/GridView.h"

#include <algorithm>

namespace qb {

void GridView::setContentItems(std::vector<std::shared_ptr<GridViewItem>> items,
                               std::shared_ptr<View> highlightView) {
  while (!subviews().empty()) subviews().back()->removeFromSuperview();
  items_ = std::move(items);
  highlightView_ = std::move(highlightView);
  highlightedItem_.reset();
  numberOfCells_ = 0;
  if (highlightView_) {
    highlightView_->setHidden(true);
    // Beneath the cells, so that it frames them and dims none.
    addSubview(highlightView_);
  }
  const double columns = static_cast<double>(geometry_.columnCount);
  const double left = static_cast<double>(geometry_.leftMargin);
  const double top = static_cast<double>(geometry_.topMargin);
  for (std::int64_t row = 0; row < geometry_.rowCount; ++row) {
    for (std::int64_t column = 0; column < geometry_.columnCount; ++column) {
      const auto index = static_cast<std::size_t>(column + row * geometry_.columnCount);
      if (index >= items_.size()) return;
      const auto& view = items_[index]->view;
      const double room = frame().width() - 2 * left - view->frame().width();
      const double step = columns > 1 ? room / (columns - 1) : 0;
      const double rowStep = columns > 1 ? step : view->frame().height() + top;
      view->setFrameOrigin(
          {left + step * static_cast<double>(column), top + rowStep * static_cast<double>(row)});
      addSubview(view);
      ++numberOfCells_;
    }
  }
}

View* GridView::hitTest(Point) { return this; }

void GridView::mouseMoved(const Event& event) {
  const Point point = convertPointFromView(event.location, nullptr);
  const auto end = items_.begin() + static_cast<std::ptrdiff_t>(numberOfCells_);
  const auto found = std::find_if(items_.begin(), end, [point](const auto& item) {
    return contains(item->view->frame(), point);
  });
  setHighlightedItem(found == end ? nullptr : *found);
}

void GridView::mouseExited() { setHighlightedItem(nullptr); }

void GridView::mouseUp(const Event&) {
  const auto self = shared_from_this();
  const auto item = highlightedItem_;
  const auto delegate = delegate_.lock();
  if (item && delegate) delegate->itemWasSelected(*item, *this);
}

void GridView::setHighlightedItem(const std::shared_ptr<GridViewItem>& item) {
  if (item == highlightedItem_) return;
  const auto delegate = delegate_.lock();
  if (item && delegate) delegate->itemWillBeHighlighted(*item, *this);
  highlightedItem_ = item;
  if (!highlightView_) return;
  if (item) {
    const Point cell = item->view->frame().origin;
    highlightView_->setFrameOrigin(
        {cell.x + geometry_.highlightViewOffset.x, cell.y + geometry_.highlightViewOffset.y});
  }
  highlightView_->setHidden(item == nullptr);
}

}  // namespace qb
