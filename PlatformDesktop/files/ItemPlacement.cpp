#include "PlatformDesktop/files/ItemPlacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "PlatformDesktop/files/FileTree.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

std::optional<struct stat> statusOf(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool isFolder(const struct stat& status) { return S_ISDIR(status.st_mode); }

/// A hidden folder beside the place that something is to take, removed with what is still in it.
class Staging {
 public:
  explicit Staging(const std::string& folder) : path_(folder + "/.quillbox-XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) path_.clear();
  }
  ~Staging() {
    if (!path_.empty() && !removeUnfinishedTree(path_)) log(path_ + " could not be removed.");
  }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  explicit operator bool() const { return !path_.empty(); }
  const std::string& path() const { return path_; }
  std::string path(const std::string& name) const { return path_ + '/' + name; }
  /// It stays, with what is in it.
  void keep() {
    log("What was to be replaced is in " + path_ + ".");
    path_.clear();
  }

 private:
  std::string path_;
};

/// 0, or why not.
int renameToFreeName(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  // Not every file system can promise that the name is free.
  if (errno != EINVAL && errno != ENOSYS) return errno;
  if (statusOf(to)) return EEXIST;
  return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

/// One item and the place that it is to take.
class Placement {
 public:
  Placement(const std::string& from, const std::string& to)
      : from_(fs::path(from).lexically_normal()), to_(fs::path(to).lexically_normal()) {
    for (fs::path* const path : {&from_, &to_}) {
      // A slash at the end leads through a link.
      if (!path->has_filename()) *path = path->parent_path();
    }
    source_ = statusOf(from_);
    present_ = statusOf(to_);
  }

  /// The item is there already, by this or another road.
  bool isDone() const {
    if (!source_ || !present_ || !isSame(*source_, *present_)) return false;
    if (isFolder(*source_) || source_->st_nlink == 1) return true;
    const auto here = statusOf(from_.parent_path());
    const auto there = statusOf(to_.parent_path());
    return from_.filename() == to_.filename() && here && there && isSame(*here, *there);
  }

  bool isPossible(PresentItem presentItem) const {
    if (!from_.is_absolute() || !to_.is_absolute() || !source_) return false;
    if (isFolder(*source_) && isWithin(to_, from_)) return false;
    if (!present_) return true;
    if (presentItem == PresentItem::Stays || isWithin(from_, to_)) return false;
    return canRemoveTree(to_);
  }

  bool move() const {
    const int reason = take(from_);
    if (reason != EXDEV) return reason == 0;
    return canRemoveTree(from_) && copy(Durability::Flushed) && removeTree(from_);
  }

  bool copy(Durability durability) const {
    const Staging staging(to_.parent_path());
    if (!staging) return false;
    const std::string copied = staging.path(to_.filename());
    struct stat excluded {};
    if (stat(staging.path().c_str(), &excluded) != 0) return false;
    // What goes for it must not go before it would last.
    if (present_) durability = Durability::Flushed;
    if (!copyTree(from_, copied, durability, excluded) || take(copied) != 0) return false;
    if (durability == Durability::Flushed) flushFolder(to_.parent_path());
    return true;
  }

 private:
  /// Whether an item lies in a folder, links on the way to both aside.
  static bool isWithin(const fs::path& item, const fs::path& folder) {
    std::error_code error;
    const fs::path holder = fs::canonical(item.parent_path(), error);
    if (error) return false;
    const fs::path root = fs::canonical(folder.parent_path(), error) / folder.filename();
    if (error) return false;
    const std::string prefix = root.string() + '/';
    return holder == root || holder.string().starts_with(prefix);
  }

  /// `item`, complete and on the same volume, gets the place; what had it goes. 0, or why not: all
  /// is as it was then.
  int take(const std::string& item) const {
    if (!present_) return renameToFreeName(item, to_);
    const auto status = statusOf(item);
    if (!status) return ENOENT;
    if (!isFolder(*status) && !isFolder(*present_)) {
      if (std::rename(item.c_str(), to_.c_str()) != 0) return errno;
      // Two names of one file: the renaming counts as done and leaves both.
      if (isSame(*status, *present_)) unlink(item.c_str());
      return 0;
    }
    if (renameat2(AT_FDCWD, item.c_str(), AT_FDCWD, to_.c_str(), RENAME_EXCHANGE) == 0) {
      if (!removeTree(item)) log("What was replaced is still in " + item + ".");
      return 0;
    }
    return errno == EINVAL || errno == ENOSYS ? takeWithoutExchange(item) : errno;
  }

  int takeWithoutExchange(const std::string& item) const {
    Staging staging(to_.parent_path());
    if (!staging) return EACCES;
    const std::string aside = staging.path("replaced");
    int reason = renameToFreeName(to_, aside);
    if (reason != 0) return reason;
    reason = renameToFreeName(item, to_);
    if (reason != 0 && renameToFreeName(aside, to_) != 0) staging.keep();
    return reason;
  }

  fs::path from_, to_;
  std::optional<struct stat> source_, present_;
};

}  // namespace

bool placeByMoving(const std::string& from, const std::string& to, PresentItem presentItem) {
  const Placement placement(from, to);
  return placement.isDone() || (placement.isPossible(presentItem) && placement.move());
}

bool placeByCopying(const std::string& from, const std::string& to, PresentItem presentItem) {
  const Placement placement(from, to);
  return placement.isDone() ||
         (placement.isPossible(presentItem) && placement.copy(Durability::Visible));
}

}  // namespace qb
