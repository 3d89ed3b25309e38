#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Platform/FileSystem.h"
#include "Platform/SharedFileLists.h"
#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/processes/DesktopProcesses.h"

namespace qb {

/// The desktop itself keeps no list of started applications, so this one does: it notes every
/// application with a desktop entry that shows its first window, in a file of its own. While
/// nothing starts it costs no wake-up. Main thread.
class DesktopSharedFileLists : public SharedFileLists {
 public:
  /// All must outlive it. The run loop must stand.
  DesktopSharedFileLists(FileSystem& fileSystem, DesktopProcesses& processes,
                         const ApplicationCatalogue& catalogue);
  ~DesktopSharedFileLists() override;
  DesktopSharedFileLists(const DesktopSharedFileLists&) = delete;
  DesktopSharedFileLists& operator=(const DesktopSharedFileLists&) = delete;

  std::vector<SharedFileListItem> snapshot(SharedFileList list) const override;
  Subscription addObserver(SharedFileList list, Block changed) override;

 private:
  void noteStarts();
  void noteStart(const std::string& path);
  void read();
  void write() const;
  std::string filePath() const;

  FileSystem& fileSystem_;
  DesktopProcesses& processes_;
  const ApplicationCatalogue& catalogue_;
  std::shared_ptr<RunLoopTimer> timer_;
  /// The running processes that have been taken note of.
  std::vector<ProcessSerialNumber> seen_;
  /// Latest first.
  std::vector<std::string> recentApplicationPaths_;
  bool hasLooked_ = false;
  std::map<int, Block> observers_;
  int lastObserver_ = 0;
};

}  // namespace qb
