#pragma once

#include "QuillboxCommon/RunLoop.h"

namespace qb {

class Accessibility;
class ApplicationControl;
class Archiver;
class Dialogs;
class Displays;
class DistributedNotifications;
class EventTap;
class FileEvents;
class FileSystem;
class FileViewer;
class Graphics;
class HotKeys;
class Keyboard;
class LoginItems;
class Pasteboards;
class MenuPresenter;
class NetworkReachability;
class Pointer;
class Processes;
class Scripts;
class SharedFileLists;
class Sharing;
class Trash;
class UserDefaults;
class UserNotifications;
class WindowPictures;
class WindowServer;
class Workspace;

/// The host that the core runs on: one reference to each capability. All of them live as long as
/// the platform. Main thread.
class Platform {
 public:
  virtual ~Platform() = default;
  virtual RunLoopHost& runLoopHost() = 0;
  virtual Accessibility& accessibility() = 0;
  virtual ApplicationControl& applicationControl() = 0;
  virtual Archiver& archiver() = 0;
  virtual Dialogs& dialogs() = 0;
  virtual Displays& displays() = 0;
  virtual DistributedNotifications& distributedNotifications() = 0;
  virtual EventTap& eventTap() = 0;
  virtual FileEvents& fileEvents() = 0;
  virtual FileSystem& fileSystem() = 0;
  virtual FileViewer& fileViewer() = 0;
  virtual Graphics& graphics() = 0;
  virtual HotKeys& hotKeys() = 0;
  virtual Keyboard& keyboard() = 0;
  virtual LoginItems& loginItems() = 0;
  virtual Pasteboards& pasteboards() = 0;
  virtual MenuPresenter& menuPresenter() = 0;
  virtual NetworkReachability& networkReachability() = 0;
  virtual Pointer& pointer() = 0;
  virtual Processes& processes() = 0;
  virtual Scripts& scripts() = 0;
  virtual SharedFileLists& sharedFileLists() = 0;
  virtual Sharing& sharing() = 0;
  virtual Trash& trash() = 0;
  virtual UserDefaults& userDefaults() = 0;
  virtual UserNotifications& userNotifications() = 0;
  virtual WindowPictures& windowPictures() = 0;
  virtual WindowServer& windowServer() = 0;
  virtual Workspace& workspace() = 0;
};

}  // namespace qb
