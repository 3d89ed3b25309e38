#include "Quillbox/Item/folder/FolderMoreEntry.h"

#include "Platform/MenuPresenter.h"
#include "Quillbox/Item/FolderItem.h"
#include "Quillbox/Item/folder/FolderMenu.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr TimeInterval watchInterval = 0.1;
/// From the middle of the item down to the menu.
constexpr double gap = 6;

}  // namespace

FolderMoreEntry::~FolderMoreEntry() { stopWatching(); }

void FolderMoreEntry::moreMenuItemInvoked(MenuItem& item) {
  const auto folder = folder_.lock();
  if (folder && item.menu() != nullptr) folder->addRemainingContents(*item.menu());
}

void FolderMoreEntry::moreMenuItemSelected(MenuItem& /*item*/) {
  const auto folder = folder_.lock();
  if (!folder) return;
  const auto menu = folder->folderMenu().menuForFolder(folder->path(), FolderMenuOptionNone);
  folder->tracking().forgetHighlightedItem();
  keyWatchTimer_ = RunLoop::main().scheduleTimer(
      watchInterval, true,
      [weakFolder = folder_, shown = menu.get()](RunLoopTimer&) {
        if (const auto watching = weakFolder.lock()) watching->trackMenu(*shown);
      },
      RunLoopModes::common());
  View& view = *folder->view();
  const double menuWidth = quillbox->platform().menuPresenter().menuSize(*menu).width;
  const Size size = view.frame().size;
  quillbox->popUpMenu(menu, nullptr, {size.width / 2 - menuWidth / 2, size.height / 2 - gap}, &view,
                      shared_from_this());
  stopWatching();
}

void FolderMoreEntry::menuDidClose(Menu& /*menu*/) { stopWatching(); }

void FolderMoreEntry::stopWatching() {
  if (!keyWatchTimer_) return;
  keyWatchTimer_->invalidate();
  keyWatchTimer_.reset();
}

}  // namespace qb
