#pragma once

namespace qb {

/// The right to see and take the desktop's input. Main thread.
class Accessibility {
 public:
  virtual ~Accessibility() = default;
  /// `AXIsProcessTrusted`: whether an event tap can be had now.
  virtual bool isProcessTrusted() const = 0;
};

}  // namespace qb
