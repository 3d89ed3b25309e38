#pragma once

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// The default by which the user keeps this program from the desktop's input: a boolean, set in the
/// preference program.
inline constexpr const char* kInputAccessIsDeniedKey = "InputAccessIsDenied";
/// The default by which the desktop's own switch for assistive technologies decides as well: a
/// boolean, set there too.
inline constexpr const char* kInputAccessFollowsDesktopKey = "InputAccessFollowsDesktop";

/// The right to see and take the desktop's input. Main thread.
class Accessibility {
 public:
  virtual ~Accessibility() = default;
  /// `AXIsProcessTrusted`: whether an event tap can be had now.
  virtual bool isProcessTrusted() const = 0;

  /// The platform signals it when the answer above changes.
  ChangeNotice& trustChanged() { return trustChanged_; }

 private:
  ChangeNotice trustChanged_;
};

}  // namespace qb
