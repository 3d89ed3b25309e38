#include "QuillboxCommon/views/MenuItemWindow.h"

#include <utility>

namespace qb {

class MenuItemWindow::Peer : public WindowPeer {
 public:
  explicit Peer(NeedsDisplay needsDisplay) : needsDisplay_(std::move(needsDisplay)) {}
  void setFrame(const Rect&) override {}
  void setLevel(std::int64_t) override {}
  void setCollectionBehavior(std::uint64_t) override {}
  void setStyleMask(std::uint64_t) override {}
  void setHasShadow(bool) override {}
  void setOpaque(bool) override {}
  void setTitle(const std::string&) override {}
  void setBackgroundColor(const Color&) override {}
  void setBackgroundBlurRadius(std::int64_t) override {}
  void setContentAlphaValue(double) override {}
  void orderFront() override {}
  void makeKeyAndOrderFront() override {}
  void orderOut() override {}
  void setNeedsDisplay(const Rect& rect) override {
    if (needsDisplay_) needsDisplay_(rect);
  }

 private:
  NeedsDisplay needsDisplay_;
};

class MenuItemWindow::PeerFactory : public WindowPeerFactory {
 public:
  explicit PeerFactory(NeedsDisplay needsDisplay) : needsDisplay_(std::move(needsDisplay)) {}
  std::unique_ptr<WindowPeer> createWindowPeer(WindowPeerClient&) override {
    return std::make_unique<Peer>(std::move(needsDisplay_));
  }

 private:
  NeedsDisplay needsDisplay_;
};

MenuItemWindow::MenuItemWindow(const std::shared_ptr<View>& view, NeedsDisplay needsDisplay)
    : MenuItemWindow(view, PeerFactory(std::move(needsDisplay))) {}

MenuItemWindow::MenuItemWindow(const std::shared_ptr<View>& view, PeerFactory&& factory)
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
