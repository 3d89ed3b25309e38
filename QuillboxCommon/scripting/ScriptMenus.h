#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb {

class ScriptMenuEntry;
/// The entries of a menu or of a menu bar from the first on, lines between them included.
using ScriptMenuEntries = std::vector<std::unique_ptr<ScriptMenuEntry>>;

/// An entry in the menus of a running program, as the program had it when it was asked for. Each
/// operation throws `ScriptError` when the program does not answer in time. Main thread.
class ScriptMenuEntry {
 public:
  virtual ~ScriptMenuEntry() = default;

  /// As users see it: without marks for keys or shortcuts. Empty for a line.
  virtual std::string name() const = 0;
  virtual bool isEnabled() const = 0;
  /// What is in its menu; empty for one that has none.
  virtual ScriptMenuEntries entries() = 0;
  /// The same after its menu has been opened: a program may fill a menu only then. What has been
  /// opened is closed when the click is over.
  virtual ScriptMenuEntries entriesOnceOpened() = 0;
  /// Does what a click does. False when the program refuses.
  virtual bool click() = 0;
};

/// The menus of the running programs. Main thread.
class ScriptMenus {
 public:
  virtual ~ScriptMenus() = default;

  /// Whether a program that scripts call so runs.
  virtual bool isRunning(const ScriptApplication& process) = 0;
  /// The entries of its menu bar, of the window in front where it has several; none when it shows
  /// none to other programs. Throws `ScriptError` when it does not answer in time, and where menus
  /// of other programs cannot be reached at all.
  virtual std::optional<ScriptMenuEntries> menuBarOf(const ScriptApplication& process) = 0;
};

}  // namespace qb
