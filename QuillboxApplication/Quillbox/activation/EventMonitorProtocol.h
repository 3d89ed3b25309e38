#pragma once

#include <cstdint>
#include <vector>

#include "Platform/EventTap.h"

namespace qb {

/// Sees events at the tap before anything is done with them. Answers true to claim one, which then
/// goes no further.
class EventMonitorProtocol {
 public:
  virtual ~EventMonitorProtocol() = default;
  virtual bool monitorKeyEvent(const TappedEvent& /*event*/, EventType /*type*/,
                               std::uint16_t /*keyCode*/, EventFlags /*flags*/) {
    return false;
  }
  virtual bool monitorMouseEvent(const TappedEvent& /*event*/) { return false; }

  /// The keys that `monitorKeyEvent` claims: always these, and no others. Asked when a key monitor
  /// comes or goes, since the platform decides about a key before anyone can be asked. A monitor
  /// that claims keys is removed before it goes; if it is not, its claims end with the next key.
  virtual std::vector<TapRules::Chord> claimedChords() const { return {}; }
};

}  // namespace qb
