#pragma once

#include <functional>
#include <map>
#include <vector>

#include "Platform/Displays.h"

namespace qb {

/// Screens as they are set: one of 1440 by 900 points at first, without panels.
class SimulatedDisplays : public Displays {
 public:
  std::vector<Screen> screens() const override { return screens_; }
  Subscription registerReconfigurationCallback(std::function<void()> callback) override;

  /// Replaces the configuration and tells of it.
  void setScreens(std::vector<Screen> screens);
  /// The frame of the screen at the origin; the zero rectangle without one.
  Rect primaryScreenFrame() const;
  /// Turns a point of the lower-left space into one of the top-left space, and back.
  Point flipped(Point point) const { return {point.x, primaryScreenFrame().height() - point.y}; }

 private:
  std::vector<Screen> screens_{
      {Rect::make(0, 0, 1440, 900), Rect::make(0, 0, 1440, 900), 1},
  };
  std::map<int, std::function<void()>> callbacks_;
  int nextCallback_ = 0;
};

}  // namespace qb
