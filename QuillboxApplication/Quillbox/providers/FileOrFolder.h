#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// One entry of a folder. What cannot be asked about itself counts as a file without dates.
struct FileOrFolder {
  std::string name;
  std::string fullPath;
  std::optional<Date> creationDate, modificationDate;
  /// In bytes; 0 for a folder.
  std::uint64_t size = 0;
  /// One of the two. A link is a file, and so is nothing that users only take for one.
  bool isFile = true, isFolder = false;
};

}  // namespace qb
