#include "Quillbox/providers/FolderContentsProvider.h"

#include <algorithm>
#include <any>
#include <optional>
#include <type_traits>
#include <utility>

#include "Platform/Dialogs.h"
#include "Platform/FileEvents.h"
#include "Platform/FileSystem.h"
#include "Platform/FileViewer.h"
#include "Platform/Workspace.h"
#include "Quillbox/Item/ButtonItem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr const char* folderPathKey = "FolderPathKey";
constexpr const char* sortByKey = "SortBy";
constexpr const char* sortOrderKey = "SortOrder";
constexpr const char* segregateByKey = "SegregateBy";

constexpr TimeInterval monitoringLatency = 0.25;
/// The second one shows what a file has come to that was still being written at the first.
constexpr TimeInterval refreshDelays[] = {0.1, 3.0};
/// A question about a name that is taken must not come while the drag still holds the pointer.
constexpr TimeInterval dropDelay = 0.1;
constexpr TimeInterval fadeStep = 0.05;
/// So long a row passes over news, because it has just followed others.
constexpr TimeInterval busyTimeOfRow = 0.65;
constexpr double alphaOfTrashedItem = 0.5;

FileSystem& files() { return quillbox->platform().fileSystem(); }

bool isShown(const std::string& name) { return !name.starts_with('.') && name != "Icon\r"; }

std::shared_ptr<FileOrFolder> entryAtPath(const std::string& name, std::string path) {
  auto entry = std::make_shared<FileOrFolder>();
  entry->name = name;
  entry->fullPath = std::move(path);
  const auto attributes = files().attributesOfItemAtPath(entry->fullPath);
  if (!attributes) return entry;
  entry->isFolder = attributes->isDirectory;
  entry->isFile = !entry->isFolder;
  entry->creationDate = attributes->creationDate;
  entry->modificationDate = attributes->modificationDate;
  if (entry->isFile) entry->size = static_cast<std::uint64_t>(attributes->size);
  return entry;
}

/// Whether the same items stand for both.
bool isSame(const std::shared_ptr<FileOrFolder>& a, const std::shared_ptr<FileOrFolder>& b) {
  return a->isFolder == b->isFolder && a->fullPath == b->fullPath;
}

}  // namespace

std::shared_ptr<TabRowProviderInformation> FolderContentsProvider::information() {
  return std::make_shared<TabRowProviderInformation>("Folder Contents", "FolderContentsProvider",
                                                     [] { return create(); });
}

std::shared_ptr<FolderContentsProvider> FolderContentsProvider::create() {
  return std::shared_ptr<FolderContentsProvider>(new FolderContentsProvider);
}

FolderContentsProvider::FolderContentsProvider() : systemFolders_(qb::systemFolders(*quillbox)) {
  setCanBeConfigured(true);
}

void FolderContentsProvider::prepareForDeallocation() {
  tearDownFolderMonitoring();
  TabRowProvider::prepareForDeallocation();
}

std::string FolderContentsProvider::name() const {
  if (folderPath_.empty()) return "Folder Contents";
  return stringWithFormat("%@ Folder", lastPathComponent(folderPath_));
}

std::string FolderContentsProvider::instructionalMessage() const {
  return stringWithFormat("%@ Folder is Empty.", lastPathComponent(folderPath_));
}

std::int64_t FolderContentsProvider::numberOfItems() {
  if (folderPath_.empty()) return static_cast<std::int64_t>(systemFolders_.size()) + 1;
  createFilesAndFolders();
  // No word comes of a folder that cannot be watched.
  if (!itemsAreDisplayed() && itemsAreOutOfDate()) itemsHaveChangedDuringDormancy_ = true;
  if (const auto row = tabRow()) {
    if (filesAndFolders_.empty()) {
      row->showInstructionalMessage(instructionalMessage());
    } else {
      row->hideInstructionalMessage();
    }
  }
  return static_cast<std::int64_t>(filesAndFolders_.size()) + 1;
}

bool FolderContentsProvider::itemsAreOutOfDate() const {
  return folderOfItems_ != folderPath_ ||
         !std::equal(entriesOfItems_.begin(), entriesOfItems_.end(), filesAndFolders_.begin(),
                     filesAndFolders_.end(), isSame);
}

bool FolderContentsProvider::haveItemsChanged() {
  return std::exchange(itemsHaveChangedDuringDormancy_, false);
}

void FolderContentsProvider::createFilesAndFolders() {
  if (folderPath_.empty()) return;
  filesAndFolders_.clear();
  const std::string folder = folderPath_.ends_with('/') ? folderPath_ : folderPath_ + '/';
  for (const std::string& entry : files().contentsOfDirectoryAtPath(folderPath_)) {
    if (isShown(entry)) filesAndFolders_.push_back(entryAtPath(entry, folder + entry));
  }
  order_.sort(filesAndFolders_);
}

void FolderContentsProvider::createItemsWithSize(Size size) {
  folderOfItems_ = folderPath_;
  entriesOfItems_ = filesAndFolders_;
  itemsHaveChangedDuringDormancy_ = false;
  if (folderPath_.empty()) {
    addChooserItems(size);
  } else {
    addFolderItems(size);
  }
}

void FolderContentsProvider::addChooserItems(Size size) {
  for (const SystemFolder& folder : systemFolders_) addItem(chooserItem(folder, size));
  addItem(AddButtonItem::create({{0, 0}, size}, "Choose Folder...",
                                whileAlive([](auto& self) { self.addButtonPressed(); })));
}

void FolderContentsProvider::addFolderItems(Size size) {
  for (const auto& entry : filesAndFolders_) addItem(entryItem(entry, size));
  if (!shouldAddOpenFolderInFinderButton()) return;
  addItem(RevealButtonItem::create(
      {{0, 0}, size}, stringWithFormat("Open %@ in Finder...", lastPathComponent(folderPath_)),
      whileAlive([](auto& self) { self.openFolderInFinderButtonPressed(); })));
}

/// For whoever may call later than the provider lives.
Block FolderContentsProvider::whileAlive(std::function<void(FolderContentsProvider&)> perform) {
  return [weakSelf = weak_from_this(), perform = std::move(perform)] {
    const auto self = std::static_pointer_cast<FolderContentsProvider>(weakSelf.lock());
    if (self) perform(*self);
  };
}

std::shared_ptr<Item> FolderContentsProvider::chooserItem(const SystemFolder& folder, Size size) {
  const auto press = [id = folder.directoryID](auto& self) { self.systemFolderButtonPressed(id); };
  auto item =
      ButtonItem::create({{0, 0}, size}, {}, lastPathComponent(folder.path), whileAlive(press));
  const auto show = [weakItem = std::weak_ptr<Item>(item)](const Image& icon) {
    const auto held = weakItem.lock();
    auto* const button = held ? dynamic_cast<Button*>(held->view().get()) : nullptr;
    if (button != nullptr) button->setImage(icon.withSize(button->frame().size));
  };
  show(quillbox->imageManager().iconForFile(folder.path, show));
  return item;
}

/// None for an entry that has gone since the folder was read.
std::shared_ptr<Item> FolderContentsProvider::entryItem(const std::shared_ptr<FileOrFolder>& entry,
                                                        Size size) const {
  if (!files().fileExistsAtPath(entry->fullPath)) return nullptr;
  auto item = quillbox->createFileSystemItemWithFrame({{0, 0}, size}, entry->name, entry->fullPath);
  if (!item) return nullptr;
  if (item->type() == ItemTypeApplication) {
    // Nobody knows an application by the name of its file.
    const std::string name =
        quillbox->platform().workspace().localizedNameOfApplicationAtPath(entry->fullPath);
    if (!name.empty()) item->setName(name);
  }
  item->setRepresentedObject(entry);
  item->setRemovable(false);
  item->setTrashable(true);
  item->setDragability(DragabilityMovesOutOfRow);
  return item;
}

PropertyList FolderContentsProvider::state() const {
  PropertyList state = TabRowProvider::state();
  state.setObject(folderPath_, folderPathKey);
  state.setObject(order_.sortMethod, sortByKey);
  state.setObject(order_.sortOrder, sortOrderKey);
  state.setObject(order_.sortSegregation, segregateByKey);
  return state;
}

void FolderContentsProvider::restoreState(const PropertyList& state) {
  TabRowProvider::restoreState(state);
  std::string path = folderPath_;
  if (state.hasKey(folderPathKey)) path = state.objectForKey(folderPathKey).stringValue();
  if (!path.empty() && !files().fileExistsAtPath(path))
    path = quillbox->reconcileBogusFolderPath(path);
  const auto restore = [&state](auto& field, const char* key) {
    using Field = std::remove_reference_t<decltype(field)>;
    if (state.hasKey(key)) field = static_cast<Field>(state.longForKey(key));
  };
  restore(order_.sortMethod, sortByKey);
  restore(order_.sortOrder, sortOrderKey);
  restore(order_.sortSegregation, segregateByKey);
  setFolderPath(path, false);
}

void FolderContentsProvider::setFolderPath(const std::string& path,
                                           bool withItemsHaveChangedNotification) {
  folderPath_ = path;
  filesAndFolders_.clear();
  createFilesAndFolders();
  if (withItemsHaveChangedNotification) itemsHaveChanged();
  if (const auto row = tabRow()) row->updateProviderName();
  setupFolderMonitoring();
}

void FolderContentsProvider::setupFolderMonitoring() {
  tearDownFolderMonitoring();
  if (folderPath_.empty()) return;
  eventStream_ = quillbox->platform().fileEvents().watchFolder(
      folderPath_, monitoringLatency,
      whileAlive([](auto& self) { self.noteFolderContentsHaveChanged(); }));
}

void FolderContentsProvider::noteFolderContentsHaveChanged() {
  createFilesAndFolders();
  if (!itemsAreDisplayed()) {
    itemsHaveChangedDuringDormancy_ = true;
    return;
  }
  for (const TimeInterval delay : refreshDelays) {
    executeBlockAfterDelay(whileAlive([](auto& self) { self.refresh(); }), delay);
  }
}

void FolderContentsProvider::refresh() {
  if (!itemsAreDisplayed()) {
    itemsHaveChangedDuringDormancy_ = true;
    return;
  }
  createFilesAndFolders();
  itemsHaveChanged();
}

void FolderContentsProvider::itemsHaveChanged() {
  if (const auto row = tabRow()) row->itemsHaveChangedWithMaintainSelection(false, false);
  executeBlockAfterDelay(whileAlive([](auto& self) {
                           if (self.itemsAreDisplayed() && self.itemsAreOutOfDate()) {
                             self.itemsHaveChanged();
                           }
                         }),
                         busyTimeOfRow);
}

void FolderContentsProvider::useSystemFolder(std::int64_t directoryID) {
  const auto folder =
      std::find_if(systemFolders_.begin(), systemFolders_.end(),
                   [directoryID](const auto& each) { return each.directoryID == directoryID; });
  if (folder != systemFolders_.end()) setFolderPath(folder->path, true);
}

void FolderContentsProvider::systemFolderButtonPressed(std::int64_t directoryID) {
  if (directoryID == DownloadsDirectory) {
    // What has come last is what is looked for there.
    order_.sortMethod = FolderSortByCreationDate;
    order_.sortOrder = 1;
  }
  useSystemFolder(directoryID);
}

bool FolderContentsProvider::sourceFolderIsDownloads() const {
  return std::any_of(systemFolders_.begin(), systemFolders_.end(), [this](const auto& folder) {
    return folder.directoryID == DownloadsDirectory && folder.path == folderPath_;
  });
}

void FolderContentsProvider::addButtonPressed() {
  OpenPanel panel;
  panel.canChooseFiles = false;
  panel.canChooseDirectories = true;
  std::optional<std::vector<std::string>> chosen;
  {
    const UserInteractionBracket interaction(*quillbox);
    chosen = quillbox->platform().dialogs().runModal(panel);
  }
  if (chosen && !chosen->empty()) setFolderPath(chosen->front(), true);
}

void FolderContentsProvider::openFolderInFinderButtonPressed() {
  quillbox->platform().fileViewer().selectFile(folderPath_);
  quillbox->dismissQuillbox();
}

bool FolderContentsProvider::moveItemToTrash(Item& item) {
  if (!quillbox->getConfirmationWithTitle(
          "Move Item to Trash",
          stringWithFormat("Are you sure you want to move '%@' to the Trash?", item.name()),
          "Move to Trash")) {
    return false;
  }
  const auto* const entry = std::any_cast<std::shared_ptr<FileOrFolder>>(&item.representedObject());
  if (entry == nullptr) return false;
  std::vector<std::string> paths{(*entry)->fullPath};
  removeEntry(item);
  item.view()->setAlphaValue(alphaOfTrashedItem);
  recycleURLs(std::move(paths));
  return true;
}

bool FolderContentsProvider::moveItem(Item& item, const std::string& toFolderAtPath) {
  if (!TabRowProvider::moveItem(item, toFolderAtPath)) return false;
  removeEntry(item);
  return true;
}

void FolderContentsProvider::removeEntry(const Item& item) {
  const auto* const entry = std::any_cast<std::shared_ptr<FileOrFolder>>(&item.representedObject());
  if (entry == nullptr) return;
  // The folder may have been read anew since the item was made.
  std::erase_if(filesAndFolders_, [entry](const auto& each) { return isSame(each, *entry); });
}

void FolderContentsProvider::moveAllItemsToTrash() {
  if (!quillbox->getConfirmationWithTitle("Move Items to Trash",
                                          "Are you sure you want to move all items to the trash??",
                                          "Move to Trash")) {
    return;
  }
  TimeInterval delay = 0;
  fadeItemsOut(delay);
  executeBlockAfterDelay(whileAlive([](auto& self) {
                           std::vector<std::string> paths;
                           for (const auto& entry : self.filesAndFolders_)
                             paths.push_back(entry->fullPath);
                           self.filesAndFolders_.clear();
                           self.recycleURLs(std::move(paths));
                           self.itemsHaveChanged();
                         }),
                         delay);
}

/// The last item first. `delay` ends up as the time when all have begun.
void FolderContentsProvider::fadeItemsOut(TimeInterval& delay) {
  const auto row = tabRow();
  if (!row) return;
  const auto shown = row->items();
  for (auto item = shown.rbegin(); item != shown.rend(); ++item) {
    executeBlockAfterDelay(
        [weakItem = std::weak_ptr<Item>(*item)] {
          if (const auto held = weakItem.lock()) held->view()->animator().setAlphaValue(0);
        },
        delay);
    delay += fadeStep;
  }
}

bool FolderContentsProvider::canReceiveDragOperation(const DragOperation& /*drag*/,
                                                     std::uint32_t dragTypes) {
  return (dragTypes & DragTypeFileURL) != 0;
}

bool FolderContentsProvider::receiveDragOperation(
    const DragOperation& drag, const std::vector<std::shared_ptr<DragItem>>& dragItems,
    std::int64_t /*dropIndex*/) {
  std::vector<std::string> paths;
  for (const auto& item : dragItems) {
    const auto contents = item->commonContents.find(DragContentsFileURL);
    if (contents == item->commonContents.end()) continue;
    const auto* const path = std::any_cast<std::string>(&contents->second);
    if (path != nullptr) paths.push_back(*path);
  }
  const bool copies = drag.draggingSourceOperationMask() == DragOperationCopy;
  executeBlockAfterDelay(whileAlive([paths, copies](auto& self) {
                           if (self.folderPath_.empty()) return;
                           if (copies) {
                             quillbox->copyItems(paths, self.folderPath_);
                           } else {
                             quillbox->moveItems(paths, self.folderPath_);
                           }
                         }),
                         dropDelay);
  return false;
}

}  // namespace qb
