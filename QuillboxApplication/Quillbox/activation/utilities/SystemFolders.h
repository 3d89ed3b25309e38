#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qb {

class FileSystem;

/// The folders that every user has, by the ids of `SearchPathDirectory`. Main thread.
class SystemFolders {
 public:
  explicit SystemFolders(const FileSystem& fileSystem) : fileSystem_(fileSystem) {}

  /// Empty when the user has none of that kind. The user's own folder for applications gives way to
  /// the one that all users share.
  std::string filePathForSystemFolderWithID(std::int32_t folderID) const;
  /// The names of what is in it and not hidden.
  std::vector<std::string> contentsForSystemFolderWithID(std::int32_t folderID) const;
  /// A path that was stored under another user's name or on another machine, if its last part is
  /// the name of a folder that every user has: this user's folder of that name. Any other path as
  /// it is.
  std::string reconcileBogusFolderPath(const std::string& path) const;

 private:
  const FileSystem& fileSystem_;
};

}  // namespace qb
