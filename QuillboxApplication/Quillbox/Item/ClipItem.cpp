#include "Quillbox/Item/ClipItem.h"

#include "Platform/FileSystem.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/AppleScript.h"
#include "Quillbox/managers/ClipboardManager.h"
#include "Quillbox/managers/Cubby.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/providers/ClipboardHistoryProvider.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/ImageView.h"

namespace qb {

namespace {

constexpr const char* pathKey = "ClipItemFilePath";
constexpr const char* clipDragType = "com.vorlane.quillbox.clip";
constexpr const char* unknownImage = "UnknownClipboardItem";
constexpr TimeInterval popUpDelay = 0.1;
constexpr Size largestPopUp{768, 512};
constexpr std::size_t lengthOfPopUp = 4000;
constexpr TimeInterval copiedNoticeDuration = 0.66, failedNoticeDuration = 2.0;
/// The program below the panel has the keyboard by then.
constexpr TimeInterval timeToDismiss = 0.1;
/// The new document is there by then.
constexpr TimeInterval timeForDocument = 0.5;
/// No image and no text is larger.
constexpr Size unlimitedSize{99999, 99999};
constexpr std::size_t unlimitedLength = 999999;

ClipboardManager& clipboardManager() { return quillbox->clipboardManager(); }

void dismissPanelAndWait() {
  quillbox->dismissQuillbox();
  RunLoop& loop = RunLoop::main();
  loop.runUntilDate(loop.now() + timeToDismiss);
}

Image wholeImage(const Cubby* cubby) {
  if (cubby == nullptr) return {};
  return cubby->popUpViewImageWithMaximumSize(unlimitedSize, 0, Color::white());
}

}  // namespace

std::shared_ptr<ClipItem> ClipItem::create(const Rect& frame) {
  std::shared_ptr<ClipItem> item(new ClipItem(frame));
  item->setImage(quillbox->imageNamed(unknownImage));
  item->initialize();
  return item;
}

std::shared_ptr<ClipItem> ClipItem::create(const Rect& frame, const PropertyList& savedState) {
  std::shared_ptr<ClipItem> item(new ClipItem(frame, savedState));
  item->initialize();
  item->setClipFilePath(savedState.objectForKey(pathKey).stringValue());
  return item;
}

ClipItem::ClipItem(const Rect& frame) : Item(frame, std::string("Clip")) {}

ClipItem::ClipItem(const Rect& frame, const PropertyList& savedState) : Item(frame, savedState) {}

ItemInformation ClipItem::information() {
  return {"Clip", "ClipItem", [](const Rect& frame, const PropertyList& savedState) {
            return create(frame, savedState);
          }};
}

std::shared_ptr<Item> ClipItem::createFromState(const Rect& frame,
                                                const PropertyList& savedState) const {
  return create(frame, savedState);
}

void ClipItem::initialize() {
  setRemovable(true);
  updateName();
}

PropertyList ClipItem::state() const {
  PropertyList state = Item::state();
  if (!clipFilePath_.empty()) state.setObject(clipFilePath_, pathKey);
  return state;
}

void ClipItem::setClipFilePath(const std::string& path) {
  if (path.empty()) return;
  clipFilePath_ = path;
  clipType_ = ClipboardManager::clipTypeFromFilePath(path);
  setImage(isTextOrImage() ? clipboardManager().iconImageForClipFileAtPath(path)
                           : quillbox->imageNamed(unknownImage));
  updateName();
}

void ClipItem::updateName() {
  setName(defaultClipAction() == ClipActionPaste ? "Click to Paste" : "Click to Copy");
}

std::int32_t ClipItem::defaultClipAction() const {
  const auto row = tabRow();
  const auto* const history =
      row ? dynamic_cast<ClipboardHistoryProvider*>(row->provider().get()) : nullptr;
  return history != nullptr ? history->defaultClipAction() : ClipActionCopy;
}

std::shared_ptr<Cubby> ClipItem::cubbyOfContents() const {
  return clipboardManager().createCubbyFromClipFileAtPath(clipFilePath_);
}

// What it does.

void ClipItem::invoke() {
  if (defaultClipAction() == ClipActionPaste) {
    paste();
  } else {
    copy();
  }
}

bool ClipItem::performPasteboardCopy() {
  copy();
  return true;
}

void ClipItem::copySelected(MenuItem& /*menuItem*/) { copy(); }
void ClipItem::pasteSelected(MenuItem& /*menuItem*/) { paste(); }

void ClipItem::copy() {
  if (const auto cubby = cubbyOfContents()) cubby->copyToClipboard();
  clipboardManager().synchronizeWithClipboard();
  quillbox->displayQuillboxNotification("Copied to System Clipboard", copiedNoticeDuration);
}

void ClipItem::paste() {
  // The row may make its items anew while the loop runs.
  const auto self = shared_from_this();
  dismissPanelAndWait();
  clipboardManager().saveClipboardContents();
  if (const auto cubby = cubbyOfContents()) cubby->copyToClipboard();
  quillbox->invokePasteCommand();
  clipboardManager().restoreClipboardContents();
}

void ClipItem::shareSelected(MenuItem& /*menuItem*/) {
  const auto cubby = cubbyOfContents();
  if (!cubby) return;
  if (clipType_ == ClipTypeText) {
    if (const auto text = cubby->textContentsWithMaximumLength(unlimitedLength)) {
      quillbox->shareTextViaEmail(*text);
    }
  } else if (clipType_ == ClipTypeImage) {
    quillbox->shareImageViaEmail(wholeImage(cubby.get()));
  }
}

void ClipItem::documentSelected(MenuItem& /*menuItem*/) {
  quillbox->dismissQuillbox();
  AppleScript::appleScriptWithSource(
      "tell application \"TextEdit\"\r"
      "  activate\r"
      "  make new document at the beginning of documents\r"
      "end tell")
      ->execute();
  executeBlockAfterDelay(
      [weakItem = weak_from_this()] {
        const auto item = std::static_pointer_cast<ClipItem>(weakItem.lock());
        if (item && quillbox != nullptr) item->paste();
      },
      timeForDocument);
}

void ClipItem::previewSelected(MenuItem& /*menuItem*/) {
  const auto self = shared_from_this();
  dismissPanelAndWait();
  clipboardManager().saveClipboardContents();
  clipboardManager().suppressClipboardHistoryCapture();
  if (const auto cubby = cubbyOfContents()) cubby->copyToClipboard();
  AppleScript script;
  for (const char* line :
       {"tell application \"Preview\"", "   activate", "end tell",
        "tell application \"System Events\"", "   tell process \"Preview\"", "   tell menu bar 1",
        "   tell menu bar item \"File\"", "   tell menu \"File\"",
        "      click menu item \"New from Clipboard\"", "   end tell", "   end tell", "   end tell",
        "   end tell", "end tell", "tell application \"Preview\"", "   activate", "end tell"}) {
    script.addLine(line);
  }
  script.execute();
  clipboardManager().permitClipboardHistoryCapture();
  clipboardManager().restoreClipboardContents();
}

void ClipItem::saveToDesktopSelected(MenuItem& /*menuItem*/) {
  const bool isImage = clipType_ == ClipTypeImage;
  const std::string path = isImage ? quillbox->desktopPathWithName("Image Clipping", "png")
                                   : quillbox->desktopPathWithName("Text Clipping", "rtf");
  if (saveToDiskAtPath(path)) return;
  quillbox->displayQuillboxNotification("Unable to save Clipping to Desktop", failedNoticeDuration);
}

bool ClipItem::saveToDiskAtPath(const std::string& path) const {
  const auto cubby = cubbyOfContents();
  if (!cubby) return false;
  if (clipType_ == ClipTypeText) {
    return quillbox->platform().fileSystem().writeDataToFile(cubby->data(), path);
  }
  const Image image = wholeImage(cubby.get());
  if (!image) return false;
  quillbox->beginUserInteraction();
  const bool isSaved = quillbox->imageManager().saveImageToDiskWithPath(image, path);
  quillbox->endUserInteraction();
  return isSaved;
}

void ClipItem::removeSelected(MenuItem& /*menuItem*/) {
  if (const auto row = tabRow()) row->removeItemFromTabRow(shared_from_this(), true);
}

// What pops up.

bool ClipItem::shouldDisplayPopUpViewWithDelay(TimeInterval& delay) {
  delay = popUpDelay;
  return true;
}

std::shared_ptr<View> ClipItem::generatePopUpView() {
  const auto cubby = isTextOrImage() ? cubbyOfContents() : nullptr;
  if (!cubby) return nullptr;
  const Image image =
      cubby->popUpViewImageWithMaximumSize(largestPopUp, lengthOfPopUp, Color::white());
  if (!image) return nullptr;
  auto view = std::make_shared<ImageView>(Rect{{0, 0}, image.size()});
  view->setImage(image);
  return view;
}

// Its menu.

Item::MenuItems ClipItem::configureMenuItems() {
  MenuItems items;
  const auto add = [&](const char* title, const char* name, void (ClipItem::*action)(MenuItem&),
                       bool enabled = true) {
    items.push_back(MenuItem::create(title, menuAction(name, action)));
    items.back()->setEnabled(enabled);
  };
  if (defaultClipAction() == ClipActionPaste) {
    add("Copy to System Clipboard", "copySelected", &ClipItem::copySelected);
  } else {
    add("Paste into Current App", "pasteSelected", &ClipItem::pasteSelected);
  }
  items.push_back(MenuItem::separatorItem());
  add("Share via Email...", "shareSelected", &ClipItem::shareSelected, isTextOrImage());
  add("Add to New Document...", "documentSelected", &ClipItem::documentSelected, isTextOrImage());
  if (clipType_ == ClipTypeImage) {
    add("Show in Preview...", "previewSelected", &ClipItem::previewSelected);
  }
  items.push_back(MenuItem::separatorItem());
  add("Save to Desktop...", "saveToDesktopSelected", &ClipItem::saveToDesktopSelected,
      isTextOrImage());
  items.push_back(MenuItem::separatorItem());
  add("Remove from History...", "removeSelected", &ClipItem::removeSelected);
  return items;
}

// Drags out of the panel.

std::vector<std::string> ClipItem::writableTypesForPasteboard(
    const Pasteboard& /*pasteboard*/) const {
  std::vector<std::string> types{clipDragType};
  if (const auto cubby = cubbyOfContents()) types.push_back(cubby->type());
  return types;
}

PropertyList ClipItem::pasteboardPropertyListForType(const std::string& type) const {
  if (type == clipDragType) return state();
  const auto cubby = cubbyOfContents();
  return cubby ? cubby->pasteboardPropertyListForType(type) : PropertyList();
}

}  // namespace qb
