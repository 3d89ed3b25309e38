#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/providers/FileOrFolder.h"
#include "Quillbox/providers/FolderOrder.h"
#include "Quillbox/providers/SystemFolder.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "QuillboxCommon/Subscription.h"

namespace qb {

/// What is in one folder, sorted as the user wishes, with what comes and goes there. Until a folder
/// is chosen it offers those that every user has; from then on it stays with the folder. Hidden
/// files are left out. Main thread.
class FolderContentsProvider : public TabRowProvider {
 public:
  static std::shared_ptr<TabRowProviderInformation> information();
  static std::shared_ptr<FolderContentsProvider> create();

  void prepareForDeallocation() override;
  std::string name() const override;
  std::string className() const override { return "FolderContentsProvider"; }
  /// Reads the folder. Entries that have gone when items are made count, although they get none.
  std::int64_t numberOfItems() override;
  bool haveItemsChanged() override;
  void createItemsWithSize(Size size) override;
  void restoreState(const PropertyList& state) override;
  PropertyList state() const override;
  bool moveItemToTrash(Item& item) override;
  bool moveItem(Item& item, const std::string& toFolderAtPath) override;
  MenuItems menuItemsForConfigure() override;
  bool canReceiveDragOperation(const DragOperation& drag, std::uint32_t dragTypes) override;
  /// Moves the files into the folder, or copies them where the drag allows no more. What has come
  /// is shown like any other change, wherever it was dropped.
  bool receiveDragOperation(const DragOperation& drag,
                            const std::vector<std::shared_ptr<DragItem>>& dragItems,
                            std::int64_t dropIndex) override;
  bool shouldHiliteTabRowOnDragEnter() override { return true; }

  /// Empty for none.
  const std::string& folderPath() const { return folderPath_; }
  /// Shows that folder from now on; an empty path stands for none. The notification has a row that
  /// is up show it at once.
  void setFolderPath(const std::string& path, bool withItemsHaveChangedNotification);
  /// Takes what is in the folder now.
  void createFilesAndFolders();
  /// Something has come to the folder or left it.
  void noteFolderContentsHaveChanged();
  /// Shows the folder of that id; nothing when the user has none.
  void useSystemFolder(std::int64_t directoryID);
  /// Asks the user first. The items fade one after the other, and only then the files go.
  void moveAllItemsToTrash();

  const std::vector<std::shared_ptr<FileOrFolder>>& filesAndFolders() const {
    return filesAndFolders_;
  }
  const std::vector<SystemFolder>& systemFolders() const { return systemFolders_; }
  const FolderOrder& order() const { return order_; }
  virtual bool shouldAddOpenFolderInFinderButton() const { return true; }
  /// What a row says that shows an empty folder.
  std::string instructionalMessage() const;
  bool sourceFolderIsDownloads() const;

 protected:
  FolderContentsProvider();
  /// The items of a row without a folder, and of one that has a folder.
  virtual void addChooserItems(Size size);
  virtual void addFolderItems(Size size);

 private:
  Block whileAlive(std::function<void(FolderContentsProvider&)> perform);
  std::shared_ptr<Item> chooserItem(const SystemFolder& folder, Size size);
  std::shared_ptr<Item> entryItem(const std::shared_ptr<FileOrFolder>& entry, Size size) const;
  void systemFolderButtonPressed(std::int64_t directoryID);
  void addButtonPressed();
  void openFolderInFinderButtonPressed();
  void setupFolderMonitoring();
  void tearDownFolderMonitoring() { eventStream_.cancel(); }
  void refresh();
  void removeEntry(const Item& item);
  void fadeItemsOut(TimeInterval& delay);
  bool itemsAreOutOfDate() const;
  /// Has a row that is up show its items anew, if need be when it has time for that.
  void itemsHaveChanged();

  void sortChanged();
  /// An entry that sets one field of the order, checked when that has the value.
  template <class Field>
  std::shared_ptr<MenuItem> orderEntry(const char* title, const char* actionName,
                                       Field FolderOrder::*field, Field value);

  std::string folderPath_;
  std::vector<std::shared_ptr<FileOrFolder>> filesAndFolders_;
  /// What the items were made for.
  std::string folderOfItems_;
  std::vector<std::shared_ptr<FileOrFolder>> entriesOfItems_;
  std::vector<SystemFolder> systemFolders_;
  FolderOrder order_;
  bool itemsHaveChangedDuringDormancy_ = false;
  Subscription eventStream_;
};

}  // namespace qb
