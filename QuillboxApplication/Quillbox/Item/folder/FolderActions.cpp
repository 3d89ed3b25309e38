#include "Quillbox/Item/folder/FolderActions.h"

#include <algorithm>
#include <cstdint>

#include "Platform/FileSystem.h"
#include "Platform/Trash.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

constexpr TimeInterval noticeDuration = 1;

void tell(const std::string& text) { quillbox->displayQuillboxNotification(text, noticeDuration); }

bool moveToFolder(const std::string& path, const std::string& folder) {
  return quillbox->platform().fileSystem().moveItemAtPath(
      path, pathInFolder(folder, lastPathComponent(path)));
}

}  // namespace

void FolderActions::trashContents(const FolderMenuPaths& paths) {
  if (paths.empty()) return;
  const auto count = static_cast<std::int64_t>(paths.size());
  const std::string question =
      count == 1
          ? stringWithFormat("Are you sure you wish to move \"%@\" to the Trash?",
                             Quillbox::fileNameFromFullPath(paths.front(), true))
          : stringWithFormat("Are you sure you wish to move all %ld Downloaded Items to the Trash?",
                             count);
  if (!quillbox->getConfirmationWithTitle("Move to Trash?", question, "Move to Trash")) return;
  Trash& trash = quillbox->platform().trash();
  const std::int64_t moved =
      std::count_if(paths.begin(), paths.end(),
                    [&trash](const std::string& path) { return trash.trashItemAtPath(path); });
  tell(moved == count
           ? "All items successfully moved to Trash"
           : stringWithFormat("%ld of %ld items successfully moved to Trash.", moved, count));
}

void FolderActions::trash(const std::string& path) {
  const bool moved = quillbox->platform().trash().trashItemAtPath(path);
  tell(moved ? "Successfully Moved to Trash" : "Unable to Move to Trash");
}

void FolderActions::saveContents(const FolderMenuPaths& paths) {
  if (paths.empty()) return;
  const std::string folder = savedDownloadsFolder();
  const auto failures =
      std::count_if(paths.begin(), paths.end(),
                    [&folder](const std::string& path) { return !moveToFolder(path, folder); });
  tell(failures == 0
           ? "Successfully Moved to Saved Downloads Folder"
           : stringWithFormat("%i of %ld files could not be moved to the Saved Downloads Folder",
                              failures, paths.size()));
}

void FolderActions::moveToSavedDownloads(const std::string& path) {
  const bool moved = moveToFolder(path, savedDownloadsFolder());
  tell(moved ? "Successfully Moved to Saved Downloads Folder"
             : "Unable to Move to Saved Downloads Folder");
}

void FolderActions::moveToApplications(const std::string& path) {
  const std::string toPath = stringWithFormat("/Applications/%@", lastPathComponent(path));
  if (!quillbox->platform().fileSystem().moveItemAtPath(path, toPath)) {
    return tell("Unable to Move to Applications");
  }
  quillbox->dismissQuillbox();
  tell("Successfully Moved to Applications Folder");
}

std::string FolderActions::savedDownloadsFolder() {
  FileSystem& files = quillbox->platform().fileSystem();
  std::string folder = files.stringByExpandingTildeInPath("~/Desktop/Saved Downloads");
  // Whether it worked shows when something is moved there.
  files.createDirectoryAtPath(folder);
  return folder;
}

}  // namespace qb
