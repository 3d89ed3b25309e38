// The selected item of a row, and the actions on it.

#include "Platform/Keyboard.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Button.h"

namespace qb {

namespace {

/// The rest of the pointer on an item after which its buttons show.
constexpr TimeInterval buttonsDelay = 0.5;

}  // namespace

void TabRow::setSelectedItem(std::shared_ptr<Item> item, std::int32_t method) {
  if (!itemSelectionEnabled_) return;
  if (item && quillbox->dragOperationIsInProgress() && !item->canReceiveCurrentDragOperation()) {
    item.reset();
  }
  if (item == selectedItem_) return;
  if (const auto former = selectedItem_) {
    former->wasDeselected();
    source().itemWasDeselected(former);
  }
  selectedItem_ = std::move(item);
  if (!selectedItem_) {
    selectionViews_.hide();
    return;
  }
  selectionViews_.showAtItem(*selectedItem_, haloSize_, selfBounds_.size);
  const auto selected = selectedItem_;
  if (method == SelectionMethodPointer && (selected->isRemovable() || selected->configurable())) {
    RunLoop::main().performAfterDelay(this, "showButtonsForItem:", buttonsDelay,
                                      [this, weakItem = std::weak_ptr<Item>(selected)] {
                                        if (const auto rested = weakItem.lock())
                                          showButtonsForItem(rested);
                                      });
  }
  selected->wasSelected();
  source().itemWasSelected(selected);
}

void TabRow::showButtonsForItem(const std::shared_ptr<Item>& item) {
  if (item && item == selectedItem_) selectionViews_.showButtons(*item);
}

void TabRow::selectInitialItem() {
  setSelectedItem(source().initiallySelectedItem(), SelectionMethodProgram);
}

std::int64_t TabRow::indexOfSelectedItem() const {
  return selectedItem_ ? selectedItem_->index() : 0;
}

void TabRow::selectItemAtIndexOrNearest(std::int64_t index) {
  selectItemAtIndexOrNearest(index, QuillboxActionNone, SelectionMethodProgram);
}

void TabRow::selectItemAtIndexOrNearest(std::int64_t index, std::int32_t actionCode,
                                        std::int32_t method) {
  const std::int64_t count = numberOfItems_;
  const bool backward = actionCode == QuillboxActionPreviousItem;
  if (actionCode != QuillboxActionNextItem && !backward && index >= count) index = count - 1;
  std::shared_ptr<Item> item;
  std::int64_t tries = 0;
  do {
    if (backward) {
      if (index < 0) index = count - 1;
      item = source().itemForIndex(static_cast<std::uint64_t>(index--));
    } else {
      if (index >= count) index = 0;
      item = source().itemForIndex(static_cast<std::uint64_t>(index++));
    }
    if (tries++ > count) return;
  } while (!item || !item->isInvokable());

  if (item->index() < indexOfLeftMostVisibleItem_) {
    scrollItemsBy(indexOfLeftMostVisibleItem_ - item->index());
  }
  if (item->index() > indexOfRightMostVisibleItem_) {
    scrollItemsBy(indexOfRightMostVisibleItem_ - item->index());
  }
  setSelectedItem(std::move(item), method);
}

bool TabRow::handleAction(const QuillboxAction& action) {
  if (action.activatedApplication && !source().wantsInvocationTabEvent()) return false;
  const auto item = selectedItem_;
  switch (action.code) {
    case QuillboxActionNextItem:
      selectItemAtIndexOrNearest(item ? item->index() + 1 : 0, action.code,
                                 SelectionMethodKeyboard);
      return false;
    case QuillboxActionPreviousItem:
      selectItemAtIndexOrNearest(item ? item->index() - 1 : 0, action.code,
                                 SelectionMethodKeyboard);
      return false;
    case QuillboxActionInvoke:
      return invokeSelectedItem(false);
    case QuillboxActionInvokeAndStay:
      return invokeSelectedItem(true);
    default:
      if (item) performItemAction(item, action.code);
      return false;
  }
}

void TabRow::performItemAction(const std::shared_ptr<Item>& item, std::int32_t actionCode) {
  switch (actionCode) {
    case QuillboxActionPreview:
      if (!item->previewable()) break;
      item->preview();
      quillbox->dismissQuillbox();
      break;
    case QuillboxActionCycleData:
      item->performDataCycling();
      break;
    case QuillboxActionQuickRemove:
      if (item->isRemovable() && item->supportsQuickRemoval()) removeItemFromTabRow(item, false);
      break;
    case QuillboxActionClose:
      item->close();
      break;
    case QuillboxActionCopy:
      item->performPasteboardCopy();
      break;
    case QuillboxActionPaste:
      item->performPasteboardPaste();
      break;
    case QuillboxActionCut:
      item->performPasteboardCut();
      break;
    default:
      break;
  }
}

bool TabRow::invokeSelectedItem(bool stay) {
  const auto item = selectedItem_;
  if (!item || !item->isInvokable()) return true;
  if (item->type() == ItemTypeButton) {
    if (auto* button = dynamic_cast<Button*>(item->view().get())) button->performClick();
    return true;
  }
  const bool shiftIsDown = (quillbox->platform().keyboard().modifierFlags() & EventFlagShift) != 0;
  if (!stay && !shiftIsDown && item->shouldDismissQuillboxWhenInvoked()) {
    // First the panel leaves the screen: it would cover the windows that the item brings up.
    quillbox->dismissQuillbox();
    quillbox->orderOutQuillboxWindow();
  }
  item->invoke();
  return true;
}

void TabRow::keyDown(const Event& event) { source().keyDown(event); }

}  // namespace qb
