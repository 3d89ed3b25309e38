#pragma once

#include <functional>
#include <utility>

#include "Platform/Accessibility.h"

namespace qb {

/// An X server that serves the connections of this program grants all. What may say no is the user:
/// QUILLBOX_NO_INPUT_ACCESS in the environment, or `isAllowed`.
class DesktopAccessibility : public Accessibility {
 public:
  /// `isAllowed` may be empty.
  explicit DesktopAccessibility(std::function<bool()> isAllowed)
      : isAllowed_(std::move(isAllowed)) {}

  bool isProcessTrusted() const override;

 private:
  std::function<bool()> isAllowed_;
};

}  // namespace qb
