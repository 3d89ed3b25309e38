#pragma once

#include <cstdint>

namespace qb {

/// One press of a hot key, or of a chord taken at the tap, on its way to the next pass of the loop.
struct HotKeyActivation {
  std::int32_t hotKeyID = 0;
  /// How the panel comes up if this press is to raise it.
  std::int32_t activationMethod = 0;
};

}  // namespace qb
