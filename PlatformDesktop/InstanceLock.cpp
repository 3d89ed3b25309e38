#include "PlatformDesktop/InstanceLock.h"

namespace qb {

std::unique_ptr<InstanceLock> InstanceLock::acquire(Failure& failure) {
  std::unique_ptr<InstanceLock> lock(new InstanceLock);
  if (!lock->x_.isUsable()) {
    failure = Failure::NoDisplay;
    return nullptr;
  }
  xcb_connection_t* const c = lock->x_.get();
  const xcb_window_t window = xcb_generate_id(c);
  xcb_create_window(c, XCB_COPY_FROM_PARENT, window, lock->x_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  const xcb_atom_t selection = lock->x_.atom("_QUILLBOX_S0");
  // Between looking and taking nobody else may take it.
  xcb_grab_server(c);
  const XReply<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr));
  const bool isFree = owner && owner->owner == XCB_NONE;
  if (isFree) xcb_set_selection_owner(c, window, selection, XCB_CURRENT_TIME);
  xcb_ungrab_server(c);
  xcb_flush(c);
  if (isFree) return lock;
  failure = Failure::Taken;
  return nullptr;
}

}  // namespace qb
