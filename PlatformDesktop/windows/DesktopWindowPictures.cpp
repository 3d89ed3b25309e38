#include "PlatformDesktop/windows/DesktopWindowPictures.h"

#include <xcb/composite.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "PlatformDesktop/graphics/PixelImage.h"

namespace qb {

namespace {

using Attributes = XReply<xcb_get_window_attributes_reply_t>;

/// Named pixmaps came with this version.
constexpr std::uint32_t compositeMinor = 2;

bool isShown(const Attributes& attributes) {
  return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
         attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

Attributes attributesOf(xcb_connection_t* x, xcb_window_t window) {
  return Attributes(
      xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
}

XReply<xcb_get_geometry_reply_t> placeOf(xcb_connection_t* x, xcb_drawable_t drawable) {
  return XReply<xcb_get_geometry_reply_t>(
      xcb_get_geometry_reply(x, xcb_get_geometry(x, drawable), nullptr));
}

XReply<xcb_query_tree_reply_t> treeOf(xcb_connection_t* x, xcb_window_t window) {
  return XReply<xcb_query_tree_reply_t>(
      xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
}

QImage::Format formatOfDepth(std::uint8_t depth) {
  switch (depth) {
    case 32:
      return QImage::Format_ARGB32_Premultiplied;
    case 30:
      return QImage::Format_RGB30;
    case 24:
      return QImage::Format_RGB32;
    case 16:
      return QImage::Format_RGB16;
    default:
      return QImage::Format_Invalid;
  }
}

}  // namespace

/// Where a client's content lies.
struct DesktopWindowPictures::Geometry {
  xcb_window_t frame = XCB_NONE;
  /// From the frame's outer corner, shadows that the client draws itself left out.
  QRect content;
  /// With its border, from the root's corner.
  QRect frameOnRoot;
  int border = 0;
  std::uint8_t depth = 0;
  bool isShown = false;
};

DesktopWindowPictures::~DesktopWindowPictures() { notifier_.reset(); }

bool DesktopWindowPictures::begin() {
  if (x_) return x_->isUsable();
  x_ = std::make_unique<XConnection>();
  if (!x_->isUsable()) return false;
  xcb_connection_t* const x = x_->get();
  const XReply<xcb_composite_query_version_reply_t> version(xcb_composite_query_version_reply(
      x, xcb_composite_query_version(x, 0, compositeMinor), nullptr));
  frameExtents_ = x_->atom("_GTK_FRAME_EXTENTS");
  const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(x, x_->root(), XCB_CW_EVENT_MASK, &mask);
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(x), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { takeEvents(); });
  if (const auto tree = treeOf(x, x_->root())) {
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) namePixmap(children[i]);
  }
  return true;
}

void DesktopWindowPictures::takeEvents() {
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x_->get())}) handle(*event);
  // Nothing more will come: the server is gone.
  if (!x_->isUsable()) notifier_->setEnabled(false);
}

void DesktopWindowPictures::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & ~0x80U) {
    case XCB_MAP_NOTIFY:
      namePixmap(reinterpret_cast<const xcb_map_notify_event_t&>(event).window);
      break;
    case XCB_CONFIGURE_NOTIFY: {
      const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      const auto known = frames_.find(configured.window);
      const QSize size(configured.width + 2 * configured.border_width,
                       configured.height + 2 * configured.border_width);
      if (known != frames_.end() && known->second.size != size) namePixmap(configured.window);
      break;
    }
    case XCB_REPARENT_NOTIFY: {
      const auto& moved = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
      if (moved.parent != x_->root()) forget(moved.window);
      break;
    }
    case XCB_DESTROY_NOTIFY:
      forget(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
      break;
    default:
      break;
  }
}

bool DesktopWindowPictures::namePixmap(xcb_window_t frame) {
  xcb_connection_t* const x = x_->get();
  const Attributes attributes = attributesOf(x, frame);
  // Menus and tips come and go by themselves.
  if (!isShown(attributes) || attributes->override_redirect) return false;
  const xcb_pixmap_t pixmap = xcb_generate_id(x);
  const XReply<xcb_generic_error_t> error(
      xcb_request_check(x, xcb_composite_name_window_pixmap_checked(x, frame, pixmap)));
  if (error) return false;
  const auto size = placeOf(x, pixmap);
  if (!size) return false;
  Frame& known = frames_[frame];
  if (known.pixmap != XCB_NONE) xcb_free_pixmap(x, known.pixmap);
  known = {pixmap, QSize(size->width, size->height), {}};
  xcb_flush(x);
  return true;
}

void DesktopWindowPictures::forget(xcb_window_t frame) {
  const auto known = frames_.find(frame);
  if (known == frames_.end()) return;
  if (known->second.pixmap != XCB_NONE) xcb_free_pixmap(x_->get(), known->second.pixmap);
  xcb_flush(x_->get());
  frames_.erase(known);
}

std::optional<DesktopWindowPictures::Geometry> DesktopWindowPictures::geometryOf(
    xcb_window_t client) const {
  xcb_connection_t* const x = x_->get();
  const xcb_get_property_cookie_t extents = x_->ask(client, frameExtents_, 4);
  const auto place = placeOf(x, client);
  const std::vector<std::uint32_t> shadow = x_->readNumbers(extents);
  Geometry geometry;
  geometry.frame = client;
  for (auto tree = treeOf(x, client); place && tree; tree = treeOf(x, geometry.frame)) {
    if (tree->parent == x_->root()) break;
    geometry.frame = tree->parent;
    if (tree->parent == XCB_NONE) break;
  }
  const auto framePlace = placeOf(x, geometry.frame);
  const XReply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
      x, xcb_translate_coordinates(x, client, geometry.frame, 0, 0), nullptr));
  if (!place || !framePlace || !corner) return std::nullopt;
  geometry.border = framePlace->border_width;
  geometry.depth = framePlace->depth;
  geometry.content = QRect(corner->dst_x + geometry.border, corner->dst_y + geometry.border,
                           place->width, place->height);
  if (shadow.size() == 4) {
    geometry.content.adjust(static_cast<int>(shadow[0]), static_cast<int>(shadow[2]),
                            -static_cast<int>(shadow[1]), -static_cast<int>(shadow[3]));
  }
  geometry.frameOnRoot =
      QRect(framePlace->x, framePlace->y, framePlace->width + 2 * geometry.border,
            framePlace->height + 2 * geometry.border);
  geometry.isShown = isShown(attributesOf(x, client));
  return geometry;
}

bool DesktopWindowPictures::isUncovered(const Geometry& geometry) const {
  xcb_connection_t* const x = x_->get();
  const auto screen = placeOf(x, x_->root());
  const auto tree = treeOf(x, x_->root());
  const QRect area = geometry.content.translated(geometry.frameOnRoot.topLeft());
  if (!screen || !tree || !QRect(0, 0, screen->width, screen->height).contains(area)) return false;
  // From bottom to top.
  const xcb_window_t* const first = xcb_query_tree_children(tree.get());
  const xcb_window_t* const last = first + xcb_query_tree_children_length(tree.get());
  const xcb_window_t* const above = std::find(first, last, geometry.frame);
  return above != last && std::none_of(above + 1, last, [&](xcb_window_t window) {
           const auto place = placeOf(x, window);
           return place && isShown(attributesOf(x, window)) &&
                  QRect(place->x, place->y, place->width + 2 * place->border_width,
                        place->height + 2 * place->border_width)
                      .intersects(area);
         });
}

QImage DesktopWindowPictures::pixelsOf(xcb_drawable_t drawable, const QRect& area,
                                       std::uint8_t depth) const {
  const QImage::Format format = formatOfDepth(depth);
  if (format == QImage::Format_Invalid || area.isEmpty()) return {};
  xcb_connection_t* const x = x_->get();
  const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
      x,
      xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(area.x()),
                    static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
                    static_cast<std::uint16_t>(area.height()), ~0U),
      nullptr));
  if (!reply) return {};
  // Lines are padded to 32 bits, as those of QImage are.
  const QImage borrowed(xcb_get_image_data(reply.get()), area.width(), area.height(), format);
  if (xcb_get_image_data_length(reply.get()) < borrowed.sizeInBytes()) return {};
  return borrowed.copy();
}

Image DesktopWindowPictures::imageOfWindow(WindowID window, Size largest) {
  if (window == XCB_NONE || !begin()) return {};
  takeEvents();
  const auto geometry = geometryOf(window);
  if (!geometry) return {};
  const bool isNamed = geometry->isShown && namePixmap(geometry->frame);
  if (geometry->isShown && !isNamed && isUncovered(*geometry)) {
    // Requests count from within the border.
    const QRect area = geometry->content.translated(-geometry->border, -geometry->border);
    const QImage seen = pixelsOf(geometry->frame, area, geometry->depth);
    // A pixmap of the time when there was a compositing manager tells no more.
    forget(geometry->frame);
    frames_[geometry->frame].seen = seen;
  }
  const auto known = frames_.find(geometry->frame);
  if (known == frames_.end()) return {};
  const Frame& frame = known->second;
  if (frame.pixmap == XCB_NONE) return imageOf(frame.seen, largest);
  const QRect area = geometry->content & QRect(QPoint(), frame.size);
  return imageOf(pixelsOf(frame.pixmap, area, geometry->depth), largest);
}

Image DesktopWindowPictures::imageOf(const QImage& pixels, Size largest) const {
  if (pixels.isNull()) return {};
  const Size natural{pixels.width() / scale_, pixels.height() / scale_};
  const QSize bounds(static_cast<int>(std::ceil(largest.width * scale_)),
                     static_cast<int>(std::ceil(largest.height * scale_)));
  const bool isFiner = pixels.width() > bounds.width() || pixels.height() > bounds.height();
  return Image(std::make_shared<const PixelImage>(
      isFiner && !bounds.isEmpty()
          ? pixels.scaled(bounds, Qt::KeepAspectRatio, Qt::SmoothTransformation)
          : pixels,
      natural));
}

}  // namespace qb
