#include "PlatformDesktop/windows/SurfaceWindow.h"

#include <QMouseEvent>
#include <QSurfaceFormat>
#include <QWheelEvent>
#include <optional>

namespace qb {

namespace {

constexpr double anglePerStep = 120;

std::optional<EventType> typeForButton(Qt::MouseButton button, EventType left, EventType right) {
  if (button == Qt::LeftButton) return left;
  if (button == Qt::RightButton) return right;
  return std::nullopt;
}

}  // namespace

EventFlags eventFlags(Qt::KeyboardModifiers modifiers) {
  EventFlags flags = 0;
  if (modifiers & Qt::ShiftModifier) flags |= EventFlagShift;
  if (modifiers & Qt::ControlModifier) flags |= EventFlagControl;
  if (modifiers & Qt::AltModifier) flags |= EventFlagOption;
  if (modifiers & Qt::MetaModifier) flags |= EventFlagCommand;
  return flags;
}

SurfaceWindow::SurfaceWindow(bool alpha, Receiver receiver) : receiver_(std::move(receiver)) {
  setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
           Qt::WindowDoesNotAcceptFocus);
  QSurfaceFormat format;
  if (alpha) format.setAlphaBufferSize(8);
  setFormat(format);
  create();
}

PixelEvent SurfaceWindow::pixelEvent(EventType type, const QSinglePointEvent& event) const {
  const QPointF pixels = event.position() * devicePixelRatio();
  PixelEvent result;
  result.type = type;
  result.x = originX_ + pixels.x();
  result.y = originY_ + pixels.y();
  result.flags = eventFlags(event.modifiers());
  result.time = static_cast<std::uint32_t>(event.timestamp());
  return result;
}

void SurfaceWindow::mousePressEvent(QMouseEvent* event) {
  const auto type = typeForButton(event->button(), EventTypeLeftMouseDown, EventTypeRightMouseDown);
  if (type) receiver_(pixelEvent(*type, *event));
}

void SurfaceWindow::mouseReleaseEvent(QMouseEvent* event) {
  const auto type = typeForButton(event->button(), EventTypeLeftMouseUp, EventTypeRightMouseUp);
  if (type) receiver_(pixelEvent(*type, *event));
}

void SurfaceWindow::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) {
    receiver_(pixelEvent(EventTypeLeftMouseDragged, *event));
  } else if (event->buttons() & Qt::RightButton) {
    receiver_(pixelEvent(EventTypeRightMouseDragged, *event));
  }
}

void SurfaceWindow::wheelEvent(QWheelEvent* event) {
  PixelEvent scroll = pixelEvent(EventTypeScrollWheel, *event);
  scroll.deltaX = event->angleDelta().x() / anglePerStep;
  scroll.deltaY = event->angleDelta().y() / anglePerStep;
  receiver_(scroll);
}

}  // namespace qb
