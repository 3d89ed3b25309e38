#include "Quillbox/activation/QuillboxApplication.h"

#include "Quillbox/activation/AppDelegate.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

QuillboxApplication::QuillboxApplication(AppDelegate& appDelegate) : appDelegate_(appDelegate) {
  Window::setEventFilter(
      [this](Window& /*window*/, const Event& event) { return sendEvent(event); });
}

QuillboxApplication::~QuillboxApplication() { Window::setEventFilter(nullptr); }

bool QuillboxApplication::sendEvent(const Event& event) {
  switch (event.type) {
    case EventTypeKeyDown:
      return !appDelegate_.keyDown(event);
    case EventTypeScrollWheel:
      return !appDelegate_.scrollWheel(event);
    case EventTypeLeftMouseDown:
    case EventTypeRightMouseDown:
      appDelegate_.monitorMouseDown(event);
      return true;
    case EventTypeLeftMouseUp:
      appDelegate_.monitorMouseUp(event);
      return true;
    default:
      return true;
  }
}

}  // namespace qb
