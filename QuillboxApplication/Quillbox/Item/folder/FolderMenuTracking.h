#pragma once

#include <functional>
#include <memory>

#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class FolderMenu;

/// What happens while a folder's menu is open: downloads are brought up to date, the entry under
/// the resting pointer gets its submenu, and Shift over an entry throws away what it stands for.
/// Main thread.
class FolderMenuTracking {
 public:
  /// A look at the keyboard and the menu, some ten times a second. `trashItem` gets the entry that
  /// is to go; the menu stays open.
  void trackMenu(Menu& menu, const FolderMenu& folderMenu,
                 const std::function<void(MenuItem&)>& trashItem);
  /// Another menu opens: no entry has been rested on.
  void forgetHighlightedItem() { lastHighlightedMenuItem_.reset(); }

 private:
  void refreshDownloads(const Menu& menu, const FolderMenu& folderMenu);
  /// Whether the pointer has been on the entry for long enough to want its submenu.
  bool hasRestedOn(const std::shared_ptr<MenuItem>& entry);

  std::weak_ptr<MenuItem> lastHighlightedMenuItem_;
  Moment menuItemHighlightDate_ = 0, refreshDate_ = 0;
};

}  // namespace qb
