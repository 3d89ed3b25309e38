#include "Quillbox/Item/FolderItem.h"

#include <algorithm>

#include "Platform/ApplicationControl.h"
#include "Platform/FileSystem.h"
#include "Platform/FileViewer.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/folder/DownloadsByAge.h"
#include "Quillbox/Item/folder/FolderActions.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/Item/folder/FolderMoreEntry.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DropboxManager.h"
#include "Quillbox/providers/FolderContentsProvider.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

/// Of recent items and contents together, beyond which the rest is behind one entry.
constexpr std::size_t mostEntries = 12;
constexpr std::size_t mostRecentItems = 6;
/// So many open without a question.
constexpr std::size_t mostOpenedUnasked = 8;

FolderMenuPaths pathsOfEntry(const MenuItem& entry) {
  const auto* const paths = std::any_cast<FolderMenuPaths>(&entry.representedObject());
  return paths ? *paths : FolderMenuPaths();
}

}  // namespace

std::shared_ptr<FolderItem> FolderItem::create(const Rect& frame, const std::string& path) {
  return create(frame, fileNameFromFullPath(path, false), path);
}

std::shared_ptr<FolderItem> FolderItem::create(const Rect& frame, const std::string& name,
                                               const std::string& path) {
  std::shared_ptr<FolderItem> item(new FolderItem(frame, name, path));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<FolderItem> FolderItem::create(const Rect& frame, const PropertyList& savedState) {
  std::shared_ptr<FolderItem> item(new FolderItem(frame, savedState));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<Item> FolderItem::createFromState(const Rect& frame,
                                                  const PropertyList& savedState) const {
  return create(frame, savedState);
}

ItemInformation FolderItem::information() {
  return {"Folder", "FolderItem", [](const Rect& frame, const PropertyList& savedState) {
            return create(frame, savedState);
          }};
}

// Contents.

bool FolderItem::isDownloadsFolder() const {
  return path() == quillbox->filePathForSystemFolderWithID(DownloadsDirectory);
}

FolderItem::Contents FolderItem::contents() const {
  Contents contents{.visible = visibleContents(), .downloading = {}, .downloaded = {}};
  const bool hasDownloads = isDownloadsFolder();
  for (const std::string& each : contents.visible) {
    const bool isDownloading = hasDownloads && isFileBeingDownloaded(each);
    (isDownloading ? contents.downloading : contents.downloaded).push_back(each);
  }
  return contents;
}

std::vector<std::string> FolderItem::visibleContents() const {
  return visibleContentsOfFolderAtPath(path());
}

// The menu.

FolderMenuActions FolderItem::folderMenuActions() {
  return {
      .openItem = menuAction("openItem", &FolderItem::openItem),
      .revealItem = menuAction("revealItem", &FolderItem::revealItem),
      .showInFinder = menuAction("showInFinder", &FolderItem::showInFinder),
      .shareViaEmail = menuAction("shareViaEmail", &FolderItem::shareViaEmail),
      .trashItem = menuAction("trashItem", &FolderItem::trashItem),
      .moveToSavedDownloads = menuAction("moveToSavedDownloads", &FolderItem::moveToSavedDownloads),
      .moveToApplications = menuAction("moveToApplications", &FolderItem::moveToApplications),
      .moveToDropbox = menuAction("moveToDropbox", &FolderItem::moveToDropbox),
      .trashContents = menuAction("trashContents", &FolderItem::trashContents),
      .dummy = menuAction("dummy", &FolderItem::dummy)};
}

FolderMenu FolderItem::folderMenu() {
  return FolderMenu(folderMenuActions(), isDownloadsFolder(), downloads_);
}

Item::MenuItems FolderItem::configureMenuItems() {
  const Contents contents = this->contents();
  MenuItems entries = FileSystemItem::configureMenuItems();
  if (isDownloadsFolder()) {
    entries.push_back(MenuItem::create(
        "Open Saved Downloads Folder...",
        menuAction("openSavedDownloadsFolder", &FolderItem::openSavedDownloadsFolder)));
  }
  addEntriesForAllContents(entries, contents.downloaded);
  addActiveDownloads(entries, contents.downloading);

  recentlyAccessedItems_.load(path());
  if (isDownloadsFolder()) recentlyAccessedItems_.addNewlyDownloaded(contents.visible, path());
  const std::size_t recent = addRecentItems(entries);
  const std::size_t shown = std::min(mostEntries - recent, contents.downloaded.size());
  // Behind recent items there is no heading between the two groups.
  addGroup(entries, recent == 0 ? "Contents" : "",
           Paths(contents.downloaded.begin(),
                 contents.downloaded.begin() + static_cast<std::ptrdiff_t>(shown)));
  if (recent + shown < contents.downloaded.size()) entries.push_back(createMoreEntry());
  numberOfContentItemsAdded_ = shown;
  return entries;
}

void FolderItem::addEntriesForAllContents(MenuItems& entries, const Paths& contents) {
  if (contents.empty()) return;
  if (isDownloadsFolder()) {
    auto trash = MenuItem::create("Move Downloaded Items to Trash...",
                                  menuAction("trashContents", &FolderItem::trashContents));
    trash->setTag(FolderMenuTagTrashDownloads);
    trash->setRepresentedObject(contents);
    trash->setSubmenu(folderMenu().menuForMoveDownloadItemsToTrash(contents));
    auto save = MenuItem::create("Move Downloaded Items to Saved Downloads Folder...",
                                 menuAction("saveContents", &FolderItem::saveContents));
    save->setRepresentedObject(contents);
    entries.insert(entries.end(), {trash, save});
  }
  if (!entries.empty()) entries.push_back(MenuItem::separatorItem());
  const bool hasSeveral = contents.size() > 1;
  entries.push_back(MenuItem::create(
      hasSeveral ? stringWithFormat("Open all %ld Contained Items", contents.size())
                 : "Open Contained Item",
      menuAction("openAllContainedItems", &FolderItem::openAllContainedItems)));
  if (!hasSeveral) return;
  auto newRow = MenuItem::create(
      stringWithFormat("Show all %ld Contained Items in New Tab Row...", contents.size()),
      menuAction("newTabRow", &FolderItem::newTabRow));
  newRow->setTag(FolderMenuTagNewTabRow);
  entries.push_back(std::move(newRow));
}

void FolderItem::addActiveDownloads(MenuItems& entries, const Paths& downloads) {
  if (downloads.empty()) return;
  const FolderMenu menu = folderMenu();
  entries.push_back(MenuItem::separatorItem());
  entries.push_back(menu.createHeading("Active Downloads"));
  for (const std::string& each : downloads) {
    entries.push_back(menu.createMenuItemForContentItemAtPath(each, true));
  }
}

std::size_t FolderItem::addRecentItems(MenuItems& entries) {
  Paths present;
  const FileSystem& files = quillbox->platform().fileSystem();
  for (const std::string& each : recentlyAccessedItems_.paths()) {
    if (present.size() < mostRecentItems && files.fileExistsAtPath(each)) present.push_back(each);
  }
  addGroup(entries, "Recent Items", present);
  return present.size();
}

void FolderItem::addGroup(MenuItems& entries, const std::string& heading, const Paths& paths) {
  const FolderMenu menu = folderMenu();
  if (!paths.empty() && !heading.empty()) {
    entries.push_back(MenuItem::separatorItem());
    entries.push_back(menu.createHeading(heading));
  }
  for (const std::string& each : paths) {
    entries.push_back(menu.createMenuItemForContentItemAtPath(each, false));
  }
}

std::shared_ptr<MenuItem> FolderItem::createMoreEntry() {
  if (!moreEntry_) {
    moreEntry_ =
        std::make_shared<FolderMoreEntry>(std::static_pointer_cast<FolderItem>(shared_from_this()));
  }
  auto more = MenuItem::create("...More...", {"dummy", [](MenuItem&) {}, moreEntry_});
  more->setTag(MenuItemTagMore);
  return more;
}

void FolderItem::addRemainingContents(Menu& menu) {
  Paths paths = contents().downloaded;
  const std::size_t known = std::min(numberOfContentItemsAdded_, paths.size());
  paths.erase(paths.begin(), paths.begin() + static_cast<std::ptrdiff_t>(known));
  folderMenu().addContentItems(menu, paths);
}

void FolderItem::menuTrackingWillBegin(Menu& menu) {
  FileSystemItem::menuTrackingWillBegin(menu);
  menu.setTitle(path());
}

void FolderItem::menuTrackingIsContinuing(Menu& menu) {
  FileSystemItem::menuTrackingIsContinuing(menu);
  trackMenu(menu);
}

void FolderItem::trackMenu(Menu& menu) {
  tracking_.trackMenu(menu, folderMenu(), [this](MenuItem& entry) { trashItem(entry); });
}

void FolderItem::identifyMissingRepresentedItem() {
  const auto chosen = quillbox->runOpenPanelWithAllowFiles(false, true, {}, "");
  if (chosen && !chosen->empty()) representFileSystemObjectAtPath(chosen->front());
}

// Actions.

void FolderItem::openItem(MenuItem& entry) {
  const std::string opened = pathOfEntry(entry);
  quillbox->dismissQuillbox();
  quillbox->platform().applicationControl().openFile(opened);
  recentlyAccessedItems_.add(opened, path());
}

void FolderItem::revealItem(MenuItem& entry) {
  quillbox->dismissQuillbox();
  quillbox->platform().fileViewer().selectFile(pathOfEntry(entry));
}

void FolderItem::showInFinder(MenuItem& entry) { revealItem(entry); }

void FolderItem::shareViaEmail(MenuItem& entry) { quillbox->shareFileViaEmail(pathOfEntry(entry)); }

void FolderItem::trashItem(MenuItem& entry) {
  const std::string trashed = pathOfEntry(entry);
  FolderActions::trash(trashed);
  recentlyAccessedItems_.remove(trashed);
  if (entry.menu() == nullptr) return;
  for (const auto& each : entry.menu()->items()) {
    if (pathOfEntry(*each) != trashed) continue;
    each->setEnabled(false);
    each->setSubmenu(nullptr);
    each->setTag(FolderMenuTagContentItem);
  }
}

void FolderItem::moveToSavedDownloads(MenuItem& entry) {
  FolderActions::moveToSavedDownloads(pathOfEntry(entry));
}

void FolderItem::moveToApplications(MenuItem& entry) {
  FolderActions::moveToApplications(pathOfEntry(entry));
}

void FolderItem::moveToDropbox(MenuItem& entry) {
  const std::string moved = pathOfEntry(entry);
  if (moved.empty()) return FileSystemItem::moveToDropbox(entry);
  quillbox->dropboxManager().moveFileToDropbox(moved, nullptr);
}

void FolderItem::openSavedDownloadsFolder(MenuItem& /*entry*/) {
  quillbox->platform().fileViewer().selectFile(FolderActions::savedDownloadsFolder());
  quillbox->dismissQuillbox();
}

void FolderItem::trashContents(MenuItem& entry) {
  FolderActions::trashContents(pathsOfEntry(entry));
}

void FolderItem::saveContents(MenuItem& entry) { FolderActions::saveContents(pathsOfEntry(entry)); }

void FolderItem::openAllContainedItems(MenuItem& /*entry*/) {
  const Paths paths = contents().downloaded;
  if (paths.size() > mostOpenedUnasked &&
      !quillbox->getConfirmationWithTitle(
          "Open All Items?",
          stringWithFormat("There are %ld items in the %@ folder.  Do you wish to open them all?",
                           paths.size(), name()),
          "Open Items")) {
    return;
  }
  for (const std::string& each : paths) quillbox->platform().applicationControl().openFile(each);
}

void FolderItem::newTabRow(MenuItem& /*entry*/) {
  const auto row = tabRow();
  if (!row) return;
  const auto newRow = quillbox->addTabRowRelativeToTabRow(*row, TabRowPlacementBelow);
  if (!newRow) return;
  auto provider = FolderContentsProvider::create();
  provider->setFolderPath(path(), false);
  newRow->setProvider(std::move(provider));
}

}  // namespace qb
