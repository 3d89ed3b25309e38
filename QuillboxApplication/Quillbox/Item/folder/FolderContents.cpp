#include "Quillbox/Item/folder/FolderContents.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr std::array<std::string_view, 3> extensionsOfDownloads = {"download", "crdownload",
                                                                   "part"};

}  // namespace

std::string pathInFolder(const std::string& folder, const std::string& name) {
  return folder.ends_with('/') ? folder + name : folder + '/' + name;
}

std::vector<std::string> visibleContentsOfFolderAtPath(const std::string& path) {
  const FileSystem& files = quillbox->platform().fileSystem();
  std::vector<std::string> contents;
  for (const std::string& name : files.contentsOfDirectoryAtPath(path)) {
    // Of a link that leads nowhere nothing else is known.
    if (name.starts_with('.')) continue;
    std::string full = pathInFolder(path, name);
    if (files.itemInfoFlagsAtPath(full) & ItemInfoIsInvisible) continue;
    contents.push_back(std::move(full));
  }
  return contents;
}

bool isFileBeingDownloaded(const std::string& path) {
  const std::string extension = pathExtension(path);
  return std::find(extensionsOfDownloads.begin(), extensionsOfDownloads.end(), extension) !=
         extensionsOfDownloads.end();
}

}  // namespace qb
