#pragma once

#include <functional>
#include <vector>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

/// One screen. Frames are in points with the origin at the lower left of the primary screen.
struct Screen {
  Rect frame;
  /// Without the strips that docks and panels keep.
  Rect visibleFrame;
  double backingScaleFactor = 1;
  friend bool operator==(const Screen&, const Screen&) = default;
};

/// The screens. Main thread.
class Displays {
 public:
  virtual ~Displays() = default;
  /// The primary screen's origin is (0, 0). Empty when no screen is connected.
  virtual std::vector<Screen> screens() const = 0;
  /// Calls `callback` after each change of the configuration.
  [[nodiscard]] virtual Subscription registerReconfigurationCallback(
      std::function<void()> callback) = 0;
};

}  // namespace qb
