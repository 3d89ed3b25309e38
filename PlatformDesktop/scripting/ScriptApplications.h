#pragma once

#include <string>

#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/processes/DesktopProcesses.h"
#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb {

/// How long a script waits for an application to come to the front, or to answer. It blocks this
/// program, so it must end.
struct ScriptPatience {
  TimeInterval withRunning = 5;
  TimeInterval withStarted = 20;
  /// What a program that shows no menus gets to come as far as that.
  TimeInterval withMenus = 1;
};

/// The applications that scripts speak of: by the names that they have here, or by those of the
/// roles that the desktop's own programs play ("Finder" is the file manager). Main thread.
class ScriptApplications {
 public:
  /// Both must outlive this.
  ScriptApplications(ApplicationCatalogue& catalogue, DesktopProcesses& processes)
      : catalogue_(catalogue), processes_(processes) {}

  /// The bundle identifier that a script means; empty for a name that stands for no role.
  static std::string identifierOf(const ScriptApplication& application);

  enum class Arrival {
    InFront,
    /// Not in front when the patience ended: what is typed now would go elsewhere.
    Late,
    /// There is none, or it cannot be started.
    None,
  };
  void setPatience(const ScriptPatience& patience) { patience_ = patience; }
  const ScriptPatience& patience() const { return patience_; }

  /// The process that a script means, of several the one in front; the null number when it does not
  /// run.
  ProcessSerialNumber running(const ScriptApplication& application) const;

  /// Brings it to the front, starting it where needed, and waits until it is there.
  Arrival activate(const ScriptApplication& application);
  /// Asks it to quit. False when it does not run.
  bool quit(const ScriptApplication& application);
  /// Starts another instance of it, which opens with something new, and waits as above.
  Arrival openAnew(const ScriptApplication& application);
  /// Starts it with a document, and does not wait. False when there is none.
  bool openDocument(const std::string& path, const ScriptApplication& application) const;
  /// Whether who has the keyboard is a terminal, by its desktop entry.
  bool frontIsTerminal() const;

 private:
  const DesktopEntry* installed(const ScriptApplication& application) const;
  Arrival start(const DesktopEntry& entry);
  bool frontIsOf(const DesktopEntry& entry) const;

  ApplicationCatalogue& catalogue_;
  DesktopProcesses& processes_;
  ScriptPatience patience_;
};

}  // namespace qb
