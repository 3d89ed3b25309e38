#include "PlatformDesktop/displays/DesktopDisplays.h"

#include <QGuiApplication>
#include <QMetaObject>
#include <QScreen>
#include <cmath>

namespace qb {

namespace {

DisplayMap::Display displayOf(const QScreen& screen) {
  // Qt leaves a scaled screen's top left corner in pixels and scales its size.
  const QRect geometry = screen.geometry();
  const double scale = screen.devicePixelRatio();
  const auto pixels = [scale](int points) { return static_cast<int>(std::lround(points * scale)); };
  return {
      .pixels = {geometry.x(), geometry.y(), pixels(geometry.width()), pixels(geometry.height())},
      .scale = scale,
      .frame = {}};
}

/// Qt works the desktop's strips out of _NET_WORKAREA where that can be told for one screen.
Rect visibleFrameOf(const QScreen& screen, const Rect& frame) {
  const QRect whole = screen.geometry();
  const QRect available = screen.availableGeometry();
  const double left = available.x() - whole.x();
  const double top = available.y() - whole.y();
  return Rect::make(frame.x() + left, frame.maxY() - top - available.height(), available.width(),
                    available.height());
}

}  // namespace

DesktopDisplays::DesktopDisplays() {
  connect(qApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
    watch(screen);
    noteChange();
  });
  connect(qApp, &QGuiApplication::screenRemoved, this, [this] { noteChange(); });
  connect(qApp, &QGuiApplication::primaryScreenChanged, this, [this] { noteChange(); });
  for (QScreen* screen : QGuiApplication::screens()) watch(screen);
  update();
}

void DesktopDisplays::watch(QScreen* screen) {
  connect(screen, &QScreen::geometryChanged, this, [this] { noteChange(); });
  connect(screen, &QScreen::availableGeometryChanged, this, [this] { noteChange(); });
}

std::vector<Screen> DesktopDisplays::screens() const { return screens_; }

Subscription DesktopDisplays::registerReconfigurationCallback(std::function<void()> callback) {
  const std::uint64_t id = ++lastCallback_;
  callbacks_.push_back({id, std::move(callback)});
  return Subscription([this, id] {
    std::erase_if(callbacks_, [id](const Callback& each) { return each.id == id; });
  });
}

void DesktopDisplays::noteChange() {
  // One change of the configuration arrives as several signals.
  if (changePending_) return;
  changePending_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        changePending_ = false;
        const std::vector<Screen> before = screens_;
        update();
        if (screens_ == before) return;
        const std::vector<Callback> callbacks = callbacks_;
        for (const Callback& callback : callbacks) callback.call();
      },
      Qt::QueuedConnection);
}

void DesktopDisplays::update() {
  std::vector<const QScreen*> ordered;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const bool primary = screen == QGuiApplication::primaryScreen();
    ordered.insert(primary ? ordered.begin() : ordered.end(), screen);
  }
  std::vector<DisplayMap::Display> displays;
  for (const QScreen* screen : ordered) {
    // Without any output connected Qt keeps one screen of no size.
    if (!screen->geometry().isEmpty()) displays.push_back(displayOf(*screen));
  }
  map_ = DisplayMap(std::move(displays));
  screens_.clear();
  std::size_t index = 0;
  for (const QScreen* screen : ordered) {
    if (screen->geometry().isEmpty()) continue;
    const Rect frame = map_.displays()[index++].frame;
    screens_.push_back({.frame = frame,
                        .visibleFrame = visibleFrameOf(*screen, frame),
                        .backingScaleFactor = screen->devicePixelRatio()});
  }
}

}  // namespace qb
