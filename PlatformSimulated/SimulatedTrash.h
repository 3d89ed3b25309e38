#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Trash.h"
#include "PlatformSimulated/SimulatedFileSystem.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// The trash of the files in memory: it only remembers what was thrown away.
class SimulatedTrash : public Trash {
 public:
  explicit SimulatedTrash(SimulatedFileSystem& files) : files_(files) {}

  void recycle(std::vector<std::string> paths, Completion completion) override {
    executeBlockInBackground([this, paths = std::move(paths), completion] {
      std::optional<std::string> error = error_;
      for (const std::string& path : paths) {
        if (!error_ && !trashItemAtPath(path)) error = path + " is not there.";
      }
      executeBlockAfterDelay([completion, error] { completion(error); }, 0);
    });
  }

  bool trashItemAtPath(const std::string& path) override {
    if (error_ || !files_.removeItemAtPath(path)) return false;
    paths_.push_back(path);
    return true;
  }

  /// Where the things in it were, in the order in which they came.
  const std::vector<std::string>& paths() const { return paths_; }
  /// From now on everything fails for this reason.
  void setError(std::string error) { error_ = std::move(error); }

 private:
  SimulatedFileSystem& files_;
  std::vector<std::string> paths_;
  std::optional<std::string> error_;
};

}  // namespace qb
