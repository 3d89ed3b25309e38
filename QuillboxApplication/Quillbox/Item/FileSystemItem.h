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
  static std::shared_ptr<FileSystemItem> create(const Rect& frame, const PropertyList& savedState);

  const std::string& path() const { return path_; }
  bool exists() const;
  /// The file has gone there. Name and icon stay as they are.
  void noteNewLocationAtPath(const std::string& path) { path_ = path; }

  PropertyList state() const override;
  std::string hotKeyIdentifier() const override { return path_; }
  std::string decorationKey() const override { return path_; }
  bool configurable() const override { return true; }
  bool previewable() const override { return true; }
  bool representsFileSystemItem() const override { return true; }
  bool represenedFileSystemItemExists() const override { return exists(); }
  Image getBaseIconImage() const override;

  /// Asks for the best icon a moment from now, and shows it whenever it comes.
  void updateIcon();

 protected:
  FileSystemItem(const Rect& frame, const std::string& name, const std::string& path);
  FileSystemItem(const Rect& frame, const PropertyList& savedState);

  /// The last step of every `create`: the icon that is there, then the best one.
  void beginShowingIcon();
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;

 private:
  std::string path_;
};

}  // namespace qb
