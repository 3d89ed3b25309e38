#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Platform/FileEvents.h"
#include "PlatformSimulated/SimulatedFileSystem.h"

namespace qb {

/// News of the files in memory.
class SimulatedFileEvents : public FileEvents {
 public:
  explicit SimulatedFileEvents(SimulatedFileSystem& files);

  Subscription watchFolder(const std::string& path, TimeInterval latency, Block changed) override;

  /// From now on that folder cannot be watched.
  void setCannotBeWatched(const std::string& folder) { unwatchable_.insert(folder); }
  /// Those that are watched at present, each as often as it is.
  std::vector<std::string> watchedFolders() const;

 private:
  struct Watcher;
  void note(const std::string& path);

  std::vector<std::shared_ptr<Watcher>> watchers_;
  std::set<std::string> unwatchable_;
};

}  // namespace qb
