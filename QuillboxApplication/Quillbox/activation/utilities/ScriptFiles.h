#pragma once

#include <string>

#include "Platform/Platform.h"

namespace qb {

/// Scripts that lie in files, and the one that pastes. Main thread.
class ScriptFiles {
 public:
  explicit ScriptFiles(Platform& platform) : platform_(platform) {}

  /// Reads the file 0.33 second later and runs it; nothing when the facade has gone by then. What
  /// keeps it from running goes to the log. Only scripts in plain text, UTF-8, can be run.
  void executeAppleScriptAtPath(const std::string& path) const;
  /// Has the program in front paste.
  void invokePasteCommand() const;

 private:
  void loadAndExecute(const std::string& path) const;

  Platform& platform_;
};

}  // namespace qb
