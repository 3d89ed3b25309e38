// How views get on the canvas, and ask to be drawn anew.
#include "QuillboxCommon/views/View.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

// The window that the view's pixels get to, or null when they are not to be seen. The content
// view's own alpha does not count: it is none of the picture's.
Window* View::showingWindow() const {
  for (const View* view = this; view; view = view->superview_) {
    if (view->hidden_) return nullptr;
    if (view->window_) return view->window_;
    if (view->alphaValue_ == 0) return nullptr;
  }
  return nullptr;
}

void View::invalidateTree(Window& window) const { invalidateTree(window, topLeftInRoot(), {}); }

// Subviews may stick out; those that do not are covered by what was asked for already.
void View::invalidateTree(Window& window, Point topLeft, const Rect& alreadyAsked) const {
  Rect asked = alreadyAsked;
  const Rect area = offset(drawnArea(), topLeft.x, topLeft.y);
  if (!area.isEmpty() && !contains(asked, area)) {
    window.viewNeedsDisplay(area);
    asked = area;
  }
  for (const auto& subview : subviews_) {
    if (subview->hidden_ || subview->alphaValue_ == 0) continue;
    const Point step = topLeftFrameOf(*subview).origin;
    subview->invalidateTree(window, {topLeft.x + step.x, topLeft.y + step.y}, asked);
  }
}

void View::setNeedsDisplay() {
  Window* const window = showingWindow();
  const Rect area = drawnArea();
  if (!window || area.isEmpty()) return;
  const Point topLeft = topLeftInRoot();
  window->viewNeedsDisplay(offset(area, topLeft.x, topLeft.y));
}

void View::setNeedsDisplay(const Rect& rect) {
  Window* const window = showingWindow();
  if (!window) return;
  Rect area = rect;
  if (!isFlipped()) area.origin.y = frame_.height() - rect.maxY();
  area = intersection(area, drawnArea());
  if (area.isEmpty()) return;
  const Point topLeft = topLeftInRoot();
  window->viewNeedsDisplay(offset(area, topLeft.x, topLeft.y));
}

void View::draw(Canvas&) {}

void View::display(Canvas& canvas) {
  const double alpha = window_ ? 1 : alphaValue_;
  if (hidden_ || alpha == 0) return;
  canvas.save();
  if (alpha != 1) canvas.multiplyAlpha(alpha);
  displayTree(canvas);
  canvas.restore();
}

bool View::treeNeedsDrawing(const Canvas& canvas, Point topLeft) const {
  const Rect area = offset(drawnArea(), topLeft.x, topLeft.y);
  if (!area.isEmpty() && canvas.needsDrawing(area)) return true;
  for (const auto& subview : subviews_) {
    if (subview->hidden_ || subview->alphaValue_ == 0) continue;
    const Point step = topLeftFrameOf(*subview).origin;
    if (subview->treeNeedsDrawing(canvas, {topLeft.x + step.x, topLeft.y + step.y})) return true;
  }
  return false;
}

void View::displayTree(Canvas& canvas) {
  const Rect area = drawnArea();
  if (!area.isEmpty() && canvas.needsDrawing(area)) draw(canvas);
  for (const auto& subview : subviews_) {
    if (subview->hidden_ || subview->alphaValue_ == 0) continue;
    const Point topLeft = topLeftFrameOf(*subview).origin;
    if (!subview->treeNeedsDrawing(canvas, topLeft)) continue;
    canvas.save();
    canvas.translate(topLeft.x, topLeft.y);
    if (subview->alphaValue_ != 1) canvas.multiplyAlpha(subview->alphaValue_);
    subview->displayTree(canvas);
    canvas.restore();
  }
}

}  // namespace qb
