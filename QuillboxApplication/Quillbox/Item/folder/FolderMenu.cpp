#include "Quillbox/Item/folder/FolderMenu.h"

#include "Platform/FileSystem.h"
#include "Platform/Graphics.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/folder/Downloads.h"
#include "Quillbox/Item/folder/DownloadsByAge.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/utilities/FileKinds.h"
#include "Quillbox/managers/DropboxManager.h"
#include "Quillbox/managers/ImageManager.h"

namespace qb {

namespace {

constexpr Size iconSize{16, 16};
constexpr std::size_t mostIconsOfMenu = 200;
constexpr Size largestPicture{400, 400};

/// Without what a browser has added to the name of the file that is to be.
std::string titleOfPath(const std::string& path) {
  const std::string name = Quillbox::fileNameFromFullPath(path, true);
  return pathExtension(name) == "download" ? lastPathComponentWithoutExtension(name) : name;
}

Image scaledIcon(Image icon) {
  ImageManager::scaleImage(icon, iconSize, false);
  return icon;
}

Image iconOfKind(const std::string& path) {
  const auto flags = quillbox->platform().fileSystem().itemInfoFlagsAtPath(path);
  return quillbox->imageNamed(flags & ItemInfoIsContainer ? "Folder" : "FileIcon");
}

/// What there is at once, and the true icon when it comes, unless the entry has become another.
Image imageForFileSystemItemAtPath(const std::string& path, MenuItem& entry) {
  const auto update = [weakEntry = entry.weak_from_this(), path](const Image& icon) {
    const auto shown = weakEntry.lock();
    if (shown && pathOfEntry(*shown) == path) shown->setImage(scaledIcon(icon));
  };
  return scaledIcon(quillbox->imageManager().iconForFile(path, update));
}

void add(Menu& menu, const char* title, const MenuItem::Action& action, const std::string& path) {
  auto entry = MenuItem::create(title, action);
  entry->setRepresentedObject(path);
  menu.addItem(std::move(entry));
}

void addPictureWhenRead(const std::shared_ptr<Menu>& menu, const std::string& path,
                        const MenuItem::Action& action) {
  if (!FileKinds::fileAtPathIsImageFile(path) && !FileKinds::fileAtPathIsPDFFile(path)) return;
  const auto show = [weakMenu = std::weak_ptr<Menu>(menu), path, action](Image picture) {
    const auto shown = weakMenu.lock();
    if (!shown || !picture) return;
    ImageManager::scaleImage(picture, largestPicture, false);
    auto entry = MenuItem::create("", action);
    entry->setRepresentedObject(path);
    entry->setImage(picture);
    shown->addItem(MenuItem::separatorItem());
    shown->addItem(std::move(entry));
  };
  quillbox->platform().graphics().loadImageOfFile(path, largestPicture, show);
}

}  // namespace

std::string pathOfEntry(const MenuItem& entry) {
  const auto* const path = std::any_cast<std::string>(&entry.representedObject());
  return path ? *path : std::string();
}

// Entries.

std::shared_ptr<MenuItem> FolderMenu::createMenuItemForContentItemAtPath(const std::string& path,
                                                                         bool isDownloading) const {
  return createContentItem(path, isDownloading, IconKind::Own);
}

std::shared_ptr<MenuItem> FolderMenu::createContentItem(const std::string& path, bool isDownloading,
                                                        IconKind icon) const {
  auto entry =
      MenuItem::create(titleOfPath(path), isDownloading ? actions_.revealItem : actions_.openItem);
  entry->setRepresentedObject(path);
  if (isFileBeingDownloaded(path)) {
    entry->setOnStateImage(quillbox->imageNamed("DownloadingIcon"));
    showAsDownload(*entry, path);
  } else {
    showAsContent(*entry, path, icon);
  }
  return entry;
}

void FolderMenu::showAsContent(MenuItem& entry, const std::string& path, IconKind icon) {
  entry.setTag(FolderMenuTagContentItem);
  entry.setState(false);
  entry.setImage(icon == IconKind::Own ? imageForFileSystemItemAtPath(path, entry)
                                       : scaledIcon(iconOfKind(path)));
}

void FolderMenu::showAsDownload(MenuItem& entry, const std::string& path) const {
  entry.setTag(FolderMenuTagDownloadingItem);
  entry.setState(true);
  entry.setImage(downloads_.downloadImageForItemAtPath(path));
}

void FolderMenu::refreshDownload(MenuItem& entry) const {
  const std::string path = pathOfEntry(entry);
  if (quillbox->platform().fileSystem().fileExistsAtPath(path)) return showAsDownload(entry, path);
  const std::string extension = pathExtension(path);
  const std::string complete = path.substr(0, path.size() - extension.size() - 1);
  entry.setRepresentedObject(complete);
  entry.setTitle(Quillbox::fileNameFromFullPath(complete, true));
  showAsContent(entry, complete, IconKind::Own);
}

void FolderMenu::addContentItems(Menu& menu, const std::vector<std::string>& paths) const {
  for (const std::string& path : paths) {
    const auto icon = menu.items().size() < mostIconsOfMenu ? IconKind::Own : IconKind::OfKind;
    menu.addItem(createContentItem(path, false, icon));
  }
}

std::shared_ptr<MenuItem> FolderMenu::createHeading(const std::string& title) const {
  auto heading = MenuItem::create(title, actions_.dummy);
  heading->setTag(MenuItemTagGrayTitle);
  heading->setEnabled(false);
  return heading;
}

// Submenus.

std::shared_ptr<Menu> FolderMenu::menuForFile(const std::string& path) const {
  auto menu = Menu::create("QuillboxSubMenu");
  menu->setAutoenablesItems(false);
  add(*menu, "Move to Trash...", actions_.trashItem, path);
  if (isDownloadsFolder_) {
    add(*menu, "Move to Saved Downloads...", actions_.moveToSavedDownloads, path);
  }
  add(*menu, "Show in Finder...", actions_.showInFinder, path);
  add(*menu, "Share via Email...", actions_.shareViaEmail, path);
  const std::string& dropbox = quillbox->dropboxManager().dropboxFolderPath();
  if (!dropbox.empty() && pathOfParentFolder(path) != dropbox) {
    menu->addItem(MenuItem::separatorItem());
    add(*menu, "Move to Dropbox", actions_.moveToDropbox, path);
  }
  addPictureWhenRead(menu, path, actions_.openItem);
  return menu;
}

std::shared_ptr<Menu> FolderMenu::menuForFolder(const std::string& path,
                                                std::int32_t options) const {
  auto menu = Menu::create(path);
  menu->setAutoenablesItems(false);
  if (options == FolderMenuOptionEntryOfMenu) {
    add(*menu, "Move to Trash...", actions_.trashItem, path);
    if (isDownloadsFolder_) {
      add(*menu, "Move to Saved Downloads...", actions_.moveToSavedDownloads, path);
      if (pathExtension(path) == "app") {
        add(*menu, "Move to Applications...", actions_.moveToApplications, path);
      }
      return menu;
    }
    menu->addItem(MenuItem::separatorItem());
  }
  const std::vector<std::string> contents = visibleContentsOfFolderAtPath(path);
  addContentItems(*menu, contents);
  if (contents.empty()) {
    auto none = MenuItem::create("No Contents");
    none->setEnabled(false);
    menu->addItem(std::move(none));
  }
  return menu;
}

std::shared_ptr<Menu> FolderMenu::menuForMoveDownloadItemsToTrash(
    const std::vector<std::string>& contents) const {
  return qb::menuForMoveDownloadItemsToTrash(contents, actions_.trashContents, actions_.dummy);
}

}  // namespace qb
