#include "Quillbox/activation/EventTaps.h"

#include <algorithm>

#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/EventMonitors.h"
#include "Quillbox/activation/TabChords.h"

namespace qb {

EventTaps::EventTaps(AppDelegate& appDelegate)
    : appDelegate_(appDelegate), eventTap_(appDelegate.platform().eventTap()) {}

EventTaps::~EventTaps() { removeEventTaps(); }

void EventTaps::installEventTaps() {
  const bool created = eventTap_.create(
      [this](const TappedEvent& event) { return appDelegate_.tappedEventOccured(event); });
  if (!created) return;
  for (const RunLoopMode mode : runLoopModesToTap) eventTap_.addToRunLoop(mode);
  rules_ = {};
  maintainTapRules();
}

void EventTaps::removeEventTaps() {
  for (const RunLoopMode mode : runLoopModesToTap) eventTap_.removeFromRunLoop(mode);
  eventTap_.release();
}

bool EventTaps::isServedInAllModes() const {
  return std::all_of(runLoopModesToTap.begin(), runLoopModesToTap.end(),
                     [this](RunLoopMode mode) { return eventTap_.runLoopContains(mode); });
}

void EventTaps::maintainTapRules() {
  if (!eventTap_.exists()) return;
  TapRules rules = presentRules();
  if (rules == rules_) return;
  rules_ = std::move(rules);
  eventTap_.setRules(rules_);
}

TapRules EventTaps::presentRules() const {
  TapRules rules;
  if (appDelegate_.userInteractionLevel() > 0) return rules;
  rules.everyKeyDown = appDelegate_.state() == ActivationStateActive;
  const Settings& settings = appDelegate_.settings();
  if (settings.applicationActivatesOnOptionTab()) rules.chords.push_back(optionShiftTabChord);
  if (settings.applicationActivatesOnCommandTab()) {
    rules.chords.push_back(commandTabChord);
    rules.chords.push_back(commandShiftTabChord);
  }
  const auto claimed = appDelegate_.eventMonitors().claimedChords();
  rules.chords.insert(rules.chords.end(), claimed.begin(), claimed.end());
  return rules;
}

}  // namespace qb
