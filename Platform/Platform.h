#pragma once

#include "QuillboxCommon/RunLoop.h"

namespace qb {

class Accessibility;
class Dialogs;
class Displays;
class EventTap;
class FileSystem;
class Graphics;
class HotKeys;
class Keyboard;
class Pointer;
class Processes;
class UserNotifications;
class WindowServer;
class Workspace;

/// The host that the core runs on: one reference to each capability. All of them live as long as
/// the platform. Main thread.
class Platform {
 public:
  virtual ~Platform() = default;
  virtual RunLoopHost& runLoopHost() = 0;
  virtual Accessibility& accessibility() = 0;
  virtual Dialogs& dialogs() = 0;
  virtual Displays& displays() = 0;
  virtual EventTap& eventTap() = 0;
  virtual FileSystem& fileSystem() = 0;
  virtual Graphics& graphics() = 0;
  virtual HotKeys& hotKeys() = 0;
  virtual Keyboard& keyboard() = 0;
  virtual Pointer& pointer() = 0;
  virtual Processes& processes() = 0;
  virtual UserNotifications& userNotifications() = 0;
  virtual WindowServer& windowServer() = 0;
  virtual Workspace& workspace() = 0;
};

}  // namespace qb
