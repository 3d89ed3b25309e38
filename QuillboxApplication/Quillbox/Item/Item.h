#pragma once

#include <any>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Image.h"
#include "QuillboxCommon/views/Menu.h"
#include "QuillboxCommon/views/View.h"

namespace qb {

class DragOperation;
class ItemView;
class Pasteboard;
class RoundedRectangleView;
class TabRow;
struct DragItem;
struct DraggingItem;

/// What kind of thing an item is. The values are used across the program and saved.
enum ItemType : std::int32_t {
  ItemTypeGeneric = 0,
  ItemTypeFile = 1,
  ItemTypeServer = 2,
  ItemTypeVolume = 3,
  ItemTypeFolder = 4,
  ItemTypeApplication = 5,
  ItemTypeButton = 6,
  ItemTypeWindow = 7,
  ItemTypeWebPage = 8,
  ItemTypeCubbyhole = 9,
  ItemTypeScreenShot = 10,
  ItemTypeAutoType = 11,
  ItemTypeSeparator = 12,
  ItemTypeMetaFolder = 13,
  ItemTypeClip = 14,
  ItemTypeClipboard = 15,
  ItemTypeDisplayConfiguration = 16,
  ItemTypeDragAndDropPlaceholder = 17,
};

/// What happens in the row while an item is dragged out of it, as bits; 0 keeps it in.
enum Dragability : std::int32_t {
  DragabilityMovesOutOfRow = 2,
  DragabilityDimsInRow = 4,
  DragabilityWatchesMouseUp = 8,
};

inline constexpr std::string_view kItemNameKey = "Item Name";
inline constexpr std::string_view kItemUniqueIDKey = "Item Unique ID";

/// What rows are filled with: a picture under a name, and what happens when it is chosen. The base
/// of all items, with the defaults of every hook.
///
/// A provider makes its items and owns them; the row only shows them. Each class has static
/// `create` functions, since what an item starts at once may refer back to it. An item is
/// registered with the facade for as long as it lives. Main thread.
class Item : public std::enable_shared_from_this<Item>, public MenuItemTarget {
 public:
  /// An item that shows `image`, scaled to the frame, under a new identity.
  static std::shared_ptr<Item> create(const Rect& frame, const Image& image,
                                      const std::string& name);
  /// Takes name and identity from what `state` once gave.
  static std::shared_ptr<Item> create(const Rect& frame, const PropertyList& savedState);
  /// An item over any view; only an ItemView can show the item's image. An empty identity is
  /// replaced by a new one.
  static std::shared_ptr<Item> create(std::shared_ptr<View> view, const std::string& name,
                                      const std::string& uniqueID = {});
  ~Item() override;
  Item(const Item&) = delete;
  Item& operator=(const Item&) = delete;

  /// Another item of the same class and settings, under an identity of its own.
  std::shared_ptr<Item> duplicate() const;

  virtual std::int32_t type() const { return ItemTypeGeneric; }
  virtual std::string description() const { return "Generic Item"; }
  /// The label under the halo; there is none for an empty name.
  const std::string& name() const { return name_; }
  void setName(const std::string& name) {
    name_ = name;
    isNamed_ = true;
  }
  /// Never empty.
  const std::string& uniqueID() const { return uniqueID_; }
  void setUniqueID(const std::string& uniqueID) { uniqueID_ = uniqueID; }
  virtual std::string hotKeyIdentifier() const { return uniqueID_; }
  virtual std::string decorationKey() const { return uniqueID_; }
  /// What is saved of it: its identity, and its name unless it comes from a state that had none.
  /// Subclasses add their keys to what the base gives.
  virtual PropertyList state() const;

  const std::shared_ptr<View>& view() const { return view_; }
  /// The same view when it is one that shows images; otherwise null.
  ItemView* itemView() const { return itemView_; }
  /// The row that shows it, or null.
  std::shared_ptr<TabRow> tabRow() const { return tabRow_.lock(); }
  void setTabRow(const std::shared_ptr<TabRow>& tabRow) { tabRow_ = tabRow; }
  /// Its place in the row, counted by the provider.
  std::int64_t index() const { return index_; }
  void setIndex(std::int64_t index) { index_ = index; }

  bool isSelected() const { return selected_; }
  /// It may be taken from its row.
  bool isRemovable() const { return removable_; }
  void setRemovable(bool removable) { removable_ = removable; }
  /// The user may throw its file away here.
  bool isTrashable() const { return trashable_; }
  void setTrashable(bool trashable) { trashable_ = trashable; }
  /// The user may give it another place among its neighbours.
  bool isArrangeable() const { return arrangeable_; }
  void setArrangeable(bool arrangeable) { arrangeable_ = arrangeable; }
  /// Keys can select it, and it has something to do.
  bool isInvokable() const { return invokable_; }
  void setInvokable(bool invokable) { invokable_ = invokable; }
  /// Bits of Dragability.
  std::int32_t dragability() const { return dragability_; }
  void setDragability(std::int32_t dragability) { dragability_ = dragability; }
  /// The provider's record behind the item.
  const std::any& representedObject() const { return representedObject_; }
  void setRepresentedObject(std::any object) { representedObject_ = std::move(object); }
  /// Free for the provider.
  std::int64_t tag() const { return tag_; }
  void setTag(std::int64_t tag) { tag_ = tag; }

  virtual bool configurable() const { return false; }
  virtual bool previewable() const { return false; }
  virtual bool decorateable() const { return false; }

  /// Whether the panel goes before the item acts.
  virtual bool shouldDismissQuillboxWhenInvoked() const { return true; }
  /// Whether the quick-remove key takes it without asking.
  virtual bool supportsQuickRemoval() const { return false; }
  /// The main action. Whoever calls it has seen to the panel.
  virtual void invoke() {}
  virtual void performDataCycling() {}
  /// True when handled.
  virtual bool performPasteboardCut() { return false; }
  virtual bool performPasteboardCopy() { return false; }
  virtual bool performPasteboardPaste() { return false; }
  virtual void close() {}
  virtual void preview() {}
  virtual void quit() {}
  virtual void hide() {}

  /// The image without any decoration; empty when there is none.
  virtual Image getBaseIconImage() const { return {}; }
  virtual Image image() const;
  /// Shows `image` at the size of the view, with the item's tint and badge. False, with nothing
  /// changed, when the view shows no images.
  virtual bool setImage(const Image& image);
  void setViewFrame(const Rect& frame, bool animated);
  /// Where the view stands, or will once it has stopped moving.
  const Rect& viewFrame() const { return viewFrame_; }
  void noteViewFrameChanged();

  virtual bool representsFileSystemItem() const { return false; }
  /// Whether the file that it stands for is there; false when it stands for none. An item that
  /// finds its file gone shows it.
  virtual bool represenedFileSystemItemExists() { return false; }

  /// Whether the item pops up a view while it is selected. `delay`, in seconds, comes in as the
  /// usual time and may be changed.
  virtual bool shouldDisplayPopUpViewWithDelay(TimeInterval& /*delay*/) { return false; }
  /// The view to pop up, at a size of at most `Quillbox::maximumPopUpViewSizeForItem`; null for
  /// none.
  virtual std::shared_ptr<View> generatePopUpView() { return nullptr; }
  void dismissPopUpView();
  /// What has popped up, or null. Set by whoever places it in the panel.
  const std::shared_ptr<RoundedRectangleView>& popUpView() const { return popUpView_; }
  void setPopUpView(std::shared_ptr<RoundedRectangleView> view) { popUpView_ = std::move(view); }

  // Its menu.
  using MenuItems = std::vector<std::shared_ptr<MenuItem>>;
  /// Opens its settings.
  virtual void configure() { dismissPopUpView(); }
  /// Its own entries of the menu that configures it; the row adds those of the provider.
  virtual MenuItems configureMenuItems();
  /// The submenu in which it gets a badge and a tint; see DecorationMenu.
  std::shared_ptr<Menu> getDecorationMenu();
  /// That menu is about to open; is open (ten times a second); highlights another of its items, or
  /// none (null); has closed. Overrides of the first and the last call the base.
  virtual void menuTrackingWillBegin(Menu& menu);
  virtual void menuTrackingIsContinuing(Menu& /*menu*/) {}
  virtual void menuWillHighlightItem(Menu& /*menu*/, MenuItem* /*item*/) {}
  virtual void menuTrackingDidFinish(Menu& menu);
  /// Has the user say where the file has gone that it stands for.
  virtual void identifyMissingRepresentedItem() {}

  // Drags over the panel.
  /// A drag comes over its view. Answers what may become of it, bits of `DragOperationMask`.
  std::int32_t draggingEntered(const std::shared_ptr<DragOperation>& drag);
  /// Whether what is dragged now could be dropped on it.
  bool canReceiveCurrentDragOperation() const { return canReceiveCurrentDragOperation_; }
  virtual bool canReceiveDragOperation(const DragOperation& /*drag*/, std::uint32_t /*dragTypes*/) {
    return false;
  }
  /// Takes a drop. True asks for the dismissal of the panel. What an item does not take itself
  /// falls on its row.
  virtual bool receiveDragOperation(const DragOperation& drag,
                                    const std::vector<std::shared_ptr<DragItem>>& dragItems);
  /// A drag begins: an item that cannot take it dims.
  void setupForDragOperation(const DragOperation& drag, std::uint32_t dragTypes);
  void tearDownAfterDragOperation(const DragOperation& drag);

  // Drags out of the panel.
  /// What is dragged when it is: the item with its picture, at the place of its view.
  DraggingItem draggingItem();
  /// The types in which it goes to a pasteboard, the best first. None: it cannot be dragged away.
  virtual std::vector<std::string> writableTypesForPasteboard(
      const Pasteboard& /*pasteboard*/) const {
    return {};
  }
  virtual std::uint32_t writingOptionsForType(const std::string& /*type*/,
                                              const Pasteboard& /*pasteboard*/) const {
    return 0;
  }
  /// Its state, whatever the type.
  virtual PropertyList pasteboardPropertyListForType(const std::string& /*type*/) const {
    return state();
  }

  /// What happens to it. Overrides of these call the base.
  virtual void wasSelected();
  virtual void wasDeselected();
  virtual void tabRowWillBeDisplayed() {}
  virtual void tabRowWillBeDismissed() {}
  /// It is about to leave its row for good.
  virtual void willBeRemovedFromTabBar() {}

  // Actions of its menu.
  /// Nothing: the submenu does it.
  void decorate(MenuItem& /*menuItem*/) {}
  /// Asks the user for its hot key.
  void setHotKeySelected(MenuItem& menuItem);
  void clearHotKey(MenuItem& menuItem);
  /// Takes it from its row, if the user confirms.
  void removeItemFromTabRowSelected(MenuItem& menuItem);

 protected:
  Item(std::shared_ptr<View> view, const std::string& name, const std::string& uniqueID);
  Item(const Rect& frame, const std::string& name);
  Item(const Rect& frame, const PropertyList& savedState);

  /// Makes an item of this very class from a saved state: every subclass has its own.
  virtual std::shared_ptr<Item> createFromState(const Rect& frame,
                                                const PropertyList& savedState) const;

  /// An action of a menu item whose target is this item; it does nothing once the item has gone.
  template <class T>
  MenuItem::Action menuAction(std::string name, void (T::*operation)(MenuItem&)) {
    const std::weak_ptr<T> weakSelf = std::static_pointer_cast<T>(shared_from_this());
    return {std::move(name),
            [weakSelf, operation](MenuItem& menuItem) {
              if (const auto self = weakSelf.lock()) (self.get()->*operation)(menuItem);
            },
            weakSelf};
  }

 private:
  Image decorated(const Image& image) const;

  std::shared_ptr<View> view_;
  ItemView* itemView_ = nullptr;
  Rect viewFrame_;
  std::string name_, uniqueID_;
  std::weak_ptr<TabRow> tabRow_;
  std::shared_ptr<RoundedRectangleView> popUpView_;
  std::any representedObject_;
  std::int64_t index_ = 0, tag_ = 0;
  std::int32_t dragability_ = 0;
  bool selected_ = false, removable_ = false, trashable_ = false, arrangeable_ = false;
  bool invokable_ = true, canReceiveCurrentDragOperation_ = false, isNamed_ = true;
};

}  // namespace qb
