#include "PlatformDesktop/graphics/WindowIcon.h"

#include <xcb/xcb_icccm.h>

#include <algorithm>

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

/// A pixmap of the server: one of colours as it is, of a bitmap the set bits black on white.
QImage pictureOfPixmap(const XConnection& x, xcb_pixmap_t pixmap) {
  const XReply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(x.get(), xcb_get_geometry(x.get(), pixmap), nullptr));
  if (!geometry || geometry->width > largestEdge || geometry->height > largestEdge) return {};
  const bool isBitmap = geometry->depth == 1;
  if (!isBitmap && geometry->depth != 24 && geometry->depth != 32) return {};
  const XReply<xcb_get_image_reply_t> pixels(
      xcb_get_image_reply(x.get(),
                          xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0,
                                        geometry->width, geometry->height, ~0U),
                          nullptr));
  if (!pixels) return {};
  const xcb_setup_t* const setup = xcb_get_setup(x.get());
  const int padding = isBitmap ? setup->bitmap_format_scanline_pad : 32;
  const int rowBits = geometry->width * (isBitmap ? 1 : 32);
  const int stride = (rowBits + padding - 1) / padding * padding / 8;
  if (xcb_get_image_data_length(pixels.get()) < stride * geometry->height) return {};
  const auto format = !isBitmap ? QImage::Format_RGB32
                      : setup->bitmap_format_bit_order == XCB_IMAGE_ORDER_LSB_FIRST
                          ? QImage::Format_MonoLSB
                          : QImage::Format_Mono;
  QImage image(xcb_get_image_data(pixels.get()), geometry->width, geometry->height, stride, format);
  if (isBitmap) image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
  return image.convertToFormat(QImage::Format_ARGB32);
}

/// The icon of old programs: a pixmap and a mask.
QImage pixmapIcon(const XConnection& x, xcb_window_t window) {
  xcb_icccm_wm_hints_t hints{};
  if (!xcb_icccm_get_wm_hints_reply(x.get(), xcb_icccm_get_wm_hints(x.get(), window), &hints,
                                    nullptr) ||
      !(hints.flags & XCB_ICCCM_WM_HINT_ICON_PIXMAP)) {
    return {};
  }
  QImage image = pictureOfPixmap(x, hints.icon_pixmap);
  if (!image.isNull() && hints.flags & XCB_ICCCM_WM_HINT_ICON_MASK) {
    const QImage mask = pictureOfPixmap(x, hints.icon_mask);
    if (mask.size() == image.size()) {
      for (int y = 0; y < image.height(); ++y) {
        for (int column = 0; column < image.width(); ++column) {
          if (mask.pixel(column, y) == qRgb(255, 255, 255)) image.setPixel(column, y, 0);
        }
      }
    }
  }
  return image;
}

}  // namespace

QImage iconOfWindow(xcb_window_t window, int pixels) {
  const XConnection x;
  if (!x.isUsable()) return {};
  const QImage image = bestPicture(x.numbers(window, x.atom("_NET_WM_ICON"), maximumWords), pixels);
  return image.isNull() ? pixmapIcon(x, window) : image;
}

}  // namespace qb
