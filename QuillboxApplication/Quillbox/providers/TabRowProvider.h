#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/rows/DragOperation.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/Event.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb {

class Item;
class TabRow;
class TabRowProvider;

/// A kind of provider, as offered to the user and as saved.
class TabRowProviderInformation {
 public:
  using Maker = std::function<std::shared_ptr<TabRowProvider>()>;

  TabRowProviderInformation(std::string name, std::string className, Maker make)
      : name_(std::move(name)), className_(std::move(className)), make_(std::move(make)) {}
  virtual ~TabRowProviderInformation() = default;

  /// As the user reads it.
  const std::string& name() const { return name_; }
  /// As it is saved.
  const std::string& className() const { return className_; }
  std::shared_ptr<TabRowProvider> createProvider() const { return make_(); }
  virtual bool shouldAppearInProviderSelector() const { return shouldAppearInProviderSelector_; }
  void setShouldAppearInProviderSelector(bool should) { shouldAppearInProviderSelector_ = should; }

 private:
  std::string name_, className_;
  Maker make_;
  bool shouldAppearInProviderSelector_ = true;
};

/// The content of one Tab Row: it counts, makes and keeps the items, knows when they are out of
/// date, and takes part in what happens to them. The base has a default for every operation; as it
/// stands it has no items. Owned by its row. Main thread.
class TabRowProvider : public std::enable_shared_from_this<TabRowProvider>, public MenuItemTarget {
 public:
  TabRowProvider() = default;
  ~TabRowProvider() override = default;
  TabRowProvider(const TabRowProvider&) = delete;
  TabRowProvider& operator=(const TabRowProvider&) = delete;

  /// The row lets go of the provider. Timers stop here.
  virtual void prepareForDeallocation();
  virtual bool isActiveApplicationsProvider() const { return false; }
  virtual bool isCustomProvider() const { return false; }
  virtual std::string name() const { return "Unnamed"; }
  /// The name of its class, under which it is saved.
  virtual std::string className() const { return "TabRowProvider"; }

  /// The owning row, or null.
  std::shared_ptr<TabRow> tabRow() const { return tabRow_.lock(); }
  void setTabRow(const std::shared_ptr<TabRow>& tabRow) { tabRow_ = tabRow; }
  /// The items that are made.
  const std::vector<std::shared_ptr<Item>>& items() const { return items_; }
  std::shared_ptr<Item> selectedItem() const { return selectedItem_.lock(); }
  bool itemsAreDisplayed() const { return itemsAreDisplayed_; }
  bool hasActiveStatus() const { return hasActiveStatus_; }
  bool canBeConfigured() const { return canBeConfigured_; }

  // What there is to show, in the order in which a row asks.
  /// The first call of every opening: what the desktop was like just before it.
  virtual void noteEnvironment(const PropertyList& /*environment*/) {}
  /// Asked before the items are made: whoever makes them late counts the source.
  virtual std::int64_t numberOfItems();
  virtual void createItemsWithSize(Size /*size*/) {}
  virtual void deleteItems();
  /// Asked at every opening once items exist; true has them made anew.
  virtual bool haveItemsChanged() { return false; }
  /// Null past the end.
  virtual std::shared_ptr<Item> itemForIndex(std::uint64_t index);
  virtual std::shared_ptr<Item> initiallySelectedItem() { return itemForIndex(0); }
  virtual void assignTabRowToAllItems();
  /// Places an item, over a quarter of a second if animated.
  virtual void setItem(Item& item, const Rect& viewFrame, bool animate);
  virtual bool canInvokeAllItems() const { return false; }
  virtual void invokeAllItems() {}

  // The life of the row.
  virtual void gainActiveStatus() { hasActiveStatus_ = true; }
  virtual void relinquishActiveStatus() { hasActiveStatus_ = false; }
  virtual void itemsWillBeDisplayed();
  virtual void itemsWillBeDismissed();
  virtual void owningTabRowWasDismissed() {}
  virtual void itemWasSelected(const std::shared_ptr<Item>& item) { selectedItem_ = item; }
  virtual void itemWasDeselected(const std::shared_ptr<Item>& /*item*/) { selectedItem_.reset(); }

  // Saved state.
  virtual void restoreState(const PropertyList& /*state*/) {}
  /// Subclasses add their keys to what the base gives.
  virtual PropertyList state() const { return PropertyList::dictionary(); }

  // Keys and pointer. Answering true keeps the event from the row.
  virtual bool keyDown(const Event& /*event*/) { return false; }
  /// Whether the press that brought the panel up acts on this row too.
  virtual bool wantsInvocationTabEvent() const { return false; }
  virtual bool mouseDown(const Event& /*event*/) { return false; }
  virtual bool mouseUp(const Event& /*event*/) { return false; }
  /// Points of the row's coordinates.
  virtual bool mouseMovedFromLocation(Point /*from*/, Point /*toLocation*/) { return false; }
  virtual void mouseEnteredTabRow() {}
  virtual void mouseExitedTabRow() {}

  // Drags over the row.
  virtual bool isInterestedInDragOperation(const DragOperation& /*drag*/) { return false; }
  virtual bool canReceiveDragOperation(const DragOperation& /*drag*/, std::uint32_t /*dragTypes*/) {
    return false;
  }
  /// Takes a drop, at a place among its items. True asks for the dismissal of the panel.
  virtual bool receiveDragOperation(const DragOperation& /*drag*/,
                                    const std::vector<std::shared_ptr<DragItem>>& /*dragItems*/,
                                    std::int64_t /*dropIndex*/) {
    return false;
  }
  virtual bool shouldHiliteTabRowOnDragEnter() { return false; }
  /// Whether the row opens a gap for what is dragged over it.
  virtual bool canAddItemsToTabRowViaDragOperation(const DragOperation& /*drag*/) { return false; }
  virtual void dragDidEnterHostTabRow(const DragOperation& /*drag*/) {}
  virtual void dragDidExitHostTabRow(const DragOperation& /*drag*/) {}

  // Drags of its items.
  /// Bits of `DragOperationMask`.
  virtual std::int32_t dragOperationForDraggingSession(DraggingContext /*context*/) {
    return DragOperationEvery;
  }
  virtual void itemDidBeginBeingDragged(Item& /*item*/) {}
  virtual void itemDidEndBeingDragged(Item& /*item*/) {}

  // Changes by the user. False stops the step.
  virtual bool removeItemFromTabRow(Item& /*item*/, bool /*confirmation*/) { return true; }
  virtual bool moveItemToTrash(Item& /*item*/) { return true; }
  /// Moves files to the trash, for those who override the above. Later the user is told what could
  /// not go, and the row has its items made anew either way.
  void recycleURLs(std::vector<std::string> paths);
  /// Moves the item's file into a folder; see `moveItemToFolder`.
  virtual bool moveItem(Item& item, const std::string& toFolderAtPath);
  virtual bool confirmProviderChange() { return true; }
  virtual bool confirmDeletion() { return true; }

  // What it adds to menus.
  using MenuItems = std::vector<std::shared_ptr<MenuItem>>;
  /// The menu of an item has these behind its own entries, `existingItems`. Any of those may be
  /// taken out.
  virtual MenuItems menuItemsForItemConfigure(Item& /*item*/, MenuItems& /*existingItems*/) {
    return {};
  }
  virtual MenuItems menuItemsForProviderMenu() { return {}; }
  virtual MenuItems menuItemsForConfigure() { return {}; }

  // Its list. Null is ignored.
  void addItem(std::shared_ptr<Item> item);
  virtual void insertItem(std::shared_ptr<Item> item, std::size_t index);
  /// Intended: appends just as `addItem` does. Nothing calls it.
  void removeItem(std::shared_ptr<Item> item) { addItem(std::move(item)); }

 protected:
  void setCanBeConfigured(bool can) { canBeConfigured_ = can; }
  /// An entry whose action is this provider's. The action does nothing once the provider has gone.
  std::shared_ptr<MenuItem> menuItem(const std::string& title, const std::string& actionName,
                                     std::function<void(MenuItem&)> perform);

 private:
  std::vector<std::shared_ptr<Item>> items_;
  std::weak_ptr<TabRow> tabRow_;
  std::weak_ptr<Item> selectedItem_;
  bool itemsAreDisplayed_ = false, hasActiveStatus_ = false, canBeConfigured_ = false;
};

}  // namespace qb
