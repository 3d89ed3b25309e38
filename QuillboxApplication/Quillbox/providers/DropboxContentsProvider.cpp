#include "Quillbox/providers/DropboxContentsProvider.h"

#include <algorithm>
#include <iterator>

#include "Quillbox/Item/ButtonItem.h"
#include "Quillbox/Item/FolderItem.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

DropboxManager& manager() { return quillbox->dropboxManager(); }

}  // namespace

bool DropBoxTabRowProviderInformation::shouldAppearInProviderSelector() const {
  return manager().isDropboxInstalled();
}

std::shared_ptr<TabRowProviderInformation> DropboxContentsProvider::information() {
  return std::make_shared<DropBoxTabRowProviderInformation>(
      "Dropbox Contents", "DropboxContentsProvider", [] { return create(); });
}

std::shared_ptr<DropboxContentsProvider> DropboxContentsProvider::create() {
  std::shared_ptr<DropboxContentsProvider> provider(new DropboxContentsProvider);
  manager().addDelegate(provider);
  const std::string& folder = manager().dropboxFolderPath();
  if (!folder.empty()) provider->setFolderPath(folder, false);
  return provider;
}

DropboxContentsProvider::~DropboxContentsProvider() {
  if (quillbox != nullptr) manager().removeDelegate(*this);
}

void DropboxContentsProvider::dropboxFolderHasBeenSpecified(const std::string& path) {
  setFolderPath(path, true);
}

void DropboxContentsProvider::dropboxFolderHasBecomeUnspecified() { setFolderPath("", true); }

void DropboxContentsProvider::restoreState(const PropertyList& state) {
  FolderContentsProvider::restoreState(state);
  setFolderPath(manager().dropboxFolderPath(), false);
}

std::int64_t DropboxContentsProvider::numberOfItems() {
  const auto row = tabRow();
  if (folderPath().empty()) {
    if (row) {
      row->showInstructionalMessage(
          "Quillbox cannot locate your Dropbox folder.\rPress the + button at left to specify your "
          "Dropbox folder.");
    }
    return 1;
  }
  const std::int64_t count = FolderContentsProvider::numberOfItems() + 1;
  // The item of the folder stands there even when nothing is in it.
  if (row) row->hideInstructionalMessage();
  return count;
}

void DropboxContentsProvider::addChooserItems(Size size) {
  auto button = AddButtonItem::create({{0, 0}, size}, "Specify Dropbox Folder...",
                                      specifyDropboxFolderPressed);
  button->setArrangeable(false);
  button->setRemovable(false);
  button->setTrashable(false);
  addItem(std::move(button));
}

void DropboxContentsProvider::addFolderItems(Size size) {
  auto folder = FolderItem::create({{0, 0}, size}, "Dropbox", folderPath());
  folder->setRemovable(false);
  folder->setTrashable(false);
  addItem(std::move(folder));
  FolderContentsProvider::addFolderItems(size);
}

void DropboxContentsProvider::specifyDropboxFolderPressed() { manager().locateDropboxFolder(); }

TabRowProvider::MenuItems DropboxContentsProvider::menuItemsForItemConfigure(
    Item& item, MenuItems& existingItems) {
  auto items = FolderContentsProvider::menuItemsForItemConfigure(item, existingItems);
  const auto* const file = dynamic_cast<const FileSystemItem*>(&item);
  if (file == nullptr || !file->isDropboxFolder()) return items;
  const auto last =
      std::find_if(existingItems.rbegin(), existingItems.rend(),
                   [](const auto& each) { return each->tag() == FolderMenuTagNewTabRow; });
  if (last != existingItems.rend()) existingItems.erase(std::next(last).base());
  return items;
}

}  // namespace qb
