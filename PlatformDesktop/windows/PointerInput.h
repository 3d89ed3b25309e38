#pragma once

#include <cstdint>
#include <functional>

#include "Platform/EventTap.h"
#include "PlatformDesktop/displays/DesktopDisplays.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// A pointer event on one of our windows, as X tells it.
struct PixelEvent {
  EventType type = EventTypeMouseMoved;
  /// Place on the X screen.
  double x = 0, y = 0;
  EventFlags flags = 0;
  /// Notches of a wheel; positive is away from its user, or to the left.
  double deltaX = 0, deltaY = 0;
  /// Server time in milliseconds; 0 when not known.
  std::uint32_t time = 0;
};

/// Makes the system's events of what X tells of the pointer: the tap first, the window then.
class PointerInput {
 public:
  explicit PointerInput(const DesktopDisplays& displays) : displays_(displays) {}

  /// Sees presses and scrolls before any window; false keeps them from it.
  using Tap = std::function<bool(const TappedEvent&)>;
  void setTap(Tap tap) { tap_ = std::move(tap); }
  /// Told the server time of each press.
  void setUserTimeObserver(std::function<void(std::uint32_t)> observer) {
    userTimeObserver_ = std::move(observer);
  }

  /// Asked at a press with Control: whether that is the key on the left.
  void setLeftControl(std::function<bool()> isLeft) { controlIsLeft_ = std::move(isLeft); }

  /// Answers the event with its location in the space of all displays, or none when it was kept.
  std::optional<Event> process(const PixelEvent& event);

 private:
  int countClick(const PixelEvent& event);

  const DesktopDisplays& displays_;
  Tap tap_;
  std::function<void(std::uint32_t)> userTimeObserver_;
  std::function<bool()> controlIsLeft_;
  PixelEvent lastPress_;
  int clicks_ = 0;
};

}  // namespace qb
