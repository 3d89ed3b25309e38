#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qb {

class Quillbox;

/// Ids of folders that have none of `SearchPathDirectory`.
enum MadeUpDirectory : std::int64_t {
  HomeDirectory = 6666,
  UtilitiesDirectory = 7777,
  LibraryDirectory = 8888,
};

/// A folder that every user has, offered to a row that shows none yet.
struct SystemFolder {
  /// It need not be there.
  std::string path;
  /// Of `SearchPathDirectory` or `MadeUpDirectory`.
  std::int64_t directoryID = 0;
  /// The name of its button's action.
  std::string invocationSelector;
};

/// All of them, in the order in which they are offered; without those that this user has none of or
/// that are hidden.
std::vector<SystemFolder> systemFolders(Quillbox& facade);

}  // namespace qb
