#pragma once

#include <cstdint>

#include "QuillboxCommon/views/Image.h"

namespace qb {

/// The window server's number of a window; 0 is none.
using WindowID = std::uint32_t;

/// Pictures of the windows of other programs. Main thread.
class WindowPictures {
 public:
  virtual ~WindowPictures() = default;
  /// What the window shows, without frame and shadow, as large as the window in points. Of a
  /// window that is not on the screen, what it showed last. No picture is drawn larger than
  /// `largest`, so finer pixels may be left out. An empty image when there is no such window, or
  /// nothing is known of it yet: asking is what makes it known, and the next answer may be better.
  virtual Image imageOfWindow(WindowID window, Size largest) = 0;
};

}  // namespace qb
