#pragma once

#include <cstdint>

#include "QuillboxCommon/views/Event.h"

namespace qb::test {

inline Event mouseEvent(EventType type, Point location = {}, EventFlags flags = 0) {
  Event event;
  event.type = type;
  event.location = location;
  event.flags = flags;
  return event;
}

inline Event keyEvent(std::uint16_t keyCode, EventFlags flags = 0) {
  Event event;
  event.type = EventTypeKeyDown;
  event.keyCode = keyCode;
  event.flags = flags;
  return event;
}

}  // namespace qb::test
