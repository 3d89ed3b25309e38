#include "Quillbox/activation/utilities/Diagnostics.h"

#include <cstdint>

#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

std::string descriptionOfView(const View& view) {
  return stringWithFormat("alpha: %f, %@", view.alphaValue(), stringFromCGRect(view.frame()));
}

}  // namespace

std::string stringFromCGRect(const Rect& rect) {
  return stringWithFormat("x: %f, y: %f, w: %f, h: %f", rect.x(), rect.y(), rect.width(),
                          rect.height());
}

std::string stringFromCGPoint(Point point) {
  return stringWithFormat("x: %f, y: %f", point.x, point.y);
}

void logPanelViews(Quillbox& facade) {
  log("-=-=-=-=-=-=-=-=-=- Quillbox Debug -=-=-=-=-=-=-=-=-=-=-=-=-");
  const HostView* const host = facade.hostView();
  const Window* const window = facade.appDelegate().window();
  if (host == nullptr || window == nullptr) return;
  log(stringWithFormat("HostView: %@", descriptionOfView(*host)));
  // A window's alpha is that of its content.
  log(stringWithFormat("Window: %@", stringFromCGRect(window->frame())));
  log(stringWithFormat("Content View: %@", descriptionOfView(*window->contentView())));
  std::int64_t number = 0;
  for (const auto& row : facade.tabRows()) {
    log(stringWithFormat("Tab Row %ld: %@", number++, descriptionOfView(*row)));
  }
}

}  // namespace qb
