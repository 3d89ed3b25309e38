#include "Quillbox/activation/utilities/FileItems.h"

#include "Platform/ApplicationControl.h"
#include "Platform/FileSystem.h"
#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/Item/FileItem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/FolderItem.h"
#include "Quillbox/Item/ServerItem.h"
#include "Quillbox/Item/VolumeItem.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

/// The classes that stand for files, by the type that they answer.
struct FileItemClass {
  ItemType type;
  std::shared_ptr<FileSystemItem> (*create)(const Rect& frame, const std::string& name,
                                            const std::string& path);
};
template <class Class>
std::shared_ptr<FileSystemItem> createItem(const Rect& frame, const std::string& name,
                                           const std::string& path) {
  return Class::create(frame, name, path);
}
constexpr FileItemClass fileItemClasses[] = {
    {ItemTypeFile, createItem<FileItem>},
    {ItemTypeServer, createItem<ServerItem>},
    {ItemTypeVolume, createItem<VolumeItem>},
    {ItemTypeFolder, createItem<FolderItem>},
    {ItemTypeApplication, createItem<ApplicationItem>},
};

}  // namespace

std::int32_t FileItems::itemTypeForFileSystemObjectAtPath(const std::string& path) const {
  if (path.empty()) return kItemTypeOfNoPath;
  const std::uint32_t flags = facade_.platform().fileSystem().itemInfoFlagsAtPath(path);
  if (flags & ItemInfoIsVolume) return ItemTypeVolume;
  if (flags & ItemInfoIsApplication) return ItemTypeApplication;
  const bool isPackage = (flags & ItemInfoIsPackage) != 0;
  return (flags & ItemInfoIsContainer) && !isPackage ? ItemTypeFolder : ItemTypeFile;
}

std::shared_ptr<FileSystemItem> FileItems::createFileSystemItemWithFrame(
    const Rect& frame, const std::string& name, const std::string& path) const {
  const std::int32_t type = itemTypeForFileSystemObjectAtPath(path);
  for (const FileItemClass& each : fileItemClasses) {
    if (each.type == type) return each.create(frame, name, path);
  }
  return nullptr;
}

void FileItems::performSelectionActionForFileAtPath(const std::string& path) {
  if (!facade_.platform().fileSystem().fileExistsAtPath(path)) {
    facade_.displayMessage(
        stringWithFormat("\"%@\" cannot be found.", fileNameFromFullPath(path, false)),
        "Item Missing");
    return;
  }
  if (Quillbox::fileAtPathIsAppleScriptFile(path)) {
    facade_.executeAppleScriptAtPath(path);
  } else {
    facade_.platform().applicationControl().openFile(path);
  }
}

}  // namespace qb
