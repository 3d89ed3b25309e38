#include "PlatformDesktop/windows/DesktopWindow.h"

#include <cmath>
#include <cstdlib>

#include "PlatformDesktop/graphics/QPainterCanvas.h"
#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/windows/DesktopWindowServer.h"

namespace qb {

namespace {

/// More rectangles than this cost more in clipping than they spare in painting.
constexpr int maximumRectangles = 12;

bool isPositionBound(EventType type) {
  return type == EventTypeLeftMouseDown || type == EventTypeRightMouseDown ||
         type == EventTypeScrollWheel;
}

}  // namespace

DesktopWindow::DesktopWindow(DesktopWindowServer& server, WindowPeerClient& client)
    : server_(server), client_(client) {
  createWindow();
  server_.add(*this);
}

void DesktopWindow::createWindow() {
  surface_.reset();
  composited_ = server_.compositorIsRunning();
  window_ = std::make_unique<SurfaceWindow>(composited_, [this](const PixelEvent& event) {
    if (const auto processed = server_.pointerInput().process(event)) deliver(*processed);
  });
  window_->setTitle(qtString(title_));
  // To a compositor the panel is no window that throws a shadow, least of all one as large as the
  // screen.
  const xcb_atom_t dock = server_.dockType();
  xcb_change_property(server_.connection(), XCB_PROP_MODE_REPLACE, id(),
                      server_.windowTypeProperty(), XCB_ATOM_ATOM, 32, 1, &dock);
  applyBlur();
}

DesktopWindow::~DesktopWindow() {
  orderOut();
  server_.remove(*this);
}

void DesktopWindow::setFrame(const Rect& frame) {
  if (frame == frame_) return;
  frame_ = frame;
  environmentChanged();
}

void DesktopWindow::environmentChanged() {
  if (composited_ != server_.compositorIsRunning()) createWindow();
  const DisplayMap& map = server_.displays().map();
  const PixelRect pixels = map.pixelsForFrame(frame_);
  const double scale = map.scaleForFrame(frame_);
  const bool sameSize =
      surface_ && pixels.width == pixels_.width && pixels.height == pixels_.height;
  if (!sameSize || scale != scale_) surface_.reset();
  pixels_ = pixels;
  scale_ = scale;
  window_->setPixelOrigin(pixels.x, pixels.y);
  if (pixels.width <= 0 || pixels.height <= 0) return;
  const std::uint32_t values[] = {
      static_cast<std::uint32_t>(pixels.x), static_cast<std::uint32_t>(pixels.y),
      static_cast<std::uint32_t>(pixels.width), static_cast<std::uint32_t>(pixels.height)};
  xcb_configure_window(server_.connection(), id(),
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values);
  if (!surface_) {
    surface_ = std::make_unique<ComposedWindow>(
        server_.formats(), id(), QSize(pixels.width, pixels.height),
        composited_ ? ComposedWindow::Blending::ByCompositor : ComposedWindow::Blending::Here);
    touched_ = {};
    dirty_ = QRect(0, 0, pixels.width, pixels.height);
  }
  applyLook();
}

void DesktopWindow::applyLook() {
  if (!surface_) return;
  surface_->setLook({.background = qtColor(background_), .contentAlpha = contentAlpha_});
  server_.updateBeforeSleep();
}

void DesktopWindow::setLevel(std::int64_t level) {
  if (level == level_) return;
  level_ = level;
  if (isShown()) server_.restack();
}

void DesktopWindow::setTitle(const std::string& title) {
  title_ = title;
  window_->setTitle(qtString(title));
}

void DesktopWindow::setBackgroundColor(const Color& color) {
  if (color == background_) return;
  background_ = color;
  applyLook();
}

void DesktopWindow::setBackgroundBlurRadius(std::int64_t radius) {
  if (radius == blurRadius_) return;
  blurRadius_ = radius;
  applyBlur();
}

void DesktopWindow::applyBlur() {
  // Without rectangles the property means the whole window. The strength is the compositor's own.
  if (blurRadius_ > 0) {
    xcb_change_property(server_.connection(), XCB_PROP_MODE_REPLACE, id(), server_.blurProperty(),
                        XCB_ATOM_CARDINAL, 32, 0, nullptr);
  } else {
    xcb_delete_property(server_.connection(), id(), server_.blurProperty());
  }
}

void DesktopWindow::setContentAlphaValue(double alpha) {
  if (alpha == contentAlpha_) return;
  contentAlpha_ = alpha;
  applyLook();
}

void DesktopWindow::orderFront() {
  orderedIn_ = true;
  if (isShown()) server_.restack();
  server_.updateBeforeSleep();
}

void DesktopWindow::makeKeyAndOrderFront() {
  server_.setKeyWindow(this);
  orderFront();
}

void DesktopWindow::orderOut() {
  orderedIn_ = false;
  if (surface_) surface_->hide();
  if (server_.keyWindow() == this) server_.setKeyWindow(nullptr);
  // At once: whoever invokes something next must not find the panel in the way.
  xcb_flush(server_.connection());
}

void DesktopWindow::setNeedsDisplay(const Rect& rect) {
  const QRectF pixels(rect.x() * scale_, rect.y() * scale_, rect.width() * scale_,
                      rect.height() * scale_);
  dirty_ += pixels.toAlignedRect();
  server_.updateBeforeSleep();
}

void DesktopWindow::update() {
  if (!surface_) return;
  paint();
  const bool visible = orderedIn_ && (contentAlpha_ > 0 || background_.alpha() > 0);
  if (!visible) {
    surface_->hide();
    return;
  }
  const bool wasShown = surface_->isShown();
  if (!wasShown) server_.restack(this);
  surface_->show(pixels_.x, pixels_.y);
}

void DesktopWindow::paint() {
  QRegion region = dirty_ & QRect(0, 0, pixels_.width, pixels_.height);
  dirty_ = {};
  if (region.isEmpty()) return;
  if (region.rectCount() > maximumRectangles) region = region.boundingRect();
  QImage& image = surface_->content().beginPainting();
  const QRegion wiped = touched_ & region;
  if (!wiped.isEmpty()) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const QRect& rect : wiped) painter.fillRect(rect, Qt::transparent);
  }
  QRegion drawn;
  {
    QPainterCanvas canvas(image, region, scale_, server_.texts());
    const QRectF bounds = region.boundingRect();
    client_.paint(canvas, Rect::make(bounds.x() / scale_, bounds.y() / scale_,
                                     bounds.width() / scale_, bounds.height() / scale_));
    drawn = canvas.touched();
  }
  touched_ = (touched_ - region) + drawn;
  surface_->contentChanged(wiped + drawn, touched_);
}

void DesktopWindow::raise() {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(server_.connection(), id(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void DesktopWindow::deliver(Event event) {
  if (isPositionBound(event.type) && !contains(frame_, event.location)) return;
  event.location = {event.location.x - frame_.x(), event.location.y - frame_.y()};
  client_.deliver(event);
}

}  // namespace qb
