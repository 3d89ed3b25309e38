#include "PlatformDesktop/input/DesktopEventTap.h"

#include <utility>

namespace qb {

namespace {

std::uint8_t bit(RunLoopMode mode) {
  return static_cast<std::uint8_t>(1U << static_cast<unsigned>(mode));
}

}  // namespace

Point PointerSpace::location(double x, double y) const {
  return {(x - primary.x()) / scale, (y - primary.y()) / scale};
}

Point PointerSpace::unflippedLocation(double x, double y) const {
  return {(x - primary.x()) / scale, (primary.maxY() - y) / scale};
}

DesktopEventTap::DesktopEventTap(InputThread& thread, std::function<bool()> isTrusted)
    : thread_(thread), isTrusted_(std::move(isTrusted)) {}

bool DesktopEventTap::create(Callback callback) {
  release();
  if (!isTrusted_()) return false;
  callback_ = std::move(callback);
  enabled_ = true;
  sendRules();
  return true;
}

void DesktopEventTap::release() {
  callback_ = nullptr;
  enabled_ = false;
  modes_ = 0;
  rules_ = {};
  sendRules();
}

void DesktopEventTap::enable(bool enabled) {
  // Access may have been taken back since it was made.
  enabled_ = enabled && callback_ && isTrusted_();
  sendRules();
}

void DesktopEventTap::addToRunLoop(RunLoopMode mode) {
  if (callback_) modes_ = static_cast<std::uint8_t>(modes_ | bit(mode));
}

void DesktopEventTap::removeFromRunLoop(RunLoopMode mode) {
  modes_ = static_cast<std::uint8_t>(modes_ & ~bit(mode));
}

bool DesktopEventTap::runLoopContains(RunLoopMode mode) const { return (modes_ & bit(mode)) != 0; }

void DesktopEventTap::setRules(const TapRules& rules) {
  if (!callback_) return;
  rules_ = rules;
  sendRules();
}

void DesktopEventTap::setOwnWindowIsKey(bool isKey) {
  ownWindowIsKey_ = isKey;
  sendRules();
}

void DesktopEventTap::sendRules() {
  TapRules rules = isServing() ? rules_ : TapRules{};
  rules.everyKeyDown = rules.everyKeyDown || ownWindowIsKey_;
  if (rules == sentRules_) return;
  sentRules_ = rules;
  // They hold for all events from now on, so this waits until the thread has acted on them.
  thread_.ask([rules](InputWorker& worker) {
    worker.setRules(rules);
    return true;
  });
}

Subscription DesktopEventTap::addGlobalKeyDownMonitor(std::function<void()> handler) {
  const auto entry = monitors_->insert(monitors_->end(), std::move(handler));
  return Subscription([weak = std::weak_ptr(monitors_), entry] {
    if (const auto monitors = weak.lock()) monitors->erase(entry);
  });
}

bool DesktopEventTap::tapPointerEvent(const TappedEvent& event) { return tap(event); }

bool DesktopEventTap::tap(const TappedEvent& event) {
  if (!isServing()) return true;
  // The callback may release the tap.
  const Callback callback = callback_;
  return callback(event);
}

void DesktopEventTap::noteKeyDown() {
  // A handler may end its own subscription.
  for (auto monitor = monitors_->begin(); monitor != monitors_->end();) {
    const auto handler = *monitor++;
    handler();
  }
}

}  // namespace qb
