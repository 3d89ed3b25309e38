#include "Quillbox/providers/FolderOrder.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "QuillboxCommon/TextComparison.h"

namespace qb {

namespace {

template <class Value>
int comparison(const Value& a, const Value& b) {
  if (a == b) return 0;
  return a < b ? -1 : 1;
}

}  // namespace

std::int64_t FolderOrder::compare(const FileOrFolder& a, const FileOrFolder& b) const {
  if (a.isFile != b.isFile) {
    if (sortSegregation == FolderSegregationFilesFirst) return a.isFile ? -1 : 1;
    if (sortSegregation == FolderSegregationFoldersFirst) return a.isFile ? 1 : -1;
  }
  // The least of all numbers has no opposite.
  const std::int64_t factor = std::max(sortOrder, -std::numeric_limits<std::int64_t>::max());
  switch (sortMethod) {
    case FolderSortByName:
      return caseInsensitiveCompare(b.name, a.name) * factor;
    case FolderSortBySize:
      return (a.size > b.size ? -1 : 1) * factor;
    case FolderSortByCreationDate:
      return comparison(b.creationDate, a.creationDate) * factor;
    case FolderSortByModificationDate:
      return comparison(b.modificationDate, a.modificationDate) * factor;
    default:
      return -1;
  }
}

// The library's own sorts may run out of their range when two entries are each before the other.
void FolderOrder::sort(std::vector<std::shared_ptr<FileOrFolder>>& entries) const {
  std::vector<std::shared_ptr<FileOrFolder>> merged(entries.size());
  for (std::size_t width = 1; width < entries.size(); width *= 2) {
    for (std::size_t start = 0; start < entries.size(); start += 2 * width) {
      const std::size_t middle = std::min(start + width, entries.size());
      const std::size_t end = std::min(middle + width, entries.size());
      for (std::size_t left = start, right = middle, next = start; next < end; ++next) {
        const bool takesRight =
            left == middle || (right < end && compare(*entries[left], *entries[right]) > 0);
        merged[next] = std::move(entries[takesRight ? right++ : left++]);
      }
    }
    entries.swap(merged);
  }
}

}  // namespace qb
