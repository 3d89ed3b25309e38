#include "PlatformDesktop/dialogs/DialogWindow.h"

#include <xcb/xcb.h>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "PlatformDesktop/dialogs/DialogColors.h"

namespace qb {

namespace {

constexpr int titleBarHeight = 30;
constexpr int borderWidth = 1;
constexpr int closeBoxEdge = 22;
constexpr double cornerRadius = 10;
/// So much of the title bar stays on the screen when it is moved.
constexpr int reachable = 60;

/// A cross that is drawn, since a font may not have one.
QIcon closeIcon(const QColor& color) {
  QIcon icon;
  for (const int scale : {1, 2, 3}) {
    QPixmap pixmap(12 * scale, 12 * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(2.5, 2.5), QPointF(9.5, 9.5));
    painter.drawLine(QPointF(9.5, 2.5), QPointF(2.5, 9.5));
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

}  // namespace

DialogWindow::DialogWindow(const QString& title, bool translucent, Actions actions)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint),
      title_(title),
      translucent_(translucent),
      actions_(std::move(actions)),
      closeBox_(new QToolButton(this)) {
  setWindowTitle(title);
  setWindowModality(Qt::ApplicationModal);
  setAttribute(Qt::WA_TranslucentBackground, translucent_);
  closeBox_->setFocusPolicy(Qt::NoFocus);
  closeBox_->setAutoRaise(true);
  closeBox_->setFixedSize(closeBoxEdge, closeBoxEdge);
  closeBox_->setAccessibleName(tr("Close"));
  connect(closeBox_, &QToolButton::clicked, this, [this] { actions_.cancel(); });
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(borderWidth, titleBarHeight, borderWidth, borderWidth);
  layout->setSizeConstraint(QLayout::SetMinimumSize);
  applyColors();
}

void DialogWindow::applyColors() {
  const DialogColors& colors = DialogColors::current();
  setPalette(colors.palette());
  setStyleSheet(colors.styleSheet());
  closeBox_->setIcon(closeIcon(colors.dimmedText));
  closeBox_->setIconSize({12, 12});
}

void DialogWindow::setContent(QWidget* content) { layout()->addWidget(content); }

void DialogWindow::present() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  if (screen != nullptr) {
    const QRect area = screen->availableGeometry();
    resize(sizeHint().boundedTo(area.size()));
    move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 3);
  }
  const int inset = (titleBarHeight - closeBoxEdge) / 2;
  closeBox_->move(width() - closeBoxEdge - inset, inset);
  show();
  // The press reaches the window before it reaches any control of it.
  windowHandle()->installEventFilter(this);
}

bool DialogWindow::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) applyColors();
  return QWidget::event(event);
}

bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress && pressObserver_) pressObserver_();
  return QWidget::eventFilter(watched, event);
}

/// Qt takes a grab of the keyboard for a loss of the focus; the server tells them apart.
bool DialogWindow::nativeEvent(const QByteArray& eventType, void* message, qintptr* result) {
  const auto* const event = static_cast<const xcb_focus_out_event_t*>(message);
  if ((event->response_type & 0x7f) == XCB_FOCUS_OUT &&
      (event->mode == XCB_NOTIFY_MODE_NORMAL || event->mode == XCB_NOTIFY_MODE_WHILE_GRABBED) &&
      event->detail != XCB_NOTIFY_DETAIL_INFERIOR && event->detail != XCB_NOTIFY_DETAIL_POINTER &&
      leaveObserver_) {
    leaveObserver_();
  }
  return QWidget::nativeEvent(eventType, message, result);
}

void DialogWindow::paintEvent(QPaintEvent*) {
  const DialogColors& colors = DialogColors::current();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  QPainterPath outline;
  const double radius = translucent_ ? cornerRadius : 0;
  outline.addRoundedRect(frame, radius, radius);
  painter.fillPath(outline, colors.background);
  painter.save();
  painter.setClipRect(QRect(0, 0, width(), titleBarHeight));
  painter.fillPath(outline, colors.titleBar);
  painter.restore();
  painter.setPen(QPen(colors.border, borderWidth));
  painter.drawPath(outline);
  painter.setPen(colors.dimmedText);
  const int side = closeBoxEdge + (titleBarHeight - closeBoxEdge);
  const QRect text(side, 0, width() - 2 * side, titleBarHeight);
  painter.drawText(text, Qt::AlignCenter,
                   fontMetrics().elidedText(title_, Qt::ElideMiddle, text.width()));
}

void DialogWindow::closeEvent(QCloseEvent* event) {
  actions_.cancel();
  event->accept();
}

void DialogWindow::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      actions_.cancel();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      actions_.confirm();
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void DialogWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && event->position().y() < titleBarHeight) {
    grip_ = event->globalPosition().toPoint() - pos();
  }
}

void DialogWindow::mouseMoveEvent(QMouseEvent* event) {
  if (!grip_) return;
  QPoint place = event->globalPosition().toPoint() - *grip_;
  if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
    const QRect area = screen->virtualGeometry();
    place.setX(std::clamp(place.x(), area.left() + reachable - width(), area.right() - reachable));
    place.setY(std::clamp(place.y(), area.top(), area.bottom() - titleBarHeight));
  }
  move(place);
}

void DialogWindow::mouseReleaseEvent(QMouseEvent*) { grip_.reset(); }

}  // namespace qb
