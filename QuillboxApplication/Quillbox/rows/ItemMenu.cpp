#include "Quillbox/rows/ItemMenu.h"

#include "Platform/MenuPresenter.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "Quillbox/rows/MenuGroup.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

constexpr TimeInterval watchInterval = 0.1;
/// Between the configure button and the menu below it.
constexpr double buttonGap = 6;
/// How far below the item's picture the menu opens.
constexpr double itemGap = 10;

std::shared_ptr<Item> itemOf(const MenuItem& entry) {
  const auto* const item = std::any_cast<std::shared_ptr<Item>>(&entry.representedObject());
  return item ? *item : nullptr;
}

}  // namespace

std::shared_ptr<ItemMenu> ItemMenu::create(TabRow& row) {
  return std::shared_ptr<ItemMenu>(new ItemMenu(row));
}

ItemMenu::~ItemMenu() { stopWatching(); }

void ItemMenu::configureSelectedItemWithMethod(std::int32_t method) {
  const auto item = row_.selectedItem();
  if (!item) return;
  // The user may do away with the row in its own menu.
  const auto self = shared_from_this();
  const auto row = sharedFrom(row_);
  const auto menu = createMenu(item);
  keyWatchTimer_ = RunLoop::main().scheduleTimer(
      watchInterval, true, [this, shown = menu.get()](RunLoopTimer&) { trackMenu(*shown); },
      RunLoopModes::common());
  item->menuTrackingWillBegin(*menu);

  const double menuWidth = quillbox->platform().menuPresenter().menuSize(*menu).width;
  const bool atButton = method == ItemMenuMethodConfigureButton;
  RowButton& button = row->selectionViews().configureButton();
  View& anchor = atButton ? static_cast<View&>(button) : *item->view();
  const double x = anchor.frame().width() / 2 - menuWidth / 2;
  const double y = atButton ? anchor.frame().height() + buttonGap : -itemGap;
  item->dismissPopUpView();
  quillbox->popUpMenu(menu, nullptr, {x, y}, &anchor, self);
  stopWatching();
  item->menuTrackingDidFinish(*menu);
}

std::shared_ptr<Menu> ItemMenu::createMenu(const std::shared_ptr<Item>& item) {
  auto menu = Menu::create("QuillboxConfigurator");
  menu->setAutoenablesItems(false);
  if (item->representsFileSystemItem() && !item->represenedFileSystemItemExists()) {
    // Intended: without an entry that applies the menu is empty, and shown all the same.
    if (item->isRemovable()) addEntriesForMissingFile(*menu, item);
  } else {
    addEntriesOfItemAndProvider(*menu, *item);
  }
  return menu;
}

void ItemMenu::addEntriesForMissingFile(Menu& menu, const std::shared_ptr<Item>& item) {
  const auto identify = MenuItem::create(stringWithFormat("Identify missing '%@'...", item->name()),
                                         {"identifyMissingFileSelected", [](const MenuItem& entry) {
                                            if (const auto missing = itemOf(entry))
                                              missing->identifyMissingRepresentedItem();
                                          }});
  identify->setRepresentedObject(item);
  const auto remove =
      MenuItem::create("Remove from Tab Row....",
                       {"removeItemSelected",
                        [weakRow = std::weak_ptr<TabRow>(sharedFrom(row_))](const MenuItem& entry) {
                          const auto row = weakRow.lock();
                          const auto missing = itemOf(entry);
                          if (row && missing) row->removeItemFromTabRow(missing, true);
                        }});
  remove->setRepresentedObject(item);
  menu.addItem(identify);
  menu.addItem(MenuItem::separatorItem());
  menu.addItem(remove);
}

void ItemMenu::addEntriesOfItemAndProvider(Menu& menu, Item& item) {
  auto ofItem = item.configureMenuItems();
  TabRowProvider::MenuItems ofProvider;
  if (const auto& provider = row_.provider()) {
    ofProvider = provider->menuItemsForItemConfigure(item, ofItem);
  }
  addMenuGroup(menu, ofItem);
  addMenuGroup(menu, ofProvider);
}

void ItemMenu::trackMenu(Menu& menu) {
  if (const auto item = row_.selectedItem()) item->menuTrackingIsContinuing(menu);
}

void ItemMenu::menuWillHighlightItem(Menu& menu, MenuItem* item) {
  if (const auto selected = row_.selectedItem()) selected->menuWillHighlightItem(menu, item);
}

void ItemMenu::menuDidClose(Menu& /*menu*/) { stopWatching(); }

void ItemMenu::stopWatching() {
  if (!keyWatchTimer_) return;
  keyWatchTimer_->invalidate();
  keyWatchTimer_.reset();
}

}  // namespace qb
