// The row and its provider: making, fetching, presenting and replacing the items.

#include <utility>

#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/ProviderSelector.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

/// The step between the fade-ins of one item and the next.
constexpr TimeInterval presentationStep = 0.05;
/// A long row would make a long chain of timers: from here on the items just show.
constexpr int lastStaggeredItem = 50;
/// After this a rebuild no longer keeps others out, whatever has become of it.
constexpr TimeInterval changeGuardDuration = 0.6;
constexpr TimeInterval rebuildDelay = 0.025;
constexpr TimeInterval restoreSelectionDelay = 0.025;

}  // namespace

void TabRow::setProvider(std::shared_ptr<TabRowProvider> provider) {
  source().itemsWillBeDismissed();
  // Keys must not reach an item that nobody sees any more.
  setSelectedItem(nullptr, SelectionMethodProgram);
  selectionToRestore_.reset();
  releaseItems();
  haveProviderDeleteItems();
  if (hasActiveStatus_) source().relinquishActiveStatus();
  source().prepareForDeallocation();
  hideInstructionalMessage();

  provider_ = std::move(provider);
  source().setTabRow(sharedFrom(*this));
  providerSelector_->setProvider(provider_);
  if (const auto host = hostView()) host->tabRowItemsHaveChanged(*this);
  arrangeProviderSelector();
  haveProviderCreateItems();
  if (isDisplayed_) {
    getItems();
    arrangeItemsWithMaintainScrollOffset(false, false);
    presentItems(true);
  }
  if (hasActiveStatus_) source().gainActiveStatus();
}

std::int64_t TabRow::numberOfItems() {
  numberOfItems_ = source().numberOfItems();
  return numberOfItems_;
}

void TabRow::haveProviderCreateItems() {
  haveProviderDeleteItems();
  source().createItemsWithSize(itemSize_);
  source().assignTabRowToAllItems();
  itemsHaveBeenCreated_ = true;
}

void TabRow::haveProviderDeleteItems() {
  if (!itemsHaveBeenCreated_) return;
  source().deleteItems();
  itemsHaveBeenCreated_ = false;
}

void TabRow::getItems() {
  releaseItems();
  for (std::int64_t position = 0; position < numberOfItems_; ++position) {
    auto item = source().itemForIndex(static_cast<std::uint64_t>(position));
    if (!item) continue;
    item->view()->setAlphaValue(0);
    item->setIndex(position);
    addSubview(item->view());
    items_.push_back(std::move(item));
  }
  selectionViews_.bringToFront(*this);
}

void TabRow::releaseItems() {
  for (const auto& item : items_) item->view()->removeFromSuperview();
  items_.clear();
}

void TabRow::presentItems(bool animated) {
  source().itemsWillBeDisplayed();
  const auto shown = items_;
  TimeInterval delay = static_cast<float>(presentationStep);
  int counter = 0;
  for (const auto& item : shown) {
    if (!animated || counter > lastStaggeredItem) {
      item->view()->setAlphaValue(1);
    } else {
      executeBlockAfterDelay(
          [weakItem = std::weak_ptr<Item>(item)] {
            if (const auto held = weakItem.lock()) held->view()->animator().setAlphaValue(1);
          },
          delay);
      delay += presentationStep;
    }
    ++counter;
  }
}

void TabRow::itemsHaveChangedWithMaintainSelection(bool maintainSelection,
                                                   bool maintainScrollOffset) {
  if (respondingToChangedItems_) return;
  respondingToChangedItems_ = true;
  const std::weak_ptr<TabRow> weakSelf = sharedFrom(*this);
  executeBlockAfterDelay(
      [weakSelf] {
        if (const auto self = weakSelf.lock()) self->respondingToChangedItems_ = false;
      },
      changeGuardDuration);
  executeBlockAfterDelay(
      [weakSelf, maintainSelection, maintainScrollOffset] {
        if (const auto self = weakSelf.lock()) {
          self->rebuildItems(maintainSelection, maintainScrollOffset);
        }
      },
      rebuildDelay);
}

TabRow::RememberedSelection TabRow::rememberSelection() {
  const auto waiting = std::exchange(selectionToRestore_, std::nullopt);
  if (!selectedItem_) return waiting.value_or(RememberedSelection());
  return {selectedItem_->index(), selectedItem_->uniqueID(), selectedItem_->name()};
}

void TabRow::rebuildItems(bool maintainSelection, bool maintainScrollOffset) {
  if (!isDisplayed_) {
    haveProviderCreateItems();
    return;
  }
  const RememberedSelection remembered = rememberSelection();
  source().itemsWillBeDismissed();
  setSelectedItem(nullptr, SelectionMethodProgram);
  releaseItems();
  haveProviderDeleteItems();
  haveProviderCreateItems();
  if (const auto host = hostView()) host->tabRowItemsHaveChanged(*this);
  getItems();
  arrangeItemsWithMaintainScrollOffset(maintainScrollOffset, false);
  presentItems(false);
  if (!maintainSelection) return;
  executeBlockAfterDelay(
      [weakSelf = std::weak_ptr<TabRow>(sharedFrom(*this)), remembered] {
        const auto self = weakSelf.lock();
        if (self && self->isDisplayed_) self->restoreSelection(remembered);
      },
      restoreSelectionDelay);
}

void TabRow::restoreSelection(const RememberedSelection& remembered) {
  const auto host = hostView();
  const bool othersHaveTheKeys =
      host && host->activeTabRow() != nullptr && host->activeTabRow() != this;
  if (itemSelectionEnabled_) {
    // Of several rows with the same contents only the one with the keys shows where they go.
    if (!remembered.isNone() || !othersHaveTheKeys) selectRemembered(remembered);
  } else if (!remembered.isNone() || hasActiveStatus_) {
    // The new items have changed the size of the rows, and are still on their way.
    selectionToRestore_ = remembered;
  }
  respondingToChangedItems_ = false;
}

void TabRow::enableItemSelection() {
  itemSelectionEnabled_ = true;
  const auto remembered = std::exchange(selectionToRestore_, std::nullopt);
  if (remembered && isDisplayed_ && !selectedItem_) selectRemembered(*remembered);
}

void TabRow::selectRemembered(const RememberedSelection& remembered) {
  std::shared_ptr<Item> found;
  // An old item that someone still holds is registered too, but it is not in the row any more.
  for (const auto& item : items_) {
    if (!found && item->uniqueID() == remembered.uniqueID) found = item;
  }
  if (!found && !remembered.name.empty()) {
    for (const auto& item : items_) {
      if (item->name() == remembered.name) found = item;
    }
  }
  if (found) {
    setSelectedItem(found, SelectionMethodProgram);
  } else {
    selectItemAtIndexOrNearest(remembered.index, QuillboxActionNextItem, SelectionMethodKeyboard);
  }
}

bool TabRow::removeItemFromTabRow(const std::shared_ptr<Item>& item, bool confirmation) {
  // Held: a provider that asks the user runs the loop.
  const auto self = sharedFrom(*this);
  const auto removed = sharedFrom(*item);
  if (!source().removeItemFromTabRow(*removed, confirmation)) return false;
  noteItemHasLeft(removed);
  // Who was asked has looked away from the row; a quick removal goes on with another item.
  itemsHaveChangedWithMaintainSelection(!confirmation, true);
  return true;
}

bool TabRow::trashItem(const std::shared_ptr<Item>& item) {
  const auto self = sharedFrom(*this);
  const auto trashed = sharedFrom(*item);
  if (!source().moveItemToTrash(*trashed)) return false;
  noteFileOfItemHasMoved(trashed);
  return true;
}

bool TabRow::moveItem(const std::shared_ptr<Item>& item, const std::string& toFolderAtPath) {
  const auto self = sharedFrom(*this);
  const auto moved = sharedFrom(*item);
  if (!source().moveItem(*moved, toFolderAtPath)) return false;
  noteFileOfItemHasMoved(moved);
  return true;
}

void TabRow::noteFileOfItemHasMoved(const std::shared_ptr<Item>& item) {
  if (const auto* const file = dynamic_cast<FileSystemItem*>(item.get())) {
    quillbox->imageManager().freeIconForFile(file->path());
  }
  noteItemHasLeft(item);
  itemsHaveChangedWithMaintainSelection(false, true);
}

void TabRow::noteItemHasLeft(const std::shared_ptr<Item>& item) {
  if (item == selectedItem_) setSelectedItem(nullptr, SelectionMethodProgram);
  quillbox->clearItemHotKey(*item);
  item->willBeRemovedFromTabBar();
}

void TabRow::invokeAllItems() { source().invokeAllItems(); }

}  // namespace qb
