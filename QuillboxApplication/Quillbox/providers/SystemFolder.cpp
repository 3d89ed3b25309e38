#include "Quillbox/providers/SystemFolder.h"

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

struct Offer {
  std::int64_t directoryID;
  /// Null for a folder that is known by its id.
  const char* path;
  const char* invocationSelector;
};
constexpr Offer offers[] = {
    {HomeDirectory, "~", "homeButtonPressed"},
    {AllApplicationsDirectory, nullptr, "applicationsButtonPressed"},
    {DocumentDirectory, nullptr, "documentsButtonPressed"},
    {DesktopDirectory, nullptr, "desktopButtonPressed"},
    {DownloadsDirectory, nullptr, "downloadsButtonPressed"},
    {MoviesDirectory, nullptr, "moviesButtonPressed"},
    {MusicDirectory, nullptr, "musicButtonPressed"},
    {PicturesDirectory, nullptr, "picturesButtonPressed"},
    {SharedPublicDirectory, nullptr, "publicButtonPressed"},
    {UtilitiesDirectory, "/Applications/Utilities", "utilitiesButtonPressed"},
    {LibraryDirectory, "~/Library", "libraryButtonPressed"},
};

std::string pathOf(const Offer& offer, Quillbox& facade) {
  if (offer.path == nullptr) {
    return facade.filePathForSystemFolderWithID(static_cast<std::int32_t>(offer.directoryID));
  }
  return facade.platform().fileSystem().stringByExpandingTildeInPath(offer.path);
}

}  // namespace

std::vector<SystemFolder> systemFolders(Quillbox& facade) {
  std::vector<SystemFolder> folders;
  for (const Offer& offer : offers) {
    std::string path = pathOf(offer, facade);
    if (path.empty() || lastPathComponent(path).starts_with('.')) continue;
    // Few desktops have all of them.
    if (!facade.platform().fileSystem().fileExistsAtPath(path)) continue;
    folders.push_back({std::move(path), offer.directoryID, offer.invocationSelector});
  }
  return folders;
}

}  // namespace qb
