#include "Quillbox/activation/ActivationCorners.h"

#include <cmath>

#include "Quillbox/activation/Settings.h"

namespace qb {

namespace {

constexpr double reach = 1;
constexpr double clearance = 5;
/// For what is no corner: neither in it nor, by this much, anywhere near.
constexpr double farAway = 100;

struct Distance {
  double dx, dy;
};

/// Only a screen at the origin is ever given, so its height alone is where its top lies.
Distance distanceFromCorner(Point location, std::int32_t corner, const Rect& screen) {
  const double fromLeft = location.x - screen.x();
  const double fromRight = location.x - screen.maxX();
  const double fromTop = location.y - screen.height();
  const double fromBottom = location.y - screen.y();
  switch (corner) {
    case ActivationCornerTopLeft:
      return {fromLeft, fromTop};
    case ActivationCornerTopRight:
      return {fromRight, fromTop};
    case ActivationCornerBottomLeft:
      return {fromLeft, fromBottom};
    case ActivationCornerBottomRight:
      return {fromRight, fromBottom};
    default:
      return {farAway, farAway};
  }
}

}  // namespace

bool ActivationCorners::locationIsInCorner(Point location, std::int32_t corner,
                                           const Rect& screen) {
  const Distance distance = distanceFromCorner(location, corner, screen);
  return std::abs(distance.dx) < reach && std::abs(distance.dy) < reach;
}

bool ActivationCorners::locationIsAwayFromCorner(Point location, std::int32_t corner,
                                                 const Rect& screen) {
  const Distance distance = distanceFromCorner(location, corner, screen);
  return std::abs(distance.dx) >= clearance && std::abs(distance.dy) >= clearance;
}

bool ActivationCorners::monitorMouseForCornerActivation(Point location, const Rect& screen,
                                                        const Settings& settings) {
  if (!deactivationCornerHasBeenExited_) {
    deactivationCornerHasBeenExited_ =
        locationIsAwayFromCorner(location, activationCorner_, screen);
    return false;
  }
  const struct {
    ActivationCorner corner;
    bool isInUse;
  } corners[] = {
      {ActivationCornerTopLeft, settings.applicationActivatesViaTopLeftCorner()},
      {ActivationCornerTopRight, settings.applicationActivatesViaTopRightCorner()},
      {ActivationCornerBottomLeft, settings.applicationActivatesViaBottomLeftCorner()},
      {ActivationCornerBottomRight, settings.applicationActivatesViaBottomRightCorner()},
  };
  activationCorner_ = ActivationCornerNone;
  for (const auto& each : corners) {
    if (each.isInUse && locationIsInCorner(location, each.corner, screen)) {
      activationCorner_ = each.corner;
    }
  }
  if (activationCorner_ == ActivationCornerNone) return false;
  activationCornerHasBeenExited_ = false;
  return true;
}

bool ActivationCorners::monitorMouseForCornerDismissal(Point location, const Rect& screen) {
  if (!activationCornerHasBeenExited_) {
    activationCornerHasBeenExited_ = locationIsAwayFromCorner(location, activationCorner_, screen);
    return false;
  }
  if (!locationIsInCorner(location, activationCorner_, screen)) return false;
  deactivationCornerHasBeenExited_ = false;
  return true;
}

}  // namespace qb
