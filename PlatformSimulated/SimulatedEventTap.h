#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Platform/EventTap.h"
#include "PlatformSimulated/SimulatedAccessibility.h"

namespace qb {

/// The tap. Keyboard and pointer send every event through it.
///
/// What becomes of a key is decided by the rules alone, as on a desktop whose tap acts before the
/// main thread has answered; a callback that answers otherwise breaks its contract, and that is
/// written down.
class SimulatedEventTap : public EventTap {
 public:
  SimulatedEventTap(SimulatedAccessibility& accessibility, RunLoop& runLoop);
  ~SimulatedEventTap() override;

  bool create(Callback callback) override;
  void release() override;
  bool exists() const override { return callback_ != nullptr; }
  bool isEnabled() const override { return enabled_; }
  void enable(bool enabled) override;
  void addToRunLoop(RunLoopMode mode) override;
  void removeFromRunLoop(RunLoopMode mode) override;
  bool runLoopContains(RunLoopMode mode) const override { return modes_.contains(mode); }
  void setRules(const TapRules& rules) override;
  Subscription addGlobalKeyDownMonitor(std::function<void()> handler) override;

  /// What a system does to a tap that it finds too slow.
  void disableBySystem() {
    enabled_ = false;
    stateChanged().signal();
  }
  /// The rules in force: none without a tap.
  const TapRules& rules() const { return rules_; }
  /// True while every key is kept from all other programs.
  bool keepsKeyboard() const { return isServed() && rules_.everyKeyDown; }
  /// How often a tap has been made.
  int numberOfCreations() const { return numberOfCreations_; }

  /// One event that went through the callback, with its answer.
  struct Answer {
    TappedEvent event;
    bool passedOn = true;
  };
  const std::vector<Answer>& answers() const { return answers_; }
  void clearAnswers() { answers_.clear(); }

  /// One line for each key whose answer was not the one that the rules gave. A key-up that is
  /// swallowed against the rules (a monitor has claimed it) is let through here.
  const std::vector<std::string>& contractBreaches() const { return contractBreaches_; }

  /// For keyboard and pointer: true when the event goes on to its next consumer. Nothing happens
  /// while the tap is missing, disabled or not served in the loop's present mode: it passes.
  bool process(const TappedEvent& event);
  /// For the keyboard: a key has gone down.
  void notifyKeyDownMonitors();

 private:
  bool isServed() const;
  bool processKey(const TappedEvent& event);

  SimulatedAccessibility& accessibility_;
  RunLoop& runLoop_;
  Callback callback_;
  bool enabled_ = false;
  RunLoopModes modes_;
  TapRules rules_;
  int numberOfCreations_ = 0;
  std::vector<Answer> answers_;
  std::vector<std::string> contractBreaches_;
  std::map<int, std::function<void()>> monitors_;
  int nextMonitor_ = 0;
};

}  // namespace qb
