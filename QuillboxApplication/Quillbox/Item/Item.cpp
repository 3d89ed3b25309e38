#include "Quillbox/Item/Item.h"

#include "Quillbox/Item/DecorationMenu.h"
#include "Quillbox/Item/DraggingItem.h"
#include "Quillbox/Item/HotKeyEntry.h"
#include "Quillbox/Item/ItemView.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DecorationManager.h"
#include "Quillbox/managers/ImageManager.h"
#include "Quillbox/rows/TabRow.h"
#include "Quillbox/windows/SetHotKeyWindowController.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/views/Animation.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

namespace {

/// The rest on an item after which its view pops up.
constexpr TimeInterval usualPopUpDelay = 0.5;
constexpr double dimmedAlpha = 0.25;
constexpr TimeInterval clearedNoticeDuration = 1;
/// Badges have their size in relation to this one.
constexpr Size sizeOfDecoratedImage{128, 128};

}  // namespace

std::shared_ptr<Item> Item::create(const Rect& frame, const Image& image, const std::string& name) {
  std::shared_ptr<Item> item(new Item(frame, name));
  item->setImage(image);
  return item;
}

std::shared_ptr<Item> Item::create(const Rect& frame, const PropertyList& savedState) {
  return std::shared_ptr<Item>(new Item(frame, savedState));
}

std::shared_ptr<Item> Item::create(std::shared_ptr<View> view, const std::string& name,
                                   const std::string& uniqueID) {
  return std::shared_ptr<Item>(new Item(std::move(view), name, uniqueID));
}

Item::Item(std::shared_ptr<View> view, const std::string& name, const std::string& uniqueID)
    : view_(std::move(view)),
      itemView_(dynamic_cast<ItemView*>(view_.get())),
      viewFrame_(view_->frame()),
      name_(name),
      uniqueID_(uniqueID.empty() ? Quillbox::generateUUID() : uniqueID) {
  if (itemView_ != nullptr) itemView_->setItem(this);
  if (quillbox != nullptr) quillbox->registerItem(*this);
}

Item::Item(const Rect& frame, const std::string& name)
    : Item(std::make_shared<ItemView>(frame), name, {}) {}

Item::Item(const Rect& frame, const PropertyList& savedState)
    : Item(std::make_shared<ItemView>(frame), savedState.objectForKey(kItemNameKey).stringValue(),
           savedState.objectForKey(kItemUniqueIDKey).stringValue()) {
  isNamed_ = savedState.objectForKey(kItemNameKey).isString();
}

Item::~Item() {
  if (itemView_ != nullptr) itemView_->setItem(nullptr);
  if (quillbox != nullptr) quillbox->unregisterItem(*this);
}

std::shared_ptr<Item> Item::duplicate() const {
  auto copy = createFromState(view_->frame(), state());
  copy->setUniqueID(Quillbox::generateUUID());
  return copy;
}

std::shared_ptr<Item> Item::createFromState(const Rect& frame,
                                            const PropertyList& savedState) const {
  return create(frame, savedState);
}

PropertyList Item::state() const {
  PropertyList state = PropertyList::dictionary();
  if (isNamed_) state.setObject(name_, kItemNameKey);
  state.setObject(uniqueID_, kItemUniqueIDKey);
  return state;
}

Image Item::image() const { return itemView_ != nullptr ? itemView_->image() : Image(); }

bool Item::setImage(const Image& image) {
  if (itemView_ == nullptr) return false;
  itemView_->setImage(decorated(image).withSize(itemView_->frame().size));
  itemView_->setImageScaling(ImageScaleProportionallyDown);
  return true;
}

Image Item::decorated(const Image& image) const {
  if (quillbox == nullptr) return image;
  const DecorationManager& decorations = quillbox->decorationManager();
  return quillbox->imageManager().decoratedImageOfImage(image, sizeOfDecoratedImage,
                                                        decorations.tintColorForItem(*this),
                                                        decorations.badgeImageForItem(*this));
}

void Item::setViewFrame(const Rect& frame, bool animated) {
  viewFrame_ = frame;
  if (animated) {
    view_->animator().setFrame(frame);
  } else {
    view_->setFrame(frame);
  }
  noteViewFrameChanged();
}

void Item::dismissPopUpView() {
  if (quillbox != nullptr) quillbox->dismissPopUpViewForItem(*this);
}

void Item::wasSelected() {
  selected_ = true;
  if (popUpView_) return;
  TimeInterval delay = usualPopUpDelay;
  if (!shouldDisplayPopUpViewWithDelay(delay)) return;
  // Deselection does not take it back: it looks for itself whether it is still wanted.
  executeBlockAfterDelay(
      [weakItem = weak_from_this()] {
        const auto item = weakItem.lock();
        if (!item || !item->selected_ || quillbox == nullptr) return;
        if (quillbox->popUpMenuIsBeingDisplayed()) return;
        quillbox->presentPopUpView(item->generatePopUpView(), *item);
      },
      delay);
}

void Item::wasDeselected() {
  selected_ = false;
  dismissPopUpView();
}

Item::MenuItems Item::configureMenuItems() {
  MenuItems items;
  if (decorateable()) {
    items.push_back(MenuItem::create("Decorate", menuAction("decorate", &Item::decorate)));
    items.back()->setTag(MenuItemTagDecorate);
    items.back()->setSubmenu(getDecorationMenu());
  }
  items.push_back(createHotKeyEntry(hotKeyIdentifier(),
                                    menuAction("setHotKeySelected", &Item::setHotKeySelected),
                                    menuAction("clearHotKey", &Item::clearHotKey)));
  if (removable_) {
    items.push_back(MenuItem::create(
        "Remove from Tab Row....",
        menuAction("removeItemFromTabRowSelected", &Item::removeItemFromTabRowSelected)));
  }
  return items;
}

std::shared_ptr<Menu> Item::getDecorationMenu() {
  return DecorationMenu::create(shared_from_this());
}

void Item::menuTrackingWillBegin(Menu& /*menu*/) { DecorationMenu::menuTrackingWillBegin(); }

void Item::menuTrackingDidFinish(Menu& /*menu*/) { DecorationMenu::menuTrackingDidFinish(); }

void Item::setHotKeySelected(MenuItem& /*menuItem*/) {
  SetHotKeyWindowController(*quillbox, stringWithFormat("Please define the Hot Key for %@:", name_),
                            hotKeyIdentifier())
      .runModal();
  quillbox->maintainItemHotKeys();
}

void Item::clearHotKey(MenuItem& /*menuItem*/) {
  quillbox->clearItemHotKey(*this);
  quillbox->displayQuillboxNotification("Hot Key Cleared", clearedNoticeDuration);
}

void Item::removeItemFromTabRowSelected(MenuItem& /*menuItem*/) {
  if (const auto row = tabRow()) row->removeItemFromTabRow(shared_from_this(), true);
}

DraggingItem Item::draggingItem() { return {shared_from_this(), view_->frame(), image()}; }

bool Item::receiveDragOperation(const DragOperation& drag,
                                const std::vector<std::shared_ptr<DragItem>>& dragItems) {
  const auto row = tabRow();
  return row && row->receiveDragOperation(drag, dragItems);
}

std::int32_t Item::draggingEntered(const std::shared_ptr<DragOperation>& drag) {
  return quillbox->registerDragOperation(drag);
}

void Item::setupForDragOperation(const DragOperation& drag, std::uint32_t dragTypes) {
  canReceiveCurrentDragOperation_ = canReceiveDragOperation(drag, dragTypes);
  if (!canReceiveCurrentDragOperation_) view_->setAlphaValue(dimmedAlpha);
}

void Item::tearDownAfterDragOperation(const DragOperation& /*drag*/) {
  view_->animator().setAlphaValue(1);
}

void Item::noteViewFrameChanged() {
  if (itemView_ != nullptr) itemView_->setImageSize(view_->frame().size);
}

}  // namespace qb
