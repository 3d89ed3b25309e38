#pragma once

#include <memory>
#include <string>
#include <variant>

#include "Platform/Platform.h"
#include "PlatformDesktop/dialogs/DesktopDialogs.h"
#include "PlatformDesktop/displays/DesktopDisplays.h"
#include "PlatformDesktop/files/DesktopFileEvents.h"
#include "PlatformDesktop/files/DesktopFileSystem.h"
#include "PlatformDesktop/files/DesktopFileViewer.h"
#include "PlatformDesktop/files/DesktopSharedFileLists.h"
#include "PlatformDesktop/files/DesktopTrash.h"
#include "PlatformDesktop/graphics/DesktopGraphics.h"
#include "PlatformDesktop/input/DesktopInput.h"
#include "PlatformDesktop/menus/DesktopMenuPresenter.h"
#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/processes/DesktopProcesses.h"
#include "PlatformDesktop/processes/DesktopWorkspace.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "PlatformDesktop/scripting/DesktopScripts.h"
#include "PlatformDesktop/session/AccessibilitySwitch.h"
#include "PlatformDesktop/session/ColorScheme.h"
#include "PlatformDesktop/session/DesktopApplicationControl.h"
#include "PlatformDesktop/session/DesktopArchiver.h"
#include "PlatformDesktop/session/DesktopDistributedNotifications.h"
#include "PlatformDesktop/session/DesktopLoginItems.h"
#include "PlatformDesktop/session/DesktopNetworkReachability.h"
#include "PlatformDesktop/session/DesktopPasteboards.h"
#include "PlatformDesktop/session/DesktopSharing.h"
#include "PlatformDesktop/session/DesktopUserDefaults.h"
#include "PlatformDesktop/session/DesktopUserNotifications.h"
#include "PlatformDesktop/session/InputPermission.h"
#include "PlatformDesktop/session/SessionBus.h"
#include "PlatformDesktop/windows/DesktopWindowPictures.h"
#include "PlatformDesktop/windows/DesktopWindowServer.h"

namespace qb {

/// Why the platform cannot be had on this X server: one sentence for the user.
struct DesktopPlatformError {
  std::string message;
};

/// The Linux desktop, with the main run loop. Needs a QApplication on an X server, before it and
/// after it. One at a time; everything made on it must go before it. Main thread.
class DesktopPlatform : public Platform {
 public:
  static std::variant<std::unique_ptr<DesktopPlatform>, DesktopPlatformError> create();
  ~DesktopPlatform() override;
  DesktopPlatform(const DesktopPlatform&) = delete;
  DesktopPlatform& operator=(const DesktopPlatform&) = delete;

  RunLoop& runLoop() { return *runLoop_; }
  /// Waits for what runs in the background, and drops the rest.
  void finishBackgroundWork() { runLoopHost_.finishBackgroundWork(); }

  QtRunLoopHost& runLoopHost() override { return runLoopHost_; }
  DesktopAccessibility& accessibility() override { return input_->accessibility(); }
  DesktopApplicationControl& applicationControl() override { return applicationControl_; }
  DesktopArchiver& archiver() override { return archiver_; }
  DesktopDialogs& dialogs() override { return dialogs_; }
  DesktopDisplays& displays() override { return displays_; }
  DesktopDistributedNotifications& distributedNotifications() override {
    return distributedNotifications_;
  }
  DesktopEventTap& eventTap() override { return input_->eventTap(); }
  DesktopFileEvents& fileEvents() override { return fileEvents_; }
  DesktopFileSystem& fileSystem() override { return fileSystem_; }
  DesktopFileViewer& fileViewer() override { return fileViewer_; }
  DesktopGraphics& graphics() override { return graphics_; }
  DesktopHotKeys& hotKeys() override { return input_->hotKeys(); }
  DesktopKeyboard& keyboard() override { return input_->keyboard(); }
  DesktopLoginItems& loginItems() override { return loginItems_; }
  DesktopMenuPresenter& menuPresenter() override { return menuPresenter_; }
  DesktopNetworkReachability& networkReachability() override { return networkReachability_; }
  DesktopPasteboards& pasteboards() override { return pasteboards_; }
  DesktopPointer& pointer() override { return input_->pointer(); }
  DesktopProcesses& processes() override { return processes_; }
  DesktopScripts& scripts() override { return scripts_; }
  DesktopSharedFileLists& sharedFileLists() override { return sharedFileLists_; }
  DesktopSharing& sharing() override { return sharing_; }
  DesktopTrash& trash() override { return trash_; }
  DesktopUserDefaults& userDefaults() override { return userDefaults_; }
  DesktopUserNotifications& userNotifications() override { return userNotifications_; }
  DesktopWindowPictures& windowPictures() override { return windowPictures_; }
  DesktopWindowServer& windowServer() override { return windowServer_; }
  DesktopWorkspace& workspace() override { return workspace_; }

 private:
  explicit DesktopPlatform(const ScreenFormats& formats);

  DesktopInputHost inputHost();
  void setInput(std::unique_ptr<DesktopInput> input);
  PointerSpace pointerSpace() const;
  bool openApplication(const std::string& path);
  /// The user has given or taken back the access to the desktop's input.
  void noteAccess();
  /// This process is the front one while the panel or a dialog has the keys.
  void noteKeyWindow();
  /// A key that is kept for this process.
  void deliverKey(const TappedEvent& key);

  QtRunLoopHost runLoopHost_;
  std::unique_ptr<RunLoop> runLoop_;
  std::shared_ptr<ProgramWindows> programWindows_ = std::make_shared<ProgramWindows>();
  ApplicationCatalogue catalogue_;
  DesktopFileEvents fileEvents_;
  DesktopFileSystem fileSystem_;
  DesktopDisplays displays_;
  DesktopProcesses processes_;
  DesktopWorkspace workspace_;
  DesktopGraphics graphics_;
  DesktopWindowPictures windowPictures_;
  DesktopWindowServer windowServer_;
  DesktopDialogs dialogs_;
  DesktopMenuPresenter menuPresenter_;
  SessionBus sessionBus_;
  ColorScheme colorScheme_{sessionBus_};
  AccessibilitySwitch accessibilitySwitch_{sessionBus_};
  DesktopApplicationControl applicationControl_;
  DesktopFileViewer fileViewer_{sessionBus_, applicationControl_};
  DesktopArchiver archiver_;
  DesktopDistributedNotifications distributedNotifications_;
  DesktopLoginItems loginItems_;
  DesktopNetworkReachability networkReachability_;
  DesktopPasteboards pasteboards_;
  DesktopScripts scripts_;
  DesktopSharedFileLists sharedFileLists_;
  DesktopSharing sharing_;
  DesktopTrash trash_;
  DesktopUserDefaults userDefaults_;
  InputPermission inputPermission_{userDefaults_, accessibilitySwitch_};
  DesktopUserNotifications userNotifications_;
  std::unique_ptr<DesktopInput> input_;
  bool wasTrusted_ = false;
  Subscription beforeSleep_;
};

}  // namespace qb
