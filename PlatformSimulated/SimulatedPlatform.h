#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Platform.h"
#include "PlatformSimulated/SimulatedAccessibility.h"
#include "PlatformSimulated/SimulatedApplicationControl.h"
#include "PlatformSimulated/SimulatedArchiver.h"
#include "PlatformSimulated/SimulatedDialogs.h"
#include "PlatformSimulated/SimulatedDisplays.h"
#include "PlatformSimulated/SimulatedDistributedNotifications.h"
#include "PlatformSimulated/SimulatedEventTap.h"
#include "PlatformSimulated/SimulatedFileEvents.h"
#include "PlatformSimulated/SimulatedFileSystem.h"
#include "PlatformSimulated/SimulatedFileViewer.h"
#include "PlatformSimulated/SimulatedGraphics.h"
#include "PlatformSimulated/SimulatedHotKeys.h"
#include "PlatformSimulated/SimulatedKeyboard.h"
#include "PlatformSimulated/SimulatedLog.h"
#include "PlatformSimulated/SimulatedLoginItems.h"
#include "PlatformSimulated/SimulatedMenuPresenter.h"
#include "PlatformSimulated/SimulatedNetworkReachability.h"
#include "PlatformSimulated/SimulatedPasteboards.h"
#include "PlatformSimulated/SimulatedPointer.h"
#include "PlatformSimulated/SimulatedProcesses.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"
#include "PlatformSimulated/SimulatedScripts.h"
#include "PlatformSimulated/SimulatedSharedFileLists.h"
#include "PlatformSimulated/SimulatedSharing.h"
#include "PlatformSimulated/SimulatedTrash.h"
#include "PlatformSimulated/SimulatedUserDefaults.h"
#include "PlatformSimulated/SimulatedUserNotifications.h"
#include "PlatformSimulated/SimulatedWindowPictures.h"
#include "PlatformSimulated/SimulatedWindowServer.h"
#include "PlatformSimulated/SimulatedWorkspace.h"

namespace qb {

/// A whole small desktop in memory under a virtual clock, with the main run loop. A test plays the
/// user and the other programs by the capabilities' own operations, then lets time pass:
///
///     SimulatedPlatform platform;
///     const auto editor = platform.processes().launchInFront({"org.editor", "Editor"});
///     platform.keyboard().press(KeyCodeTab);
///     platform.runFor(0.3);
///
/// One at a time; everything made on it must go before it.
class SimulatedPlatform : public Platform {
 public:
  SimulatedPlatform();
  ~SimulatedPlatform() override;
  SimulatedPlatform(const SimulatedPlatform&) = delete;
  SimulatedPlatform& operator=(const SimulatedPlatform&) = delete;

  SimulatedRunLoopHost& runLoopHost() override { return runLoopHost_; }
  SimulatedAccessibility& accessibility() override { return accessibility_; }
  SimulatedApplicationControl& applicationControl() override { return applicationControl_; }
  SimulatedArchiver& archiver() override { return archiver_; }
  SimulatedDialogs& dialogs() override { return dialogs_; }
  SimulatedDisplays& displays() override { return displays_; }
  SimulatedDistributedNotifications& distributedNotifications() override {
    return distributedNotifications_;
  }
  SimulatedEventTap& eventTap() override { return eventTap_; }
  SimulatedFileEvents& fileEvents() override { return fileEvents_; }
  SimulatedFileSystem& fileSystem() override { return fileSystem_; }
  SimulatedFileViewer& fileViewer() override { return fileViewer_; }
  SimulatedGraphics& graphics() override { return graphics_; }
  SimulatedHotKeys& hotKeys() override { return hotKeys_; }
  SimulatedKeyboard& keyboard() override { return keyboard_; }
  SimulatedLoginItems& loginItems() override { return loginItems_; }
  SimulatedPasteboards& pasteboards() override { return pasteboards_; }
  SimulatedMenuPresenter& menuPresenter() override { return menuPresenter_; }
  SimulatedNetworkReachability& networkReachability() override { return networkReachability_; }
  SimulatedPointer& pointer() override { return pointer_; }
  SimulatedProcesses& processes() override { return processes_; }
  SimulatedScripts& scripts() override { return scripts_; }
  SimulatedSharedFileLists& sharedFileLists() override { return sharedFileLists_; }
  SimulatedSharing& sharing() override { return sharing_; }
  SimulatedTrash& trash() override { return trash_; }
  SimulatedUserDefaults& userDefaults() override { return userDefaults_; }
  SimulatedUserNotifications& userNotifications() override { return userNotifications_; }
  SimulatedWindowPictures& windowPictures() override { return windowPictures_; }
  SimulatedWindowServer& windowServer() override { return windowServer_; }
  SimulatedWorkspace& workspace() override { return workspace_; }

  RunLoop& runLoop() { return *runLoop_; }
  /// Fires everything that comes due within `seconds`, in order.
  void runFor(TimeInterval seconds) { runLoopHost_.runFor(seconds); }
  /// Passes until nothing is due now.
  void runPending() { runLoopHost_.runPending(); }
  /// Has something happen from outside, `delay` seconds from now; in nested runs too.
  void schedule(TimeInterval delay, Block block) { runLoopHost_.schedule(delay, std::move(block)); }

  /// The entries of the system log.
  std::vector<std::string> log() const { return log_.entries(); }
  SimulatedLog& logSink() { return log_; }
  /// Where this program has not kept to what the capabilities ask of it. A test's last word is
  /// that there is nothing.
  const std::vector<std::string>& contractBreaches() const { return eventTap_.contractBreaches(); }

 private:
  SimulatedLog log_;
  SimulatedRunLoopHost runLoopHost_;
  /// Goes first: what its work holds may still need the rest.
  std::unique_ptr<RunLoop> runLoop_;
  SimulatedAccessibility accessibility_;
  SimulatedApplicationControl applicationControl_;
  SimulatedArchiver archiver_;
  SimulatedDialogs dialogs_;
  SimulatedDisplays displays_;
  SimulatedDistributedNotifications distributedNotifications_;
  SimulatedEventTap eventTap_;
  SimulatedFileSystem fileSystem_{runLoopHost_};
  SimulatedFileEvents fileEvents_{fileSystem_};
  SimulatedFileViewer fileViewer_;
  SimulatedGraphics graphics_;
  SimulatedHotKeys hotKeys_;
  SimulatedLoginItems loginItems_;
  SimulatedNetworkReachability networkReachability_;
  SimulatedPasteboards pasteboards_;
  SimulatedSharedFileLists sharedFileLists_;
  SimulatedSharing sharing_;
  SimulatedTrash trash_{fileSystem_};
  SimulatedUserDefaults userDefaults_;
  SimulatedProcesses processes_;
  SimulatedUserNotifications userNotifications_;
  SimulatedWorkspace workspace_;
  SimulatedWindowPictures windowPictures_;
  SimulatedWindowServer windowServer_;
  SimulatedKeyboard keyboard_;
  SimulatedMenuPresenter menuPresenter_;
  SimulatedPointer pointer_;
  SimulatedScripts scripts_;
};

}  // namespace qb
