// How the coordinates of views relate.
#include <algorithm>

#include "QuillboxCommon/views/View.h"

namespace qb {

const View& View::root() const {
  const View* view = this;
  while (view->superview_) view = view->superview_;
  return *view;
}

Point View::pointToSuperview(Point point) const {
  const bool sameDirection = isFlipped() == superview_->isFlipped();
  return {frame_.x() + point.x, sameDirection ? frame_.y() + point.y : frame_.maxY() - point.y};
}

Point View::pointFromSuperview(Point point) const {
  const bool sameDirection = !superview_ || isFlipped() == superview_->isFlipped();
  return {point.x - frame_.x(), sameDirection ? point.y - frame_.y() : frame_.maxY() - point.y};
}

Point View::pointToRoot(Point point) const {
  return superview_ ? superview_->pointToRoot(pointToSuperview(point)) : point;
}

Point View::pointFromRoot(Point point) const {
  return superview_ ? pointFromSuperview(superview_->pointFromRoot(point)) : point;
}

Point View::convertPointToView(Point point, const View* view) const {
  const Point atRoot = pointToRoot(point);
  if (view) return view->pointFromRoot(atRoot);
  const View& top = root();
  return top.isFlipped() ? Point{atRoot.x, top.frame_.height() - atRoot.y} : atRoot;
}

Point View::convertPointFromView(Point point, const View* view) const {
  if (view) return view->convertPointToView(point, this);
  const View& top = root();
  return pointFromRoot(top.isFlipped() ? Point{point.x, top.frame_.height() - point.y} : point);
}

Rect View::convertRectToView(const Rect& rect, const View* view) const {
  const Point one = convertPointToView(rect.origin, view);
  const Point other = convertPointToView({rect.maxX(), rect.maxY()}, view);
  return {{one.x, std::min(one.y, other.y)}, rect.size};
}

Rect View::topLeftFrameOf(const View& subview) const {
  const Rect& frame = subview.frame_;
  if (isFlipped()) return frame;
  return {{frame.x(), frame_.height() - frame.maxY()}, frame.size};
}

Point View::topLeftInRoot() const {
  Point sum;
  for (const View* view = this; view->superview_; view = view->superview_) {
    const Point step = view->superview_->topLeftFrameOf(*view).origin;
    sum.x += step.x;
    sum.y += step.y;
  }
  return sum;
}

}  // namespace qb
