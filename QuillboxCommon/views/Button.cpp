#include "QuillboxCommon/views/Button.h"

namespace qb {
namespace {

constexpr double pressedFraction = 0.5;

}  // namespace

void Button::draw(Canvas& canvas) { drawImage(canvas, pressed_ ? pressedFraction : 1); }

void Button::performClick() {
  // A copy: the action may set another, or do away with the button.
  if (const Action action = action_) action();
}

bool Button::isInside(const Event& event) const {
  return contains(bounds(), convertPointFromView(event.location, nullptr));
}

void Button::highlight(bool pressed) {
  if (pressed == pressed_) return;
  pressed_ = pressed;
  setNeedsDisplay();
}

void Button::mouseDown(const Event& event) {
  tracking_ = true;
  highlight(isInside(event));
}

void Button::mouseDragged(const Event& event) {
  if (tracking_) highlight(isInside(event));
}

void Button::mouseUp(const Event& event) {
  if (!tracking_) return;
  tracking_ = false;
  highlight(false);
  if (isInside(event)) performClick();
}

}  // namespace qb
