#include "QuillboxCommon/views/View.h"

#include <algorithm>

#include "QuillboxCommon/views/AnimationDriver.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

View::View(const Rect& frame) : frame_(frame) {}

View::~View() {
  for (const auto& subview : subviews_) subview->superview_ = nullptr;
}

void View::setFrame(const Rect& frame) {
  AnimationDriver::noteSetting(*this, AnimationDriver::Property::Frame);
  if (frame == frame_) return;
  Window* const window = showingWindow();
  if (window) invalidateTree(*window);
  frame_ = frame;
  if (window) invalidateTree(*window);
}

void View::setAlphaValue(double alpha) {
  AnimationDriver::noteSetting(*this, AnimationDriver::Property::Alpha);
  alpha = std::clamp(alpha, 0.0, 1.0);
  if (alpha == alphaValue_) return;
  alphaValue_ = alpha;
  if (window_) {
    window_->contentAlphaChanged();
  } else if (!hidden_ && superview_) {
    if (Window* const window = superview_->showingWindow()) invalidateTree(*window);
  }
}

void View::setHidden(bool hidden) {
  if (hidden == hidden_) return;
  // Asked for while it can still be seen.
  Window* const before = showingWindow();
  hidden_ = hidden;
  if (Window* const window = before ? before : showingWindow()) invalidateTree(*window);
}

bool View::isHiddenOrHasHiddenAncestor() const {
  for (const View* view = this; view; view = view->superview_) {
    if (view->hidden_) return true;
  }
  return false;
}

void View::addSubview(const std::shared_ptr<View>& view) {
  addSubview(view, Ordering::Above, nullptr);
}

void View::addSubview(const std::shared_ptr<View>& view, Ordering ordering, const View* sibling) {
  if (!view || view.get() == sibling) return;
  // The argument may be a reference into the list that is about to change.
  const std::shared_ptr<View> added = view;
  const bool isNew = added->superview_ != this;
  if (isNew) added->removeFromSuperview();
  added->superview_ = this;
  if (isNew && !sibling && ordering == Ordering::Above) {
    // The common case, without a look at the others: there may be a thousand.
    subviews_.push_back(added);
    if (Window* const window = added->showingWindow()) added->invalidateTree(*window);
    return;
  }

  std::vector<std::shared_ptr<View>> others;
  others.reserve(subviews_.size());
  std::copy_if(subviews_.begin(), subviews_.end(), std::back_inserter(others),
               [&](const auto& one) { return one != added; });
  const auto found = std::find_if(others.begin(), others.end(),
                                  [&](const auto& one) { return one.get() == sibling; });
  std::size_t index = 0;
  if (found != others.end()) {
    index = static_cast<std::size_t>(found - others.begin());
    if (ordering == Ordering::Above) ++index;
  } else if (ordering == Ordering::Above) {
    index = others.size();
  }
  others.insert(others.begin() + static_cast<std::ptrdiff_t>(index), added);
  if (others == subviews_) return;
  subviews_ = std::move(others);
  if (Window* const window = added->showingWindow()) added->invalidateTree(*window);
}

void View::removeFromSuperview() {
  if (!superview_) return;
  if (Window* const window = showingWindow()) invalidateTree(*window);
  if (Window* const window = this->window()) window->viewWillLeave(*this);
  auto& siblings = superview_->subviews_;
  superview_ = nullptr;
  const auto self = std::find_if(siblings.begin(), siblings.end(),
                                 [this](const auto& one) { return one.get() == this; });
  // The list may have held the last reference: it goes as this function's last act.
  const std::shared_ptr<View> keep = std::move(*self);
  siblings.erase(self);
}

Window* View::window() const { return root().window_; }

bool View::isDescendantOf(const View& view) const {
  for (const View* one = this; one; one = one->superview_) {
    if (one == &view) return true;
  }
  return false;
}

View* View::hitTest(Point point) {
  if (hidden_ || !contains(frame_, point)) return nullptr;
  const Point inside = pointFromSuperview(point);
  for (auto one = subviews_.rbegin(); one != subviews_.rend(); ++one) {
    if (View* const hit = (*one)->hitTest(inside)) return hit;
  }
  return this;
}

namespace {

// The superview may leave, and be gone, while it handles the event.
void passUp(View* superview, void (View::*handler)(const Event&), const Event& event) {
  if (!superview) return;
  const std::shared_ptr<View> keep = superview->weak_from_this().lock();
  (superview->*handler)(event);
}

}  // namespace

void View::mouseDown(const Event& event) { passUp(superview_, &View::mouseDown, event); }
void View::mouseUp(const Event& event) { passUp(superview_, &View::mouseUp, event); }
void View::mouseDragged(const Event& event) { passUp(superview_, &View::mouseDragged, event); }
void View::rightMouseDown(const Event& event) { passUp(superview_, &View::rightMouseDown, event); }
void View::rightMouseUp(const Event& event) { passUp(superview_, &View::rightMouseUp, event); }
void View::scrollWheel(const Event& event) { passUp(superview_, &View::scrollWheel, event); }
void View::keyDown(const Event& event) { passUp(superview_, &View::keyDown, event); }
void View::mouseMoved(const Event& event) { passUp(superview_, &View::mouseMoved, event); }

}  // namespace qb
