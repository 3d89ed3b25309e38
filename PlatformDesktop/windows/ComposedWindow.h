#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <QColor>
#include <QRegion>
#include <cstdint>
#include <memory>
#include <optional>

#include "PlatformDesktop/windows/SharedPicture.h"

namespace qb {

/// What windows of one X screen need to know of it.
struct ScreenFormats {
  xcb_connection_t* connection = nullptr;
  xcb_window_t root = 0;
  std::uint8_t rootDepth = 0;
  xcb_render_pictformat_t rootFormat = 0;
  /// 32 bits with alpha.
  xcb_render_pictformat_t argbFormat = 0;

  /// None where the server has no RENDER extension or no picture with alpha.
  static std::optional<ScreenFormats> query(xcb_connection_t* connection, int screen);
};

/// The pixels of a translucent window, put together on the X server.
///
/// Three pixmaps: what is painted (`content`), the desktop beneath it, and the two laid over each
/// other (`result`), which is the window's background, so that the server itself shows it the
/// moment the window is mapped and whenever something uncovers it. Without a compositor the window
/// is shaped to where something is painted: around it the desktop simply stays in sight, and only
/// the desktop beneath is copied, on the server. With one, clicks go through the rest of it alike.
/// Nothing here waits for the server.
class ComposedWindow {
 public:
  /// Whether a compositor blends the window with the desktop. It decides the window's depth.
  enum class Blending { ByCompositor, Here };

  /// `window` has a depth of 32 for a compositor, otherwise the root's: the X server itself
  /// redirects a window with alpha into a pixmap of its own and fills that at each showing, which
  /// costs 10 ms at 4K. It outlives this object.
  ComposedWindow(const ScreenFormats& formats, xcb_window_t window, const QSize& size,
                 Blending blending);
  ~ComposedWindow();
  ComposedWindow(const ComposedWindow&) = delete;
  ComposedWindow& operator=(const ComposedWindow&) = delete;

  /// What lies under the content and how strong the content is.
  struct Look {
    QColor background = Qt::transparent;
    double contentAlpha = 1;
    friend bool operator==(const Look&, const Look&) = default;
  };

  SharedPicture& content() { return *picture_; }
  /// The content of `painted` has changed; in all, something is painted in `touched`.
  void contentChanged(const QRegion& painted, const QRegion& touched);
  void setLook(const Look& look);
  /// Puts it on the screen, its place at (x, y) of the root; later calls bring it up to date.
  void show(int x, int y);
  void hide();
  bool isShown() const { return shown_; }

 private:
  xcb_render_picture_t createPicture(xcb_drawable_t drawable, xcb_render_pictformat_t format);
  void captureDesktop(const QRegion& region);
  void compose(const QRegion& region);
  void composeRect(const QRect& rect);
  void setShape(const QRegion& region);
  std::uint8_t shapeKind() const;
  QRegion visibleRegion() const;
  void copyToWindow(const QRegion& region);

  ScreenFormats formats_;
  xcb_window_t window_;
  QSize size_;
  Blending blending_;
  xcb_pixmap_t contentPixmap_, desktopPixmap_, resultPixmap_;
  xcb_render_picture_t contentPicture_, desktopPicture_, resultPicture_;
  xcb_render_picture_t fadePicture_ = 0;
  xcb_gcontext_t rootGc_, resultGc_;
  std::unique_ptr<SharedPicture> picture_;
  Look look_;
  QRegion touched_;
  /// What `result` does not show as it should yet.
  QRegion stale_;
  QRegion shape_;
  bool shown_ = false;
  int x_ = 0, y_ = 0;
};

}  // namespace qb
