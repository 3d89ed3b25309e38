#include "Quillbox/activation/utilities/SystemFolders.h"

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"

namespace qb {

namespace {

constexpr const char* sharedApplications = "/Applications";
constexpr const char* sharedUtilities = "/Applications/Utilities";

struct KnownFolder {
  const char* name;
  std::int32_t folderID;
};
constexpr KnownFolder knownFolders[] = {
    {"Desktop", DesktopDirectory},     {"Movies", MoviesDirectory},
    {"Music", MusicDirectory},         {"Pictures", PicturesDirectory},
    {"Public", SharedPublicDirectory}, {"Downloads", DownloadsDirectory},
    {"Documents", DocumentDirectory},  {"Applications", AllApplicationsDirectory},
};

}  // namespace

std::string SystemFolders::filePathForSystemFolderWithID(std::int32_t folderID) const {
  const auto path = fileSystem_.pathForDirectory(static_cast<SearchPathDirectory>(folderID));
  if (!path) return {};
  return path->ends_with(sharedApplications) ? sharedApplications : *path;
}

std::vector<std::string> SystemFolders::contentsForSystemFolderWithID(std::int32_t folderID) const {
  const std::string path = filePathForSystemFolderWithID(folderID);
  if (path.empty()) return {};
  std::vector<std::string> names = fileSystem_.contentsOfDirectoryAtPath(path);
  std::erase_if(names, [](const std::string& name) { return name.starts_with('.'); });
  return names;
}

std::string SystemFolders::reconcileBogusFolderPath(const std::string& path) const {
  const std::string name = lastPathComponentWithoutExtension(path);
  if (name == "Utilities") return sharedUtilities;
  for (const KnownFolder& folder : knownFolders) {
    if (name != folder.name) continue;
    const std::string own = filePathForSystemFolderWithID(folder.folderID);
    return own.empty() ? path : own;
  }
  return path;
}

}  // namespace qb
