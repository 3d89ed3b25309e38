#include "QuillboxCommon/views/EventCaptureView.h"

#include <memory>

#include "QuillboxCommon/RunLoop.h"

namespace qb {
namespace {

constexpr TimeInterval menuCloseGrace = 0.5;

// The moment up to which releases are dropped. The loop's queue owns it, so that it does not
// outlast the loop whose clock it belongs to.
std::weak_ptr<const Moment> dropsMouseUpsUntil;

bool dropsMouseUps() {
  const auto until = dropsMouseUpsUntil.lock();
  return until && RunLoop::main().now() < *until;
}

}  // namespace

void EventCaptureView::notePopUpMenuDidClose() {
  RunLoop& loop = RunLoop::main();
  const auto until = std::make_shared<const Moment>(loop.now() + menuCloseGrace);
  loop.executeOnMainQueue([until] {}, menuCloseGrace);
  dropsMouseUpsUntil = until;
}

void EventCaptureView::scrollWheel(const Event& event) {
  if (delegate_ && (eventFlags_ & ScrollWheel)) {
    delegate_->scrollWheelInEventCaptureView(event, *this);
  }
}

void EventCaptureView::mouseDown(const Event& event) {
  if (delegate_ && (eventFlags_ & MouseDown)) delegate_->mouseDownInEventCaptureView(event, *this);
}

void EventCaptureView::mouseUp(const Event& event) {
  if (dropsMouseUps()) return;
  if (delegate_ && (eventFlags_ & MouseUp)) delegate_->mouseUpInEventCaptureView(event, *this);
}

void EventCaptureView::rightMouseDown(const Event& event) {
  if (delegate_ && (eventFlags_ & RightMouseDown)) {
    delegate_->rightMouseDownInEventCaptureView(event, *this);
  }
}

void EventCaptureView::rightMouseUp(const Event& event) {
  if (delegate_ && (eventFlags_ & RightMouseUp)) {
    delegate_->rightMouseUpInEventCaptureView(event, *this);
  }
}

void EventCaptureView::keyDown(const Event& event) {
  if (delegate_ && (eventFlags_ & KeyDown)) delegate_->keyDownInEventCaptureView(event, *this);
}

}  // namespace qb
