#pragma once

#include <cstdint>

namespace qb {

/// Whether the panel is up.
enum ActivationState : std::int32_t {
  ActivationStateInactive = 0,
  ActivationStateActive = 1,
};

/// What the double tap knows of the left Command key from its last look.
enum ActivationKeyState : std::int32_t {
  ActivationKeyUp = 0,
  ActivationKeyDown = 1,
};

/// What brought the panel up.
enum ActivationMethod : std::int32_t {
  ActivationMethodCommandDoubleTap = 0,
  ActivationMethodCommandTab = 1,
  ActivationMethodOptionTab = 2,
  ActivationMethodCorner = 3,
};

/// The ways out that an activation allows, as bits.
enum DismissalMethod : std::int32_t {
  DismissalMethodEscapeKey = 1,
  DismissalMethodCommandTap = 2,
  DismissalMethodCorner = 4,
  /// Nobody asks for this bit: a press outside dismisses with or without it. Intended.
  DismissalMethodExternalMouseDown = 8,
  DismissalMethodOptionLifted = 16,
  DismissalMethodCommandLifted = 32,
};

enum ActivationCorner : std::int32_t {
  ActivationCornerNone = 0,
  ActivationCornerTopLeft = 1,
  ActivationCornerTopRight = 2,
  ActivationCornerBottomLeft = 3,
  ActivationCornerBottomRight = 4,
};

}  // namespace qb
