#pragma once

#include <any>
#include <cstdint>
#include <map>
#include <string>

namespace qb {

/// What a drag carries, as bits: one drag can carry several kinds.
enum DragType : std::uint32_t {
  DragTypeFileURL = 1,
  DragTypeText = 4,
  DragTypeImage = 8,
  DragTypeWebSite = 16,
  DragTypeAutoType = 32,
  DragTypeMetaFolder = 64,
  DragTypeScreenShot = 128,
  DragTypeClipboard = 256,
  DragTypeSeparator = 512,
  DragTypeClip = 1024,
  DragTypeDisplayConfiguration = 2048,
  DragTypePreferencePane = 4096,
  DragTypeCubbyhole = 8192,
  DragTypeWebURL = 16384,
};

/// What may become of a drag, as bits.
enum DragOperationMask : std::int32_t {
  DragOperationEvery = -1,
  DragOperationCopy = 1,
  /// Nothing outside of this program takes it.
  DragOperationPrivate = 8,
};

/// What is being dragged over the panel. Main thread.
class DragOperation {
 public:
  virtual ~DragOperation() = default;
  /// Bits of `DragType`.
  virtual std::uint32_t dragTypes() const = 0;
  /// What may become of it, as far as its source has a say: bits of `DragOperationMask`.
  virtual std::int32_t draggingSourceOperationMask() const { return DragOperationEvery; }
};

/// Of what a drag drops, the absolute path of a file, as `std::string`.
inline constexpr const char* DragContentsFileURL = "DragContentsFileURL";

/// One of the things that a drag drops.
struct DragItem {
  /// Bits of `DragType`.
  std::uint32_t dragTypes = 0;
  /// What there is of it, by the name of the kind of content. Empty for a thing of no known kind.
  std::map<std::string, std::any> commonContents;
};

/// Where a drag out of a row is at the moment.
enum class DraggingContext { OutsideApplication, WithinApplication };

}  // namespace qb
