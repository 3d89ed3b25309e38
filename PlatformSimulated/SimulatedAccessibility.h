#pragma once

#include <functional>

#include "Platform/Accessibility.h"

namespace qb {

/// The grant, given and taken back by hand. It stands at first.
class SimulatedAccessibility : public Accessibility {
 public:
  bool isProcessTrusted() const override { return trusted_; }

  /// Taking it back disables a tap that stands; giving it enables nothing.
  void setTrusted(bool trusted) {
    trusted_ = trusted;
    if (!trusted && onRevoked_) onRevoked_();
    trustChanged().signal();
  }
  /// For the tap.
  void setOnRevoked(std::function<void()> onRevoked) { onRevoked_ = std::move(onRevoked); }

 private:
  bool trusted_ = true;
  std::function<void()> onRevoked_;
};

}  // namespace qb
