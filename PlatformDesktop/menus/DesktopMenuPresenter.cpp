#include "PlatformDesktop/menus/DesktopMenuPresenter.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>
#include <cmath>
#include <optional>
#include <utility>

#include "Platform/KeyCodes.h"
#include "PlatformDesktop/menus/MenuLook.h"
#include "PlatformDesktop/windows/SurfaceWindow.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

constexpr double anglePerStep = 120;

/// The keys that menus understand; 0 for all others.
int qtKey(std::uint16_t keyCode) {
  switch (keyCode) {
    case KeyCodeUp:
      return Qt::Key_Up;
    case KeyCodeDown:
      return Qt::Key_Down;
    case KeyCodeLeft:
      return Qt::Key_Left;
    case KeyCodeRight:
      return Qt::Key_Right;
    case KeyCodeHome:
      return Qt::Key_Home;
    case KeyCodeEnd:
      return Qt::Key_End;
    case KeyCodePageUp:
      return Qt::Key_PageUp;
    case KeyCodePageDown:
      return Qt::Key_PageDown;
    case KeyCodeReturn:
      return Qt::Key_Return;
    case KeyCodeEnter:
      return Qt::Key_Enter;
    case KeyCodeSpace:
      return Qt::Key_Space;
    case KeyCodeEscape:
      return Qt::Key_Escape;
    default:
      return 0;
  }
}

std::optional<PixelEvent> pixelEvent(const QWindow& window, const QEvent& event) {
  const auto& point = static_cast<const QSinglePointEvent&>(event);
  PixelEvent result;
  if (event.type() == QEvent::Wheel) {
    const QPoint angle = static_cast<const QWheelEvent&>(event).angleDelta();
    result.type = EventTypeScrollWheel;
    result.deltaX = angle.x() / anglePerStep;
    result.deltaY = angle.y() / anglePerStep;
  } else if (point.button() == Qt::LeftButton) {
    result.type = EventTypeLeftMouseDown;
  } else if (point.button() == Qt::RightButton) {
    result.type = EventTypeRightMouseDown;
  } else {
    return std::nullopt;
  }
  // Qt's places are scaled from the corner of the screen, which itself is not.
  const QPointF corner = window.screen()->geometry().topLeft();
  const QPointF place =
      corner + (point.globalPosition() - corner) * window.screen()->devicePixelRatio();
  result.x = place.x();
  result.y = place.y();
  result.flags = eventFlags(point.modifiers());
  result.time = static_cast<std::uint32_t>(point.timestamp());
  return result;
}

}  // namespace

DesktopMenuPresenter::DesktopMenuPresenter(DesktopWindowServer& windowServer)
    : windowServer_(windowServer) {
  QApplication::setEffectEnabled(Qt::UI_AnimateMenu, false);
  QApplication::setEffectEnabled(Qt::UI_FadeMenu, false);
  windowServer_.setRestackObserver([this] { raiseMenus(); });
}

DesktopMenuPresenter::~DesktopMenuPresenter() { windowServer_.setRestackObserver({}); }

bool DesktopMenuPresenter::popUpMenu(const std::shared_ptr<Menu>& menu,
                                     const std::shared_ptr<MenuItem>& positioningItem,
                                     Point location) {
  if (root_) return false;
  if (menu->items().empty()) {
    menu->noteDidClose();
    return false;
  }
  surroundings_ = std::make_unique<MenuWidget::Surroundings>(
      MenuWidget::Surroundings{.texts = windowServer_.texts(),
                               .translucent = windowServer_.compositorIsRunning(),
                               .stateMayHaveChanged = [this] { noteHighlightedItems(); }});
  root_ = std::make_unique<MenuWidget>(menu, *surroundings_);
  chosen_.reset();
  connect(root_.get(), &QMenu::triggered, this,
          [this](QAction* action) { chosen_ = root_->itemOf(action); });
  menu->setObserver(this);
  qApp->installEventFilter(this);
  QPoint place = qtPosition(location);
  if (positioningItem && positioningItem->menu() == menu.get()) {
    root_->ensurePolished();
    place -= root_->geometryOf(*positioningItem).topLeft();
  }
  root_->popup(place);
  takePointer();
  RunLoop::main().runInMode(RunLoopMode::EventTracking, [this] { return !root_->isVisible(); });
  qApp->removeEventFilter(this);
  menu->setObserver(nullptr);
  // With all that hangs from it, also where only the run has ended.
  root_.reset();
  xcb_flush(windowServer_.connection());
  const auto chosen = std::exchange(chosen_, nullptr);
  menu->noteDidClose();
  if (!chosen) return false;
  chosen->performAction();
  return true;
}

QPoint DesktopMenuPresenter::qtPosition(Point location) const {
  const PixelRect pixel = windowServer_.displays().map().pixelsForFrame({location, Size{1, 0}});
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QPoint corner = screen->geometry().topLeft();
    const QSize pixels = (QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize();
    if (!QRect(corner, pixels).contains(pixel.x, pixel.y)) continue;
    const QPointF offset = QPointF(pixel.x, pixel.y) - corner;
    return corner + (offset / screen->devicePixelRatio()).toPoint();
  }
  return {pixel.x, pixel.y};
}

// Qt takes both keyboard and pointer or neither, and the keyboard may be the tap's already. X gives
// the pointer back when the menu's window goes, with or without this program.
void DesktopMenuPresenter::takePointer() {
  if (QWindow* const window = root_->windowHandle()) window->setMouseGrabEnabled(true);
}

Size DesktopMenuPresenter::itemSize(const MenuItem& item) const {
  const QSize size = item.view() ? MenuLook::sizeOfView(*item.view()) : MenuLook::sizeOfItem(item);
  return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

Size DesktopMenuPresenter::margins() const {
  return {2 * MenuLook::menuMargin, 2 * MenuLook::menuMargin};
}

bool DesktopMenuPresenter::keyDown(const Event& event) {
  QWidget* const popup = root_ ? QApplication::activePopupWidget() : nullptr;
  const int key = qtKey(event.keyCode);
  if (popup == nullptr || key == 0) return false;
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(popup, &press);
  return true;
}

bool DesktopMenuPresenter::eventFilter(QObject* watched, QEvent* event) {
  const bool isTapped = event->type() == QEvent::MouseButtonPress ||
                        event->type() == QEvent::MouseButtonDblClick ||
                        event->type() == QEvent::Wheel;
  if (!isTapped || !watched->isWindowType()) return false;
  // Windows of the core show their presses to the tap themselves.
  if (dynamic_cast<const SurfaceWindow*>(watched) != nullptr) return false;
  const auto pixel = pixelEvent(static_cast<const QWindow&>(*watched), *event);
  return pixel && !windowServer_.pointerInput().process(*pixel);
}

// What the model tells.

void DesktopMenuPresenter::menuItemChanged(Menu& menu, MenuItem& item) {
  if (MenuWidget* const widget = root_->widgetOf(menu)) widget->itemChanged(item);
}

void DesktopMenuPresenter::menuItemInserted(Menu& menu, MenuItem& item, std::size_t index) {
  if (MenuWidget* const widget = root_->widgetOf(menu)) widget->itemInserted(item, index);
}

void DesktopMenuPresenter::menuItemRemoved(Menu& menu, MenuItem& item, std::size_t) {
  if (MenuWidget* const widget = root_->widgetOf(menu)) widget->itemRemoved(item);
}

void DesktopMenuPresenter::menuShouldCancelTracking(Menu&) { root_->hide(); }

void DesktopMenuPresenter::noteHighlightedItems() {
  if (!root_) return;
  for (MenuWidget* const menu : root_->openMenus()) menu->noteHighlightedItem();
}

void DesktopMenuPresenter::raiseMenus() {
  if (!root_) return;
  for (MenuWidget* const menu : root_->openMenus()) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(windowServer_.connection(), static_cast<xcb_window_t>(menu->winId()),
                         XCB_CONFIG_WINDOW_STACK_MODE, &above);
  }
}

}  // namespace qb
