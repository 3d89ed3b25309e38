#pragma once

#include <array>

#include "Platform/EventTap.h"

namespace qb {

class AppDelegate;

/// The tap's life, and what it is told to take.
class EventTaps {
 public:
  /// Every mode there is: keys are to be taken whatever the main thread is busy with.
  static constexpr std::array runLoopModesToTap{RunLoopMode::Default, RunLoopMode::EventTracking,
                                                RunLoopMode::Graphics, RunLoopMode::ModalPanel,
                                                RunLoopMode::EventOnly};

  explicit EventTaps(AppDelegate& appDelegate);
  ~EventTaps();
  EventTaps(const EventTaps&) = delete;
  EventTaps& operator=(const EventTaps&) = delete;

  /// Without access to the desktop's input no tap comes about, and nothing is said.
  void installEventTaps();
  /// Harmless when there is none.
  void removeEventTaps();
  /// Keeps the tap's rules in step with what the engine does with keys. To be called after each
  /// change of a setting of activation, of the activation state, of the user-interaction level
  /// across 0 and of the key monitors.
  void maintainTapRules();
  bool isServedInAllModes() const;

 private:
  TapRules presentRules() const;

  AppDelegate& appDelegate_;
  EventTap& eventTap_;
  TapRules rules_;
};

}  // namespace qb
