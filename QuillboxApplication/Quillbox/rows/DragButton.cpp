#include "Quillbox/rows/DragButton.h"

#include "Platform/Pointer.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr TimeInterval watchInterval = 0.1;

}  // namespace

DragButton::DragButton(const Image& image, Size size, DragButtonTarget& target)
    : RowButton(image, size), target_(target) {}

DragButton::~DragButton() {
  if (timer_) timer_->done();
}

void DragButton::mouseDown(const Event& event) {
  highlight(true);
  target_.mouseDownInButton(event);
  if (timer_) timer_->done();
  timer_ = Timer::timerWithName("Drag Button Timer", watchInterval, [this, event](const auto&) {
    if (quillbox->platform().pointer().pressedMouseButtons() == 0) mouseUp(event);
  });
}

void DragButton::mouseUp(const Event& event) {
  highlight(false);
  target_.mouseUpForButton(event);
  if (timer_) timer_ = timer_->done();
}

}  // namespace qb
