#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class View;

/// Moves properties of views over time: the work behind `ViewAnimator`, for the views' own use.
///
/// There is one driver while something is animated, and it is owned by its pending timer alone:
/// with the last animation, or with the run loop, it goes away and leaves nothing behind. Main
/// thread.
class AnimationDriver : public std::enable_shared_from_this<AnimationDriver> {
 public:
  enum class Property : std::uint8_t { Frame, Alpha };

  explicit AnimationDriver(RunLoop& loop) : loop_(loop), firstFrame_(loop.now()) {}

  static void animateFrame(View& view, const Rect& target, TimeInterval duration);
  static void animateAlpha(View& view, double target, TimeInterval duration);
  /// The property is being set: ends its animation, unless that is what sets it.
  static void noteSetting(const View& view, Property property);
  /// Where the view's frame is being animated to, if it is.
  static std::optional<Rect> targetFrame(const View& view);

 private:
  /// The numbers of a property; alpha uses the first only.
  using Values = std::array<double, 4>;
  struct Animation {
    std::uint64_t serial;
    const View* key;
    std::weak_ptr<View> view;
    Property property;
    Values from, to;
    Moment start, end;
  };

  static std::shared_ptr<AnimationDriver> forMainLoop();
  static Values valuesOf(const View& view, Property property);
  static void animate(View& view, Property property, const Values& target, TimeInterval duration);
  static void apply(View& view, Property property, const Values& values);
  void remove(const View& view, Property property);
  void tick();
  void step(std::uint64_t serial, Moment now);
  Moment frameAfter(Moment moment) const;
  void wakeAt(Moment moment);

  static std::weak_ptr<AnimationDriver> current_;

  RunLoop& loop_;
  /// Where the grid of frames begins.
  const Moment firstFrame_;
  std::weak_ptr<RunLoopTimer> timer_;
  std::vector<Animation> animations_;
  std::uint64_t lastSerial_ = 0;
  const View* steppedView_ = nullptr;
  Property steppedProperty_ = Property::Frame;
};

}  // namespace qb
