#include "PlatformDesktop/graphics/WindowIcon.h"

#include <xcb/xcb_icccm.h>

#include <cstring>

#include "PlatformDesktop/processes/XConnection.h"

namespace qb {

namespace {

/// Four million pixels; icons of more are nobody's honest intention.
constexpr std::uint32_t maximumWords = 1 << 22;
constexpr std::uint32_t largestEdge = 2048;

/// The property holds pictures one after the other: width, height, pixels.
QImage bestPicture(const std::vector<std::uint32_t>& words, int pixels) {
  std::size_t best = 0;
  int bestEdge = 0;
  for (std::size_t at = 0; at + 2 < words.size();) {
    const std::uint32_t width = words[at], height = words[at + 1];
    if (width == 0 || height == 0 || width > largestEdge || height > largestEdge) break;
    const std::size_t count = std::size_t{width} * height;
    if (count > words.size() - at - 2) break;
    const int edge = static_cast<int>(std::max(width, height));
    const bool better = bestEdge < pixels ? edge > bestEdge : edge >= pixels && edge < bestEdge;
    if (better) {
      best = at;
      bestEdge = edge;
    }
    at += count + 2;
  }
  if (bestEdge == 0) return {};
  const auto width = static_cast<int>(words[best]), height = static_cast<int>(words[best + 1]);
  return QImage(reinterpret_cast<const uchar*>(words.data() + best + 2), width, height,
                QImage::Format_ARGB32)
      .copy();
}

XReply<xcb_get_image_reply_t> pixelsOf(const XConnection& x, xcb_pixmap_t pixmap, QSize& size,
                                       std::uint8_t& depth) {
  const XReply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(x.get(), xcb_get_geometry(x.get(), pixmap), nullptr));
  if (!geometry || geometry->width > largestEdge || geometry->height > largestEdge) return nullptr;
  size = {geometry->width, geometry->height};
  depth = geometry->depth;
  return XReply<xcb_get_image_reply_t>(xcb_get_image_reply(
      x.get(),
      xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0, geometry->width,
                    geometry->height, ~0U),
      nullptr));
}

/// Applies a mask of one bit a pixel.
void applyMask(const XConnection& x, xcb_pixmap_t mask, QImage& image) {
  QSize size;
  std::uint8_t depth = 0;
  const auto bits = pixelsOf(x, mask, size, depth);
  if (!bits || depth != 1 || size != image.size()) return;
  const bool lowFirst =
      xcb_get_setup(x.get())->bitmap_format_bit_order == XCB_IMAGE_ORDER_LSB_FIRST;
  const int padding = xcb_get_setup(x.get())->bitmap_format_scanline_pad;
  const int stride = (size.width() + padding - 1) / padding * padding / 8;
  if (xcb_get_image_data_length(bits.get()) < stride * size.height()) return;
  const std::uint8_t* const data = xcb_get_image_data(bits.get());
  for (int row = 0; row < size.height(); ++row) {
    auto* const line = reinterpret_cast<QRgb*>(image.scanLine(row));
    for (int column = 0; column < size.width(); ++column) {
      const int bit = lowFirst ? column % 8 : 7 - column % 8;
      if (!(data[row * stride + column / 8] >> bit & 1)) line[column] = 0;
    }
  }
}

/// The icon of old programs: a pixmap of the screen's depth and a mask.
QImage pixmapIcon(const XConnection& x, xcb_window_t window) {
  xcb_icccm_wm_hints_t hints{};
  if (!xcb_icccm_get_wm_hints_reply(x.get(), xcb_icccm_get_wm_hints(x.get(), window), &hints,
                                    nullptr) ||
      !(hints.flags & XCB_ICCCM_WM_HINT_ICON_PIXMAP)) {
    return {};
  }
  QSize size;
  std::uint8_t depth = 0;
  const auto pixels = pixelsOf(x, hints.icon_pixmap, size, depth);
  if (!pixels || (depth != 24 && depth != 32) ||
      xcb_get_image_data_length(pixels.get()) < size.width() * size.height() * 4) {
    return {};
  }
  QImage image = QImage(xcb_get_image_data(pixels.get()), size.width(), size.height(),
                        QImage::Format_RGB32)
                     .convertToFormat(QImage::Format_ARGB32);
  if (hints.flags & XCB_ICCCM_WM_HINT_ICON_MASK) applyMask(x, hints.icon_mask, image);
  return image;
}

}  // namespace

QImage iconOfWindow(xcb_window_t window, int pixels) {
  const XConnection x;
  if (!x.isUsable()) return {};
  const QImage image =
      bestPicture(x.numbers(window, x.atom("_NET_WM_ICON"), maximumWords), pixels);
  return image.isNull() ? pixmapIcon(x, window) : image;
}

}  // namespace qb
