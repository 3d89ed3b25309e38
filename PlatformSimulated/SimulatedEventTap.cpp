#include "PlatformSimulated/SimulatedEventTap.h"

#include <utility>

#include "QuillboxCommon/Format.h"

namespace qb {

SimulatedEventTap::SimulatedEventTap(SimulatedAccessibility& accessibility, RunLoop& runLoop)
    : accessibility_(accessibility), runLoop_(runLoop) {
  accessibility_.setOnRevoked([this] { enabled_ = false; });
}

SimulatedEventTap::~SimulatedEventTap() { accessibility_.setOnRevoked(nullptr); }

bool SimulatedEventTap::create(Callback callback) {
  release();
  if (!accessibility_.isProcessTrusted()) return false;
  callback_ = std::move(callback);
  enabled_ = true;
  ++numberOfCreations_;
  return true;
}

void SimulatedEventTap::release() {
  callback_ = nullptr;
  enabled_ = false;
  modes_ = {};
  rules_ = {};
}

void SimulatedEventTap::enable(bool enabled) {
  enabled_ = enabled && exists() && accessibility_.isProcessTrusted();
}

void SimulatedEventTap::addToRunLoop(RunLoopMode mode) {
  if (exists()) modes_ |= mode;
}

void SimulatedEventTap::removeFromRunLoop(RunLoopMode mode) {
  RunLoopModes remaining;
  for (const RunLoopMode each :
       {RunLoopMode::Default, RunLoopMode::EventTracking, RunLoopMode::Graphics,
        RunLoopMode::ModalPanel, RunLoopMode::EventOnly}) {
    if (each != mode && modes_.contains(each)) remaining |= each;
  }
  modes_ = remaining;
}

void SimulatedEventTap::setRules(const TapRules& rules) {
  if (exists()) rules_ = rules;
}

Subscription SimulatedEventTap::addGlobalKeyDownMonitor(std::function<void()> handler) {
  const int key = nextMonitor_++;
  monitors_[key] = std::move(handler);
  return Subscription([this, key] { monitors_.erase(key); });
}

bool SimulatedEventTap::process(const TappedEvent& event) {
  if (!isServed()) return true;
  if (event.type == EventTypeKeyDown || event.type == EventTypeKeyUp) return processKey(event);
  const Callback callback = callback_;
  const bool passedOn = callback(event);
  answers_.push_back({event, passedOn});
  return passedOn;
}

void SimulatedEventTap::notifyKeyDownMonitors() {
  const auto monitors = monitors_;
  for (const auto& [key, handler] : monitors) {
    if (monitors_.contains(key)) handler();
  }
}

bool SimulatedEventTap::isServed() const {
  return exists() && enabled_ && modes_.contains(runLoop_.currentMode());
}

bool SimulatedEventTap::processKey(const TappedEvent& event) {
  // Taken before the callback runs: new rules are for later events.
  const bool swallowed = rules_.swallows(event.type, event.keyCode, event.flags);
  const Callback callback = callback_;
  const bool passedOn = callback(event);
  answers_.push_back({event, passedOn});
  const bool isClaimedKeyUp = event.type == EventTypeKeyUp && !passedOn;
  if (swallowed == passedOn && !isClaimedKeyUp) {
    contractBreaches_.push_back(
        stringWithFormat("key code %i, %@, flags %lu: the rules %@ it, the callback %@ it",
                         event.keyCode, event.type == EventTypeKeyDown ? "down" : "up", event.flags,
                         swallowed ? "swallow" : "pass", passedOn ? "passed" : "swallowed"));
  }
  return !swallowed;
}

}  // namespace qb
