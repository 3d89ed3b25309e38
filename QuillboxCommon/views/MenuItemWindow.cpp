#include "QuillboxCommon/views/MenuItemWindow.h"

namespace qb {

MenuItemWindow::MenuItemWindow(WindowPeerFactory& factory, const std::shared_ptr<View>& view)
    : Window(factory, {{0, 0}, view->frame().size}), view_(view) {
  setStyleMask(0);
  setOpaque(false);
  setBackgroundColor(Color::clear());
  view_->setFrameOrigin({0, 0});
  contentView()->addSubview(view_);
  orderFront();
}

MenuItemWindow::~MenuItemWindow() {
  pointerLeft();
  // By now it may be in the window of its next showing.
  if (view_->superview() == contentView().get()) view_->removeFromSuperview();
}

void MenuItemWindow::deliver(const Event& event) {
  View* const hit = contains(contentView()->bounds(), event.location)
                        ? contentView()->hitTest(event.location)
                        : nullptr;
  const std::shared_ptr<View> view = hit ? hit->shared_from_this() : nullptr;
  follow(view);
  if (!view) return;
  // From here on the window may be gone.
  switch (event.type) {
    case EventTypeMouseMoved:
      return view->mouseMoved(event);
    case EventTypeLeftMouseDragged:
      view->mouseMoved(event);
      return view->mouseDragged(event);
    case EventTypeLeftMouseDown:
      return view->mouseDown(event);
    case EventTypeLeftMouseUp:
      return view->mouseUp(event);
    case EventTypeRightMouseDown:
      return view->rightMouseDown(event);
    case EventTypeRightMouseUp:
      return view->rightMouseUp(event);
    case EventTypeScrollWheel:
      return view->scrollWheel(event);
    default:
      return;
  }
}

void MenuItemWindow::pointerLeft() { follow(nullptr); }

void MenuItemWindow::follow(const std::shared_ptr<View>& view) {
  const std::shared_ptr<View> left = viewUnderPointer_.lock();
  if (left == view) return;
  viewUnderPointer_ = view;
  if (left) left->mouseExited();
}

}  // namespace qb
