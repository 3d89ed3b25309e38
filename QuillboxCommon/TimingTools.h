#pragma once

#include <string>

namespace qb {

/// Development aid: how long something took. Main thread.
class TimingTools {
 public:
  /// Of two starts under one name the later wins.
  static void startTimer(const std::string& name);
  /// Logs and answers the seconds since the start, and forgets it; 0.0 for a name not started.
  static double endTimer(const std::string& name);
};

}  // namespace qb
