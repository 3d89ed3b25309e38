#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

/// The lists by their names on the desktop that they come from ("kLSSharedFileList...").
enum class SharedFileList : std::uint8_t {
  /// Applications in the order of their last start, the latest first.
  RecentApplicationItems,
};

/// One entry of a list.
struct SharedFileListItem {
  /// As the user reads it.
  std::string displayName;
  /// An absolute path; empty when the entry can no longer be resolved. What it names may have gone.
  std::string path;
  friend bool operator==(const SharedFileListItem&, const SharedFileListItem&) = default;
};

/// The lists of files that the whole desktop shares. They outlive this program. Main thread.
class SharedFileLists {
 public:
  virtual ~SharedFileLists() = default;
  /// The entries in order; none for a list that cannot be read.
  virtual std::vector<SharedFileListItem> snapshot(SharedFileList list) const = 0;
  /// `changed` is called from the run loop after each change.
  [[nodiscard]] virtual Subscription addObserver(SharedFileList list, Block changed) = 0;
};

}  // namespace qb
