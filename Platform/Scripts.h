#pragma once

#include <string>

namespace qb {

/// Runs scripts of the desktop's script language. Main thread.
class Scripts {
 public:
  virtual ~Scripts() = default;
  /// Runs `source`, whose lines end in "\r" or "\n", to its end. False when it cannot be run or
  /// ends in an error.
  virtual bool executeAndReturnError(const std::string& source) = 0;
};

}  // namespace qb
