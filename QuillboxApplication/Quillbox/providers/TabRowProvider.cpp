#include "Quillbox/providers/TabRowProvider.h"

#include <algorithm>
#include <utility>

#include "Platform/Trash.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/ItemMove.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr TimeInterval itemMoveDuration = 0.25;

}  // namespace

void TabRowProvider::prepareForDeallocation() { items_.clear(); }

std::int64_t TabRowProvider::numberOfItems() { return static_cast<std::int64_t>(items_.size()); }

void TabRowProvider::deleteItems() { items_.clear(); }

std::shared_ptr<Item> TabRowProvider::itemForIndex(std::uint64_t index) {
  return index < items_.size() ? items_[index] : nullptr;
}

void TabRowProvider::assignTabRowToAllItems() {
  const auto row = tabRow();
  for (const auto& item : items_) item->setTabRow(row);
}

void TabRowProvider::setItem(Item& item, const Rect& viewFrame, bool animate) {
  if (!animate) {
    item.setViewFrame(viewFrame, false);
    return;
  }
  const AnimationGroup group(itemMoveDuration);
  item.setViewFrame(viewFrame, true);
}

void TabRowProvider::itemsWillBeDisplayed() {
  itemsAreDisplayed_ = true;
  for (const auto& item : items_) item->tabRowWillBeDisplayed();
}

void TabRowProvider::itemsWillBeDismissed() {
  itemsAreDisplayed_ = false;
  for (const auto& item : items_) item->tabRowWillBeDismissed();
}

void TabRowProvider::recycleURLs(std::vector<std::string> paths) {
  quillbox->platform().trash().recycle(
      std::move(paths), [self = shared_from_this()](const std::optional<std::string>& error) {
        if (quillbox == nullptr) return;
        if (error) quillbox->displayMessage(*error, "Error");
        if (const auto row = self->tabRow()) {
          row->itemsHaveChangedWithMaintainSelection(false, false);
        }
      });
}

bool TabRowProvider::moveItem(Item& item, const std::string& toFolderAtPath) {
  return moveItemToFolder(item, toFolderAtPath);
}

void TabRowProvider::addItem(std::shared_ptr<Item> item) {
  if (item) items_.push_back(std::move(item));
}

std::shared_ptr<MenuItem> TabRowProvider::menuItem(const std::string& title,
                                                   const std::string& actionName,
                                                   std::function<void(MenuItem&)> perform) {
  const std::weak_ptr<TabRowProvider> weakSelf = weak_from_this();
  return MenuItem::create(title, {actionName,
                                  [weakSelf, perform = std::move(perform)](MenuItem& item) {
                                    if (const auto self = weakSelf.lock()) perform(item);
                                  },
                                  weakSelf});
}

void TabRowProvider::insertItem(std::shared_ptr<Item> item, std::size_t index) {
  if (!item) return;
  const auto place = static_cast<std::ptrdiff_t>(std::min(index, items_.size()));
  items_.insert(items_.begin() + place, std::move(item));
}

}  // namespace qb
