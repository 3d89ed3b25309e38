#include "PlatformDesktop/windows/SharedPicture.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace qb {

namespace {

constexpr std::uint8_t depth = 32;

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

}  // namespace

SharedPicture::SharedPicture(xcb_connection_t* connection, xcb_pixmap_t pixmap, const QSize& size)
    : connection_(connection), pixmap_(pixmap), gc_(xcb_generate_id(connection)) {
  const std::uint32_t noExposures = 0;
  xcb_create_gc(connection_, gc_, pixmap_, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
  const qsizetype stride = static_cast<qsizetype>(size.width()) * 4;
  const int id =
      shmget(IPC_PRIVATE, static_cast<std::size_t>(stride) * size.height(), IPC_CREAT | 0600);
  if (id >= 0) {
    memory_ = shmat(id, nullptr, 0);
    if (memory_ == reinterpret_cast<void*>(-1)) memory_ = nullptr;
    if (memory_ != nullptr) {
      segment_ = xcb_generate_id(connection_);
      const std::unique_ptr<xcb_generic_error_t, Free> error(xcb_request_check(
          connection_, xcb_shm_attach_checked(connection_, segment_, id, /*read_only=*/1)));
      // A server on another machine, or one that may not look into our memory.
      if (error) segment_ = 0;
    }
    shmctl(id, IPC_RMID, nullptr);
  }
  if (segment_ != 0) {
    image_ = QImage(static_cast<uchar*>(memory_), size.width(), size.height(), stride,
                    QImage::Format_ARGB32_Premultiplied);
  } else {
    image_ = QImage(size, QImage::Format_ARGB32_Premultiplied);
    image_.fill(Qt::transparent);
  }
}

SharedPicture::~SharedPicture() {
  if (fence_ != 0) xcb_discard_reply(connection_, fence_);
  if (segment_ != 0) xcb_shm_detach(connection_, segment_);
  xcb_free_gc(connection_, gc_);
  image_ = {};
  if (memory_ != nullptr) shmdt(memory_);
}

QImage& SharedPicture::beginPainting() {
  if (fence_ != 0) {
    const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(
        xcb_get_input_focus_reply(connection_, {fence_}, nullptr));
    fence_ = 0;
  }
  return image_;
}

void SharedPicture::send(const QRegion& region) {
  for (const QRect& rect : region& image_.rect()) {
    if (segment_ == 0) {
      sendBytes(rect);
      continue;
    }
    xcb_shm_put_image(
        connection_, pixmap_, gc_, static_cast<std::uint16_t>(image_.width()),
        static_cast<std::uint16_t>(image_.height()), static_cast<std::uint16_t>(rect.x()),
        static_cast<std::uint16_t>(rect.y()), static_cast<std::uint16_t>(rect.width()),
        static_cast<std::uint16_t>(rect.height()), static_cast<std::int16_t>(rect.x()),
        static_cast<std::int16_t>(rect.y()), depth, XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
  }
  if (segment_ == 0) return;
  if (fence_ != 0) xcb_discard_reply(connection_, fence_);
  fence_ = xcb_get_input_focus(connection_).sequence;
}

void SharedPicture::sendBytes(const QRect& rect) {
  const std::size_t rowBytes = static_cast<std::size_t>(rect.width()) * 4;
  // A request's length is counted in units of four bytes; its head takes some.
  const std::size_t limit = xcb_get_maximum_request_length(connection_) * std::size_t{4} - 64;
  const int rowsAtOnce = std::max(1, static_cast<int>(limit / rowBytes));
  std::vector<std::uint8_t> bytes;
  for (int top = rect.top(); top <= rect.bottom(); top += rowsAtOnce) {
    const int rows = std::min(rowsAtOnce, rect.bottom() + 1 - top);
    bytes.resize(rowBytes * static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
      const uchar* const line =
          image_.constScanLine(top + row) + static_cast<std::size_t>(rect.x()) * 4;
      std::memcpy(bytes.data() + rowBytes * static_cast<std::size_t>(row), line, rowBytes);
    }
    xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap_, gc_,
                  static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rows),
                  static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(top), 0, depth,
                  static_cast<std::uint32_t>(bytes.size()), bytes.data());
  }
}

}  // namespace qb
