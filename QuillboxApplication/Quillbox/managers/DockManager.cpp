#include "Quillbox/managers/DockManager.h"

#include "Quillbox/managers/PrimaryScreen.h"

namespace qb {

DockManager::FrameAndOrientation DockManager::dockFrameAndOrientation() const {
  const Screen screen = primaryScreen(displays_);
  const Rect& whole = screen.frame;
  const Rect& visible = screen.visibleFrame;
  if (whole.width() == visible.width()) {
    return {Rect::make(0, visible.height(), whole.width(), whole.height() - visible.height()),
            DockOrientationBottom};
  }
  if (visible.x() > 0) {
    return {Rect::make(0, 0, visible.x(), whole.height()), DockOrientationLeft};
  }
  if (whole.width() > visible.width()) {
    return {Rect::make(visible.width(), 0, whole.width() - visible.width(), whole.height()),
            DockOrientationRight};
  }
  return {};
}

}  // namespace qb
