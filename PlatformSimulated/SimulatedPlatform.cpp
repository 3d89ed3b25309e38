#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb {

SimulatedPlatform::SimulatedPlatform()
    : runLoop_(std::make_unique<RunLoop>(runLoopHost_)),
      dialogs_(runLoopHost_),
      distributedNotifications_(runLoopHost_),
      eventTap_(accessibility_, *runLoop_),
      graphics_(runLoopHost_),
      userNotifications_(processes_),
      workspace_(processes_, runLoopHost_),
      windowServer_(processes_),
      keyboard_({dialogs_, displays_, eventTap_, hotKeys_, processes_, windowServer_}),
      menuPresenter_(runLoopHost_),
      pointer_({runLoopHost_, displays_, eventTap_, keyboard_, processes_, windowServer_,
                menuPresenter_}),
      scripts_({runLoopHost_, dialogs_, keyboard_, processes_, workspace_}) {
  processes_.setOnLaunch([this](const SimulatedApplication& application) {
    if (application.bundlePath.empty() || application.isUIElement) return;
    sharedFileLists_.noteStart(application.name, application.bundlePath);
  });
}

SimulatedPlatform::~SimulatedPlatform() {
  runLoopHost_.forgetAll();
  runLoop_.reset();
}

}  // namespace qb
