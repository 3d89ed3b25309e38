#pragma once

#include <cstdint>
#include <string>

namespace qb {

struct ShellCommandResult {
  /// What it has written; of very much, the beginning.
  std::string output;
  /// The exit status, 128 and the signal's number for one that was killed.
  std::int32_t status = 0;
  /// What it has written to its standard error, without a line end at its end.
  std::string complaint;
};

/// Runs `command` by the shell to its end, with nothing to read. It blocks. Main thread.
ShellCommandResult runShellCommand(const std::string& command);

}  // namespace qb
