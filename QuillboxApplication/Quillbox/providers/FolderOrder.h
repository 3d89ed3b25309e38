#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Quillbox/providers/FileOrFolder.h"

namespace qb {

/// What the entries of a folder are sorted by.
enum FolderSort : std::int32_t {
  FolderSortByName = 0,
  FolderSortBySize = 1,
  FolderSortByCreationDate = 2,
  FolderSortByModificationDate = 3,
};

/// Whether files or folders come before the others.
enum FolderSegregation : std::int32_t {
  FolderSegregationCombined = 0,
  FolderSegregationFilesFirst = 1,
  FolderSegregationFoldersFirst = 2,
};

/// How a folder's entries are sorted. Any values may come from a saved row.
struct FolderOrder {
  std::int32_t sortMethod = FolderSortByName;
  /// 1 for the last name, the greatest size or the latest date first, -1 for the reverse.
  std::int64_t sortOrder = 1;
  std::int32_t sortSegregation = FolderSegregationCombined;

  /// Negative when `a` comes first, positive when `b` does, else 0. Intended: of two files of equal
  /// size either comes first, whichever is asked about. An entry without a date counts as the
  /// oldest.
  std::int64_t compare(const FileOrFolder& a, const FileOrFolder& b) const;
  /// Works with any comparison, even one that contradicts itself.
  void sort(std::vector<std::shared_ptr<FileOrFolder>>& entries) const;
};

}  // namespace qb
