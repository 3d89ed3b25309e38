#pragma once

#include <QImage>
#include <QObject>
#include <QSocketNotifier>
#include <map>
#include <memory>
#include <optional>

#include "Platform/WindowPictures.h"
#include "PlatformDesktop/processes/XConnection.h"

namespace qb {

/// Pictures of windows from the X server.
///
/// Under a compositing manager the server keeps the content of every window in a pixmap. A name
/// given to it keeps it, so that a window that is taken off the screen leaves its last picture
/// behind: from the first question on, each window's pixmap is named anew whenever it gets another
/// one. Without a compositing manager there is only what is to be seen: a picture is taken while
/// nothing covers the window, and the last one is kept. Windows are never redirected from here,
/// which would take the keyboard from them. Main thread.
class DesktopWindowPictures : public QObject, public WindowPictures {
 public:
  /// `scale` is the device pixels of a point.
  explicit DesktopWindowPictures(double scale) : scale_(scale) {}
  ~DesktopWindowPictures() override;

  Image imageOfWindow(WindowID window, Size largest) override;

 private:
  /// A window that lies on the root: a client's own, or the window manager's around it.
  struct Frame {
    xcb_pixmap_t pixmap = XCB_NONE;
    QSize size;
    /// The client's content as it was last seen on the screen, where there is no pixmap.
    QImage seen;
  };
  struct Geometry;

  bool begin();
  void takeEvents();
  void handle(const xcb_generic_event_t& event);
  /// Names the pixmap that the frame has now; the one it had before stays when there is none.
  bool namePixmap(xcb_window_t frame);
  void forget(xcb_window_t frame);
  /// Of a client; none when there is no such window.
  std::optional<Geometry> geometryOf(xcb_window_t client) const;
  bool isUncovered(const Geometry& geometry) const;
  QImage pixelsOf(xcb_drawable_t drawable, const QRect& area, std::uint8_t depth) const;
  Image imageOf(const QImage& pixels, Size largest) const;

  double scale_;
  std::unique_ptr<XConnection> x_;
  xcb_atom_t frameExtents_ = XCB_ATOM_NONE;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::map<xcb_window_t, Frame> frames_;
};

}  // namespace qb
