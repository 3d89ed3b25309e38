#pragma once

#include <xcb/xcb.h>

#include <QWindow>
#include <functional>

#include "PlatformDesktop/windows/PointerInput.h"

class QSinglePointEvent;

namespace qb {

/// A frameless window past the window manager: Qt brings its events, while its pixels
/// and its mapping are ours. Qt's own way to show a window costs several times as much.
class SurfaceWindow : public QWindow {
 public:
  using Receiver = std::function<void(const PixelEvent&)>;
  /// With `alpha`, of a depth of 32.
  SurfaceWindow(bool alpha, Receiver receiver);

  xcb_window_t id() const { return static_cast<xcb_window_t>(winId()); }
  /// Where the window stands on the X screen, for the places of events.
  void setPixelOrigin(int x, int y) {
    originX_ = x;
    originY_ = y;
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  PixelEvent pixelEvent(EventType type, const QSinglePointEvent& event) const;

  Receiver receiver_;
  int originX_ = 0, originY_ = 0;
};

/// The modifier bits of an event.
EventFlags eventFlags(Qt::KeyboardModifiers modifiers);

}  // namespace qb
