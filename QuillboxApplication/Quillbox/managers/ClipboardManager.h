#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quillbox/managers/clipboard/ClipFolder.h"
#include "Quillbox/managers/clipboard/ClipIcons.h"
#include "Quillbox/managers/clipboard/ClipTypes.h"
#include "Quillbox/managers/clipboard/ClipboardManagerClient.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Text.h"

namespace qb {

class Cubby;
class FileSystem;
class Pasteboard;
class Pasteboards;
class Timer;

/// The clipboard history: looks at the clipboard once a second and writes what has been copied into
/// a folder, see `ClipFolder`. Also puts the user's clipboard aside while something is pasted, and
/// keeps what the program itself puts there out of the history. While the clipboard stays as it is,
/// the looks rest. Needs the facade. Main thread.
class ClipboardManager : public std::enable_shared_from_this<ClipboardManager> {
 public:
  /// What is on the clipboard now is not recorded. It looks at nothing before the first client or
  /// capture mode. Both must outlive it.
  static std::shared_ptr<ClipboardManager> create(FileSystem& fileSystem, Pasteboards& pasteboards);
  ~ClipboardManager();
  ClipboardManager(const ClipboardManager&) = delete;
  ClipboardManager& operator=(const ClipboardManager&) = delete;

  void addClient(std::shared_ptr<ClipboardManagerClient> client);
  void removeClient(const std::shared_ptr<ClipboardManagerClient>& client);
  /// A `ClipboardHistoryCaptureMode`.
  void setHistoryCaptureMode(std::int32_t mode);

  // Changes of the clipboard by the program itself.
  /// What is on the clipboard now is not recorded: to be called right after putting it there.
  void synchronizeWithClipboard();
  /// Nests. What is on the clipboard when all of it has ended is recorded all the same, but for
  /// `synchronizeWithClipboard`.
  void suppressClipboardHistoryCapture() { ++clipboardHistorySuppressionIsInEffect_; }
  void permitClipboardHistoryCapture();
  void saveClipboardContents();
  /// As often as it is called. Without anything saved the clipboard is empty then.
  void restoreClipboardContents();
  /// What is on the clipboard, but for items of no known type.
  std::vector<std::shared_ptr<Cubby>> createCubbiesFromClipboard() const;

  // The clippings, by the full paths of their files.
  std::vector<std::string> pathsToClipFilesOfTypes(std::uint32_t clipTypes,
                                                   std::int64_t maximum) const;
  static ClipType clipTypeFromFilePath(const std::string& path);
  /// None for a file that cannot be read, or with nothing in it.
  std::shared_ptr<Cubby> createCubbyFromClipFileAtPath(const std::string& path) const;
  /// The first 50 characters; none when the clipping is no text.
  std::optional<AttributedString> textPreviewForClipFileAtPath(const std::string& path) const;
  /// Of 128 by 128 points; empty for a clipping that is neither text nor image.
  Image iconImageForClipFileAtPath(const std::string& path);
  void removeClipFileAtPathFromClipboardHistory(const std::string& path);
  /// Of all types for `everyClipType`.
  void removeFromClipboardHistoryAllClippingsWithTypes(std::uint32_t clipTypes);

 private:
  ClipboardManager(FileSystem& fileSystem, Pasteboards& pasteboards);

  void maintainClipboardCapture();
  void maintainMaximumHistoryCountPerClipType();
  void pollClipboard(RunLoopTimer& timer);
  void captureCurrentClipboardContents();
  bool shouldBeRecorded(const Cubby& cubby) const;
  /// False when that was the last that was recorded, too.
  bool record(const Cubby& cubby, ClipType clipType);
  void cullClipboardHistory();
  void removeClipFileAtPathFromDisk(const std::string& path);
  void tellClientsOfTypesRemoved(std::uint32_t clipTypes) const;

  FileSystem& fileSystem_;
  Pasteboards& pasteboards_;
  std::shared_ptr<Pasteboard> clipboard_;
  ClipFolder folder_;
  ClipIcons icons_{folder_};
  std::shared_ptr<Timer> clipboardPollTimer_;
  std::vector<std::shared_ptr<ClipboardManagerClient>> clients_;
  std::vector<std::shared_ptr<Cubby>> savedClipboardContents_;
  /// Empty before the first of this run, and once it has been removed.
  std::string pathToLastCapturedClipboard_;
  ClipType clipTypeOfLastCapturedClipboard_ = ClipTypeUnknown;
  std::int64_t maximumHistoryCountPerClipType_;
  std::int32_t historyCaptureMode_ = ClipboardCaptureAlways;
  std::int64_t previousPasteboardChangeCount_;
  /// How many have asked for it.
  std::int64_t clipboardHistorySuppressionIsInEffect_ = 0;
  ChangeNotice capturePermitted_;
};

}  // namespace qb
