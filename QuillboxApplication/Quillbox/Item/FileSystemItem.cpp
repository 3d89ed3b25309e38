#include "Quillbox/Item/FileSystemItem.h"

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/ImageManager.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

/// The row's items are made just before the panel shows: better icons wait until it does.
constexpr TimeInterval updateIconDelay = 0.1;

}  // namespace

std::shared_ptr<FileSystemItem> FileSystemItem::create(const Rect& frame, const std::string& path) {
  return create(frame, fileNameFromFullPath(path, false), path);
}

std::shared_ptr<FileSystemItem> FileSystemItem::create(const Rect& frame, const std::string& name,
                                                       const std::string& path) {
  std::shared_ptr<FileSystemItem> item(new FileSystemItem(frame, name, path));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<FileSystemItem> FileSystemItem::create(const Rect& frame,
                                                       const PropertyList& savedState) {
  std::shared_ptr<FileSystemItem> item(new FileSystemItem(frame, savedState));
  item->beginShowingIcon();
  return item;
}

FileSystemItem::FileSystemItem(const Rect& frame, const std::string& name, const std::string& path)
    : Item(frame, name), path_(path) {}

FileSystemItem::FileSystemItem(const Rect& frame, const PropertyList& savedState)
    : Item(frame, savedState), path_(savedState.objectForKey(kPathKey).stringValue()) {}

std::shared_ptr<Item> FileSystemItem::createFromState(const Rect& frame,
                                                      const PropertyList& savedState) const {
  return create(frame, savedState);
}

PropertyList FileSystemItem::state() const {
  PropertyList state = Item::state();
  state.setObject(path_, kPathKey);
  return state;
}

bool FileSystemItem::exists() const {
  return quillbox->platform().fileSystem().fileExistsAtPath(path_);
}

Image FileSystemItem::getBaseIconImage() const {
  return quillbox->imageManager().iconForFile(path_, nullptr);
}

void FileSystemItem::beginShowingIcon() {
  setImage(getBaseIconImage());
  updateIcon();
}

void FileSystemItem::updateIcon() {
  executeBlockAfterDelay(
      [weakSelf = weak_from_this(), path = path_] {
        if (weakSelf.expired() || quillbox == nullptr) return;
        const auto show = [weakSelf](const Image& icon) {
          if (const auto self = weakSelf.lock()) self->setImage(icon);
        };
        // The true icon may have come in the meantime: then the block is not called any more.
        show(quillbox->imageManager().iconForFile(path, show));
      },
      updateIconDelay);
}

}  // namespace qb
