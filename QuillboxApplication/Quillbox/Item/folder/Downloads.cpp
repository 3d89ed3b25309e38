#include "Quillbox/Item/folder/Downloads.h"

#include <algorithm>
#include <cmath>

#include "Platform/FileSystem.h"
#include "Platform/Graphics.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr double unknownProgress = -1;

constexpr Size pieSize{16, 16};
constexpr Point pieCenter{8, 8};
constexpr double pieRadius = 7;
constexpr double top = -90, fullCircle = 360;
constexpr Color pieColor = Color::colorWithCalibratedRed(1, 0.5, 0, 0.8);
constexpr Color ringColor = Color::colorWithCalibratedWhite(1.0 / 3, 1);
constexpr double ringWidth = 1;

DownloadItem packageAtPath(const std::string& path) {
  const FileSystem& files = quillbox->platform().fileSystem();
  DownloadItem item;
  item.downloadFilePath = path;
  std::string list;
  for (const std::string& name : files.contentsOfDirectoryAtPath(path)) {
    std::string& last = pathExtension(name) == "plist" ? list : item.workFilePath;
    last = pathInFolder(path, name);
  }
  // Of several lists the last one counts: the others need not be read.
  if (const auto dictionary = files.dictionaryWithContentsOfFile(list)) {
    item.fileSizeInBytes = dictionary->longForKey("DownloadEntryProgressTotalToLoad");
  }
  return item;
}

Image pie(double progress) {
  const double part = std::isfinite(progress) ? std::clamp(progress, 0.0, 1.0) : 0;
  return quillbox->platform().graphics().imageWithSize(pieSize, [part](Canvas& canvas) {
    Path slice;
    slice.moveTo(pieCenter);
    slice.arc(pieCenter, pieRadius, top, part * fullCircle);
    slice.close();
    canvas.fill(slice, pieColor);
    Path ring;
    ring.arc(pieCenter, pieRadius, top, fullCircle);
    ring.close();
    canvas.stroke(ring, ringColor, ringWidth);
  });
}

}  // namespace

DownloadItem* Downloads::itemForPath(const std::string& path) {
  const auto known = std::find_if(
      downloads_.begin(), downloads_.end(),
      [&path](const DownloadItem& download) { return download.downloadFilePath == path; });
  if (known != downloads_.end()) return &*known;
  if (pathExtension(path) != "download") return nullptr;
  downloads_.push_back(packageAtPath(path));
  return &downloads_.back();
}

double Downloads::downloadProgressPercentForItemAtPath(const std::string& path) {
  DownloadItem* const item = itemForPath(path);
  if (item == nullptr) return unknownProgress;
  if (item->type != DownloadItemTypePackage) return 0;
  const auto attributes =
      quillbox->platform().fileSystem().attributesOfItemAtPath(item->workFilePath);
  item->bytesDownloaded = attributes ? attributes->size : 0;
  return static_cast<double>(item->bytesDownloaded) / static_cast<double>(item->fileSizeInBytes);
}

Image Downloads::downloadImageForItemAtPath(const std::string& path) {
  const double progress = downloadProgressPercentForItemAtPath(path);
  return progress < 0 ? quillbox->imageNamed("Spinner") : pie(progress);
}

}  // namespace qb
