#include "PlatformDesktop/windows/ComposedWindow.h"

#include <xcb/shape.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace qb {

namespace {

/// With more rectangles than this in a region, one around them all is cheaper.
constexpr int maximumRectangles = 24;

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

std::int16_t coordinate(int value) { return static_cast<std::int16_t>(value); }
std::uint16_t extent(int value) { return static_cast<std::uint16_t>(value); }

xcb_rectangle_t xcbRectangle(const QRect& rect) {
  return {coordinate(rect.x()), coordinate(rect.y()), extent(rect.width()), extent(rect.height())};
}

std::vector<xcb_rectangle_t> xcbRectangles(const QRegion& region) {
  std::vector<xcb_rectangle_t> rectangles;
  for (const QRect& rect : region) rectangles.push_back(xcbRectangle(rect));
  return rectangles;
}

QRegion simplified(const QRegion& region) {
  return region.rectCount() > maximumRectangles ? QRegion(region.boundingRect()) : region;
}

/// RENDER wants 16 bits a component, multiplied with the alpha.
xcb_render_color_t renderColor(const QColor& color) {
  const auto component = [&color](float value) {
    return static_cast<std::uint16_t>(std::lround(value * color.alphaF() * 65535));
  };
  return {component(color.redF()), component(color.greenF()), component(color.blueF()),
          component(1)};
}

}  // namespace

std::optional<ScreenFormats> ScreenFormats::query(xcb_connection_t* connection, int screen) {
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (int i = 0; i < screen && screens.rem > 1; ++i) xcb_screen_next(&screens);
  ScreenFormats formats{
      .connection = connection, .root = screens.data->root, .rootDepth = screens.data->root_depth};
  const xcb_visualid_t rootVisual = screens.data->root_visual;
  const std::unique_ptr<xcb_render_query_pict_formats_reply_t, Free> reply(
      xcb_render_query_pict_formats_reply(connection, xcb_render_query_pict_formats(connection),
                                          nullptr));
  if (!reply) return std::nullopt;
  for (auto each = xcb_render_query_pict_formats_formats_iterator(reply.get()); each.rem > 0;
       xcb_render_pictforminfo_next(&each)) {
    const xcb_render_directformat_t& direct = each.data->direct;
    if (each.data->type == XCB_RENDER_PICT_TYPE_DIRECT && each.data->depth == 32 &&
        direct.alpha_mask == 0xff && direct.alpha_shift == 24 && direct.red_shift == 16 &&
        direct.blue_shift == 0) {
      formats.argbFormat = each.data->id;
    }
  }
  for (auto each = xcb_render_query_pict_formats_screens_iterator(reply.get()); each.rem > 0;
       xcb_render_pictscreen_next(&each)) {
    for (auto depth = xcb_render_pictscreen_depths_iterator(each.data); depth.rem > 0;
         xcb_render_pictdepth_next(&depth)) {
      const xcb_render_pictvisual_t* const visuals = xcb_render_pictdepth_visuals(depth.data);
      for (int i = 0; i < xcb_render_pictdepth_visuals_length(depth.data); ++i) {
        if (visuals[i].visual == rootVisual) formats.rootFormat = visuals[i].format;
      }
    }
  }
  if (formats.argbFormat == 0 || formats.rootFormat == 0) return std::nullopt;
  return formats;
}

ComposedWindow::ComposedWindow(const ScreenFormats& formats, xcb_window_t window, const QSize& size,
                               Blending blending)
    : formats_(formats), window_(window), size_(size), blending_(blending) {
  xcb_connection_t* const c = formats_.connection;
  const auto createPixmap = [&](std::uint8_t depth, xcb_drawable_t like) {
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    xcb_create_pixmap(c, depth, pixmap, like, extent(size.width()), extent(size.height()));
    return pixmap;
  };
  const bool alpha = blending_ == Blending::ByCompositor;
  contentPixmap_ = createPixmap(32, window_);
  resultPixmap_ = createPixmap(alpha ? 32 : formats_.rootDepth, window_);
  desktopPixmap_ = createPixmap(formats_.rootDepth, formats_.root);
  contentPicture_ = createPicture(contentPixmap_, formats_.argbFormat);
  resultPicture_ = createPicture(resultPixmap_, alpha ? formats_.argbFormat : formats_.rootFormat);
  desktopPicture_ = createPicture(desktopPixmap_, formats_.rootFormat);

  rootGc_ = xcb_generate_id(c);
  const std::uint32_t rootValues[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
  xcb_create_gc(c, rootGc_, formats_.root, XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES,
                rootValues);
  resultGc_ = xcb_generate_id(c);
  const std::uint32_t noExposures = 0;
  xcb_create_gc(c, resultGc_, resultPixmap_, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);

  const std::uint32_t background = resultPixmap_;
  xcb_change_window_attributes(c, window_, XCB_CW_BACK_PIXMAP, &background);
  xcb_shape_rectangles(c, XCB_SHAPE_SO_SET, shapeKind(), XCB_CLIP_ORDERING_UNSORTED, window_, 0, 0,
                       0, nullptr);
  const xcb_rectangle_t all = xcbRectangle(QRect({}, size));
  for (const xcb_render_picture_t picture : {contentPicture_, resultPicture_}) {
    xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_SRC, picture, {0, 0, 0, 0}, 1, &all);
  }
  picture_ = std::make_unique<SharedPicture>(c, contentPixmap_, size);
}

ComposedWindow::~ComposedWindow() {
  hide();
  picture_.reset();
  xcb_connection_t* const c = formats_.connection;
  const std::uint32_t noPixmap = XCB_BACK_PIXMAP_NONE;
  xcb_change_window_attributes(c, window_, XCB_CW_BACK_PIXMAP, &noPixmap);
  if (fadePicture_ != 0) xcb_render_free_picture(c, fadePicture_);
  for (const xcb_render_picture_t picture : {contentPicture_, desktopPicture_, resultPicture_}) {
    xcb_render_free_picture(c, picture);
  }
  xcb_free_gc(c, rootGc_);
  xcb_free_gc(c, resultGc_);
  for (const xcb_pixmap_t pixmap : {contentPixmap_, desktopPixmap_, resultPixmap_}) {
    xcb_free_pixmap(c, pixmap);
  }
}

xcb_render_picture_t ComposedWindow::createPicture(xcb_drawable_t drawable,
                                                   xcb_render_pictformat_t format) {
  const xcb_render_picture_t picture = xcb_generate_id(formats_.connection);
  xcb_render_create_picture(formats_.connection, picture, drawable, format, 0, nullptr);
  return picture;
}

QRegion ComposedWindow::visibleRegion() const {
  if (look_.background.alpha() > 0) return QRect({}, size_);
  return look_.contentAlpha > 0 ? touched_ : QRegion();
}

void ComposedWindow::contentChanged(const QRegion& painted, const QRegion& touched) {
  picture_->send(painted);
  touched_ = simplified(touched);
  stale_ += painted;
}

void ComposedWindow::setLook(const Look& look) {
  if (look == look_) return;
  if (look.contentAlpha != look_.contentAlpha) {
    xcb_connection_t* const c = formats_.connection;
    if (fadePicture_ != 0) xcb_render_free_picture(c, fadePicture_);
    fadePicture_ = 0;
    if (look.contentAlpha < 1) {
      fadePicture_ = xcb_generate_id(c);
      const auto alpha =
          static_cast<std::uint16_t>(std::clamp(look.contentAlpha, 0.0, 1.0) * 65535);
      xcb_render_create_solid_fill(c, fadePicture_, {alpha, alpha, alpha, alpha});
    }
  }
  look_ = look;
  stale_ = QRect({}, size_);
}

void ComposedWindow::show(int x, int y) {
  const QRegion visible = visibleRegion();
  if (shown_ && (x != x_ || y != y_)) hide();
  x_ = x;
  y_ = y;
  // Where the window has not been, the desktop beneath is still to be had.
  const QRegion added = shown_ ? visible - shape_ : visible;
  if (blending_ == Blending::Here) captureDesktop(added);
  QRegion changed = (shown_ ? stale_ & visible : visible) + added;
  // What is not to be seen any more has to go itself where the shape does not cut it off.
  if (blending_ == Blending::ByCompositor) changed += shape_ - visible;
  compose(changed);
  stale_ -= visible;
  if (shown_) copyToWindow(blending_ == Blending::Here ? changed & shape_ : changed);
  setShape(visible);
  if (!shown_) xcb_map_window(formats_.connection, window_);
  shown_ = true;
}

void ComposedWindow::hide() {
  if (!shown_) return;
  xcb_unmap_window(formats_.connection, window_);
  shown_ = false;
}

void ComposedWindow::captureDesktop(const QRegion& region) {
  for (const QRect& rect : region) {
    xcb_copy_area(formats_.connection, formats_.root, desktopPixmap_, rootGc_,
                  coordinate(x_ + rect.x()), coordinate(y_ + rect.y()), coordinate(rect.x()),
                  coordinate(rect.y()), extent(rect.width()), extent(rect.height()));
  }
}

void ComposedWindow::compose(const QRegion& region) {
  for (const QRect& rect : simplified(region)) composeRect(rect);
}

void ComposedWindow::composeRect(const QRect& rect) {
  xcb_connection_t* const c = formats_.connection;
  const auto lay = [&](std::uint8_t operation, xcb_render_picture_t source,
                       xcb_render_picture_t mask, const QRect& area) {
    const std::int16_t x = coordinate(area.x()), y = coordinate(area.y());
    xcb_render_composite(c, operation, source, mask, resultPicture_, x, y, 0, 0, x, y,
                         extent(area.width()), extent(area.height()));
  };
  const xcb_rectangle_t rectangle = xcbRectangle(rect);
  if (blending_ == Blending::ByCompositor) {
    xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_SRC, resultPicture_,
                               renderColor(look_.background), 1, &rectangle);
  } else {
    lay(XCB_RENDER_PICT_OP_SRC, desktopPicture_, XCB_RENDER_PICTURE_NONE, rect);
    if (look_.background.alpha() > 0) {
      xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_OVER, resultPicture_,
                                 renderColor(look_.background), 1, &rectangle);
    }
  }
  if (look_.contentAlpha <= 0) return;
  for (const QRect& area : touched_& rect) {
    lay(XCB_RENDER_PICT_OP_OVER, contentPicture_, fadePicture_, area);
  }
}

void ComposedWindow::copyToWindow(const QRegion& region) {
  for (const QRect& rect : simplified(region)) {
    xcb_copy_area(formats_.connection, resultPixmap_, window_, resultGc_, coordinate(rect.x()),
                  coordinate(rect.y()), coordinate(rect.x()), coordinate(rect.y()),
                  extent(rect.width()), extent(rect.height()));
  }
}

/// A compositor may miss a shape that changes while the window is not on the screen, and go on
/// showing what the last one let through. It needs none to blend the window: there only the
/// pointer's own shape follows what is painted.
std::uint8_t ComposedWindow::shapeKind() const {
  return blending_ == Blending::ByCompositor ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
}

void ComposedWindow::setShape(const QRegion& region) {
  if (region == shape_) return;
  shape_ = region;
  const std::vector<xcb_rectangle_t> rectangles = xcbRectangles(region);
  xcb_shape_rectangles(formats_.connection, XCB_SHAPE_SO_SET, shapeKind(),
                       XCB_CLIP_ORDERING_YX_BANDED, window_, 0, 0,
                       static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

}  // namespace qb
