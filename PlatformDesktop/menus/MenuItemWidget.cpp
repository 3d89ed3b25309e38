#include "PlatformDesktop/menus/MenuItemWidget.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "PlatformDesktop/graphics/QPainterCanvas.h"
#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/menus/MenuLook.h"
#include "PlatformDesktop/windows/SurfaceWindow.h"
#include "QuillboxCommon/views/MenuItemView.h"

namespace qb {

namespace {

/// Draws black text in the colour that the theme has for text: views of menus are made for light
/// ones.
class MenuCanvas : public QPainterCanvas {
 public:
  using QPainterCanvas::QPainterCanvas;
  void drawText(std::string_view text, const Rect& rect, const Font& font, const Color& color,
                TextAlignment alignment) override {
    const QColor themed = MenuColors::current().text;
    const Color replaced =
        color == Color::black()
            ? Color::colorWithCalibratedRed(themed.redF(), themed.greenF(), themed.blueF(), 1)
            : color;
    QPainterCanvas::drawText(text, rect, font, replaced, alignment);
  }
};

}  // namespace

MenuItemWidget::MenuItemWidget(const std::shared_ptr<View>& view, TextCache& texts)
    : view_(view),
      texts_(texts),
      takesMouse_(dynamic_cast<const MenuItemView*>(view.get()) == nullptr) {
  setMouseTracking(true);
  setAttribute(Qt::WA_TransparentForMouseEvents, !takesMouse_);
  setFocusPolicy(Qt::NoFocus);
  window_ = std::make_unique<MenuItemWindow>(view_, [this](const Rect& rect) {
    update(qtRect(rect).toAlignedRect().translated(viewOrigin()));
  });
}

MenuItemWidget::~MenuItemWidget() = default;

void MenuItemWidget::setHighlighted(bool highlighted) {
  if (highlighted == highlighted_) return;
  highlighted_ = highlighted;
  update();
}

void MenuItemWidget::showWithin(const QRect& area) {
  if (area.contains(rect())) {
    clearMask();
    return;
  }
  const QRect shown = area & rect();
  // For Qt an empty mask is none.
  setMask(shown.isEmpty() ? QRect(-1, -1, 1, 1) : shown);
}

QSize MenuItemWidget::sizeHint() const { return MenuLook::sizeOfView(*view_); }

QSize MenuItemWidget::viewSize() const {
  const Size size = view_->frame().size;
  return QSizeF(size.width, size.height).toSize();
}

QPoint MenuItemWidget::viewOrigin() const {
  const QSize own = viewSize();
  return {(width() - own.width()) / 2, (height() - own.height()) / 2};
}

void MenuItemWidget::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (highlighted_ && !takesMouse_) MenuLook::drawHighlight(painter, rect());
  const double scale = devicePixelRatioF();
  const QPoint origin = viewOrigin();
  const QRect dirty = event->rect().translated(-origin) & QRect({0, 0}, viewSize());
  if (dirty.isEmpty()) return;
  QImage image((QSizeF(viewSize()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  const QRect pixels =
      QRectF(dirty.x() * scale, dirty.y() * scale, dirty.width() * scale, dirty.height() * scale)
          .toAlignedRect();
  {
    MenuCanvas canvas(image, pixels & image.rect(), scale, texts_);
    window_->paint(canvas, rectOf(dirty));
  }
  image.setDevicePixelRatio(scale);
  painter.drawImage(origin, image);
}

void MenuItemWidget::deliver(EventType type, const QMouseEvent& event) {
  deliverAt(event.position(), type, event.modifiers());
}

void MenuItemWidget::deliverAt(QPointF place, EventType type, Qt::KeyboardModifiers modifiers) {
  const QPointF point = place - viewOrigin();
  Event ours;
  ours.type = type;
  ours.flags = eventFlags(modifiers);
  ours.location = {point.x(), window_->frame().height() - point.y()};
  ours.clickCount = type == EventTypeMouseMoved ? 0 : 1;
  window_->deliver(ours);
}

// The view may have come under a resting pointer: what is pressed there is what is highlighted.
void MenuItemWidget::mousePressEvent(QMouseEvent* event) {
  deliver(EventTypeMouseMoved, *event);
  deliver(event->button() == Qt::RightButton ? EventTypeRightMouseDown : EventTypeLeftMouseDown,
          *event);
}

void MenuItemWidget::mouseReleaseEvent(QMouseEvent* event) {
  deliver(event->button() == Qt::RightButton ? EventTypeRightMouseUp : EventTypeLeftMouseUp,
          *event);
}

void MenuItemWidget::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void MenuItemWidget::mouseMoveEvent(QMouseEvent* event) {
  deliver(event->buttons() & Qt::LeftButton ? EventTypeLeftMouseDragged : EventTypeMouseMoved,
          *event);
}

void MenuItemWidget::leaveEvent(QEvent*) { window_->pointerLeft(); }

// The menu scrolls.
void MenuItemWidget::moveEvent(QMoveEvent*) {
  if (underMouse()) {
    deliverAt(mapFromGlobal(QCursor::pos()), EventTypeMouseMoved,
              QGuiApplication::keyboardModifiers());
  }
}

}  // namespace qb
