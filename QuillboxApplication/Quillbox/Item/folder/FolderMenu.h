#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "QuillboxCommon/views/Menu.h"

namespace qb {

class Downloads;

/// By which the entries of a folder's menus are told apart.
enum FolderMenuTag : std::int64_t {
  /// A file or a folder.
  FolderMenuTagContentItem = 192,
  /// A download in progress.
  FolderMenuTagDownloadingItem = 935,
  FolderMenuTagTrashDownloads = 7348,
  /// Shows the folder in a row of its own.
  FolderMenuTagNewTabRow = 15982,
};

/// What `menuForFolder` is to make.
enum FolderMenuOption : std::int32_t {
  /// All that is in the folder.
  FolderMenuOptionNone = 0,
  /// The submenu of the folder's entry in another menu.
  FolderMenuOptionEntryOfMenu = 1,
};

/// What the entries of a folder's menus do. All get the path as the entry's represented object, a
/// `std::string`; `trashContents` gets `FolderMenuPaths`.
struct FolderMenuActions {
  MenuItem::Action openItem, revealItem, showInFinder, shareViaEmail;
  MenuItem::Action trashItem, moveToSavedDownloads, moveToApplications, moveToDropbox;
  MenuItem::Action trashContents;
  /// For entries that do nothing.
  MenuItem::Action dummy;
};

/// The path that an entry stands for; empty for one that stands for none.
std::string pathOfEntry(const MenuItem& entry);

/// Makes the entries and submenus of a folder's menu. Main thread.
class FolderMenu {
 public:
  /// `downloads` must outlive it.
  FolderMenu(FolderMenuActions actions, bool isDownloadsFolder, Downloads& downloads)
      : actions_(std::move(actions)),
        isDownloadsFolder_(isDownloadsFolder),
        downloads_(downloads) {}

  /// An entry that opens what is at the path, or shows it in the file manager while it
  /// `isDownloading`. Intended: what looks like a download has the picture of one in any case.
  std::shared_ptr<MenuItem> createMenuItemForContentItemAtPath(const std::string& path,
                                                               bool isDownloading) const;
  /// Appends an entry for each path. Only the first entries of a menu have icons of their own: in a
  /// menu of thousands nobody looks for the others, and each has to be loaded.
  void addContentItems(Menu& menu, const std::vector<std::string>& paths) const;
  /// A heading, shown gray.
  std::shared_ptr<MenuItem> createHeading(const std::string& title) const;

  /// What can be done with a file. If it is an image or a PDF, its picture of at most 400 by 400
  /// points comes to the menu when it has been read.
  std::shared_ptr<Menu> menuForFile(const std::string& path) const;
  /// What is in a folder, behind what can be done with it. Of an entry of the folder of downloads
  /// only the latter.
  std::shared_ptr<Menu> menuForFolder(const std::string& path, std::int32_t options) const;
  /// The menu behind the entry that moves all of `contents` to the trash.
  std::shared_ptr<Menu> menuForMoveDownloadItemsToTrash(
      const std::vector<std::string>& contents) const;

  /// Brings the entry of a download up to date. One that has ended becomes the entry of the file
  /// that it was for.
  void refreshDownload(MenuItem& entry) const;

 private:
  enum class IconKind { Own, OfKind };

  std::shared_ptr<MenuItem> createContentItem(const std::string& path, bool isDownloading,
                                              IconKind icon) const;
  static void showAsContent(MenuItem& entry, const std::string& path, IconKind icon);
  void showAsDownload(MenuItem& entry, const std::string& path) const;

  FolderMenuActions actions_;
  bool isDownloadsFolder_;
  Downloads& downloads_;
};

}  // namespace qb
