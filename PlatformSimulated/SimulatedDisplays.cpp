#include "PlatformSimulated/SimulatedDisplays.h"

#include <utility>

namespace qb {

Subscription SimulatedDisplays::registerReconfigurationCallback(std::function<void()> callback) {
  const int key = nextCallback_++;
  callbacks_[key] = std::move(callback);
  return Subscription([this, key] { callbacks_.erase(key); });
}

void SimulatedDisplays::setScreens(std::vector<Screen> screens) {
  screens_ = std::move(screens);
  const auto callbacks = callbacks_;
  for (const auto& [key, callback] : callbacks) {
    if (callbacks_.contains(key)) callback();
  }
}

Rect SimulatedDisplays::primaryScreenFrame() const {
  for (const Screen& screen : screens_) {
    if (screen.frame.origin == Point{}) return screen.frame;
  }
  return {};
}

}  // namespace qb
