#include "Quillbox/Item/FileSystemItem.h"

#include <utility>

#include "Platform/ApplicationControl.h"
#include "Platform/FileSystem.h"
#include "Platform/FileViewer.h"
#include "Quillbox/Item/DecorationMenu.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DropboxManager.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

namespace {

/// The row's items are made just before the panel shows: better icons wait until it does.
constexpr TimeInterval updateIconDelay = 0.1;
/// The panel has gone by then, and does not lie over what opens.
constexpr TimeInterval informationDelay = 0.1, previewDelay = 0.25;

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

std::shared_ptr<FileSystemItem> FileSystemItem::create(const Rect& frame, const Image& image,
                                                       const std::string& name,
                                                       const std::string& path) {
  std::shared_ptr<FileSystemItem> item(new FileSystemItem(frame, name, path));
  item->setImage(image);
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

bool FileSystemItem::represenedFileSystemItemExists() {
  if (exists()) return true;
  validateIcon();
  return false;
}

void FileSystemItem::representFileSystemObjectAtPath(const std::string& path) {
  path_ = path;
  setName(fileNameFromFullPath(path, false));
  quillbox->imageManager().freeIconForFile(path);
  beginShowingIcon();
  quillbox->saveState();
}

bool FileSystemItem::representsApplication() const {
  return type() == ItemTypeApplication ||
         (quillbox->platform().fileSystem().itemInfoFlagsAtPath(path_) & ItemInfoIsApplication);
}

bool FileSystemItem::representsFolder() const {
  const std::uint32_t flags = quillbox->platform().fileSystem().itemInfoFlagsAtPath(path_);
  return (flags & ItemInfoIsContainer) && !(flags & ItemInfoIsPackage) && !representsApplication();
}

bool FileSystemItem::isInDropboxFolder() const {
  const std::string& folder = quillbox->dropboxManager().dropboxFolderPath();
  return !folder.empty() && pathOfParentFolder(path_) == folder;
}

bool FileSystemItem::isDropboxFolder() const {
  const std::string& folder = quillbox->dropboxManager().dropboxFolderPath();
  return !folder.empty() && path_ == folder;
}

bool FileSystemItem::canMoveToDropbox() const {
  return (type() == ItemTypeFile || type() == ItemTypeFolder) &&
         !quillbox->dropboxManager().dropboxFolderPath().empty() && !isInDropboxFolder() &&
         !isDropboxFolder();
}

// The icon.

Image FileSystemItem::icon(std::function<void(const Image&)> update) const {
  ImageManager& images = quillbox->imageManager();
  // A program that runs has its window's icon, whatever has become of its file.
  if (type() != ItemTypeApplication && !exists()) return images.iconForMissingFile();
  return images.iconForFile(path_, std::move(update));
}

Image FileSystemItem::getBaseIconImage() const { return icon(nullptr); }

void FileSystemItem::beginShowingIcon() {
  setImage(getBaseIconImage());
  updateIcon();
}

void FileSystemItem::updateIcon() {
  executeBlockAfterDelay(
      [weakItem = weak_from_this()] {
        const auto item = std::static_pointer_cast<FileSystemItem>(weakItem.lock());
        if (!item || quillbox == nullptr) return;
        const auto show = [weakItem, path = item->path_](const Image& icon) {
          const auto self = std::static_pointer_cast<FileSystemItem>(weakItem.lock());
          // It may stand for another file by now.
          if (self && self->path_ == path) self->setImage(icon);
        };
        // The true icon may have come in the meantime: then the block is not called any more.
        show(item->icon(show));
      },
      updateIconDelay);
}

void FileSystemItem::validateIcon() {
  if (exists()) return;
  ImageManager& images = quillbox->imageManager();
  images.freeIconForFile(path_);
  setImage(images.iconForMissingFile());
}

// What it does.

void FileSystemItem::invoke() {
  validateIcon();
  quillbox->platform().applicationControl().openFile(path_);
}

void FileSystemItem::preview() {
  if (!previewable()) return;
  quillbox->dismissQuillbox();
  executeBlockAfterDelay(
      [weakItem = weak_from_this()] {
        const auto item = std::static_pointer_cast<FileSystemItem>(weakItem.lock());
        if (item && quillbox != nullptr) quillbox->platform().fileViewer().previewFile(item->path_);
      },
      previewDelay);
}

// Its menu.

void appendSeparator(Item::MenuItems& items) {
  if (!items.empty() && !items.back()->isSeparatorItem())
    items.push_back(MenuItem::separatorItem());
}

Item::MenuItems FileSystemItem::configureMenuItems() {
  MenuItems general = Item::configureMenuItems();
  if (isFinder()) return general;
  MenuItems items = {
      MenuItem::create("Show in Finder...",
                       menuAction("revealItemInFinder", &FileSystemItem::revealItemInFinder)),
      MenuItem::create("Get Info in Finder...",
                       menuAction("getInfoInFinder", &FileSystemItem::getInfoInFinder)),
      MenuItem::separatorItem(),
  };
  if (canMoveToDropbox()) {
    items.push_back(MenuItem::create("Move to Dropbox",
                                     menuAction("moveToDropbox", &FileSystemItem::moveToDropbox)));
  }
  if (!representsFolder() && !representsApplication()) {
    items.push_back(
        MenuItem::create("Preview", menuAction("previewItem", &FileSystemItem::previewItem)));
  }
  appendSeparator(items);
  items.insert(items.end(), general.begin(), general.end());
  if (isTrashable()) {
    items.push_back(MenuItem::create("Move to Trash...",
                                     menuAction("moveToTrash", &FileSystemItem::moveToTrash)));
  }
  DecorationMenu::moveEntryToEnd(items);
  return items;
}

void FileSystemItem::revealItemInFinder(MenuItem& /*menuItem*/) {
  quillbox->platform().fileViewer().selectFile(path_);
  quillbox->dismissQuillbox();
}

void FileSystemItem::getInfoInFinder(MenuItem& /*menuItem*/) {
  quillbox->dismissQuillbox();
  executeBlockAfterDelay(
      [path = path_] {
        if (quillbox != nullptr) quillbox->platform().fileViewer().openInformationWindow(path);
      },
      informationDelay);
}

void FileSystemItem::previewItem(MenuItem& /*menuItem*/) { preview(); }

void FileSystemItem::moveToDropbox(MenuItem& /*menuItem*/) {
  const auto row = tabRow();
  if (row) row->moveItem(shared_from_this(), quillbox->dropboxManager().dropboxFolderPath());
}

void FileSystemItem::moveToTrash(MenuItem& /*menuItem*/) {
  if (const auto row = tabRow()) row->trashItem(shared_from_this());
}

}  // namespace qb
