#pragma once

#include <map>
#include <memory>
#include <string>

#include "Platform/FileSystem.h"
#include "Platform/Pasteboards.h"

namespace qb {

class DesktopClipboard;

/// The clipboard, and named pasteboards as files of this user, one each: a dictionary of the change
/// count and the items, each a dictionary of its data by type. Of these nothing is kept in memory,
/// so that all programs see one content.
class DesktopPasteboards : public Pasteboards {
 public:
  /// `folder` is made with the first content.
  explicit DesktopPasteboards(FileSystem& fileSystem, std::string folder = folderOfSession());

  ~DesktopPasteboards() override;

  /// Needs a QApplication on an X server.
  std::shared_ptr<Pasteboard> generalPasteboard() override;
  ChangeNotice& generalPasteboardChanged() override;
  std::shared_ptr<Pasteboard> pasteboardWithName(const std::string& name) override;

  /// A program has been told to paste: waits until it has what is on the clipboard.
  void finishPaste();

  /// The file of a pasteboard: it is replaced at each change. For those who watch it.
  std::string pathOfPasteboardWithName(const std::string& name) const;
  const std::string& folder() const { return folder_; }

  /// In the session's folder, or in the user's cache where the session has none.
  static std::string folderOfSession();

 private:
  const std::shared_ptr<DesktopClipboard>& clipboard();

  FileSystem& fileSystem_;
  std::string folder_;
  /// Made when it is first asked for.
  std::shared_ptr<DesktopClipboard> general_;
  std::map<std::string, std::shared_ptr<Pasteboard>> pasteboards_;
};

}  // namespace qb
