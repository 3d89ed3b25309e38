#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/Item/Item.h"
#include "Quillbox/Item/ItemInformation.h"
#include "Quillbox/managers/clipboard/ClipTypes.h"

namespace qb {

class Cubby;

/// What a click on a clipping does.
enum ClipAction : std::int32_t {
  ClipActionCopy = 0,
  ClipActionPaste = 1,
};

/// One clipping of the clipboard history: the path of its file, which is read whenever its content
/// is wanted. Where the file has gone there is no content, and what needs it does nothing. Main
/// thread.
class ClipItem : public Item {
 public:
  static std::shared_ptr<ClipItem> create(const Rect& frame);
  static std::shared_ptr<ClipItem> create(const Rect& frame, const PropertyList& savedState);
  static ItemInformation information();

  std::int32_t type() const override { return ItemTypeClip; }
  bool configurable() const override { return true; }
  bool supportsQuickRemoval() const override { return true; }
  PropertyList state() const override;

  const std::string& clipFilePath() const { return clipFilePath_; }
  /// Shows the clipping in that file from now on. Nothing for an empty path.
  void setClipFilePath(const std::string& path);
  ClipType clipType() const { return clipType_; }
  /// Tells what a click does.
  void updateName();
  /// A `ClipAction`, which its row decides.
  std::int32_t defaultClipAction() const;
  /// Null when the file cannot be read.
  std::shared_ptr<Cubby> cubbyOfContents() const;

  void invoke() override;
  bool performPasteboardCopy() override;
  bool shouldDisplayPopUpViewWithDelay(TimeInterval& delay) override;
  std::shared_ptr<View> generatePopUpView() override;
  MenuItems configureMenuItems() override;

  std::vector<std::string> writableTypesForPasteboard(const Pasteboard& pasteboard) const override;
  /// Its state for its own type of drags, for any other the bytes of the clipping.
  PropertyList pasteboardPropertyListForType(const std::string& type) const override;

  // Actions of its menu.
  /// The panel stays up. Intended: what has been copied is told even when there was nothing.
  void copySelected(MenuItem& menuItem);
  void pasteSelected(MenuItem& menuItem);
  void shareSelected(MenuItem& menuItem);
  /// Pastes it into a new document of the text editor.
  void documentSelected(MenuItem& menuItem);
  void previewSelected(MenuItem& menuItem);
  /// An image as PNG. Intended: a text goes byte for byte into a file that is named as rich text,
  /// whatever it is.
  void saveToDesktopSelected(MenuItem& menuItem);
  void removeSelected(MenuItem& menuItem);

 protected:
  explicit ClipItem(const Rect& frame);
  ClipItem(const Rect& frame, const PropertyList& savedState);
  std::shared_ptr<Item> createFromState(const Rect& frame,
                                        const PropertyList& savedState) const override;

 private:
  void initialize();
  bool isTextOrImage() const { return clipType_ == ClipTypeText || clipType_ == ClipTypeImage; }
  void copy();
  void paste();
  /// False when there is nothing to save, or it cannot be written.
  bool saveToDiskAtPath(const std::string& path) const;

  ClipType clipType_ = ClipTypeUnknown;
  std::string clipFilePath_;
};

}  // namespace qb
