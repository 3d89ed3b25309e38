#include "Quillbox/Item/folder/FolderMenuTracking.h"

#include <cstdint>

#include "Platform/FileSystem.h"
#include "Platform/KeyCodes.h"
#include "Platform/Keyboard.h"
#include "Quillbox/Item/folder/DownloadsByAge.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/Item/folder/FolderMenu.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr TimeInterval refreshInterval = 0.25;
constexpr TimeInterval restForSubmenu = 0.5;

/// The keys 32 to 63, among them all modifiers, as bits: the lowest is key 32.
std::uint32_t modifiersAndNeighbours(const KeyMap& keys) {
  std::uint32_t word = 0;
  for (unsigned at = 4; at-- > 0;) word = word << 8U | keys.bytes[4 + at];
  return word;
}
constexpr std::uint32_t onlyLeftShift = 1U << (KeyCodeLeftShift - 32U);

/// The entry under the pointer, in whichever open submenu it is; null for none.
std::shared_ptr<MenuItem> highlightedItem(const Menu& menu) {
  auto entry = menu.highlightedItem();
  while (entry && entry->submenu()) {
    auto inner = entry->submenu()->highlightedItem();
    if (!inner) break;
    entry = std::move(inner);
  }
  // One that has been disabled under the pointer counts no more.
  return entry && entry->isEnabled() ? entry : nullptr;
}

bool standsForFile(const MenuItem& entry) {
  return entry.tag() == FolderMenuTagContentItem || entry.tag() == FolderMenuTagDownloadingItem;
}

/// What the pointer is to get for its rest; null for nothing.
std::shared_ptr<Menu> submenuFor(const MenuItem& entry, const FolderMenu& folderMenu) {
  if (entry.tag() == FolderMenuTagTrashDownloads) {
    const auto* const paths = std::any_cast<FolderMenuPaths>(&entry.representedObject());
    return paths ? folderMenu.menuForMoveDownloadItemsToTrash(*paths) : nullptr;
  }
  if (entry.tag() != FolderMenuTagContentItem || entry.menu() == nullptr) return nullptr;
  const std::string path = pathInFolder(entry.menu()->title(), entry.title());
  // A namesake in another folder is not what the entry stands for.
  if (path != pathOfEntry(entry)) return nullptr;
  const FileSystem& files = quillbox->platform().fileSystem();
  if (!files.fileExistsAtPath(path)) return nullptr;
  const bool isFolder = (files.itemInfoFlagsAtPath(path) & ItemInfoIsContainer) != 0;
  return isFolder ? folderMenu.menuForFolder(path, FolderMenuOptionEntryOfMenu)
                  : folderMenu.menuForFile(path);
}

}  // namespace

void FolderMenuTracking::trackMenu(Menu& menu, const FolderMenu& folderMenu,
                                   const std::function<void(MenuItem&)>& trashItem) {
  refreshDownloads(menu, folderMenu);
  const auto entry = highlightedItem(menu);
  if (!entry) return;
  const std::uint32_t keys = modifiersAndNeighbours(quillbox->platform().keyboard().getKeys());
  if (keys == onlyLeftShift && standsForFile(*entry)) return trashItem(*entry);
  if (!hasRestedOn(entry) && keys == 0) return;
  if (!entry->submenu()) entry->setSubmenu(submenuFor(*entry, folderMenu));
}

void FolderMenuTracking::refreshDownloads(const Menu& menu, const FolderMenu& folderMenu) {
  const Moment now = RunLoop::main().now();
  if (now - refreshDate_ < refreshInterval) return;
  refreshDate_ = now;
  for (const auto& entry : menu.items()) {
    if (entry->tag() == FolderMenuTagDownloadingItem) folderMenu.refreshDownload(*entry);
  }
}

bool FolderMenuTracking::hasRestedOn(const std::shared_ptr<MenuItem>& entry) {
  const Moment now = RunLoop::main().now();
  if (lastHighlightedMenuItem_.lock() != entry) {
    lastHighlightedMenuItem_ = entry;
    menuItemHighlightDate_ = now;
  }
  return now - menuItemHighlightDate_ > restForSubmenu;
}

}  // namespace qb
