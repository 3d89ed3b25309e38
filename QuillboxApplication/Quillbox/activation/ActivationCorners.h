#pragma once

#include <cstdint>

#include "Quillbox/activation/ActivationTypes.h"
#include "QuillboxCommon/Geometry.h"

namespace qb {

class Settings;

/// The screen corners that raise the panel and dismiss it again. Locations have their origin at
/// the lower left. The edges of the settings are never tested. Intended.
class ActivationCorners {
 public:
  /// Within a point of the corner, on both axes.
  static bool locationIsInCorner(Point location, std::int32_t corner, const Rect& screen);
  /// At least five points off, on both axes: moving out along an edge does not count.
  static bool locationIsAwayFromCorner(Point location, std::int32_t corner, const Rect& screen);

  /// True when the pointer has come into a corner that is in use; after a dismissal only once it
  /// has been away from the corner that raised the panel last.
  bool monitorMouseForCornerActivation(Point location, const Rect& screen,
                                       const Settings& settings);
  /// True when the pointer has been away from the corner that raised the panel and is back.
  bool monitorMouseForCornerDismissal(Point location, const Rect& screen);
  void noteDismissal() { deactivationCornerHasBeenExited_ = false; }
  std::int32_t activationCorner() const { return activationCorner_; }

 private:
  std::int32_t activationCorner_ = ActivationCornerNone;
  bool activationCornerHasBeenExited_ = false;
  bool deactivationCornerHasBeenExited_ = true;
};

}  // namespace qb
