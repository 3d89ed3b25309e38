#pragma once

#include <functional>
#include <future>
#include <memory>

#include "PlatformDesktop/processes/ApplicationIndex.h"
#include "PlatformDesktop/processes/FolderWatch.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// The installed applications, kept up to date: read in the background from the start, and again
/// when their files or the user's default applications change. Main thread.
class ApplicationCatalogue {
 public:
  /// `host` must outlive it and end its background blocks before.
  explicit ApplicationCatalogue(RunLoopHost& host);

  /// Waits for the first reading, no longer.
  const ApplicationIndex& index() const;
  /// Called after each later reading.
  void setChangeObserver(std::function<void()> observer) { observer_ = std::move(observer); }

 private:
  void readAgain();

  RunLoopHost& host_;
  std::shared_future<std::shared_ptr<const ApplicationIndex>> first_;
  mutable std::shared_ptr<const ApplicationIndex> index_;
  FolderWatch watch_;
  std::function<void()> observer_;
  bool readingIsDue_ = false;
  std::shared_ptr<const bool> lifeSign_ = std::make_shared<const bool>(true);
};

}  // namespace qb
