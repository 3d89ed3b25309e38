#pragma once

#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/Item/ItemInformation.h"

namespace qb {

/// A plain file. A script is run, anything else opened; what is in it can be looked at and copied.
/// Main thread.
class FileItem : public FileSystemItem {
 public:
  /// Named after the file, without its extension.
  static std::shared_ptr<FileItem> create(const Rect& frame, const std::string& path);
  static std::shared_ptr<FileItem> create(const Rect& frame, const std::string& name,
                                          const std::string& path);
  static std::shared_ptr<FileItem> create(const Rect& frame, const PropertyList& savedState);

  static ItemInformation information();

  std::int32_t type() const override { return ItemTypeFile; }
  bool decorateable() const override { return true; }
  /// Has the panel go before a script, which may type.
  void invoke() override;
  /// The user chooses one file; the item stands for it from then on.
  void identifyMissingRepresentedItem() override;

  bool shouldDisplayPopUpViewWithDelay(TimeInterval& delay) override;
  /// The text of a text file. Intended: a picture takes its time to load, and pops up by itself
  /// when it has come, if the item is still selected.
  std::shared_ptr<View> generatePopUpView() override;
  void wasDeselected() override;

  MenuItems configureMenuItems() override;

  // Actions of its menu.
  void openAppleScriptSelected(MenuItem& menuItem);
  /// Puts the picture or the text on the clipboard and says whether that worked. Nothing for a
  /// picture that cannot be loaded.
  void copyToClipboardSelected(MenuItem& menuItem);
  void shareViaEmail(MenuItem& menuItem);

 protected:
  FileItem(const Rect& frame, const std::string& name, const std::string& path)
      : FileSystemItem(frame, name, path) {}
  FileItem(const Rect& frame, const PropertyList& savedState) : FileSystemItem(frame, savedState) {}
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;

 private:
  /// A view that took its time: nothing unless it is still wanted.
  void popUp(const std::shared_ptr<View>& view);

  /// Changes with each end of its selection.
  std::uint64_t selection_ = 0;
};

}  // namespace qb
