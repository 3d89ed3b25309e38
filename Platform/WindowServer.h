#pragma once

#include <cstdint>

#include "QuillboxCommon/views/Window.h"

namespace qb {

/// Keys of the window levels that are used.
enum WindowLevelKey : std::int32_t {
  WindowLevelKeyFloating = 5,
  WindowLevelKeyScreenSaver = 13,
};

/// Windows and their stacking. Main thread.
class WindowServer : public WindowPeerFactory {
 public:
  /// Higher levels stand above lower ones; dialogs and menus of this process stand above floating
  /// windows.
  virtual std::int64_t windowLevelForKey(WindowLevelKey key) const = 0;
};

}  // namespace qb
