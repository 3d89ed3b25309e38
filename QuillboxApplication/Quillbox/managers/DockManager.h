#pragma once

#include <cstdint>

#include "QuillboxCommon/Geometry.h"

namespace qb {

class Displays;

/// The side of the screen at which the Dock stands.
enum DockOrientation : std::int32_t {
  DockOrientationNone = 0,
  DockOrientationLeft = 1,
  DockOrientationRight = 2,
  DockOrientationBottom = 3,
};

/// What is known of the desktop's Dock. Main thread.
class DockManager {
 public:
  explicit DockManager(Displays& displays) : displays_(displays) {}

  /// Where the Dock lies on the primary screen, worked out from what the screen's visible frame
  /// leaves free. With equal widths the answer is always the bottom, also when there is no Dock.
  /// Intended.
  struct FrameAndOrientation {
    Rect frame;
    DockOrientation orientation = DockOrientationNone;
    friend bool operator==(const FrameAndOrientation&, const FrameAndOrientation&) = default;
  };
  FrameAndOrientation dockFrameAndOrientation() const;

 private:
  Displays& displays_;
};

}  // namespace qb
