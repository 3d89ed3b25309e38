#pragma once

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <QImage>
#include <QRegion>

namespace qb {

/// A picture that is painted here and sent to a pixmap of the X server, through shared memory where
/// the server can reach it. Pages that nobody paints take no memory. Main thread.
class SharedPicture {
 public:
  /// Transparent at first. `pixmap` has a depth of 32 and `size` pixels, and outlives it.
  SharedPicture(xcb_connection_t* connection, xcb_pixmap_t pixmap, const QSize& size);
  ~SharedPicture();
  SharedPicture(const SharedPicture&) = delete;
  SharedPicture& operator=(const SharedPicture&) = delete;

  /// To paint on; waits until the server has read what was sent before.
  QImage& beginPainting();
  void send(const QRegion& region);

 private:
  void sendBytes(const QRect& rect);

  xcb_connection_t* connection_;
  xcb_pixmap_t pixmap_;
  xcb_gcontext_t gc_;
  xcb_shm_seg_t segment_ = 0;
  void* memory_ = nullptr;
  QImage image_;
  /// Answered when the server is through with the last sending; 0 when nothing is under way.
  unsigned fence_ = 0;
};

}  // namespace qb
