#include "PlatformDesktop/input/KeyboardHold.h"

#include <algorithm>

namespace qb {

void KeyboardHold::pressed(std::uint32_t serial, std::uint16_t modifier, Moment now) {
  lastPressed_ = serial;
  waitEnd_ = now + longestWait;
  if (modifier != 0) modifier_ = modifier;
}

void KeyboardHold::handled(std::uint32_t serial, Moment now) {
  lastHandled_ = std::max(lastHandled_, serial);
  settleEnd_ = now + settleTime;
}

void KeyboardHold::setModifiersDown(std::uint16_t modifiers) {
  if ((modifiers & modifier_) == 0) modifier_ = 0;
}

void KeyboardHold::setEveryKeyDown(bool everyKeyDown) {
  if (everyKeyDown_ && !everyKeyDown) {
    // The panel is gone, and with it what the presses before were held for.
    modifier_ = 0;
    settleEnd_ = 0;
  }
  everyKeyDown_ = everyKeyDown;
}

void KeyboardHold::end() {
  modifier_ = 0;
  lastHandled_ = lastPressed_;
  settleEnd_ = 0;
}

bool KeyboardHold::isWanted(Moment now) const {
  if (everyKeyDown_ || modifier_ != 0) return true;
  if (lastHandled_ < lastPressed_) return now < waitEnd_;
  return now < settleEnd_;
}

std::optional<Moment> KeyboardHold::nextDeadline() const {
  if (everyKeyDown_ || modifier_ != 0) return std::nullopt;
  return lastHandled_ < lastPressed_ ? waitEnd_ : settleEnd_;
}

}  // namespace qb
