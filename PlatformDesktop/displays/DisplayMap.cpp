#include "PlatformDesktop/displays/DisplayMap.h"

#include <cmath>
#include <utility>

namespace qb {

namespace {

double areaOf(const Rect& rect) { return rect.isEmpty() ? 0 : rect.width() * rect.height(); }

}  // namespace

DisplayMap::DisplayMap(std::vector<Display> displays) : displays_(std::move(displays)) {
  if (displays_.empty()) return;
  const PixelRect primary = displays_.front().pixels;
  const double primaryScale = displays_.front().scale;
  const double primaryHeight = primary.height / primaryScale;
  for (Display& display : displays_) {
    const double width = display.pixels.width / display.scale;
    const double height = display.pixels.height / display.scale;
    const double top = (display.pixels.y - primary.y) / primaryScale;
    display.frame = Rect::make((display.pixels.x - primary.x) / primaryScale,
                               primaryHeight - top - height, width, height);
  }
}

const DisplayMap::Display* DisplayMap::displayForFrame(const Rect& frame) const {
  if (displays_.empty()) return nullptr;
  const Display* best = &displays_.front();
  double bestArea = areaOf(intersection(best->frame, frame));
  for (const Display& display : displays_) {
    const double area = areaOf(intersection(display.frame, frame));
    if (area > bestArea) {
      bestArea = area;
      best = &display;
    }
  }
  return best;
}

double DisplayMap::scaleForFrame(const Rect& frame) const {
  const Display* const display = displayForFrame(frame);
  return display ? display->scale : 1;
}

PixelRect DisplayMap::pixelsForFrame(const Rect& frame) const {
  const Display* const display = displayForFrame(frame);
  if (display == nullptr) return {};
  const double scale = display->scale;
  const auto round = [](double value) { return static_cast<int>(std::lround(value)); };
  return {display->pixels.x + round((frame.x() - display->frame.x()) * scale),
          display->pixels.y + round((display->frame.maxY() - frame.maxY()) * scale),
          round(frame.width() * scale), round(frame.height() * scale)};
}

Point DisplayMap::pointForPixel(double x, double y) const {
  if (displays_.empty()) return {x, y};
  const Display* found = &displays_.front();
  for (const Display& display : displays_) {
    const PixelRect& pixels = display.pixels;
    if (x >= pixels.x && x < pixels.x + pixels.width && y >= pixels.y &&
        y < pixels.y + pixels.height) {
      found = &display;
      break;
    }
  }
  return {found->frame.x() + (x - found->pixels.x) / found->scale,
          found->frame.maxY() - (y - found->pixels.y) / found->scale};
}

Point DisplayMap::flipped(Point point) const {
  const double height = displays_.empty() ? 0 : displays_.front().frame.height();
  return {point.x, height - point.y};
}

}  // namespace qb
