#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Pointer.h"
#include "PlatformSimulated/SimulatedKeyboard.h"
#include "PlatformSimulated/SimulatedMenuPresenter.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"

namespace qb {

/// A pointer with a hand on it. Points are from the lower left of the primary display; buttons are
/// 0 left, 1 right, 2 middle.
///
/// A press goes to the tap, then to the topmost visible window of this process that holds the
/// pointer, otherwise to the window of another program, which comes to the front by it. Moves and
/// releases follow to the window that was pressed. Presses and scroll steps that the tap answers
/// not to pass are held back from this process's windows only.
///
/// While a menu is open a press that passes the tap closes it and goes no further, and a scroll
/// step goes nowhere else: what is done inside of the menu its own user does.
class SimulatedPointer : public Pointer {
 public:
  struct Parts {
    SimulatedRunLoopHost& host;
    SimulatedDisplays& displays;
    SimulatedEventTap& eventTap;
    SimulatedKeyboard& keyboard;
    SimulatedProcesses& processes;
    SimulatedWindowServer& windowServer;
    SimulatedMenuPresenter& menuPresenter;
  };
  explicit SimulatedPointer(Parts parts) : parts_(parts) {}

  Point mouseLocation() const override { return location_; }
  std::uint32_t pressedMouseButtons() const override { return pressedButtons_; }

  void moveTo(Point point);
  /// Moves to a point given from the top left of the primary display.
  void moveToFlipped(Point point) { moveTo(parts_.displays.flipped(point)); }
  void press(int button = 0);
  void release(int button = 0);
  void click(int button = 0);
  /// Positive `dy` is a wheel turned towards its user; a notch comes to 13.
  void scroll(double dx, double dy);

  /// One event that reached another program.
  struct Received {
    ProcessSerialNumber process;
    EventType type = EventTypeLeftMouseDown;
    Point location;
    friend bool operator==(const Received&, const Received&) = default;
  };
  const std::vector<Received>& clientReceived() const { return clientReceived_; }
  void clearReceived() { clientReceived_.clear(); }

 private:
  TappedEvent tappedEvent(EventType type) const;
  void deliver(SimulatedWindowPeer& window, EventType type, double dx = 0, double dy = 0);
  void countClick();

  Parts parts_;
  Point location_;
  std::uint32_t pressedButtons_ = 0;
  /// The window of this process, or the program, in which the button went down.
  SimulatedWindowPeer* pressedWindow_ = nullptr;
  ProcessSerialNumber pressedClient_;
  int clickCount_ = 0;
  Moment lastPressMoment_ = 0;
  Point lastPressLocation_;
  std::vector<Received> clientReceived_;
};

}  // namespace qb
