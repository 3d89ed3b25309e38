#pragma once

#include <cstdint>

#include "QuillboxCommon/views/View.h"

namespace qb {

class EventCaptureView;

/// Gets the events of a capture view; every one of them is optional.
class EventCaptureViewDelegate {
 public:
  virtual ~EventCaptureViewDelegate() = default;
  virtual void scrollWheelInEventCaptureView(const Event&, EventCaptureView&) {}
  virtual void mouseDownInEventCaptureView(const Event&, EventCaptureView&) {}
  virtual void mouseUpInEventCaptureView(const Event&, EventCaptureView&) {}
  virtual void rightMouseDownInEventCaptureView(const Event&, EventCaptureView&) {}
  virtual void rightMouseUpInEventCaptureView(const Event&, EventCaptureView&) {}
  virtual void keyDownInEventCaptureView(const Event&, EventCaptureView&) {}
};

/// Draws nothing and hands what falls on it to its delegate. What the flags do not select goes
/// nowhere.
class EventCaptureView : public View {
 public:
  enum EventFlag : std::uint32_t {
    ScrollWheel = 1,
    MouseDown = 2,
    MouseUp = 4,
    RightMouseDown = 8,
    RightMouseUp = 16,
    KeyDown = 32,
  };

  explicit EventCaptureView(const Rect& frame = {}) : View(frame) {}
  Rect drawnArea() const override { return {}; }

  /// Not owned: the delegate owns the view and clears this, or outlives it.
  EventCaptureViewDelegate* delegate() const { return delegate_; }
  void setDelegate(EventCaptureViewDelegate* delegate) { delegate_ = delegate; }
  std::uint32_t eventFlags() const { return eventFlags_; }
  void setEventFlags(std::uint32_t flags) { eventFlags_ = flags; }

  /// For half a second from now, releases of the mouse are dropped by all capture views: a
  /// menu closes on a click, which is not meant for what the menu has covered.
  static void notePopUpMenuDidClose();

  void scrollWheel(const Event& event) override;
  void mouseDown(const Event& event) override;
  void mouseUp(const Event& event) override;
  void rightMouseDown(const Event& event) override;
  void rightMouseUp(const Event& event) override;
  void keyDown(const Event& event) override;

 private:
  EventCaptureViewDelegate* delegate_ = nullptr;
  std::uint32_t eventFlags_ = 31;
};

}  // namespace qb
