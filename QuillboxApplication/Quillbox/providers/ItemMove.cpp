#include "Quillbox/providers/ItemMove.h"

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DropboxManager.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

bool userAllowsReplacement(const Item& item, bool inDropbox) {
  if (inDropbox) {
    return quillbox->getConfirmationWithTitle(
        "Move to Dropbox",
        stringWithFormat("An item named \"%@\" already exists in your Dropbox.  Do you wish to "
                         "replace it with the item you are moving?",
                         item.name()),
        "Replace");
  }
  return quillbox->getConfirmationWithTitle(
      "Move to Folder",
      stringWithFormat("An item named \"%@\" already exists in that Folder.  Do you wish to "
                       "replace it with the item you are moving?",
                       item.name()),
      "Replace");
}

}  // namespace

bool moveItemToFolder(Item& item, const std::string& folderPath) {
  if (item.type() != ItemTypeFile && item.type() != ItemTypeFolder) return false;
  auto* const fileItem = dynamic_cast<FileSystemItem*>(&item);
  if (fileItem == nullptr) return false;
  const std::string name = lastPathComponent(fileItem->path());
  // Nothing and the root have no name of their own: the destination would be the folder itself.
  if (name.empty() || name == "/") return false;
  FileSystem& files = quillbox->platform().fileSystem();
  const std::string destination = folderPath + '/' + name;
  if (files.fileExistsAtPath(destination)) {
    const bool inDropbox = folderPath == quillbox->dropboxManager().dropboxFolderPath();
    if (!userAllowsReplacement(item, inDropbox)) return false;
    if (!files.removeItemAtPath(destination)) {
      quillbox->displayMessage(
          "The item could not be moved becuase the pre-existing item could not be removed.",
          "Unable to Move");
      return false;
    }
  }
  if (!files.moveItemAtPath(fileItem->path(), destination)) return false;
  fileItem->noteNewLocationAtPath(destination);
  return true;
}

}  // namespace qb
