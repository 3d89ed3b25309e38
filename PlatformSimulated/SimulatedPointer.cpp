#include "PlatformSimulated/SimulatedPointer.h"

#include <cmath>
#include <optional>
#include <utility>

namespace qb {

namespace {

constexpr TimeInterval doubleClickInterval = 0.5;
constexpr double doubleClickDistance = 4;

/// Of the buttons that make events: left and right.
std::optional<EventType> eventType(int button, EventType left, EventType right) {
  if (button == 0) return left;
  if (button == 1) return right;
  return std::nullopt;
}

}  // namespace

void SimulatedPointer::moveTo(Point point) {
  if (point == location_) return;
  location_ = point;
  if (pressedWindow_ != nullptr) {
    if (parts_.windowServer.contains(pressedWindow_)) {
      deliver(*pressedWindow_,
              (pressedButtons_ & 1U) != 0 ? EventTypeLeftMouseDragged : EventTypeRightMouseDragged);
    }
  } else if (pressedClient_.isNull()) {
    if (SimulatedWindowPeer* window = parts_.windowServer.windowAt(location_)) {
      deliver(*window, EventTypeMouseMoved);
    }
  }
}

void SimulatedPointer::press(int button) {
  pressedButtons_ |= 1U << button;
  const auto type = eventType(button, EventTypeLeftMouseDown, EventTypeRightMouseDown);
  if (!type) return;
  countClick();
  pressedWindow_ = nullptr;
  pressedClient_ = {};
  const bool menuIsOpen = parts_.menuPresenter.menuIsOpen();
  const bool passedOn = parts_.eventTap.process(tappedEvent(*type));
  if (menuIsOpen) {
    if (passedOn) parts_.menuPresenter.pressOutside();
    return;
  }
  if (SimulatedWindowPeer* window = parts_.windowServer.windowAt(location_)) {
    if (!passedOn) return;
    pressedWindow_ = window;
    deliver(*window, *type);
    return;
  }
  pressedClient_ = parts_.processes.clientAt(location_);
  if (pressedClient_.isNull()) return;
  clientReceived_.push_back({pressedClient_, *type, location_});
  parts_.processes.bringToFront(pressedClient_);
}

void SimulatedPointer::release(int button) {
  pressedButtons_ &= ~(1U << button);
  const auto type = eventType(button, EventTypeLeftMouseUp, EventTypeRightMouseUp);
  if (!type) return;
  SimulatedWindowPeer* window = std::exchange(pressedWindow_, nullptr);
  const ProcessSerialNumber client = std::exchange(pressedClient_, {});
  if (!client.isNull()) {
    if (parts_.processes.isRunning(client)) clientReceived_.push_back({client, *type, location_});
  } else if (parts_.windowServer.contains(window)) {
    deliver(*window, *type);
  }
}

void SimulatedPointer::click(int button) {
  press(button);
  release(button);
}

void SimulatedPointer::scroll(double dx, double dy) {
  const bool passedOn = parts_.eventTap.process(tappedEvent(EventTypeScrollWheel));
  if (parts_.menuPresenter.menuIsOpen()) return;
  if (SimulatedWindowPeer* window = parts_.windowServer.windowAt(location_)) {
    if (passedOn) deliver(*window, EventTypeScrollWheel, dx, dy);
    return;
  }
  const ProcessSerialNumber client = parts_.processes.clientAt(location_);
  if (!client.isNull()) clientReceived_.push_back({client, EventTypeScrollWheel, location_});
}

TappedEvent SimulatedPointer::tappedEvent(EventType type) const {
  TappedEvent event;
  event.type = type;
  event.flags = parts_.keyboard.modifierFlags();
  event.location = parts_.displays.flipped(location_);
  event.unflippedLocation = location_;
  return event;
}

void SimulatedPointer::deliver(SimulatedWindowPeer& window, EventType type, double dx, double dy) {
  if (!window.isVisible()) return;
  const Point origin = window.frame().origin;
  Event event;
  event.type = type;
  event.flags = parts_.keyboard.modifierFlags();
  event.location = {location_.x - origin.x, location_.y - origin.y};
  event.deltaX = dx;
  event.deltaY = dy;
  if (type != EventTypeMouseMoved && type != EventTypeScrollWheel) event.clickCount = clickCount_;
  window.deliver(event);
}

void SimulatedPointer::countClick() {
  const Moment now = parts_.host.now();
  const bool goesOn = clickCount_ > 0 && now - lastPressMoment_ <= doubleClickInterval &&
                      std::abs(location_.x - lastPressLocation_.x) <= doubleClickDistance &&
                      std::abs(location_.y - lastPressLocation_.y) <= doubleClickDistance;
  clickCount_ = goesOn ? clickCount_ + 1 : 1;
  lastPressMoment_ = now;
  lastPressLocation_ = location_;
}

}  // namespace qb
