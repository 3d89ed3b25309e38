#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qb {

/// Where the user's files go before they are gone for good. Main thread.
class Trash {
 public:
  /// Gets a text for the user about what could not go, or none. On the main thread, once, later
  /// than the call.
  using Completion = std::function<void(const std::optional<std::string>& error)>;

  virtual ~Trash() = default;
  /// `NSWorkspace recycleURLs`: moves files, folders with all that is in them, and links (not what
  /// they lead to) to the trash of the volume that they are on. The work is done elsewhere. What
  /// cannot go stays as it is, and the rest goes all the same.
  virtual void recycle(std::vector<std::string> paths, Completion completion) = 0;
  /// `NSFileManager trashItemAtURL`: the same for one path, done when it returns. False when it
  /// could not go.
  virtual bool trashItemAtPath(const std::string& path) = 0;
};

}  // namespace qb
