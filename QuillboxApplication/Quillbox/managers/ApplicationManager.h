#pragma once

#include <cstdint>
#include <memory>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

class Processes;
class RunningApplication;
class Window;
class Workspace;

/// What is done to the running applications. Main thread.
class ApplicationManager {
 public:
  ApplicationManager(Processes& processes, Workspace& workspace);
  ~ApplicationManager();
  ApplicationManager(const ApplicationManager&) = delete;
  ApplicationManager& operator=(const ApplicationManager&) = delete;

  /// Hides the front application. One that refuses while it is in front is hidden once more after
  /// the file manager has been put before it.
  void hideFrontmostApplication();
  /// True from the start of that until its end. Stays true when the front process turns out to be
  /// no application. Intended.
  bool hidingFrontMostApplication() const { return hidingFrontMostApplication_; }

  void windowWillBeDisplayed(Window& window, const PropertyList& environment,
                             std::int32_t applicationActivationMethod);
  void windowWillBeDismissed(Window& window);
  /// The panel is on the screen.
  bool quillboxUIIsVisible() const { return quillboxUIIsVisible_; }

 private:
  void ensureApplicationIsHidden(const std::shared_ptr<RunningApplication>& application);
  void hideRunningApplication(RunningApplication& application);

  Processes& processes_;
  Workspace& workspace_;
  bool hidingFrontMostApplication_ = false;
  bool quillboxUIIsVisible_ = false;
};

}  // namespace qb
