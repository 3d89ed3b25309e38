#pragma once

#include <string>

namespace qb {

/// One file of a move or copy.
struct FinderFile {
  /// The last part of the source path.
  std::string name;
  std::string sourcePath;
  std::string destinationPath;
  /// The user has said that what is at the destination may go.
  bool replaces = false;
};

}  // namespace qb
