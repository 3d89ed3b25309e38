#pragma once

#include <string>

#include "Quillbox/Item/folder/DownloadsByAge.h"

namespace qb {

/// What a folder's menu does to files, and how it tells the user what has come of it. Main thread.
namespace FolderActions {

/// Asks first. Nothing for no paths.
void trashContents(const FolderMenuPaths& paths);
/// Without a question.
void trash(const std::string& path);
/// Moves all into the folder of saved downloads, where a name that is taken stays with what has it.
/// Nothing for no paths.
void saveContents(const FolderMenuPaths& paths);
void moveToSavedDownloads(const std::string& path);
void moveToApplications(const std::string& path);
/// The folder of saved downloads, made if need be.
std::string savedDownloadsFolder();

}  // namespace FolderActions

}  // namespace qb
