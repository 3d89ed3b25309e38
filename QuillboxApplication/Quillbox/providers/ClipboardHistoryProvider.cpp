#include "Quillbox/providers/ClipboardHistoryProvider.h"

#include <iterator>
#include <utility>

#include "Platform/Keyboard.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/ClipboardManager.h"
#include "Quillbox/managers/Cubby.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

constexpr const char* typesKey = "ClipboardTypes";
constexpr const char* maximumKey = "MaximumItems";
constexpr const char* actionKey = "DefaultClipAction";
/// How many clippings a row can show.
constexpr std::int64_t depths[] = {10, 25, 50};

ClipboardManager& clipboardManager() { return quillbox->clipboardManager(); }

}  // namespace

std::shared_ptr<TabRowProviderInformation> ClipboardHistoryProvider::information() {
  return std::make_shared<TabRowProviderInformation>(
      "Clipboard History", "ClipboardHistoryProvider", [] { return create(); });
}

std::shared_ptr<ClipboardHistoryProvider> ClipboardHistoryProvider::create() {
  std::shared_ptr<ClipboardHistoryProvider> provider(new ClipboardHistoryProvider);
  clipboardManager().addClient(provider);
  provider->updateItems();
  return provider;
}

ClipboardHistoryProvider::ClipboardHistoryProvider() : maximumNumberOfItems_(depths[1]) {
  setCanBeConfigured(true);
}

void ClipboardHistoryProvider::prepareForDeallocation() {
  ++generation_;
  clipboardManager().removeClient(
      std::static_pointer_cast<ClipboardHistoryProvider>(shared_from_this()));
  TabRowProvider::prepareForDeallocation();
}

// What there is to show.

void ClipboardHistoryProvider::updateItems() {
  pathsToClipFiles_ =
      clipboardManager().pathsToClipFilesOfTypes(clipboardTypes_, maximumNumberOfItems_);
  ++generation_;
  if (!quillbox->quillboxWindowIsVisible()) {
    itemsHaveChanged_ = true;
    prepareIcons(0);
  } else if (const auto row = tabRow()) {
    row->itemsHaveChangedWithMaintainSelection(false, false);
  }
}

void ClipboardHistoryProvider::prepareIcons(std::size_t index) {
  executeBlockAfterDelay(
      [weakSelf = weak_from_this(), generation = generation_, index] {
        const auto self = std::static_pointer_cast<ClipboardHistoryProvider>(weakSelf.lock());
        if (!self || quillbox == nullptr || self->generation_ != generation) return;
        if (index >= self->pathsToClipFiles_.size()) return;
        clipboardManager().iconImageForClipFileAtPath(self->pathsToClipFiles_[index]);
        self->prepareIcons(index + 1);
      },
      0);
}

std::int64_t ClipboardHistoryProvider::numberOfItems() {
  updateInstructionalMessage();
  return static_cast<std::int64_t>(pathsToClipFiles_.size());
}

void ClipboardHistoryProvider::updateInstructionalMessage() {
  const auto row = tabRow();
  if (!row) return;
  if (clipboardTypes_ == 0) {
    row->showInstructionalMessage("No Clipping Type Selected");
  } else if (pathsToClipFiles_.empty()) {
    row->showInstructionalMessage("Clipboard History is Empty");
  } else {
    row->hideInstructionalMessage();
  }
}

void ClipboardHistoryProvider::createItemsWithSize(Size size) {
  itemsHaveChanged_ = false;
  const Rect frame{{0, 0}, size};
  for (const std::string& path : pathsToClipFiles_) {
    auto item = ClipItem::create(frame);
    item->setDragability(DragabilityDimsInRow);
    item->setViewFrame(frame, false);
    item->setClipFilePath(path);
    addItem(std::move(item));
  }
}

void ClipboardHistoryProvider::assignTabRowToAllItems() {
  TabRowProvider::assignTabRowToAllItems();
  updateItemNames();
}

void ClipboardHistoryProvider::updateItemNames() {
  for (const auto& item : items()) {
    if (auto* const clip = dynamic_cast<ClipItem*>(item.get())) clip->updateName();
  }
}

// Saved state.

void ClipboardHistoryProvider::restoreState(const PropertyList& state) {
  TabRowProvider::restoreState(state);
  clipboardTypes_ = static_cast<std::uint32_t>(state.longForKey(typesKey));
  maximumNumberOfItems_ = static_cast<std::int32_t>(state.longForKey(maximumKey));
  defaultClipAction_ = static_cast<std::int32_t>(state.longForKey(actionKey));
  updateItems();
}

PropertyList ClipboardHistoryProvider::state() const {
  PropertyList state = TabRowProvider::state();
  state.setLong(clipboardTypes_, typesKey);
  state.setLong(maximumNumberOfItems_, maximumKey);
  state.setLong(defaultClipAction_, actionKey);
  return state;
}

// The history.

bool ClipboardHistoryProvider::clipboardCubbyShouldBeRecordedInClipboardHistory(
    const Cubby& cubby) {
  return (cubby.isText() && (clipboardTypes_ & ClipTypeText) != 0) ||
         (cubby.isImage() && (clipboardTypes_ & ClipTypeImage) != 0);
}

void ClipboardHistoryProvider::clipboardDidChangeWithTypesAdded(std::uint32_t clipTypes) {
  if ((clipTypes & clipboardTypes_) != 0) updateItems();
}

void ClipboardHistoryProvider::clipboardHistoryChangedWithTypeRemoved(std::uint32_t clipTypes) {
  if ((clipTypes & clipboardTypes_) != 0) updateItems();
}

std::int64_t ClipboardHistoryProvider::theoreticalMaximumItemsNeededInClipboardHistory() {
  return *std::rbegin(depths);
}

bool ClipboardHistoryProvider::removeItemFromTabRow(Item& item, bool confirmation) {
  const bool optionIsHeld =
      (quillbox->platform().keyboard().modifierFlags() & EventFlagOption) != 0;
  if (confirmation && !optionIsHeld &&
      !quillbox->getConfirmationWithTitle(
          "Remove Clipping",
          "Are you sure you want to remove this Clipping from the Clipboard History?", "Remove")) {
    return false;
  }
  if (const auto* const clip = dynamic_cast<ClipItem*>(&item)) {
    clipboardManager().removeClipFileAtPathFromClipboardHistory(clip->clipFilePath());
  }
  return true;
}

// Its menu.

TabRowProvider::MenuItems ClipboardHistoryProvider::menuItemsForConfigure() {
  auto items = TabRowProvider::menuItemsForConfigure();
  const auto addHeading = [&](const char* title) {
    items.push_back(menuItem(title, "dummy", [](MenuItem&) {}));
    items.back()->setTag(MenuItemTagGrayTitle);
  };
  addHeading("Clipping Types");
  items.push_back(typeEntry("Text", "textSelected", ClipTypeText));
  items.push_back(typeEntry("Images", "imagesSelected", ClipTypeImage));
  items.push_back(MenuItem::separatorItem());
  addHeading("Maximum Items");
  for (const std::int64_t depth : depths) {
    auto entry = menuItem(stringWithFormat("%ld", depth), "numberOfClippingsSelected",
                          [this](MenuItem& chosen) {
                            maximumNumberOfItems_ = chosen.tag();
                            updateItems();
                            quillbox->saveState();
                          });
    entry->setTag(depth);
    entry->setState(maximumNumberOfItems_ == depth);
    items.push_back(std::move(entry));
  }
  items.push_back(MenuItem::separatorItem());
  addHeading("Default Action when Clipping Selected");
  items.push_back(actionEntry("Paste Clipping", "pasteClippingSelected", ClipActionPaste));
  items.push_back(actionEntry("Copy Clipping", "copyClippingSelected", ClipActionCopy));
  items.push_back(MenuItem::separatorItem());
  items.push_back(removalEntry("Remove All Text Clippings...", "removeTextSelected",
                               "Remove All Text Clippings", "text Clippings", ClipTypeText));
  items.push_back(removalEntry("Remove All Image Clippings...", "removeImagesSelected",
                               "Remove All Images", "images", ClipTypeImage));
  items.push_back(removalEntry("Remove All Clippings...", "removeAllSelected",
                               "Remove All Clippings", "Clippings", everyClipType));
  return items;
}

std::shared_ptr<MenuItem> ClipboardHistoryProvider::typeEntry(const char* title,
                                                              const char* actionName,
                                                              ClipType type) {
  auto entry = menuItem(title, actionName, [this, type](MenuItem&) {
    clipboardTypes_ ^= type;
    updateItems();
    quillbox->saveState();
  });
  entry->setState((clipboardTypes_ & type) != 0);
  return entry;
}

// Intended: this alone is not saved at once.
std::shared_ptr<MenuItem> ClipboardHistoryProvider::actionEntry(const char* title,
                                                                const char* actionName,
                                                                ClipAction action) {
  auto entry = menuItem(title, actionName, [this, action](MenuItem&) {
    defaultClipAction_ = action;
    updateItemNames();
  });
  entry->setState(defaultClipAction_ == action);
  return entry;
}

// Intended: it is offered by what the whole history holds, whatever this row shows.
std::shared_ptr<MenuItem> ClipboardHistoryProvider::removalEntry(const char* title,
                                                                 const char* actionName,
                                                                 const char* question,
                                                                 const char* what,
                                                                 std::uint32_t clipTypes) {
  auto entry = menuItem(title, actionName, [question, what, clipTypes](MenuItem&) {
    const std::string message = stringWithFormat(
        "Are you sure you want to remove all %@ from the Clipboard History?", what);
    if (quillbox->getConfirmationWithTitle(question, message, "Remove")) {
      clipboardManager().removeFromClipboardHistoryAllClippingsWithTypes(clipTypes);
    }
  });
  entry->setEnabled(!clipboardManager().pathsToClipFilesOfTypes(clipTypes, 1).empty());
  return entry;
}

}  // namespace qb
