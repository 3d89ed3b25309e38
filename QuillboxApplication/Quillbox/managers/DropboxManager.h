#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "QuillboxCommon/WeakList.h"

namespace qb {

class FileSystem;
class Quillbox;

/// Whoever shows the user's Dropbox folder.
class DropboxManagerDelegate {
 public:
  virtual ~DropboxManagerDelegate() = default;
  virtual void dropboxFolderHasBeenSpecified(const std::string& path) = 0;
  virtual void dropboxFolderHasBecomeUnspecified() = 0;
  // Nobody sends these two as long as there is no link to an account.
  virtual void quillboxHasBecomeLinkedToDropbox() = 0;
  virtual void quillboxHasBecomeUnlinkedFromDropbox() = 0;
};

/// Knows where the user's Dropbox folder is, and moves files into it. The folder is one like any
/// other: what a program makes of its contents is that program's affair. Main thread.
class DropboxManager {
 public:
  /// With the folder that `setDefaultDropboxFolderPath` finds. The facade owns it.
  explicit DropboxManager(Quillbox& facade);

  /// Empty while none is known.
  const std::string& dropboxFolderPath() const { return dropboxFolderPath_; }
  /// Keeps the folder for later runs too, and tells all delegates. An empty path stands for none.
  void setDropboxFolderPath(const std::string& path);
  /// The folder that was specified last, if it is there, else the usual one in the user's home, if
  /// that is. Tells nobody.
  void setDefaultDropboxFolderPath();
  /// Has the user specify the folder. One of another name is asked about.
  void locateDropboxFolder();

  /// Moves a file or a folder into the Dropbox folder, and tells the user how it went. Asks before
  /// something of that name is replaced, which goes only when the other has come. Where it has gone
  /// is in `newPath`, unless that is null; nothing when the answer is false.
  bool moveFileToDropbox(const std::string& path, std::string* newPath);
  /// Hidden ones aside.
  std::int64_t numberOfItemsInDropboxFolder() const;

  /// Whether the program that fills the folder is there, and whether it runs, at this moment.
  bool isDropboxInstalled() const;
  bool isDropboxRunning() const;

  /// Delegates are not kept alive.
  void addDelegate(const std::shared_ptr<DropboxManagerDelegate>& delegate);
  void removeDelegate(const DropboxManagerDelegate& delegate);

  /// Intended: a link to an account is spoken of, but there is none.
  bool isQuillboxLinkedToDropbox() const { return false; }
  void linkQuillboxToDropbox() {}
  void unlinkQuillboxFromDropbox() {}

 private:
  FileSystem& files() const;
  bool isFolder(const std::string& path) const;
  /// False when what is there is to stay, or has to.
  bool canReplaceItem(const std::string& path, const std::string& name);

  Quillbox& facade_;
  std::string dropboxFolderPath_;
  WeakList<DropboxManagerDelegate> delegates_;
};

}  // namespace qb
