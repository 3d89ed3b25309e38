#pragma once

#include "QuillboxCommon/RunLoop.h"

namespace qb {

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
