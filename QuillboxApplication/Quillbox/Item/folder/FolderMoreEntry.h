#pragma once

#include <memory>
#include <string>

#include "Quillbox/activation/PopUpMenuService.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

class FolderItem;

/// The rest of a folder's contents: in the open menu when the user rests on the entry that stands
/// for it, in a menu of its own when the user chooses it. Main thread.
class FolderMoreEntry : public MoreMenuItemDelegate,
                        public MenuDelegate,
                        public std::enable_shared_from_this<FolderMoreEntry> {
 public:
  explicit FolderMoreEntry(std::weak_ptr<FolderItem> folder) : folder_(std::move(folder)) {}
  ~FolderMoreEntry() override;

  void moreMenuItemInvoked(MenuItem& item) override;
  void moreMenuItemSelected(MenuItem& item) override;
  void menuDidClose(Menu& menu) override;

 private:
  void stopWatching();

  std::weak_ptr<FolderItem> folder_;
  /// Runs while the menu of its own is open.
  std::shared_ptr<RunLoopTimer> keyWatchTimer_;
};

}  // namespace qb
