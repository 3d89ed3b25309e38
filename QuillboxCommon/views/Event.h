#pragma once

#include <cstdint>
#include <string>

#include "QuillboxCommon/Geometry.h"

namespace qb {

/// Event types by their given numbers.
enum EventType : std::uint32_t {
  EventTypeLeftMouseDown = 1,
  EventTypeLeftMouseUp = 2,
  EventTypeRightMouseDown = 3,
  EventTypeRightMouseUp = 4,
  EventTypeMouseMoved = 5,
  EventTypeLeftMouseDragged = 6,
  EventTypeRightMouseDragged = 7,
  EventTypeKeyDown = 10,
  EventTypeKeyUp = 11,
  EventTypeFlagsChanged = 12,
  EventTypeScrollWheel = 22,
};

/// Modifier bits of an event. The Command key is Super, the Option key is Alt.
using EventFlags = std::uint64_t;
inline constexpr EventFlags EventFlagLeftControl = 0x1;
inline constexpr EventFlags EventFlagCapsLock = 0x10000;
inline constexpr EventFlags EventFlagShift = 0x20000;
inline constexpr EventFlags EventFlagControl = 0x40000;
inline constexpr EventFlags EventFlagOption = 0x80000;
inline constexpr EventFlags EventFlagCommand = 0x100000;

/// One event as a window or the tap gets it.
struct Event {
  EventType type = EventTypeMouseMoved;
  EventFlags flags = 0;
  /// A position on the virtual keyboard (Platform/KeyCodes.h); key events only.
  std::uint16_t keyCode = 0;
  bool isRepeat = false;
  /// Origin at the lower left: of the window for a window's event, of the primary display for the
  /// tap's.
  Point location;
  /// How far a wheel has turned. Towards its user is positive deltaY; a notch comes to 13.
  double deltaX = 0, deltaY = 0;
  int clickCount = 0;
  std::string characters;

  friend bool operator==(const Event&, const Event&) = default;
};

}  // namespace qb
