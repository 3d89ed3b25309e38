#include "Quillbox/activation/CommandKeyDoubleTap.h"

#include <cmath>

namespace qb {

namespace {

constexpr TimeInterval tapTime = 0.5;
constexpr std::int64_t tapsWanted = 2;

/// In whole microseconds, as the loop tells moments apart: half a second is neither more nor less
/// than half a second, whatever the sums behind it.
TimeInterval secondsBetween(Moment earlier, Moment later) {
  return std::round((later - earlier) * 1e6) / 1e6;
}

}  // namespace

void CommandKeyDoubleTap::resetCommandKeyDoubleTapActivation() {
  activationKeyTapCount_ = 0;
  lastTapCompletionTime_.reset();
}

bool CommandKeyDoubleTap::monitorKeysForCommandKeyDoubleTapActivation(bool keyIsDown, Moment now) {
  if (lastTapCompletionTime_ && secondsBetween(*lastTapCompletionTime_, now) > tapTime) {
    resetCommandKeyDoubleTapActivation();
  }
  const ActivationKeyState state = keyIsDown ? ActivationKeyDown : ActivationKeyUp;
  if (state == activationKeyState_) return false;
  activationKeyState_ = state;
  if (state == ActivationKeyDown) {
    activationKeyStateDownStartTime_ = now;
    return false;
  }
  if (secondsBetween(activationKeyStateDownStartTime_, now) > tapTime) {
    resetCommandKeyDoubleTapActivation();
    return false;
  }
  bool isDoubleTap = false;
  if (!lastTapCompletionTime_ || secondsBetween(*lastTapCompletionTime_, now) < tapTime) {
    if (++activationKeyTapCount_ == tapsWanted) {
      activationKeyTapCount_ = 0;
      isDoubleTap = true;
    }
  }
  lastTapCompletionTime_ = now;
  return isDoubleTap;
}

}  // namespace qb
