#pragma once

#include <cstdint>

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
};

}  // namespace qb
