#include "QuillboxCommon/views/AnimationDriver.h"

#include <algorithm>
#include <cmath>

#include "QuillboxCommon/views/View.h"

namespace qb {
namespace {

constexpr TimeInterval frameInterval = 1.0 / 60;
// Sums of frame intervals miss an end by rounding; what is this near counts as reached.
constexpr TimeInterval tolerance = 1e-6;

double easeInOut(double t) { return t * t * (3 - 2 * t); }

}  // namespace

std::weak_ptr<AnimationDriver> AnimationDriver::current_;

std::shared_ptr<AnimationDriver> AnimationDriver::forMainLoop() {
  auto driver = current_.lock();
  if (!driver || &driver->loop_ != &RunLoop::main()) {
    driver = std::make_shared<AnimationDriver>(RunLoop::main());
    current_ = driver;
  }
  return driver;
}

AnimationDriver::Values AnimationDriver::valuesOf(const View& view, Property property) {
  if (property == Property::Alpha) return {view.alphaValue()};
  const Rect& frame = view.frame();
  return {frame.x(), frame.y(), frame.width(), frame.height()};
}

void AnimationDriver::apply(View& view, Property property, const Values& values) {
  if (property == Property::Alpha) {
    view.setAlphaValue(values[0]);
  } else {
    view.setFrame(Rect::make(values[0], values[1], values[2], values[3]));
  }
}

void AnimationDriver::animateFrame(View& view, const Rect& target, TimeInterval duration) {
  animate(view, Property::Frame, {target.x(), target.y(), target.width(), target.height()},
          duration);
}

void AnimationDriver::animateAlpha(View& view, double target, TimeInterval duration) {
  animate(view, Property::Alpha, {std::clamp(target, 0.0, 1.0)}, duration);
}

void AnimationDriver::animate(View& view, Property property, const Values& target,
                              TimeInterval duration) {
  const Values from = valuesOf(view, property);
  // A view that nobody shares (yet) could not be followed.
  if (duration <= 0 || from == target || view.weak_from_this().expired()) {
    if (const auto driver = current_.lock()) driver->remove(view, property);
    apply(view, property, target);
    return;
  }
  const auto driver = forMainLoop();
  std::erase_if(driver->animations_, [&](const Animation& animation) {
    return animation.key == &view && animation.property == property;
  });
  const Moment now = driver->loop_.now();
  driver->animations_.push_back({++driver->lastSerial_, &view, view.weak_from_this(), property,
                                 from, target, now, now + duration});
  driver->wakeAt(std::min(driver->frameAfter(now), now + duration));
}

void AnimationDriver::noteSetting(const View& view, Property property) {
  const auto driver = current_.lock();
  if (!driver) return;
  if (driver->steppedView_ == &view && driver->steppedProperty_ == property) return;
  driver->remove(view, property);
}

std::optional<Rect> AnimationDriver::targetFrame(const View& view) {
  const auto driver = current_.lock();
  if (!driver) return std::nullopt;
  for (const Animation& animation : driver->animations_) {
    if (animation.key != &view || animation.property != Property::Frame) continue;
    const Values& to = animation.to;
    return Rect::make(to[0], to[1], to[2], to[3]);
  }
  return std::nullopt;
}

void AnimationDriver::remove(const View& view, Property property) {
  std::erase_if(animations_, [&](const Animation& animation) {
    return animation.key == &view && animation.property == property;
  });
  if (!animations_.empty()) return;
  if (const auto timer = timer_.lock()) timer->invalidate();
}

void AnimationDriver::tick() {
  const auto keep = shared_from_this();
  timer_.reset();
  const Moment now = loop_.now();
  std::vector<std::uint64_t> serials;
  Moment next = distantFuture;
  for (const Animation& animation : animations_) {
    serials.push_back(animation.serial);
    if (animation.end > now + tolerance) {
      next = std::min({next, animation.end, frameAfter(now)});
    }
  }
  // Before the steps: a view may run the loop from within its setter.
  if (next < distantFuture) wakeAt(next);
  for (const std::uint64_t serial : serials) step(serial, now);
  if (!animations_.empty()) return;
  if (const auto timer = timer_.lock()) timer->invalidate();
}

void AnimationDriver::step(std::uint64_t serial, Moment now) {
  const auto found = std::find_if(animations_.begin(), animations_.end(),
                                  [&](const Animation& one) { return one.serial == serial; });
  if (found == animations_.end()) return;
  const Animation animation = *found;
  const auto view = animation.view.lock();
  const bool isOver = animation.end <= now + tolerance;
  if (!view || isOver) animations_.erase(found);
  if (!view) return;

  Values values = animation.to;
  if (!isOver) {
    const double done = easeInOut((now - animation.start) / (animation.end - animation.start));
    for (std::size_t i = 0; i < values.size(); ++i) {
      values[i] = animation.from[i] + (animation.to[i] - animation.from[i]) * done;
    }
  }
  const View* const outerView = steppedView_;
  const Property outerProperty = steppedProperty_;
  steppedView_ = view.get();
  steppedProperty_ = animation.property;
  apply(*view, animation.property, values);
  steppedView_ = outerView;
  steppedProperty_ = outerProperty;
}

Moment AnimationDriver::frameAfter(Moment moment) const {
  const double frames = std::floor((moment - firstFrame_ + tolerance) / frameInterval);
  return firstFrame_ + (frames + 1) * frameInterval;
}

void AnimationDriver::wakeAt(Moment moment) {
  if (const auto timer = timer_.lock(); timer && timer->isValid()) {
    if (timer->fireMoment() <= moment) return;
    timer->invalidate();
  }
  timer_ = loop_.scheduleTimer(
      moment - loop_.now(), false, [self = shared_from_this()](RunLoopTimer&) { self->tick(); },
      RunLoopModes::common());
}

}  // namespace qb
