#include "PlatformDesktop/input/DesktopPointer.h"

#include <utility>

namespace qb {

namespace {

XcbPointer<xcb_query_pointer_reply_t> queryPointer(const InputConnection& connection) {
  xcb_connection_t* xcb = connection.xcb.get();
  return XcbPointer<xcb_query_pointer_reply_t>(
      xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, connection.root), nullptr));
}

}  // namespace

DesktopPointer::DesktopPointer(InputConnection& queries, std::function<PointerSpace()> space)
    : queries_(queries), space_(std::move(space)) {}

Point DesktopPointer::mouseLocation() const {
  const auto pointer = queryPointer(queries_);
  return pointer ? space_().unflippedLocation(pointer->root_x, pointer->root_y) : Point();
}

std::uint32_t DesktopPointer::pressedMouseButtons() const {
  const auto pointer = queryPointer(queries_);
  if (!pointer) return 0;
  std::uint32_t buttons = 0;
  if (pointer->mask & XCB_BUTTON_MASK_1) buttons |= 1;
  if (pointer->mask & XCB_BUTTON_MASK_3) buttons |= 2;
  if (pointer->mask & XCB_BUTTON_MASK_2) buttons |= 4;
  return buttons;
}

}  // namespace qb
