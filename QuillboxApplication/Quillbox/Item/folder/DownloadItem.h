#pragma once

#include <cstdint>
#include <string>

namespace qb {

enum DownloadItemType : std::int32_t {
  /// A folder that holds what has come so far, beside a property list that tells how much will.
  DownloadItemTypePackage = 0,
};

/// One download in progress.
struct DownloadItem {
  std::int32_t type = DownloadItemTypePackage;
  std::string downloadFilePath;
  /// What grows.
  std::string workFilePath;
  /// 0 when it is not known.
  std::int64_t fileSizeInBytes = 0;
  std::int64_t bytesDownloaded = 0;
};

}  // namespace qb
