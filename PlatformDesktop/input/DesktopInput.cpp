#include "PlatformDesktop/input/DesktopInput.h"

#include <utility>
#include <vector>

namespace qb {

std::variant<std::unique_ptr<DesktopInput>, InputError> DesktopInput::create(DesktopInputHost host,
                                                                             const char* display) {
  auto queries = InputConnection::open(display);
  if (auto* error = std::get_if<InputError>(&queries)) return std::move(*error);
  auto events = InputConnection::open(display);
  if (auto* error = std::get_if<InputError>(&events)) return std::move(*error);
  return std::unique_ptr<DesktopInput>(
      new DesktopInput(std::move(host), std::get<InputConnection>(std::move(queries)),
                       std::get<InputConnection>(std::move(events))));
}

DesktopInput::DesktopInput(DesktopInputHost host, InputConnection queries, InputConnection events)
    : host_(std::move(host)),
      queries_(std::move(queries)),
      queue_(host_.wake),
      thread_(std::move(events), queue_),
      accessibility_(host_.isAllowed),
      eventTap_(thread_, [this] { return accessibility_.isProcessTrusted(); }),
      hotKeys_(thread_),
      keyboard_(queries_, queue_),
      pointer_(queries_, host_.pointerSpace),
      typer_(queries_, queue_, thread_) {
  // Keys that are down already are known from the start.
  takeEvents();
}

void DesktopInput::drain() {
  takeEvents();
  while (!waiting_.empty() && !eventTap_.holdsBack(host_.currentMode())) {
    const InputEvent event = waiting_.front();
    waiting_.pop_front();
    handOn(event);
  }
}

void DesktopInput::catchUp() {
  thread_.ask([](InputWorker& worker) {
    worker.catchUpWithServer();
    return true;
  });
  drain();
}

void DesktopInput::takeEvents() {
  std::vector<InputEvent> events;
  if (queue_.take(events)) keyboard_.keysChanged().signal();
  waiting_.insert(waiting_.end(), events.begin(), events.end());
}

void DesktopInput::handOn(const InputEvent& event) {
  switch (event.kind) {
    case InputEvent::Kind::KeyDownSeen:
      eventTap_.noteKeyDown();
      break;
    case InputEvent::Kind::Key:
      handOnKey(event);
      break;
    case InputEvent::Kind::Button:
      handOnButton(event);
      break;
  }
}

void DesktopInput::handOnKey(const InputEvent& event) {
  TappedEvent tapped;
  tapped.type = event.type;
  tapped.flags = event.flags;
  tapped.keyCode = event.keyCode;
  tapped.isRepeat = event.isRepeat;
  pressInHand_ = event.serial;
  const bool passes = eventTap_.tap(tapped);
  if (passes && event.isOwned) {
    const bool isHotKey =
        event.type == EventTypeKeyDown &&
        hotKeys_.press({event.keyCode, event.flags & combinationFlags}, event.isRepeat);
    if (!isHotKey && host_.deliverKey) host_.deliverKey(tapped);
  }
  pressInHand_ = event.serial;
  settlePress();
}

void DesktopInput::settlePress() {
  const std::uint32_t serial = std::exchange(pressInHand_, 0);
  if (serial == 0) return;
  thread_.post([serial](InputWorker& worker) { worker.setHandled(serial); });
}

void DesktopInput::handOnButton(const InputEvent& event) {
  if (host_.isOwnWindow(event.window)) return;
  const PointerSpace space = host_.pointerSpace();
  TappedEvent tapped;
  tapped.type = event.type;
  tapped.flags = event.flags;
  tapped.location = space.location(event.x, event.y);
  tapped.unflippedLocation = space.unflippedLocation(event.x, event.y);
  // The window under the pointer gets the press whatever the answer is.
  eventTap_.tap(tapped);
}

}  // namespace qb
