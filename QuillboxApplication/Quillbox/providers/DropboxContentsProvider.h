#pragma once

#include <memory>
#include <string>

#include "Quillbox/managers/DropboxManager.h"
#include "Quillbox/providers/FolderContentsProvider.h"

namespace qb {

/// Offered while the program that fills the folder is installed, at the moment of asking.
class DropBoxTabRowProviderInformation : public TabRowProviderInformation {
 public:
  using TabRowProviderInformation::TabRowProviderInformation;
  bool shouldAppearInProviderSelector() const override;
};

/// The user's Dropbox folder and what is in it, wherever the manager says that it is. While no such
/// folder is known, a button by which the user specifies one. Main thread.
class DropboxContentsProvider : public FolderContentsProvider, public DropboxManagerDelegate {
 public:
  static std::shared_ptr<TabRowProviderInformation> information();
  static std::shared_ptr<DropboxContentsProvider> create();
  ~DropboxContentsProvider() override;

  std::string name() const override { return "Dropbox Contents"; }
  std::string className() const override { return "DropboxContentsProvider"; }
  /// Intended: with a folder, one more than there are items.
  std::int64_t numberOfItems() override;
  /// Takes the order of the items. The folder may be another one by now.
  void restoreState(const PropertyList& state) override;
  /// The folder's own item stands first.
  bool shouldAddOpenFolderInFinderButton() const override { return false; }
  /// The folder has a row already: its menu does not offer one.
  MenuItems menuItemsForItemConfigure(Item& item, MenuItems& existingItems) override;

  void dropboxFolderHasBeenSpecified(const std::string& path) override;
  void dropboxFolderHasBecomeUnspecified() override;
  void quillboxHasBecomeLinkedToDropbox() override {}
  void quillboxHasBecomeUnlinkedFromDropbox() override {}

 protected:
  void addChooserItems(Size size) override;
  void addFolderItems(Size size) override;

 private:
  DropboxContentsProvider() = default;
  static void specifyDropboxFolderPressed();
};

}  // namespace qb
