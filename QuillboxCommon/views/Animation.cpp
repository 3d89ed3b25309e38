#include "QuillboxCommon/views/Animation.h"

#include "QuillboxCommon/views/AnimationDriver.h"
#include "QuillboxCommon/views/View.h"

namespace qb {
namespace {

TimeInterval groupDuration = defaultAnimationDuration;

}  // namespace

AnimationGroup::AnimationGroup(TimeInterval duration) : outer_(groupDuration) {
  groupDuration = duration;
}

AnimationGroup::~AnimationGroup() { groupDuration = outer_; }

TimeInterval AnimationGroup::currentDuration() { return groupDuration; }

void ViewAnimator::setFrame(const Rect& frame) {
  AnimationDriver::animateFrame(view_, frame, AnimationGroup::currentDuration());
}

void ViewAnimator::setFrameOrigin(Point origin) {
  const Rect target = AnimationDriver::targetFrame(view_).value_or(view_.frame());
  setFrame({origin, target.size});
}

void ViewAnimator::setAlphaValue(double alpha) {
  AnimationDriver::animateAlpha(view_, alpha, AnimationGroup::currentDuration());
}

ViewAnimator View::animator() { return ViewAnimator(*this); }

}  // namespace qb
