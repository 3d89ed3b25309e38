#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qb {

/// What the system tells of a running process.
struct ProgramFile {
  /// The program or, of an interpreted one, its script; empty when it cannot be told.
  std::string path;
  /// Names it may be known by: of the program file, of the first word of its command line, of the
  /// script. Without folders, without repetition.
  std::vector<std::string> names;
};
ProgramFile programFileOfProcess(std::int32_t pid);

/// Differs between two processes that had the same id one after the other; empty when there is
/// none of that id.
std::string startMarkOfProcess(std::int32_t pid);

}  // namespace qb
