#pragma once

#include <map>
#include <memory>
#include <string>

#include "Platform/WindowPictures.h"
#include "PlatformSimulated/SimulatedGraphics.h"

namespace qb {

/// Windows that are nothing but their pictures, named "window:NUMBER".
class SimulatedWindowPictures : public WindowPictures {
 public:
  Image imageOfWindow(WindowID window, Size largest) override {
    lastLargest_ = largest;
    const auto found = pictures_.find(window);
    return found == pictures_.end() ? Image() : found->second;
  }

  /// A window of that many points. It keeps its picture for good.
  void putWindow(WindowID window, Size size) {
    pictures_[window] =
        Image(std::make_shared<SimulatedImageSource>("window:" + std::to_string(window), size));
  }
  void removeWindow(WindowID window) { pictures_.erase(window); }
  /// What the last question was asked with.
  Size lastLargest() const { return lastLargest_; }

 private:
  std::map<WindowID, Image> pictures_;
  Size lastLargest_;
};

}  // namespace qb
