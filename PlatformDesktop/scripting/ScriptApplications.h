#pragma once

#include <functional>
#include <string>

#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/processes/DesktopProcesses.h"
#include "PlatformDesktop/processes/DesktopWorkspace.h"
#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb {

/// The applications that scripts speak of: by the names that they have here, or by those of the
/// roles that the desktop's own programs play ("Finder" is the file manager). Main thread.
class ScriptApplications {
 public:
  /// All of them must outlive this.
  ScriptApplications(ApplicationCatalogue& catalogue, DesktopProcesses& processes,
                     DesktopWorkspace& workspace)
      : catalogue_(catalogue), processes_(processes), workspace_(workspace) {}

  /// The bundle identifier that a script means; empty for a name that stands for no role.
  static std::string identifierOf(const ScriptApplication& application);

  /// Brings it to the front, starting it where needed, and waits until it is there; no longer than
  /// a program may take, though. False when there is none or it cannot be started.
  bool activate(const ScriptApplication& application);
  /// Asks it to quit. False when it does not run.
  bool quit(const ScriptApplication& application);
  /// Starts another instance of it, which opens with something new, and waits as above.
  bool openAnew(const ScriptApplication& application);
  /// Whether who has the keyboard is a terminal, by its desktop entry.
  bool frontIsTerminal() const;

 private:
  ProcessSerialNumber running(const ScriptApplication& application) const;
  const DesktopEntry* installed(const ScriptApplication& application) const;
  bool start(const DesktopEntry& entry);
  void waitForFront(const std::function<bool(ProcessSerialNumber)>& isThere, int looks) const;

  ApplicationCatalogue& catalogue_;
  DesktopProcesses& processes_;
  DesktopWorkspace& workspace_;
};

}  // namespace qb
