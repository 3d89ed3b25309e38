#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

/// What a platform's window tells the window it serves. Main thread.
class WindowPeerClient {
 public:
  virtual ~WindowPeerClient() = default;
  /// Draw what the window shows inside `dirty`, a rectangle with its origin at the top left. The
  /// canvas starts at the top left of the content.
  virtual void paint(Canvas& canvas, const Rect& dirty) = 0;
  /// A mouse, scroll or key event for this window; `event.location` is in window coordinates.
  virtual void deliver(const Event& event) = 0;
};

/// A window of the platform: a surface on the screen. Frames are in points, in the space of all
/// displays, with the origin at the lower left of the primary display and y growing upward.
/// Main thread.
class WindowPeer {
 public:
  virtual ~WindowPeer() = default;
  virtual void setFrame(const Rect& frame) = 0;
  virtual void setLevel(std::int64_t level) = 0;
  virtual void setCollectionBehavior(std::uint64_t behavior) = 0;
  virtual void setStyleMask(std::uint64_t mask) = 0;
  virtual void setHasShadow(bool hasShadow) = 0;
  virtual void setOpaque(bool opaque) = 0;
  virtual void setTitle(const std::string& title) = 0;
  virtual void setBackgroundColor(const Color& color) = 0;
  /// Blurs what shines through, where the desktop can; otherwise nothing.
  virtual void setBackgroundBlurRadius(std::int64_t radius) = 0;
  /// The opacity of the whole content. With 0 over a clear background nothing of the window is to
  /// be seen, and the peer may prepare its picture meanwhile.
  virtual void setContentAlphaValue(double alpha) = 0;
  virtual void orderFront() = 0;
  /// In front, and this process is the front one from now until `orderOut`.
  virtual void makeKeyAndOrderFront() = 0;
  virtual void orderOut() = 0;
  /// Asks for a `paint` of `rect` (origin at the top left of the content) in due time.
  virtual void setNeedsDisplay(const Rect& rect) = 0;
};

/// Makes platform windows.
class WindowPeerFactory {
 public:
  virtual ~WindowPeerFactory() = default;
  /// The client must outlive the peer, and may not be called before this returns.
  virtual std::unique_ptr<WindowPeer> createWindowPeer(WindowPeerClient& client) = 0;
};

/// A window: a content view, a place on the screen, a level. Window coordinates have their origin
/// at the lower left of the content. Main thread.
class Window : public WindowPeerClient {
 public:
  Window(WindowPeerFactory& factory, const Rect& frame);
  ~Window() override;

  const Rect& frame() const { return frame_; }
  void setFrame(const Rect& frame);
  /// Moves it to the middle of a screen's usable area, somewhat above half its height, where it is
  /// noticed.
  void center(const Rect& screen);
  /// Fills the window, follows its size, and is not flipped.
  const std::shared_ptr<View>& contentView() const { return contentView_; }

  std::int64_t level() const { return level_; }
  void setLevel(std::int64_t level);
  std::uint64_t collectionBehavior() const { return collectionBehavior_; }
  void setCollectionBehavior(std::uint64_t behavior);
  std::uint64_t styleMask() const { return styleMask_; }
  void setStyleMask(std::uint64_t mask);
  bool hasShadow() const { return hasShadow_; }
  void setHasShadow(bool hasShadow);
  bool isOpaque() const { return opaque_; }
  void setOpaque(bool opaque);
  const Color& backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const Color& color);
  std::int64_t backgroundBlurRadius() const { return backgroundBlurRadius_; }
  void setBackgroundBlurRadius(std::int64_t radius);
  void setTitle(const std::string& title);

  bool isVisible() const { return visible_; }
  /// At most one window is key. When it goes, the one that was key before is key again.
  bool isKeyWindow() const;
  virtual bool canBecomeKeyWindow() const { return (styleMask_ & 1) != 0; }
  virtual bool canBecomeMainWindow() const { return (styleMask_ & 1) != 0; }
  void orderFront();
  /// Shows it in front; it becomes key when it can.
  void makeKeyAndOrderFront();
  void orderOut();

  View* firstResponder() const { return firstResponder_.lock().get(); }
  /// Keys go to `view` from now on; null gives them back to the window. False when it declines.
  bool makeFirstResponder(View* view);

  /// Sees each event before the window's views; false keeps it from them. One for all windows; an
  /// empty one lets all pass.
  using EventFilter = std::function<bool(Window&, const Event&)>;
  static void setEventFilter(EventFilter filter);
  /// Filters an event, then gives it to the view it is for: a press and a scroll to the view under
  /// the pointer, drags and the release to the view that took the press (to none when there was no
  /// press or the view has left), keys to the first responder, or else to the content view. The
  /// filter and the views may do away with the window meanwhile.
  void sendEvent(const Event& event);

  void paint(Canvas& canvas, const Rect& dirty) override;
  void deliver(const Event& event) override { sendEvent(event); }

 private:
  friend class View;
  void contentAlphaChanged();
  void viewNeedsDisplay(const Rect& topLeftRect);
  void viewWillLeave(const View& view);
  void resignKey();
  std::shared_ptr<View> viewForEvent(const Event& event);
  void forgetPress(EventType type);
  std::shared_ptr<View> viewAt(Point location) const;

  Rect frame_;
  std::unique_ptr<WindowPeer> peer_;
  std::shared_ptr<View> contentView_;
  std::int64_t level_ = 0;
  std::uint64_t collectionBehavior_ = 0, styleMask_ = 1;
  bool hasShadow_ = true, opaque_ = true, visible_ = false;
  Color backgroundColor_ = Color::white();
  std::int64_t backgroundBlurRadius_ = 0;
  std::weak_ptr<View> firstResponder_, mouseDownView_, rightMouseDownView_;
  /// Expires with the window, so that a dispatch under way can tell.
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

/// A window without border or title that takes the keyboard all the same.
class BorderlessWindow : public Window {
 public:
  BorderlessWindow(WindowPeerFactory& factory, const Rect& frame) : Window(factory, frame) {
    setStyleMask(0);
  }
  bool canBecomeKeyWindow() const override { return true; }
  bool canBecomeMainWindow() const override { return true; }
};

}  // namespace qb
