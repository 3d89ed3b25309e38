#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "QuillboxCommon/Geometry.h"

namespace qb {

class FileSystemItem;
class Quillbox;

/// What `itemTypeForFileSystemObjectAtPath` answers for no path at all; no item has it.
inline constexpr std::int32_t kItemTypeOfNoPath = 18;

/// Files as items: of which kind, made, and chosen. Main thread.
class FileItems {
 public:
  explicit FileItems(Quillbox& facade) : facade_(facade) {}

  /// An `ItemType`; a file that is missing counts as a plain one.
  std::int32_t itemTypeForFileSystemObjectAtPath(const std::string& path) const;
  /// An item of the class that stands for what is at the path; none when there is no such class.
  std::shared_ptr<FileSystemItem> createFileSystemItemWithFrame(const Rect& frame,
                                                                const std::string& name,
                                                                const std::string& path) const;
  /// Opens what the user has chosen: scripts are run, anything else goes to what it belongs to. A
  /// missing file gives an alert.
  void performSelectionActionForFileAtPath(const std::string& path);

 private:
  Quillbox& facade_;
};

}  // namespace qb
