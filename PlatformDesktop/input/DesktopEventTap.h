#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>

#include "Platform/EventTap.h"
#include "PlatformDesktop/input/InputQueue.h"
#include "PlatformDesktop/input/InputThread.h"

namespace qb {

/// Pixels of the root window against points: the primary display in pixels, and the pixels of a
/// point.
struct PointerSpace {
  Rect primary;
  double scale = 1;

  /// From the top left of the primary display.
  Point location(double x, double y) const;
  /// From its lower left.
  Point unflippedLocation(double x, double y) const;
};

/// Main thread.
class DesktopEventTap : public EventTap {
 public:
  DesktopEventTap(InputThread& thread, std::function<bool()> isTrusted);

  bool create(Callback callback) override;
  void release() override;
  bool exists() const override { return callback_ != nullptr; }
  bool isEnabled() const override { return enabled_; }
  void enable(bool enabled) override;
  void addToRunLoop(RunLoopMode mode) override;
  void removeFromRunLoop(RunLoopMode mode) override;
  bool runLoopContains(RunLoopMode mode) const override;
  void setRules(const TapRules& rules) override;
  [[nodiscard]] Subscription addGlobalKeyDownMonitor(std::function<void()> handler) override;

  /// A press or a step of the wheel on one of this process's own windows, before the window gets
  /// it. False: it must not get it.
  bool tapPointerEvent(const TappedEvent& event);

  /// A window of this process is key: keys are kept for it, whatever the rules say.
  void setOwnWindowIsKey(bool isKey);

  // For DesktopInput.
  /// True when events must wait, since the tap is not served in `mode`.
  bool holdsBack(RunLoopMode mode) const { return isServing() && !runLoopContains(mode); }
  /// Answers whether the event goes on.
  bool tap(const TappedEvent& event);
  void noteKeyDown();

 private:
  using Monitors = std::list<std::function<void()>>;

  bool isServing() const { return callback_ && enabled_; }
  void sendRules();

  InputThread& thread_;
  std::function<bool()> isTrusted_;
  Callback callback_;
  bool enabled_ = false;
  bool ownWindowIsKey_ = false;
  std::uint8_t modes_ = 0;
  TapRules rules_, sentRules_;
  /// Shared, since a subscription may outlive the tap.
  std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
};

}  // namespace qb
