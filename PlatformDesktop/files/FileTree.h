#pragma once

#include <sys/stat.h>

#include <string>

namespace qb {

/// When a copy counts as made.
enum class Durability {
  /// Once other programs see it.
  Visible,
  /// Once it would outlive a power cut, so that what it was made from may go.
  Flushed,
};

/// Whether two names are of one file or folder.
inline bool isSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Copies a file, a link, a pipe or a folder with all that is in it, to a path that nothing has.
/// Dates, modes, attributes and, where that is allowed, owners are those of the source; a link
/// stays a link. `excluded` is a folder that must not be met on the way: the one that holds the
/// copy. False when any part fails; what has been made by then is there. Any thread.
bool copyTree(const std::string& from, const std::string& to, Durability durability,
              const struct stat& excluded);

/// Whether all of it could be removed, as far as permissions tell. Not with another file system
/// mounted in it. Any thread.
bool canRemoveTree(const std::string& path);

/// Removes a file, a link, or a folder with all that is in it. Any thread.
bool removeTree(const std::string& path);

/// The same for what this program has made, whatever modes its folders have by now.
bool removeUnfinishedTree(const std::string& path);

/// Has what is in a folder outlive a power cut. Any thread.
void flushFolder(const std::string& folder);

}  // namespace qb
