#include "MenuDesk.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <cstdlib>

#include "Platform/KeyCodes.h"

namespace qb::test {

namespace {

constexpr TimeInterval lookInterval = 0.005;
constexpr TimeInterval longestStep = 60;

ScreenFormats formats() {
  const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  return ScreenFormats::query(x11->connection(), 0).value();
}

}  // namespace

MenuDesk::MenuDesk()
    : windowServer(formats(), displays, host),
      presenter(windowServer),
      user(qEnvironmentVariable("DISPLAY").toStdString()) {
  host.setRunLoop(&loop);
  menu->setDelegate(&delegate);
}

MenuDesk::~MenuDesk() {
  host.finishBackgroundWork();
  host.setRunLoop(nullptr);
}

void MenuDesk::when(std::string what, std::function<bool()> condition,
                    std::function<void()> action) {
  steps_.push_back({std::move(what), std::move(condition), std::move(action)});
}

bool MenuDesk::popUp() { return popUpAt({40, displays.screens().front().frame.maxY() - 40}); }

bool MenuDesk::popUpAt(Point location) {
  // Out of the way: a menu heeds small moves from where the pointer stood at its opening late.
  user.movePointer(1199, 899);
  user.sync();
  deadline_ = loop.now() + longestStep;
  const auto timer = loop.scheduleTimer(
      lookInterval, true, [this](RunLoopTimer&) { goOn(); }, RunLoopMode::EventTracking);
  const bool chosen = presenter.popUpMenu(menu, nullptr, location);
  timer->invalidate();
  EXPECT_TRUE(steps_.empty()) << "closed before: " << steps_.front().what;
  steps_.clear();
  return chosen;
}

void MenuDesk::goOn() {
  if (!steps_.empty() && steps_.front().condition()) {
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    deadline_ = loop.now() + longestStep;
    step.action();
  } else if (loop.now() > deadline_) {
    ADD_FAILURE() << "waits for ever: " << (steps_.empty() ? "to close" : steps_.front().what);
    steps_.clear();
    menu->cancelTracking();
  }
}

std::shared_ptr<MenuItem> MenuDesk::add(const std::string& title) {
  auto item = MenuItem::create(title);
  menu->addItem(item);
  return item;
}

MenuWidget* MenuDesk::innermost() const {
  return dynamic_cast<MenuWidget*>(QApplication::activePopupWidget());
}

bool MenuDesk::isShown(const Menu& shown) const {
  return innermost() && innermost()->menu().get() == &shown && innermost()->windowHandle() &&
         innermost()->windowHandle()->isExposed();
}

bool MenuDesk::isHighlighted(const MenuItem& item) const {
  return item.menu() && item.menu()->highlightedItem().get() == &item;
}

std::optional<QPoint> MenuDesk::centerOf(const MenuItem& item) const {
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    const auto* const shown = dynamic_cast<const MenuWidget*>(widget);
    if (!shown || !shown->isVisible() || shown->menu().get() != item.menu()) continue;
    const QPoint center = shown->mapToGlobal(shown->geometryOf(item).center());
    return center * shown->devicePixelRatioF();
  }
  return std::nullopt;
}

void MenuDesk::pointAt(const MenuItem& item) {
  const auto center = centerOf(item);
  ASSERT_TRUE(center) << item.title() << " is not shown";
  // A first step beside it: without a move there is no event.
  user.movePointer(center->x() - 1, center->y());
  user.movePointer(center->x(), center->y());
}

void MenuDesk::click() {
  user.button(1, true);
  user.button(1, false);
}

void MenuDesk::press(std::uint16_t keyCode) { user.tap(keyCode); }

void MenuDesk::shoot(const std::string& name) const {
  const QString folder = qEnvironmentVariable("QUILLBOX_SCREENSHOTS");
  if (folder.isEmpty()) return;
  QGuiApplication::primaryScreen()->grabWindow(0).toImage().save(
      folder + "/" + QString::fromStdString(name) + ".png");
}

Event MenuDesk::key(std::uint16_t keyCode) {
  Event event;
  event.type = EventTypeKeyDown;
  event.keyCode = keyCode;
  return event;
}

}  // namespace qb::test
