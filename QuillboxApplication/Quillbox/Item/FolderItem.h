#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/Item/ItemInformation.h"
#include "Quillbox/Item/folder/Downloads.h"
#include "Quillbox/Item/folder/FolderMenu.h"
#include "Quillbox/Item/folder/FolderMenuTracking.h"
#include "Quillbox/Item/folder/RecentlyAccessedItems.h"

namespace qb {

class FolderMoreEntry;

/// A folder. Its menu is a small browser: what was opened last, what is in the folder, and behind
/// each entry what can be done with it. The user's folder of downloads shows in it, besides, how
/// far the downloads have come, and is cleared from there. Main thread.
class FolderItem : public FileSystemItem {
 public:
  /// Named after the folder, without an extension.
  static std::shared_ptr<FolderItem> create(const Rect& frame, const std::string& path);
  static std::shared_ptr<FolderItem> create(const Rect& frame, const std::string& name,
                                            const std::string& path);
  static std::shared_ptr<FolderItem> create(const Rect& frame, const PropertyList& savedState);
  static ItemInformation information();

  std::int32_t type() const override { return ItemTypeFolder; }
  bool decorateable() const override { return true; }

  bool isDownloadsFolder() const;
  /// Full paths; see visibleContentsOfFolderAtPath.
  std::vector<std::string> visibleContents() const;
  /// Those of them that are downloads in progress. None but in the folder of downloads.
  std::vector<std::string> downloadingContents() const { return contents().downloading; }
  /// All others: of any other folder, despite its name, whatever is in it.
  std::vector<std::string> downloadedContents() const { return contents().downloaded; }

  MenuItems configureMenuItems() override;
  void menuTrackingWillBegin(Menu& menu) override;
  void menuTrackingIsContinuing(Menu& menu) override;
  /// Lets the user choose another folder.
  void identifyMissingRepresentedItem() override;

  // For the menus beside its own.
  FolderMenu folderMenu();
  FolderMenuTracking& tracking() { return tracking_; }
  /// A look at an open menu of this folder; see FolderMenuTracking.
  void trackMenu(Menu& menu);
  /// Appends what of the contents has had no room in the menu made last.
  void addRemainingContents(Menu& menu);

  // Actions of its menus.
  void dummy(MenuItem& /*entry*/) {}
  void openItem(MenuItem& entry);
  void revealItem(MenuItem& entry);
  void showInFinder(MenuItem& entry);
  void shareViaEmail(MenuItem& entry);
  /// Disables every entry of the same menu that stands for the same thing.
  void trashItem(MenuItem& entry);
  void moveToSavedDownloads(MenuItem& entry);
  void moveToApplications(MenuItem& entry);
  /// Of the entry of something in the folder, that; otherwise the folder itself.
  void moveToDropbox(MenuItem& entry) override;
  void openSavedDownloadsFolder(MenuItem& entry);
  void trashContents(MenuItem& entry);
  void saveContents(MenuItem& entry);
  void openAllContainedItems(MenuItem& entry);
  /// Shows the folder in a row of its own below the item's.
  void newTabRow(MenuItem& entry);

 protected:
  FolderItem(const Rect& frame, const std::string& name, const std::string& path)
      : FileSystemItem(frame, name, path) {}
  FolderItem(const Rect& frame, const PropertyList& savedState)
      : FileSystemItem(frame, savedState) {}
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;

 private:
  using Paths = std::vector<std::string>;

  /// One look at the folder.
  struct Contents {
    Paths visible, downloading, downloaded;
  };
  Contents contents() const;

  FolderMenuActions folderMenuActions();
  void addEntriesForAllContents(MenuItems& entries, const Paths& contents);
  void addActiveDownloads(MenuItems& entries, const Paths& downloads);
  /// Answers how many there are.
  std::size_t addRecentItems(MenuItems& entries);
  /// Entries behind a heading, unless that is empty; nothing for no paths.
  void addGroup(MenuItems& entries, const std::string& heading, const Paths& paths);
  std::shared_ptr<MenuItem> createMoreEntry();

  Downloads downloads_;
  RecentlyAccessedItems recentlyAccessedItems_;
  FolderMenuTracking tracking_;
  /// The target of the entry that stands for the rest; made with the first one.
  std::shared_ptr<FolderMoreEntry> moreEntry_;
  /// How many of the contents are in the menu made last.
  std::size_t numberOfContentItemsAdded_ = 0;
};

}  // namespace qb
