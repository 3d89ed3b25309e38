#include "DialogDesk.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>

#include "Platform/KeyCodes.h"
#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb::test {

namespace {

constexpr TimeInterval lookInterval = 0.005;
constexpr TimeInterval longestStep = 60;
constexpr std::uint16_t keyCodeF9 = 101;

ScreenFormats formats() {
  const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  return ScreenFormats::query(x11->connection(), 0).value();
}

std::vector<DialogWindow*> dialogsOnScreen() {
  std::vector<DialogWindow*> dialogs;
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    auto* const window = dynamic_cast<DialogWindow*>(widget);
    if (window && window->isVisible()) dialogs.push_back(window);
  }
  return dialogs;
}

}  // namespace

DialogDesk::DialogDesk()
    : graphics(host, nullptr, QGuiApplication::primaryScreen()->devicePixelRatio()),
      windowServer(formats(), displays, host),
      dialogs(windowServer, graphics),
      client(qEnvironmentVariable("DISPLAY").toStdString()) {
  host.setRunLoop(&loop);
  client.openWindow();
  client.takeFocus();
  // The window manager gives a new window the focus, too, and may come to it late.
  EXPECT_TRUE(waitFor([this] { return client.activeWindow() == client.window(); }));
}

DialogDesk::~DialogDesk() {
  host.finishBackgroundWork();
  host.setRunLoop(nullptr);
}

void DialogDesk::when(std::string what, std::function<bool()> condition,
                      std::function<void()> action) {
  steps_.push_back({std::move(what), std::move(condition), std::move(action)});
}

std::shared_ptr<RunLoopTimer> DialogDesk::startSteps() {
  deadline_ = loop.now() + longestStep;
  return loop.scheduleTimer(
      lookInterval, true, [this](RunLoopTimer&) { goOn(); }, RunLoopMode::ModalPanel);
}

void DialogDesk::endSteps(RunLoopTimer& timer) {
  timer.invalidate();
  EXPECT_TRUE(steps_.empty()) << "closed before: " << steps_.front().what;
  steps_.clear();
}

void DialogDesk::goOn() {
  client.pump();
  if (!steps_.empty() && steps_.front().condition()) {
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    deadline_ = loop.now() + longestStep;
    step.action();
  } else if (loop.now() > deadline_) {
    ADD_FAILURE() << "waits for ever: " << (steps_.empty() ? "to close" : steps_.front().what)
                  << "; the focus is with " << focusOwner() << ", the dialog is "
                  << (dialog() ? idOf(*dialog()) : 0) << ", the client " << client.window();
    steps_.clear();
    dialogs.abortModal();
  }
}

bool DialogDesk::waitFor(const std::function<bool()>& condition) {
  const Moment end = loop.now() + longestStep;
  while (loop.now() < end) {
    client.pump();
    if (condition()) return true;
    loop.runUntilDate(loop.now() + lookInterval);
  }
  return false;
}

DialogWindow* DialogDesk::dialog() {
  return dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
}

std::function<bool()> DialogDesk::shown(int dialogsUp) {
  return [this, dialogsUp] {
    return static_cast<int>(dialogsOnScreen().size()) == dialogsUp && dialog() &&
           dialog()->windowHandle()->isExposed() && dialog()->isActiveWindow() &&
           focusOwner() == idOf(*dialog());
  };
}

std::uint32_t DialogDesk::focusOwner() {
  const XcbPointer<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(client.xcb(), xcb_get_input_focus(client.xcb()), nullptr));
  return reply ? reply->focus : 0;
}

std::uint32_t DialogDesk::idOf(const QWidget& widget) {
  return static_cast<std::uint32_t>(widget.winId());
}

std::uint32_t DialogDesk::topmostAt(QPoint pixel) {
  client.movePointer(pixel.x(), pixel.y());
  client.sync();
  const XcbPointer<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
      client.xcb(), xcb_query_pointer(client.xcb(), client.root()), nullptr));
  return reply ? reply->child : 0;
}

QPoint DialogDesk::pixelOf(QPoint inDialog) {
  return dialog()->mapToGlobal(inDialog) * dialog()->devicePixelRatioF();
}

QPoint DialogDesk::pixelOf(const QWidget& widget) {
  return widget.mapToGlobal(widget.rect().center()) * widget.devicePixelRatioF();
}

void DialogDesk::clickAt(QPoint pixel) {
  // A first step beside it: without a move there is no event.
  client.movePointer(pixel.x() - 1, pixel.y());
  client.movePointer(pixel.x(), pixel.y());
  client.button(1, true);
  client.button(1, false);
}

void DialogDesk::type(std::initializer_list<std::uint16_t> keyCodes) {
  for (const auto keyCode : keyCodes) client.tap(keyCode);
}

bool DialogDesk::clientGetsKeys() {
  client.keys.clear();
  client.tap(keyCodeF9);
  const auto code = *KeyCodeTable::xCodeFromKeyCode(keyCodeF9);
  return waitFor([&] {
    return std::any_of(client.keys.begin(), client.keys.end(),
                       [code](const XClient::Key& key) { return key.code == code; });
  });
}

std::unique_ptr<Window> DialogDesk::makePanel() {
  auto panel = std::make_unique<BorderlessWindow>(windowServer, displays.screens().front().frame);
  panel->setOpaque(false);
  panel->setBackgroundColor(Color::clear());
  panel->setLevel(windowServer.windowLevelForKey(WindowLevelKeyFloating));
  auto strip = std::make_shared<RoundedRectangleView>(panel->contentView()->bounds());
  strip->setBackgroundColor(Color::colorWithCalibratedRed(0, 0, 0.125, 0.5));
  panel->contentView()->addSubview(strip);
  panel->makeKeyAndOrderFront();
  return panel;
}

void DialogDesk::shoot(const std::string& name) {
  const QString folder = qEnvironmentVariable("QUILLBOX_SCREENSHOTS");
  if (folder.isEmpty()) return;
  QGuiApplication::primaryScreen()->grabWindow(0).toImage().save(
      folder + "/" + QString::fromStdString(name) + ".png");
}

}  // namespace qb::test
