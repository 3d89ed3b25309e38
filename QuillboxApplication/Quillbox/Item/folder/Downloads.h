#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Quillbox/Item/folder/DownloadItem.h"
#include "QuillboxCommon/views/Image.h"

namespace qb {

/// How far the downloads of a folder have come. What has been found out about one stays known.
/// Main thread.
class Downloads {
 public:
  /// A fraction, despite its name; -1 when it cannot be told. Of a size that is not known, or not
  /// true, comes what the division gives, which need not lie between 0 and 1.
  double downloadProgressPercentForItemAtPath(const std::string& path);
  /// A pie of 16 by 16 points that fills as the download goes on; a spinner when that cannot be
  /// told.
  Image downloadImageForItemAtPath(const std::string& path);

 private:
  /// Null for what tells nothing of its progress.
  DownloadItem* itemForPath(const std::string& path);

  std::vector<DownloadItem> downloads_;
};

}  // namespace qb
