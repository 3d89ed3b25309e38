#pragma once

#include <memory>
#include <optional>
#include <string>

#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/scripting/ScriptDescriptor.h"
#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb {

namespace scripting {
struct Program;
struct Limits;
}  // namespace scripting

/// What became of a run: a result, an error, or neither for a script without a result.
struct ScriptOutcome {
  std::optional<ScriptDescriptor> descriptor;
  /// A dictionary with the keys of ScriptError.h; none when the script came to its end.
  PropertyList error;

  bool succeeded() const { return error.isNone(); }
};

/// A script in the language of the system's scripts, as far as this system writes or meets it.
///
/// Known are: tell (as a block and with "to"), handlers with parameters, "my", set (with lists as
/// patterns), copy, local, global, property, if, repeat, try, error, return, lists and their items,
/// text and its parts, the usual operators, do shell script, display alert, delay, ASCII character,
/// activate and quit, keystroke and key code of System Events, its elements for click, exists,
/// enabled and name, and the panes of System Preferences. Lines end in "\r", "\n" or both. Any
/// other word is an error. However the source looks, a script ends: what it may take is bounded.
class Script {
 public:
  explicit Script(std::string source);
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  const std::string& source() const { return source_; }
  /// Reads the source unless that has been done. Answers none or an error dictionary.
  PropertyList compileAndReturnError();
  /// Runs the script, reading it first where needed; of one that cannot be read nothing is done. It
  /// may be run again, and begins anew then.
  ScriptOutcome executeAndReturnError(ScriptHost& host);
  ScriptOutcome executeAndReturnError(ScriptHost& host, const scripting::Limits& limits);

 private:
  std::string source_;
  std::unique_ptr<const scripting::Program> program_;
};

}  // namespace qb
