#include "Quillbox/managers/ApplicationManager.h"

#include "Platform/Processes.h"
#include "Platform/Workspace.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

constexpr const char* fileManagerIdentifier = "com.apple.finder";
constexpr TimeInterval timeToHide = 0.1;
constexpr TimeInterval timeToComeForward = 0.1;

}  // namespace

ApplicationManager::ApplicationManager(Processes& processes, Workspace& workspace)
    : processes_(processes), workspace_(workspace) {}

ApplicationManager::~ApplicationManager() { RunLoop::main().cancelPreviousPerformRequests(this); }

void ApplicationManager::hideFrontmostApplication() {
  hidingFrontMostApplication_ = true;
  const auto front = processes_.processInformation(processes_.getFrontProcess());
  if (!front) return;
  const auto application =
      workspace_.runningApplicationWithProcessIdentifier(front->processIdentifier);
  if (!application) return;
  application->hide();
  RunLoop::main().performAfterDelay(
      this, "ensureApplicationIsHidden:", timeToHide,
      [this, application] { ensureApplicationIsHidden(application); });
}

void ApplicationManager::ensureApplicationIsHidden(
    const std::shared_ptr<RunningApplication>& application) {
  if (application->isHidden()) {
    hidingFrontMostApplication_ = false;
    return;
  }
  const auto fileManagers =
      workspace_.runningApplicationsWithBundleIdentifier(fileManagerIdentifier);
  if (fileManagers.empty()) {
    hidingFrontMostApplication_ = false;
    return;
  }
  fileManagers.front()->unhide();
  fileManagers.front()->activateWithOptions(0);
  RunLoop::main().performAfterDelay(this, "hideRunningApplication:", timeToComeForward,
                                    [this, application] { hideRunningApplication(*application); });
}

void ApplicationManager::hideRunningApplication(RunningApplication& application) {
  application.hide();
  hidingFrontMostApplication_ = false;
}

void ApplicationManager::windowWillBeDisplayed(Window& /*window*/,
                                               const PropertyList& /*environment*/,
                                               std::int32_t /*applicationActivationMethod*/) {
  quillboxUIIsVisible_ = true;
}

void ApplicationManager::windowWillBeDismissed(Window& /*window*/) { quillboxUIIsVisible_ = false; }

}  // namespace qb
