#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/managers/clipboard/ClipTypes.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

class Cubby;
class FileSystem;

/// The clippings of the history, one file each in a folder that only the user can look into. There
/// is no more to it than the folder: a name's extension tells what a clipping is of, and the date
/// of a file's making when it was copied. Main thread.
class ClipFolder {
 public:
  /// The file system must outlive it.
  explicit ClipFolder(FileSystem& fileSystem);

  /// Whether it worked shows when something is written there.
  void make();
  const std::string& clipboardHistoryFolderPath() const { return clipboardHistoryFolderPath_; }

  /// By the extension alone.
  static ClipType clipTypeFromFilePath(const std::string& path);
  /// None for a file that cannot be read, or with nothing in it.
  std::shared_ptr<Cubby> createCubbyFromClipFileAtPath(const std::string& path) const;
  /// The path of the new file, whether or not it could be written.
  std::string writeClip(const PropertyList& state, ClipType clipType);
  bool clipFileAtPathHas(const std::string& path, const PropertyList& state) const;

  /// Full paths, the newest first; no more than `maximum`. Bits of no type are ignored.
  std::vector<std::string> pathsToClipFilesOfTypes(std::uint32_t clipTypes,
                                                   std::int64_t maximum) const;
  // Intended: in these two a name counts that ends like an extension, with or without the dot.
  std::vector<std::string> pathsWithEndingOfTypes(std::uint32_t clipTypes) const;
  /// The oldest of those of one type beyond the newest `kept`, the oldest first; no more than
  /// `maximum`. Of two that are equally old, the one that is listed later is the older.
  std::vector<std::string> oldestPathsBeyond(std::int64_t kept, ClipType clipType,
                                             std::size_t maximum) const;

 private:
  FileSystem& fileSystem_;
  std::string clipboardHistoryFolderPath_;
};

}  // namespace qb
