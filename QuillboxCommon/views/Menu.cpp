#include "QuillboxCommon/views/Menu.h"

#include <algorithm>

namespace qb {

std::shared_ptr<MenuItem> MenuItem::create(std::string title, Action action) {
  auto item = std::make_shared<MenuItem>();
  item->title_ = std::move(title);
  item->action_ = std::move(action);
  return item;
}

std::shared_ptr<MenuItem> MenuItem::separatorItem() {
  auto item = std::make_shared<MenuItem>();
  item->separator_ = true;
  item->enabled_ = false;
  return item;
}

void MenuItem::setTitle(const std::string& title) { change(title_, title); }
void MenuItem::setAttributedTitle(const AttributedString& title) {
  change(attributedTitle_, title);
}
void MenuItem::setState(bool state) { change(state_, state); }
void MenuItem::setEnabled(bool enabled) { change(enabled_, enabled); }
void MenuItem::setImage(const Image& image) { change(image_, image); }
void MenuItem::setOnStateImage(const Image& image) { change(onStateImage_, image); }
void MenuItem::setView(std::shared_ptr<View> view) { change(view_, std::move(view)); }

void MenuItem::setSubmenu(std::shared_ptr<Menu> submenu) {
  if (submenu == submenu_) return;
  if (submenu_) submenu_->supermenuItem_.reset();
  if (submenu) {
    if (const auto former = submenu->supermenuItem()) former->setSubmenu(nullptr);
    submenu->supermenuItem_ = weak_from_this();
  }
  submenu_ = std::move(submenu);
  changed();
}

void MenuItem::changed() {
  if (!menu_) return;
  const auto menu = menu_->shared_from_this();
  const auto self = shared_from_this();
  if (MenuObserver* const observer = menu->nearestObserver()) {
    observer->menuItemChanged(*menu, *self);
  }
}

void MenuItem::performAction() {
  if (!enabled_) return;
  const auto self = shared_from_this();
  // A copy: the action may give the item another one.
  if (const auto perform = action_.perform) perform(*self);
}

std::shared_ptr<Menu> Menu::create(std::string title) {
  auto menu = std::make_shared<Menu>();
  menu->title_ = std::move(title);
  return menu;
}

Menu::~Menu() {
  for (const auto& item : items_) item->menu_ = nullptr;
}

void Menu::addItem(std::shared_ptr<MenuItem> item) { insertItem(std::move(item), items_.size()); }

void Menu::insertItem(std::shared_ptr<MenuItem> item, std::size_t index) {
  if (!item) return;
  const auto keep = shared_from_this();
  if (item->menu_) item->menu_->removeItem(*item);
  index = std::min(index, items_.size());
  MenuItem& inserted = *item;
  items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index), std::move(item));
  inserted.menu_ = this;
  if (MenuObserver* const observer = nearestObserver()) {
    observer->menuItemInserted(*this, inserted, index);
  }
}

void Menu::removeItem(const MenuItem& item) {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const auto& one) { return one.get() == &item; });
  if (found == items_.end()) return;
  const auto keep = shared_from_this();
  const std::shared_ptr<MenuItem> removed = *found;
  const auto index = static_cast<std::size_t>(found - items_.begin());
  items_.erase(found);
  removed->menu_ = nullptr;
  if (MenuObserver* const observer = nearestObserver()) {
    observer->menuItemRemoved(*this, *removed, index);
  }
}

void Menu::removeAllItems() {
  const auto keep = shared_from_this();
  while (!items_.empty()) removeItem(*items_.back());
}

std::shared_ptr<MenuItem> Menu::itemWithTag(std::int64_t tag) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const auto& one) { return one->tag() == tag; });
  return found == items_.end() ? nullptr : *found;
}

std::shared_ptr<MenuItem> Menu::itemWithTitle(std::string_view title) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const auto& one) { return one->title() == title; });
  return found == items_.end() ? nullptr : *found;
}

std::shared_ptr<Menu> Menu::supermenu() const {
  const auto item = supermenuItem();
  return item && item->menu() ? item->menu()->shared_from_this() : nullptr;
}

MenuObserver* Menu::nearestObserver() const {
  if (observer_) return observer_;
  const auto above = supermenu();
  return above ? above->nearestObserver() : nullptr;
}

std::shared_ptr<MenuItem> Menu::highlightedItem() const {
  auto item = highlightedItem_.lock();
  return item && item->menu() == this ? item : nullptr;
}

void Menu::noteHighlightedItem(const std::shared_ptr<MenuItem>& item) {
  // Compared with what was told: an item that has left its menu counts until another is told of.
  if (item == highlightedItem_.lock()) return;
  const auto keep = shared_from_this();
  highlightedItem_ = item;
  if (delegate_) delegate_->menuWillHighlightItem(*this, item.get());
}

void Menu::noteDidClose() {
  const auto keep = shared_from_this();
  highlightedItem_.reset();
  if (delegate_) delegate_->menuDidClose(*this);
}

void Menu::cancelTracking() {
  std::shared_ptr<Menu> shown;
  for (auto menu = shared_from_this(); menu; menu = menu->supermenu()) {
    if (menu->observer_) shown = menu;
  }
  if (shown) shown->observer_->menuShouldCancelTracking(*shown);
}

}  // namespace qb
