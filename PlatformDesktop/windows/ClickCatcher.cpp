#include "PlatformDesktop/windows/ClickCatcher.h"

#include <limits>
#include <optional>

namespace qb {

namespace {

enum Button : std::uint8_t {
  ButtonLeft = 1,
  ButtonRight = 3,
  ButtonScrollUp = 4,
  ButtonScrollDown = 5,
  ButtonScrollLeft = 6,
  ButtonScrollRight = 7,
};

EventFlags flagsOfState(std::uint16_t state) {
  EventFlags flags = 0;
  if (state & XCB_MOD_MASK_SHIFT) flags |= EventFlagShift;
  if (state & XCB_MOD_MASK_CONTROL) flags |= EventFlagControl;
  if (state & XCB_MOD_MASK_1) flags |= EventFlagOption;
  if (state & XCB_MOD_MASK_4) flags |= EventFlagCommand;
  return flags;
}

template <class XcbEvent>
PixelEvent pixelEvent(EventType type, const XcbEvent& event) {
  PixelEvent result;
  result.type = type;
  result.x = event.root_x;
  result.y = event.root_y;
  result.flags = flagsOfState(event.state);
  result.time = event.time;
  return result;
}

std::optional<PixelEvent> pressEvent(const xcb_button_press_event_t& event) {
  switch (event.detail) {
    case ButtonLeft:
      return pixelEvent(EventTypeLeftMouseDown, event);
    case ButtonRight:
      return pixelEvent(EventTypeRightMouseDown, event);
    case ButtonScrollUp:
    case ButtonScrollDown:
    case ButtonScrollLeft:
    case ButtonScrollRight: {
      PixelEvent scroll = pixelEvent(EventTypeScrollWheel, event);
      if (event.detail == ButtonScrollUp) scroll.deltaY = 1;
      if (event.detail == ButtonScrollDown) scroll.deltaY = -1;
      if (event.detail == ButtonScrollLeft) scroll.deltaX = 1;
      if (event.detail == ButtonScrollRight) scroll.deltaX = -1;
      return scroll;
    }
    default:
      return std::nullopt;
  }
}

}  // namespace

ClickCatcher::ClickCatcher(xcb_connection_t* connection, xcb_window_t root, Receiver receiver)
    : connection_(connection),
      window_(xcb_generate_id(connection)),
      receiver_(std::move(receiver)) {
  const std::uint32_t values[] = {1, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                         XCB_EVENT_MASK_BUTTON_MOTION};
  // As large as a window can be: whatever becomes of the screen, it is covered.
  constexpr std::uint16_t edge = std::numeric_limits<std::int16_t>::max();
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root, 0, 0, edge, edge, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                    XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
}

ClickCatcher::~ClickCatcher() { xcb_destroy_window(connection_, window_); }

void ClickCatcher::setUp(bool up) {
  if (up == up_) return;
  up_ = up;
  if (up) {
    raise();
    xcb_map_window(connection_, window_);
  } else {
    xcb_unmap_window(connection_, window_);
  }
}

void ClickCatcher::raise() {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(connection_, window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

bool ClickCatcher::handleEvent(const xcb_generic_event_t& event) {
  const std::uint8_t type = event.response_type & 0x7f;
  if (type != XCB_BUTTON_PRESS && type != XCB_BUTTON_RELEASE && type != XCB_MOTION_NOTIFY) {
    return false;
  }
  // The three kinds are laid out alike.
  const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(event);
  if (button.event != window_) return false;
  std::optional<PixelEvent> result;
  if (type == XCB_BUTTON_PRESS) {
    result = pressEvent(button);
  } else if (type == XCB_BUTTON_RELEASE) {
    if (button.detail == ButtonLeft) result = pixelEvent(EventTypeLeftMouseUp, button);
    if (button.detail == ButtonRight) result = pixelEvent(EventTypeRightMouseUp, button);
  } else {
    const bool right = (button.state & XCB_BUTTON_MASK_3) != 0;
    result = pixelEvent(right ? EventTypeRightMouseDragged : EventTypeLeftMouseDragged, button);
  }
  if (result) receiver_(*result);
  return true;
}

}  // namespace qb
