#pragma once

#include <QRegion>
#include <memory>

#include "PlatformDesktop/windows/ComposedWindow.h"
#include "PlatformDesktop/windows/SurfaceWindow.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

class DesktopWindowServer;

/// A window of the core on the screen.
///
/// It paints before the thread goes to sleep, once for all that was asked for, whether or not it
/// is in sight: an opening then paints only what has changed since. It is on the screen only while
/// there is something to be seen of it. Main thread.
class DesktopWindow : public WindowPeer {
 public:
  DesktopWindow(DesktopWindowServer& server, WindowPeerClient& client);
  ~DesktopWindow() override;

  void setFrame(const Rect& frame) override;
  void setLevel(std::int64_t level) override;
  void setCollectionBehavior(std::uint64_t) override {}
  void setStyleMask(std::uint64_t) override {}
  void setHasShadow(bool) override {}
  void setOpaque(bool) override {}
  void setTitle(const std::string& title) override;
  void setBackgroundColor(const Color& color) override;
  void setBackgroundBlurRadius(std::int64_t radius) override;
  void setContentAlphaValue(double alpha) override;
  void orderFront() override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  void setNeedsDisplay(const Rect& rect) override;

  /// The X window.
  xcb_window_t id() const { return window_->id(); }
  std::int64_t level() const { return level_; }
  bool isShown() const { return surface_ && surface_->isShown(); }
  /// Paints and shows what has been asked for.
  void update();
  /// To the top of all windows.
  void raise();
  /// The displays or the compositor have changed.
  void environmentChanged();
  /// Gives the client an event whose location is in the space of all displays. Presses and scrolls
  /// beside the window are dropped.
  void deliver(Event event);
  void deliverKey(const Event& event) { client_.deliver(event); }

 private:
  void createWindow();
  void applyBlur();
  void applyLook();
  void paint();

  DesktopWindowServer& server_;
  WindowPeerClient& client_;
  std::unique_ptr<SurfaceWindow> window_;
  bool composited_ = false;
  std::unique_ptr<ComposedWindow> surface_;
  Rect frame_;
  PixelRect pixels_;
  double scale_ = 1;
  std::int64_t level_ = 0;
  std::string title_;
  Color background_ = Color::clear();
  std::int64_t blurRadius_ = 0;
  double contentAlpha_ = 1;
  bool orderedIn_ = false;
  /// In device pixels: what to paint anew, and where something is painted.
  QRegion dirty_, touched_;
};

}  // namespace qb
