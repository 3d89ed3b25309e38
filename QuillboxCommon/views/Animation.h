#pragma once

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class View;

/// The duration, in seconds, of animations begun outside any group.
inline constexpr TimeInterval defaultAnimationDuration = 0.25;

/// While it lives, animators take `duration` seconds. Groups nest: the innermost counts. With
/// duration 0 the change happens at once. Main thread.
class AnimationGroup {
 public:
  explicit AnimationGroup(TimeInterval duration = defaultAnimationDuration);
  ~AnimationGroup();
  AnimationGroup(const AnimationGroup&) = delete;
  AnimationGroup& operator=(const AnimationGroup&) = delete;
  static TimeInterval currentDuration();

 private:
  TimeInterval outer_;
};

/// Changes a view's frame or alpha over time, easing in and out, on the main run loop in the
/// common modes. The view's property moves step by step and ends exactly on the target. A new
/// animation of the same property replaces the one under way, and so does setting the property
/// directly. A view that goes away ends its animations. While nothing is animated no timer runs.
/// The steps are taken through the view's own (virtual) setters.
class ViewAnimator {
 public:
  explicit ViewAnimator(View& view) : view_(view) {}
  void setFrame(const Rect& frame);
  /// The size stays as it is, or goes on to where it is being animated to.
  void setFrameOrigin(Point origin);
  void setAlphaValue(double alpha);

 private:
  View& view_;
};

}  // namespace qb
