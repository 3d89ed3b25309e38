#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/Item/Item.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/DragOperation.h"
#include "QuillboxCommon/views/Menu.h"

namespace qb::test {

using CallLog = std::vector<std::string>;

/// A drag of things of some kinds.
class TestDrag : public DragOperation {
 public:
  explicit TestDrag(std::uint32_t types, std::int32_t sourceMask = DragOperationEvery)
      : types_(types), sourceMask_(sourceMask) {}
  std::uint32_t dragTypes() const override { return types_; }
  std::int32_t draggingSourceOperationMask() const override { return sourceMask_; }

 private:
  std::uint32_t types_;
  std::int32_t sourceMask_;
};

inline std::vector<std::shared_ptr<MenuItem>> menuItemsWithTitles(
    const std::vector<std::string>& titles) {
  std::vector<std::shared_ptr<MenuItem>> items;
  for (const std::string& title : titles) {
    items.push_back(title == "-" ? MenuItem::separatorItem() : MenuItem::create(title));
  }
  return items;
}

/// Writes down what is asked of it as "name: operation".
class TestItem : public Item {
 public:
  static std::shared_ptr<TestItem> create(const Rect& frame, const std::string& name,
                                          const std::shared_ptr<CallLog>& log) {
    return std::shared_ptr<TestItem>(new TestItem(frame, name, log));
  }

  std::int32_t itemType = ItemTypeGeneric;
  bool isPreviewable = false, removesQuickly = false, dismissesPanel = true;
  bool isConfigurable = false, standsForFile = false, fileExists = false, takesDrags = false;
  /// The titles of its menu entries; "-" for a separator.
  std::vector<std::string> menuTitles;

  std::int32_t type() const override { return itemType; }
  bool previewable() const override { return isPreviewable; }
  bool configurable() const override { return isConfigurable; }
  bool representsFileSystemItem() const override { return standsForFile; }
  bool represenedFileSystemItemExists() override { return fileExists; }
  bool canReceiveDragOperation(const DragOperation&, std::uint32_t) override { return takesDrags; }
  MenuItems configureMenuItems() override { return menuItemsWithTitles(menuTitles); }
  void menuTrackingWillBegin(Menu& menu) override { note("menuTrackingWillBegin", menu); }
  void menuTrackingIsContinuing(Menu& menu) override { note("menuTrackingIsContinuing", menu); }
  void menuTrackingDidFinish(Menu& menu) override { note("menuTrackingDidFinish", menu); }
  void menuWillHighlightItem(Menu&, MenuItem* item) override {
    note(("menuWillHighlightItem " + (item ? item->title() : "none")).c_str());
  }
  void identifyMissingRepresentedItem() override { note("identifyMissingRepresentedItem"); }
  bool supportsQuickRemoval() const override { return removesQuickly; }
  bool shouldDismissQuillboxWhenInvoked() const override { return dismissesPanel; }
  void invoke() override { note("invoke"); }
  void performDataCycling() override { note("performDataCycling"); }
  bool performPasteboardCut() override { return note("performPasteboardCut"); }
  bool performPasteboardCopy() override { return note("performPasteboardCopy"); }
  bool performPasteboardPaste() override { return note("performPasteboardPaste"); }
  void close() override { note("close"); }
  void preview() override { note("preview"); }
  void quit() override { note("quit"); }
  void hide() override { note("hide"); }
  void wasSelected() override {
    Item::wasSelected();
    note("wasSelected");
  }
  void wasDeselected() override {
    Item::wasDeselected();
    note("wasDeselected");
  }
  void tabRowWillBeDisplayed() override { note("tabRowWillBeDisplayed"); }
  void tabRowWillBeDismissed() override { note("tabRowWillBeDismissed"); }
  void willBeRemovedFromTabBar() override { note("willBeRemovedFromTabBar"); }

 private:
  TestItem(const Rect& frame, const std::string& name, std::shared_ptr<CallLog> log)
      : Item(frame, name), log_(std::move(log)) {}
  bool note(const char* operation) {
    log_->push_back(name() + ": " + operation);
    return true;
  }
  void note(const std::string& operation, const Menu& menu) {
    note((operation + " " + menu.title()).c_str());
  }

  std::shared_ptr<CallLog> log_;
};

/// Makes one test item for each of `names` and writes down how the row uses it, as "operation".
class TestProvider : public TabRowProvider {
 public:
  static std::shared_ptr<TestProvider> withItems(int count) {
    auto provider = std::make_shared<TestProvider>();
    for (int number = 0; number < count; ++number) {
      provider->names.push_back("item" + std::to_string(number));
    }
    return provider;
  }

  std::vector<std::string> names;
  /// What the items do; kept apart from what the provider does.
  std::shared_ptr<CallLog> itemLog = std::make_shared<CallLog>();
  CallLog log;
  /// The answers to the row's questions.
  bool itemsHaveChanged = false, takesInvocationTab = false, allowsRemoval = true;
  bool takesDrops = false, dismissesPanelAfterDrops = false;
  bool takesMouseDown = false, takesMouseUp = false, takesMouseMoved = false;
  bool confirmsProviderChange = true, confirmsItsDeletion = true, invokesAllItems = false;
  bool allowsTrashing = true, allowsMoving = true;
  /// The titles of its entries in the menu of an item, of the selector and of the gear.
  std::vector<std::string> itemMenuTitles, providerMenuTitles, configureTitles;
  std::string classTitle = "TestProvider";
  std::string title = "Test Items";
  /// What the count is more than the items made.
  int surplus = 0;

  TestItem& item(std::size_t index) const { return static_cast<TestItem&>(*items().at(index)); }

  /// Shows a gear.
  static std::shared_ptr<TestProvider> configurable(int count) {
    auto provider = withItems(count);
    provider->setCanBeConfigured(true);
    return provider;
  }

  std::string name() const override { return title; }
  std::string className() const override { return classTitle; }
  bool confirmProviderChange() override { return confirmsProviderChange; }
  bool confirmDeletion() override { return confirmsItsDeletion; }
  bool canInvokeAllItems() const override { return invokesAllItems; }
  void invokeAllItems() override { log.push_back("invokeAllItems"); }
  MenuItems menuItemsForItemConfigure(Item&, MenuItems& existing) override {
    log.push_back("menuItemsForItemConfigure " + std::to_string(existing.size()));
    return menuItemsWithTitles(itemMenuTitles);
  }
  MenuItems menuItemsForProviderMenu() override { return menuItemsWithTitles(providerMenuTitles); }
  MenuItems menuItemsForConfigure() override { return menuItemsWithTitles(configureTitles); }
  bool moveItemToTrash(Item& item) override {
    log.push_back("moveItemToTrash " + item.name());
    if (allowsTrashing) std::erase(names, item.name());
    return allowsTrashing;
  }
  bool moveItem(Item& item, const std::string& toFolderAtPath) override {
    log.push_back("moveItem " + item.name() + " to " + toFolderAtPath);
    if (allowsMoving) std::erase(names, item.name());
    return allowsMoving;
  }
  void itemDidBeginBeingDragged(Item& item) override { log.push_back("drag " + item.name()); }
  std::int64_t numberOfItems() override {
    return static_cast<std::int64_t>(names.size()) + surplus;
  }
  void createItemsWithSize(Size size) override {
    log.push_back("createItems");
    for (const std::string& name : names) {
      addItem(TestItem::create({{0, 0}, size}, name, itemLog));
    }
  }
  void deleteItems() override {
    log.push_back("deleteItems");
    TabRowProvider::deleteItems();
  }
  bool haveItemsChanged() override { return itemsHaveChanged; }
  bool wantsInvocationTabEvent() const override { return takesInvocationTab; }
  void noteEnvironment(const PropertyList&) override { log.push_back("noteEnvironment"); }
  void prepareForDeallocation() override {
    log.push_back("prepareForDeallocation");
    TabRowProvider::prepareForDeallocation();
  }
  void gainActiveStatus() override {
    log.push_back("gainActiveStatus");
    TabRowProvider::gainActiveStatus();
  }
  void relinquishActiveStatus() override {
    log.push_back("relinquishActiveStatus");
    TabRowProvider::relinquishActiveStatus();
  }
  void itemsWillBeDisplayed() override {
    log.push_back("itemsWillBeDisplayed");
    TabRowProvider::itemsWillBeDisplayed();
  }
  void itemsWillBeDismissed() override {
    log.push_back("itemsWillBeDismissed");
    TabRowProvider::itemsWillBeDismissed();
  }
  void owningTabRowWasDismissed() override { log.push_back("owningTabRowWasDismissed"); }
  void itemWasSelected(const std::shared_ptr<Item>& item) override {
    log.push_back("itemWasSelected " + item->name());
    TabRowProvider::itemWasSelected(item);
  }
  void itemWasDeselected(const std::shared_ptr<Item>& item) override {
    log.push_back("itemWasDeselected " + item->name());
    TabRowProvider::itemWasDeselected(item);
  }
  bool removeItemFromTabRow(Item& item, bool confirmation) override {
    log.push_back("removeItem " + item.name() + (confirmation ? " with confirmation" : ""));
    if (allowsRemoval) std::erase(names, item.name());
    return allowsRemoval;
  }
  bool canReceiveDragOperation(const DragOperation&, std::uint32_t) override { return takesDrops; }
  bool receiveDragOperation(const DragOperation&,
                            const std::vector<std::shared_ptr<DragItem>>& dragItems,
                            std::int64_t dropIndex) override {
    log.push_back("receive " + std::to_string(dragItems.size()) + " at " +
                  std::to_string(dropIndex));
    return dismissesPanelAfterDrops;
  }
  bool keyDown(const Event& event) override {
    log.push_back("keyDown " + std::to_string(event.keyCode));
    return true;
  }
  bool mouseDown(const Event&) override { return takesMouseDown; }
  bool mouseUp(const Event&) override { return takesMouseUp; }
  bool mouseMovedFromLocation(Point, Point) override { return takesMouseMoved; }
  void mouseEnteredTabRow() override { log.push_back("mouseEntered"); }
  void mouseExitedTabRow() override { log.push_back("mouseExited"); }
};

/// How often `entry` was written down.
inline std::int64_t countOf(const CallLog& log, const std::string& entry) {
  return std::count(log.begin(), log.end(), entry);
}

}  // namespace qb::test
