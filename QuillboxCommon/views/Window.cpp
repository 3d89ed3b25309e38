#include "QuillboxCommon/views/Window.h"

#include <cmath>
#include <utility>
#include <vector>

namespace qb {
namespace {

// Visible windows that were made key, the key window at the end.
std::vector<const Window*> keyWindows;

std::shared_ptr<const Window::EventFilter>& eventFilter() {
  static std::shared_ptr<const Window::EventFilter> filter;
  return filter;
}

// Stores a value and tells whether it is another.
template <class T>
bool replace(T& field, const T& value) {
  if (field == value) return false;
  field = value;
  return true;
}

}  // namespace

Window::Window(WindowPeerFactory& factory, const Rect& frame)
    : frame_(frame),
      peer_(factory.createWindowPeer(*this)),
      contentView_(std::make_shared<View>(Rect{{0, 0}, frame.size})) {
  contentView_->window_ = this;
  peer_->setFrame(frame_);
  peer_->setLevel(level_);
  peer_->setCollectionBehavior(collectionBehavior_);
  peer_->setStyleMask(styleMask_);
  peer_->setHasShadow(hasShadow_);
  peer_->setOpaque(opaque_);
  peer_->setBackgroundColor(backgroundColor_);
}

Window::~Window() {
  resignKey();
  contentView_->window_ = nullptr;
}

void Window::setFrame(const Rect& frame) {
  if (!replace(frame_, frame)) return;
  peer_->setFrame(frame_);
  contentView_->setFrame({{0, 0}, frame_.size});
}

void Window::setLevel(std::int64_t level) {
  if (replace(level_, level)) peer_->setLevel(level_);
}

void Window::setCollectionBehavior(std::uint64_t behavior) {
  if (replace(collectionBehavior_, behavior)) peer_->setCollectionBehavior(collectionBehavior_);
}

void Window::center(const Rect& screen) {
  const double freeWidth = screen.width() - frame_.width();
  const double freeHeight = screen.height() - frame_.height();
  setFrame({{screen.x() + std::round(freeWidth / 2), screen.y() + std::round(freeHeight * 2 / 3)},
            frame_.size});
}

void Window::setStyleMask(std::uint64_t mask) {
  if (replace(styleMask_, mask)) peer_->setStyleMask(styleMask_);
}

void Window::setHasShadow(bool hasShadow) {
  if (replace(hasShadow_, hasShadow)) peer_->setHasShadow(hasShadow_);
}

void Window::setOpaque(bool opaque) {
  if (replace(opaque_, opaque)) peer_->setOpaque(opaque_);
}

void Window::setBackgroundColor(const Color& color) {
  if (replace(backgroundColor_, color)) peer_->setBackgroundColor(backgroundColor_);
}

void Window::setBackgroundBlurRadius(std::int64_t radius) {
  if (replace(backgroundBlurRadius_, radius)) peer_->setBackgroundBlurRadius(backgroundBlurRadius_);
}

void Window::setTitle(const std::string& title) { peer_->setTitle(title); }

void Window::orderFront() {
  visible_ = true;
  peer_->orderFront();
}

void Window::makeKeyAndOrderFront() {
  if (!canBecomeKeyWindow()) {
    orderFront();
    return;
  }
  resignKey();
  keyWindows.push_back(this);
  visible_ = true;
  peer_->makeKeyAndOrderFront();
}

void Window::orderOut() {
  if (!visible_) return;
  visible_ = false;
  resignKey();
  mouseDownView_.reset();
  rightMouseDownView_.reset();
  peer_->orderOut();
}

bool Window::isKeyWindow() const { return !keyWindows.empty() && keyWindows.back() == this; }

void Window::resignKey() { std::erase(keyWindows, this); }

bool Window::makeFirstResponder(View* view) {
  if (view && (view->window() != this || !view->acceptsFirstResponder())) return false;
  firstResponder_ = view ? view->weak_from_this() : std::weak_ptr<View>();
  return true;
}

void Window::setEventFilter(EventFilter filter) {
  eventFilter() = filter ? std::make_shared<const EventFilter>(std::move(filter)) : nullptr;
}

void Window::sendEvent(const Event& event) {
  const std::weak_ptr<const bool> lifeSign = lifeSign_;
  bool passes = true;
  // Held: it may set another filter.
  if (const auto filter = eventFilter()) passes = (*filter)(*this, event);
  if (lifeSign.expired()) return;
  if (!passes) {
    forgetPress(event.type);
    return;
  }
  const std::shared_ptr<View> view = viewForEvent(event);
  if (!view) return;
  // From here on the window may be gone.
  switch (event.type) {
    case EventTypeLeftMouseDown:
      return view->mouseDown(event);
    case EventTypeLeftMouseUp:
      return view->mouseUp(event);
    case EventTypeLeftMouseDragged:
      return view->mouseDragged(event);
    case EventTypeRightMouseDown:
      return view->rightMouseDown(event);
    case EventTypeRightMouseUp:
      return view->rightMouseUp(event);
    case EventTypeScrollWheel:
      return view->scrollWheel(event);
    case EventTypeKeyDown:
      return view->keyDown(event);
    default:
      return;
  }
}

std::shared_ptr<View> Window::viewForEvent(const Event& event) {
  switch (event.type) {
    case EventTypeLeftMouseDown: {
      auto view = viewAt(event.location);
      mouseDownView_ = view;
      return view;
    }
    case EventTypeLeftMouseDragged:
      return mouseDownView_.lock();
    case EventTypeLeftMouseUp:
      return std::exchange(mouseDownView_, {}).lock();
    case EventTypeRightMouseDown: {
      auto view = viewAt(event.location);
      rightMouseDownView_ = view;
      return view;
    }
    case EventTypeRightMouseUp:
      return std::exchange(rightMouseDownView_, {}).lock();
    case EventTypeScrollWheel:
      return viewAt(event.location);
    case EventTypeKeyDown: {
      auto view = firstResponder_.lock();
      return view ? view : contentView_;
    }
    default:
      return nullptr;
  }
}

// A press or release that the filter kept: what belonged to the press before it is over too.
void Window::forgetPress(EventType type) {
  if (type == EventTypeLeftMouseDown || type == EventTypeLeftMouseUp) mouseDownView_.reset();
  if (type == EventTypeRightMouseDown || type == EventTypeRightMouseUp) rightMouseDownView_.reset();
}

std::shared_ptr<View> Window::viewAt(Point location) const {
  View* const view = contentView_->hitTest(location);
  return view ? view->shared_from_this() : nullptr;
}

void Window::paint(Canvas& canvas, const Rect& dirty) {
  canvas.save();
  canvas.clip(dirty);
  contentView_->display(canvas);
  canvas.restore();
}

void Window::contentAlphaChanged() { peer_->setContentAlphaValue(contentView_->alphaValue()); }

void Window::viewNeedsDisplay(const Rect& topLeftRect) {
  const Rect rect = intersection(topLeftRect, contentView_->bounds());
  if (!rect.isEmpty()) peer_->setNeedsDisplay(rect);
}

void Window::viewWillLeave(const View& view) {
  for (std::weak_ptr<View>* kept : {&firstResponder_, &mouseDownView_, &rightMouseDownView_}) {
    const auto held = kept->lock();
    if (held && held->isDescendantOf(view)) kept->reset();
  }
}

}  // namespace qb
