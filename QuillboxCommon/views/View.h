#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/Canvas.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

class Window;
class ViewAnimator;

/// A rectangle of a window: it draws, it holds other views and it takes events.
///
/// A view's frame is in its superview's coordinates; its bounds begin at (0, 0). In a flipped view
/// y grows downward, otherwise upward. Whatever a view is, `draw` gets a canvas whose origin is the
/// view's top left corner with y growing downward.
///
/// Views are made with `std::make_shared`. A view owns its subviews; the way up is weak.
/// Main thread.
class View : public std::enable_shared_from_this<View> {
 public:
  explicit View(const Rect& frame = {});
  virtual ~View();
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  const Rect& frame() const { return frame_; }
  virtual void setFrame(const Rect& frame);
  void setFrameOrigin(Point origin) { setFrame({origin, frame_.size}); }
  void setFrameSize(Size size) { setFrame({frame_.origin, size}); }
  Rect bounds() const { return {{0, 0}, frame_.size}; }
  virtual bool isFlipped() const { return false; }

  double alphaValue() const { return alphaValue_; }
  /// Taken to the range from 0 to 1. The content view's alpha is applied by the window's peer, to
  /// the finished picture: it redraws nothing.
  void setAlphaValue(double alpha);
  bool isHidden() const { return hidden_; }
  void setHidden(bool hidden);
  /// Hidden itself or inside something hidden.
  bool isHiddenOrHasHiddenAncestor() const;

  /// Appends on top of the present subviews; a view that stands elsewhere leaves there first, and
  /// one that stands here already goes to the top. Null adds nothing.
  void addSubview(const std::shared_ptr<View>& view);
  enum class Ordering { Above, Below };
  /// Places `view` just above or below `sibling`; without a sibling among the subviews, above or
  /// below all.
  void addSubview(const std::shared_ptr<View>& view, Ordering ordering, const View* sibling);
  void removeFromSuperview();
  View* superview() const { return superview_; }
  /// From back to front.
  const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }
  Window* window() const;
  /// A view counts as its own descendant.
  bool isDescendantOf(const View& view) const;

  /// Conversions between this view's coordinates and another's of the same window; with null,
  /// the window's.
  Point convertPointFromView(Point point, const View* view) const;
  Point convertPointToView(Point point, const View* view) const;
  Rect convertRectToView(const Rect& rect, const View* view) const;

  /// The deepest visible view under a point of the superview's coordinates, or null. Views at
  /// alpha 0 count as visible: only hidden ones do not. What sticks out of a superview is not hit.
  virtual View* hitTest(Point point);

  /// Asks for a redraw of all of it, or of a rectangle of its coordinates. What nobody can see
  /// (hidden, at alpha 0, in no window) asks for nothing.
  void setNeedsDisplay();
  void setNeedsDisplay(const Rect& rect);
  /// Draws this view only, its subviews come after it. Whatever it changes of the canvas's state
  /// it restores. Nothing is clipped, but what is drawn must stay inside `drawnArea`.
  virtual void draw(Canvas& canvas);
  /// All that `draw` may touch, with the origin at the view's top left corner and y growing
  /// downward: the bounds, unless something sticks out. Empty for a view that draws nothing.
  virtual Rect drawnArea() const { return bounds(); }
  /// Draws the view and all below it. The canvas stands at this view's top left corner.
  void display(Canvas& canvas);

  /// A stand-in whose setters change the view over the current animation's duration.
  ViewAnimator animator();

  virtual bool acceptsFirstResponder() const { return false; }
  /// Events, given by the window to the view under the pointer (or, for keys and drags, to the
  /// one that has them). The base passes them to the superview.
  virtual void mouseDown(const Event& event);
  virtual void mouseUp(const Event& event);
  virtual void mouseDragged(const Event& event);
  virtual void rightMouseDown(const Event& event);
  virtual void rightMouseUp(const Event& event);
  virtual void scrollWheel(const Event& event);
  virtual void keyDown(const Event& event);
  /// The pointer moves over the view, or has left it. Only menus follow the pointer for the views
  /// in their items. The base passes moves to the superview and does nothing when it leaves.
  virtual void mouseMoved(const Event& event);
  virtual void mouseExited() {}

 private:
  friend class Window;
  Point pointToSuperview(Point point) const;
  Point pointFromSuperview(Point point) const;
  Point pointToRoot(Point point) const;
  Point pointFromRoot(Point point) const;
  const View& root() const;
  Rect topLeftFrameOf(const View& subview) const;
  Point topLeftInRoot() const;
  Window* showingWindow() const;
  void invalidateTree(Window& window) const;
  void invalidateTree(Window& window, Point topLeft, const Rect& alreadyAsked) const;
  bool treeNeedsDrawing(const Canvas& canvas, Point topLeft) const;
  void displayTree(Canvas& canvas);

  Rect frame_;
  double alphaValue_ = 1;
  bool hidden_ = false;
  View* superview_ = nullptr;
  Window* window_ = nullptr;  // set on the content view only
  std::vector<std::shared_ptr<View>> subviews_;
};

/// The typed pointer to `view`, which must be of that class.
template <class T>
std::shared_ptr<T> sharedFrom(T& view) {
  return std::static_pointer_cast<T>(view.shared_from_this());
}

}  // namespace qb
