#include "Quillbox/Item/FileItem.h"

#include <utility>

#include "Platform/ApplicationControl.h"
#include "Platform/Pasteboards.h"
#include "Quillbox/Item/FileContents.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/utilities/FileKinds.h"
#include "QuillboxCommon/richtext/RichText.h"

namespace qb {

namespace {

constexpr TimeInterval popUpDelay = 0.5;
/// The menu has closed by the time that the word on a copy comes.
constexpr TimeInterval copyNoticeDelay = 0.5;
constexpr TimeInterval copiedNoticeDuration = 1, notCopiedNoticeDuration = 2;
constexpr const char* scriptEditor = "AppleScript Editor";
constexpr const char *plainTextType = "public.utf8-plain-text", *richTextType = "public.rtf";
constexpr const char* imageType = "public.png";

void tellWhetherCopied(bool copied) {
  if (quillbox == nullptr) return;
  if (copied) {
    quillbox->displayQuillboxNotification("Copied to System Clipboard", copiedNoticeDuration,
                                          copyNoticeDelay);
  } else {
    quillbox->displayQuillboxNotification("Failed to Copy to System Clipboard",
                                          notCopiedNoticeDuration, copyNoticeDelay);
  }
}

/// What goes to the clipboard as one thing.
class CopiedContents : public PasteboardWriting {
 public:
  explicit CopiedContents(PasteboardContents contents) : contents_(std::move(contents)) {}
  std::vector<std::string> writableTypesForPasteboard(const Pasteboard&) const override {
    std::vector<std::string> types;
    for (const auto& [type, data] : contents_) types.push_back(type);
    return types;
  }
  std::uint32_t writingOptionsForType(const std::string&, const Pasteboard&) const override {
    return 0;
  }
  PropertyList pasteboardPropertyListForType(const std::string& wanted) const override {
    for (const auto& [type, data] : contents_) {
      if (type == wanted) return data;
    }
    return {};
  }

 private:
  PasteboardContents contents_;
};

void copyToClipboard(PasteboardContents contents) {
  const auto clipboard = quillbox->platform().pasteboards().generalPasteboard();
  const CopiedContents copied(std::move(contents));
  clipboard->clearContents();
  tellWhetherCopied(clipboard->writeObjects({&copied}));
}

PropertyList::Data dataOf(const std::string& text) { return {text.begin(), text.end()}; }

/// Plain text goes without looks: those are this program's, not the user's.
PasteboardContents contentsOfText(const AttributedString& text, const std::string& path) {
  PasteboardContents contents{{plainTextType, dataOf(text.string())}};
  if (FileKinds::fileTypeDescriptorForFileAtPath(path) != plainTextType) {
    contents.emplace(contents.begin(), richTextType, dataOf(rtfFromAttributedString(text)));
  }
  return contents;
}

}  // namespace

std::shared_ptr<FileItem> FileItem::create(const Rect& frame, const std::string& path) {
  return create(frame, fileNameFromFullPath(path, false), path);
}

std::shared_ptr<FileItem> FileItem::create(const Rect& frame, const std::string& name,
                                           const std::string& path) {
  std::shared_ptr<FileItem> item(new FileItem(frame, name, path));
  item->beginShowingIcon();
  return item;
}

std::shared_ptr<FileItem> FileItem::create(const Rect& frame, const PropertyList& savedState) {
  std::shared_ptr<FileItem> item(new FileItem(frame, savedState));
  item->beginShowingIcon();
  return item;
}

ItemInformation FileItem::information() {
  return {"File", "FileItem", [](const Rect& frame, const PropertyList& savedState) {
            return create(frame, savedState);
          }};
}

std::shared_ptr<Item> FileItem::createFromState(const Rect& frame,
                                                const PropertyList& savedState) const {
  return create(frame, savedState);
}

void FileItem::invoke() {
  if (!FileKinds::fileAtPathIsAppleScriptFile(path())) return FileSystemItem::invoke();
  quillbox->dismissQuillbox();
  quillbox->executeAppleScriptAtPath(path());
}

void FileItem::identifyMissingRepresentedItem() {
  const auto chosen = quillbox->runOpenPanelWithAllowFiles(true, false, {}, {});
  if (chosen && !chosen->empty()) representFileSystemObjectAtPath(chosen->front());
}

// What pops up.

bool FileItem::shouldDisplayPopUpViewWithDelay(TimeInterval& delay) {
  delay = popUpDelay;
  return true;
}

std::shared_ptr<View> FileItem::generatePopUpView() {
  if (!exists()) return nullptr;
  const FileContents contents(quillbox->platform());
  if (FileKinds::fileAtPathIsTextFile(path())) return contents.createTextView(path());
  if (FileKinds::fileAtPathIsImageFile(path()) || FileKinds::fileAtPathIsPDFFile(path())) {
    contents.loadPictureView(
        path(), [weakItem = weak_from_this(), selection = selection_](auto view) {
          const auto item = std::static_pointer_cast<FileItem>(weakItem.lock());
          if (item && item->selection_ == selection) item->popUp(view);
        });
  }
  return nullptr;
}

void FileItem::popUp(const std::shared_ptr<View>& view) {
  if (!isSelected() || popUpView() || quillbox == nullptr) return;
  if (!quillbox->popUpMenuIsBeingDisplayed()) quillbox->presentPopUpView(view, *this);
}

void FileItem::wasDeselected() {
  ++selection_;
  FileSystemItem::wasDeselected();
}

// Its menu.

Item::MenuItems FileItem::configureMenuItems() {
  MenuItems items = FileSystemItem::configureMenuItems();
  if (FileKinds::fileAtPathIsAppleScriptFile(path())) {
    items.push_back(MenuItem::create(
        "Open in AppleScript Editor...",
        menuAction("openAppleScriptSelected", &FileItem::openAppleScriptSelected)));
  }
  const auto addCopyEntry = [&](const char* title) {
    items.push_back(MenuItem::create(
        title, menuAction("copyToClipboardSelected", &FileItem::copyToClipboardSelected)));
  };
  if (FileKinds::fileAtPathIsImageFile(path())) addCopyEntry("Copy to Clipboard...");
  if (FileKinds::fileAtPathIsTextFile(path())) addCopyEntry("Copy Contents to Clipboard...");
  items.push_back(MenuItem::create("Share via Email...",
                                   menuAction("shareViaEmail", &FileItem::shareViaEmail)));
  return items;
}

void FileItem::openAppleScriptSelected(MenuItem& /*menuItem*/) {
  quillbox->dismissQuillbox();
  quillbox->platform().applicationControl().openFile(path(), scriptEditor);
}

void FileItem::copyToClipboardSelected(MenuItem& /*menuItem*/) {
  const FileContents contents(quillbox->platform());
  if (FileKinds::fileAtPathIsImageFile(path())) {
    contents.imageContentsOfFileAtPath(path(), [](const PropertyList::Data& image) {
      if (!image.empty() && quillbox != nullptr) copyToClipboard({{imageType, image}});
    });
  } else if (const auto text = contents.textContentsOfFileAtPath(path())) {
    copyToClipboard(contentsOfText(*text, path()));
  } else {
    tellWhetherCopied(false);
  }
}

void FileItem::shareViaEmail(MenuItem& /*menuItem*/) { quillbox->shareFileViaEmail(path()); }

}  // namespace qb
