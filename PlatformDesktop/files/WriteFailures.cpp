#include "PlatformDesktop/files/WriteFailures.h"

#include "QuillboxCommon/Log.h"

namespace qb {

void WriteFailures::note(const std::string& path, std::error_code reason) {
  {
    const std::lock_guard lock(mutex_);
    if (!paths_.insert(path).second) return;
  }
  log(path + " cannot be written, and what it is to hold lasts until the program ends: " +
      reason.message());
}

void WriteFailures::end(const std::string& path) {
  {
    const std::lock_guard lock(mutex_);
    if (paths_.erase(path) == 0) return;
  }
  log(path + " has been written again.");
}

}  // namespace qb
