#include <cstdio>

#include "PlatformSimulated/SimulatedWindowServer.h"

namespace qb {

namespace {

std::string shortest(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

std::string words(std::initializer_list<double> values) {
  std::string all;
  for (const double value : values) {
    if (!all.empty()) all += ' ';
    all += shortest(value);
  }
  return all;
}

}  // namespace

SimulatedWindowPeer::~SimulatedWindowPeer() { server_.noteDestroyed(*this); }

void SimulatedWindowPeer::setFrame(const Rect& frame) {
  frame_ = frame;
  history_.push_back("setFrame " + words({frame.x(), frame.y(), frame.width(), frame.height()}));
}

void SimulatedWindowPeer::setLevel(std::int64_t level) {
  level_ = level;
  history_.push_back("setLevel " + std::to_string(level));
}

void SimulatedWindowPeer::setCollectionBehavior(std::uint64_t behavior) {
  collectionBehavior_ = behavior;
  history_.push_back("setCollectionBehavior " + std::to_string(behavior));
}

void SimulatedWindowPeer::setStyleMask(std::uint64_t mask) {
  styleMask_ = mask;
  history_.push_back("setStyleMask " + std::to_string(mask));
}

void SimulatedWindowPeer::setHasShadow(bool hasShadow) {
  hasShadow_ = hasShadow;
  history_.push_back(std::string("setHasShadow ") + (hasShadow ? "true" : "false"));
}

void SimulatedWindowPeer::setOpaque(bool opaque) {
  opaque_ = opaque;
  history_.push_back(std::string("setOpaque ") + (opaque ? "true" : "false"));
}

void SimulatedWindowPeer::setTitle(const std::string& title) {
  title_ = title;
  history_.push_back("setTitle " + title);
}

void SimulatedWindowPeer::setBackgroundColor(const Color& color) {
  backgroundColor_ = color;
  history_.push_back("setBackgroundColor " +
                     words({color.red(), color.green(), color.blue(), color.alpha()}));
}

void SimulatedWindowPeer::setBackgroundBlurRadius(std::int64_t radius) {
  backgroundBlurRadius_ = radius;
  history_.push_back("setBackgroundBlurRadius " + std::to_string(radius));
}

void SimulatedWindowPeer::setContentAlphaValue(double alpha) {
  contentAlphaValue_ = alpha;
  history_.push_back("setContentAlphaValue " + shortest(alpha));
}

void SimulatedWindowPeer::orderFront() {
  history_.push_back("orderFront");
  visible_ = true;
  server_.noteOrderedFront(*this);
}

void SimulatedWindowPeer::makeKeyAndOrderFront() {
  history_.push_back("makeKeyAndOrderFront");
  visible_ = true;
  server_.noteOrderedFront(*this);
  server_.noteMadeKey(*this);
}

void SimulatedWindowPeer::orderOut() {
  history_.push_back("orderOut");
  visible_ = false;
  server_.noteOrderedOut(*this);
}

void SimulatedWindowPeer::setNeedsDisplay(const Rect& rect) {
  dirtyRect_ = unionOf(dirtyRect_, intersection(rect, {{}, frame_.size}));
}

bool SimulatedWindowPeer::isKey() const { return server_.keyWindow() == this; }

}  // namespace qb
