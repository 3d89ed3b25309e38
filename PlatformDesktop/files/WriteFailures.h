#pragma once

#include <mutex>
#include <set>
#include <string>
#include <system_error>

namespace qb {

/// Says in the log which files cannot be written: once for each, however often it is tried, until
/// it has worked again. Any thread.
class WriteFailures {
 public:
  void note(const std::string& path, std::error_code reason);
  void end(const std::string& path);

 private:
  std::mutex mutex_;
  std::set<std::string> paths_;
};

}  // namespace qb
