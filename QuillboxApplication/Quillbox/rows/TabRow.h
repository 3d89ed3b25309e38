#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Quillbox/activation/QuillboxAction.h"
#include "Quillbox/rows/DragButton.h"
#include "Quillbox/rows/MoreIndicator.h"
#include "Quillbox/rows/ProviderMenus.h"
#include "Quillbox/rows/RowButtons.h"
#include "Quillbox/rows/SelectionViews.h"
#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/views/EventCaptureView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

class DragOperation;
class HostView;
class Item;
class ItemMenu;
class ProviderSelector;
class TabRowProvider;
struct DragItem;

/// Who asks for a selection.
enum SelectionMethod : std::int32_t {
  SelectionMethodProgram = 0,
  SelectionMethodKeyboard = 1,
  SelectionMethodPointer = 2,
};

/// A strip of the panel with the items of one provider, at most one of them selected.
///
/// While the panel is closed the row holds no items, and the provider keeps its own for the next
/// opening. A row may have no provider: it has no items then. Coordinates have their origin at the
/// top left. Owned by its host view. Main thread.
class TabRow : public RoundedRectangleView,
               public EventCaptureViewDelegate,
               public DragButtonTarget {
 public:
  static std::shared_ptr<TabRow> create(const std::shared_ptr<HostView>& hostView,
                                        const Rect& frame,
                                        std::shared_ptr<TabRowProvider> provider);
  ~TabRow() override;

  // The row in the panel.
  std::shared_ptr<HostView> hostView() const { return hostView_.lock(); }
  /// Its place in the panel, from the top.
  std::uint64_t index() const { return index_; }
  void setIndex(std::uint64_t index) { index_ = index; }
  bool canBeDeleted() const { return canBeDeleted_; }
  void setCanBeDeleted(bool can);
  bool canBeMoved() const { return canBeMoved_; }
  void setCanBeMoved(bool can);
  /// It opens as the active row on Command-Tab.
  bool isDefaultCommandTabRow() const { return isDefaultCommandTabRow_; }
  void setIsDefaultCommandTabRow(bool isDefault) { isDefaultCommandTabRow_ = isDefault; }
  /// It opens as the active row on Option-Tab.
  bool isDefaultOptionTabRow() const { return isDefaultOptionTabRow_; }
  void setIsDefaultOptionTabRow(bool isDefault) { isDefaultOptionTabRow_ = isDefault; }
  bool hasActiveStatus() const { return hasActiveStatus_; }
  void settingsChanged();
  /// Shows that what is being dragged would drop here.
  void setHilited(bool hilited);

  // Opening and closing.
  void noteEnvironment(const PropertyList& environment);
  void hostViewWillBeDisplayed();
  void hostViewWasDisplayed();
  void hostViewWillBeDismissed();
  void hostViewWasDismissed();
  void gainActiveStatusAsDefault(bool asDefault);
  /// Takes the selection with it.
  void relinquishActiveStatus();

  // Provider and items.
  /// Null for a row whose contents have not been selected.
  const std::shared_ptr<TabRowProvider>& provider() const { return provider_; }
  /// While the panel is closed the new items wait at the provider.
  void setProvider(std::shared_ptr<TabRowProvider> provider);
  void updateProviderName();
  /// Those on display, from left to right; empty while the panel is closed.
  const std::vector<std::shared_ptr<Item>>& items() const { return items_; }
  /// Asks the provider, and keeps the answer for the selection walks and the next `getItems`.
  std::int64_t numberOfItems();
  Size itemSize() const { return itemSize_; }
  /// Has the items made anew, a moment from now. A call while an earlier one is being followed is
  /// dropped, for 0.6 second at most. If the panel has closed by then the provider makes its items
  /// for the next opening, and the row stays empty.
  void itemsHaveChangedWithMaintainSelection(bool maintainSelection, bool maintainScrollOffset);
  /// False when the provider will not have it.
  bool removeItemFromTabRow(const std::shared_ptr<Item>& item, bool confirmation);
  /// What is dropped on the row goes to its provider, which can have the panel dismissed. Intended:
  /// false always, since the row has seen to that itself.
  bool receiveDragOperation(const DragOperation& drag,
                            const std::vector<std::shared_ptr<DragItem>>& dragItems);
  bool trashItem(const std::shared_ptr<Item>& item);
  bool moveItem(const std::shared_ptr<Item>& item, const std::string& toFolderAtPath);
  void invokeAllItems();
  void showInstructionalMessage(const std::string& message);
  void hideInstructionalMessage();

  // Selection.
  const std::shared_ptr<Item>& selectedItem() const { return selectedItem_; }
  /// Null takes the selection away. Nothing while selection is disabled.
  void setSelectedItem(std::shared_ptr<Item> item, std::int32_t method);
  bool itemSelectionEnabled() const { return itemSelectionEnabled_; }
  void selectInitialItem();
  /// 0 without a selection.
  std::int64_t indexOfSelectedItem() const;
  void selectItemAtIndexOrNearest(std::int64_t index);
  /// Selects the first invokable item from `index` on, going backward with action code 2 and
  /// forward with any other, round the ends. With code 1 an index past the end means the first
  /// item, otherwise the last one. Nothing when no item is invokable.
  void selectItemAtIndexOrNearest(std::int64_t index, std::int32_t actionCode, std::int32_t method);
  /// The small buttons of an item that is still the selected one.
  void showButtonsForItem(const std::shared_ptr<Item>& item);
  SelectionViews& selectionViews() { return selectionViews_; }

  // Actions.
  /// Answers whether the action was an invocation.
  bool handleAction(const QuillboxAction& action);
  void keyDown(const Event& event) override;

  // Menus. Each returns when it has closed; see ItemMenu and ProviderMenus.
  void configureSelectedItemWithMethod(std::int32_t method);
  void popUpProviderSelectorMenuWithEvent(const Event& event);
  void popUpProviderConfigureMenu();
  void popUpProviderConfigureMenuAtLocation(Point location);
  void providerSelected(const MenuItem& sender);

  // Layout.
  using RoundedRectangleView::setFrame;
  /// The only way in which a row is sized. A halo size is taken over only with a new row size:
  /// intended, the two go together.
  void setFrame(const Rect& frame, Size haloSize, bool animate);
  /// Intended: without maintaining the scroll offset the items go to the unscrolled place, and the
  /// offset is left as it is.
  void arrangeItemsWithMaintainScrollOffset(bool maintainScrollOffset, bool animate);
  /// Moves the items by whole steps; positive is to the right. Without bounds.
  void scrollItemsBy(std::int64_t delta);
  void adjustItemsVisibility();
  void arrangeMoreIndicators();
  void arrangeProviderSelector();
  void arrangeButtons();
  /// Origin zero, and the size that the row has or is on its way to.
  const Rect& selfBounds() const { return selfBounds_; }
  Size haloSize() const { return haloSize_; }
  std::int64_t distanceBetweenItems() const { return distanceBetweenItems_; }
  std::int64_t indexScrollOffset() const { return indexScrollOffset_; }
  /// The ends of the stretch of `items` that is wholly in sight; -1 when nothing is.
  std::int64_t indexOfLeftMostVisibleItem() const { return indexOfLeftMostVisibleItem_; }
  std::int64_t indexOfRightMostVisibleItem() const { return indexOfRightMostVisibleItem_; }
  MoreIndicator& leftMoreIndicator() { return leftMoreIndicator_; }
  MoreIndicator& rightMoreIndicator() { return rightMoreIndicator_; }
  ProviderSelector& providerSelector() { return *providerSelector_; }
  RowButtons& rowButtons() { return rowButtons_; }
  /// Null when there is no message.
  LabelView* instructionalMessageLabel() const { return instructionalMessageLabel_.get(); }
  /// A tip that sticks out of a narrow row is hit there too.
  View* hitTest(Point point) override;

  // Pointer, told by the host view. Points are in the row's coordinates.
  void mouseEntered();
  void mouseExited() override;
  void mouseMovedWithinViewFromLocation(Point from, Point to);
  /// A release was seen anywhere.
  void mouseUpEventMonitored(const Event& event);

  void mouseDownInEventCaptureView(const Event& event, EventCaptureView& view) override;
  void mouseUpInEventCaptureView(const Event& event, EventCaptureView& view) override;
  void rightMouseUpInEventCaptureView(const Event& event, EventCaptureView& view) override;
  /// On the row's own background.
  void mouseUp(const Event& event) override;
  void rightMouseUp(const Event& event) override;

  // Its buttons.
  void deleteTabButtonPressed();
  void addButtonPressed();
  void mouseDownInButton(const Event& event) override;
  void mouseUpForButton(const Event& event) override;

  // Drags over the panel; see DragOperations.
  void setupForDragOperation(const DragOperation& drag, std::uint32_t dragTypes);
  void tearDownAfterDragOperation(const DragOperation& drag);

 private:
  TabRow(const std::shared_ptr<HostView>& hostView, const Rect& frame,
         std::shared_ptr<TabRowProvider> provider);
  /// The provider, or for a row without one a source that has nothing and does nothing.
  TabRowProvider& source() const;
  void createViews();

  void haveProviderCreateItems();
  void haveProviderDeleteItems();
  void getItems();
  void releaseItems();
  void presentItems(bool animated);
  /// What is known of the selected item, to find it or its like among new items.
  struct RememberedSelection {
    std::int64_t index = 0;
    std::string uniqueID;
    std::string name;
    bool isNone() const { return uniqueID.empty(); }
  };
  RememberedSelection rememberSelection();
  void rebuildItems(bool maintainSelection, bool maintainScrollOffset);
  void restoreSelection(const RememberedSelection& remembered);
  void selectRemembered(const RememberedSelection& remembered);
  void enableItemSelection();

  bool invokeSelectedItem(bool stay);
  void performItemAction(const std::shared_ptr<Item>& item, std::int32_t actionCode);
  std::shared_ptr<Item> itemUnderPoint(Point point) const;
  /// True when the press under way keeps the pointer from selecting.
  bool noteMouseDraggedTo(Point point);
  void dragItem(const std::shared_ptr<Item>& item);
  void noteMouseWithinProviderSelector(bool within);
  void exitMoreIndicatorHoverStates();
  void noteItemHasLeft(const std::shared_ptr<Item>& item);
  void noteFileOfItemHasMoved(const std::shared_ptr<Item>& item);

  std::weak_ptr<HostView> hostView_;
  std::shared_ptr<TabRowProvider> provider_;
  std::shared_ptr<ProviderSelector> providerSelector_;
  std::shared_ptr<LabelView> instructionalMessageLabel_;
  SelectionViews selectionViews_;
  RowButtons rowButtons_{*this};
  ProviderMenus providerMenus_{*this};
  std::shared_ptr<ItemMenu> itemMenu_;
  MoreIndicator leftMoreIndicator_{*this, MoreIndicator::Side::Left};
  MoreIndicator rightMoreIndicator_{*this, MoreIndicator::Side::Right};

  std::vector<std::shared_ptr<Item>> items_;
  std::shared_ptr<Item> selectedItem_;
  /// Waits until items can be selected again.
  std::optional<RememberedSelection> selectionToRestore_;
  std::weak_ptr<Item> itemUnderMouseDownEvent_;
  std::uint64_t index_ = 0;
  std::int64_t numberOfItems_ = -1;
  std::int64_t indexOfLeftMostVisibleItem_ = -1, indexOfRightMostVisibleItem_ = -1;
  std::int64_t indexScrollOffset_ = 0, distanceBetweenItems_ = 0;
  Size itemSize_, haloSize_;
  Rect selfBounds_;
  bool canBeDeleted_ = false, canBeMoved_ = false;
  bool isDefaultCommandTabRow_ = false, isDefaultOptionTabRow_ = false;
  bool itemsHaveBeenCreated_ = false, hasActiveStatus_ = false;
  bool itemSelectionEnabled_ = true, respondingToChangedItems_ = false;
  /// From the opening of the panel until it begins to close.
  bool isDisplayed_ = false;
  bool handlingMouseDownEvent_ = false, mouseWithinProviderSelector_ = false;
  /// The press under way has become a drag of its item.
  bool draggingItem_ = false;
  Event mouseDownEvent_;
};

}  // namespace qb
