#pragma once

#include "Quillbox/Item/Item.h"

namespace qb {

inline constexpr std::string_view kPathKey = "Path";

/// An item that stands for a path: the base of files, folders and applications. It shows what icon
/// there is at once, and the best one when that arrives. Main thread.
class FileSystemItem : public Item {
 public:
  /// Named after the file, without its extension.
  static std::shared_ptr<FileSystemItem> create(const Rect& frame, const std::string& path);
  static std::shared_ptr<FileSystemItem> create(const Rect& frame, const std::string& name,
                                                const std::string& path);
  /// Shows `image` in place of the file's icon.
  static std::shared_ptr<FileSystemItem> create(const Rect& frame, const Image& image,
                                                const std::string& name, const std::string& path);
  static std::shared_ptr<FileSystemItem> create(const Rect& frame, const PropertyList& savedState);

  const std::string& path() const { return path_; }
  bool exists() const;
  /// The file has gone there. Name and icon stay as they are.
  void noteNewLocationAtPath(const std::string& path) { path_ = path; }
  /// From now on the item stands for another file: takes its name and icon, and is saved.
  void representFileSystemObjectAtPath(const std::string& path);
  /// What users know as an application; on this desktop a desktop entry, or a program that runs.
  bool representsApplication() const;
  /// What users know as a folder.
  bool representsFolder() const;
  /// Intended: whether it lies there directly. What is in a folder of that one does not count.
  bool isInDropboxFolder() const;
  bool isDropboxFolder() const;

  PropertyList state() const override;
  std::string hotKeyIdentifier() const override { return path_; }
  std::string decorationKey() const override { return path_; }
  bool configurable() const override { return true; }
  bool previewable() const override { return true; }
  bool representsFileSystemItem() const override { return true; }
  bool represenedFileSystemItemExists() override;
  Image getBaseIconImage() const override;

  /// Asks for the best icon a moment from now, and shows it whenever it comes.
  void updateIcon();
  /// Shows when the file has gone.
  void validateIcon();

  /// Opens the file with what it belongs to.
  void invoke() override;
  /// Has the panel go and the desktop give a quick look at the file 0.25 second later.
  void preview() override;
  /// Intended: the decoration comes last, and whatever a subclass adds behind it.
  MenuItems configureMenuItems() override;

  // Actions of its menu.
  void revealItemInFinder(MenuItem& menuItem);
  void getInfoInFinder(MenuItem& menuItem);
  void previewItem(MenuItem& menuItem);
  /// Asks the row, too.
  virtual void moveToDropbox(MenuItem& menuItem);
  /// Asks the row, which asks the user if need be.
  void moveToTrash(MenuItem& menuItem);

 protected:
  FileSystemItem(const Rect& frame, const std::string& name, const std::string& path);
  FileSystemItem(const Rect& frame, const PropertyList& savedState);

  /// The last step of every `create`: the icon that is there, then the best one.
  void beginShowingIcon();
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;
  /// The desktop's file manager itself has no entries that need it.
  virtual bool isFinder() const { return false; }

 private:
  Image icon(std::function<void(const Image&)> update) const;
  bool canMoveToDropbox() const;

  std::string path_;
};

/// Adds a separator, unless the list is empty or ends with one.
void appendSeparator(Item::MenuItems& items);

}  // namespace qb
