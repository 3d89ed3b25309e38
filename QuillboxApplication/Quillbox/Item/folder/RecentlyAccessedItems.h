#pragma once

#include <string>
#include <vector>

namespace qb {

/// What was last opened from a folder's menu, or has come into the folder of downloads, the last
/// first. Kept between runs, for each folder. Main thread.
class RecentlyAccessedItems {
 public:
  /// Full paths, at most 8. Not all of them need be there any more.
  const std::vector<std::string>& paths() const { return paths_; }

  /// Becomes what is kept of that folder; nothing when nothing is.
  void load(const std::string& folder);
  /// Puts a path first, and keeps that.
  void add(const std::string& path, const std::string& folder);
  /// Until it is loaded again; nothing is kept of it.
  void remove(const std::string& path);
  /// Adds what was not among the visible contents of the folder of downloads when this was called
  /// last, and is complete. At the first call that is everything.
  void addNewlyDownloaded(const std::vector<std::string>& visibleContents,
                          const std::string& folder);

 private:
  void putFirst(const std::string& path);
  void save(const std::string& folder) const;

  std::vector<std::string> paths_;
};

}  // namespace qb
