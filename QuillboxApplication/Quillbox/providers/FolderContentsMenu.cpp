// The menu by which the user sorts a row of a folder's contents.

#include <algorithm>
#include <iterator>

#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/providers/FolderContentsProvider.h"

namespace qb {

namespace {

struct Method {
  FolderSort method;
  const char* title;
  const char* actionName;
  /// With the sort order 1, and with -1.
  const char* titleOfDescending;
  const char* titleOfAscending;
};
constexpr Method methods[] = {
    {FolderSortByName, "Name", "sortByName", "Descending", "Ascending"},
    {FolderSortBySize, "Size", "sortBySize", "Largest First", "Smallest First"},
    {FolderSortByCreationDate, "Creation Date", "sortByCreationDate", "Youngest First",
     "Oldest First"},
    {FolderSortByModificationDate, "Modification Date", "sortByModificationDate", "Youngest First",
     "Oldest First"},
};

struct Segregation {
  FolderSegregation segregation;
  const char* title;
  const char* actionName;
};
constexpr Segregation segregations[] = {
    {FolderSegregationCombined, "File & Folders Combined", "combinedSelected"},
    {FolderSegregationFilesFirst, "Files First", "filesFirstSelected"},
    {FolderSegregationFoldersFirst, "Folders First", "foldersFirstSelected"},
};

/// That of the names for one that nobody knows.
const Method& methodOf(const FolderOrder& order) {
  const auto* const found =
      std::find_if(std::begin(methods), std::end(methods),
                   [&order](const Method& each) { return each.method == order.sortMethod; });
  return found == std::end(methods) ? methods[0] : *found;
}

}  // namespace

TabRowProvider::MenuItems FolderContentsProvider::menuItemsForConfigure() {
  auto items = TabRowProvider::menuItemsForConfigure();
  items.push_back(orderEntry<std::int32_t>("Sort By", "sortByName", &FolderOrder::sortMethod,
                                           FolderSortByName));
  items.back()->setTag(MenuItemTagGrayTitle);
  items.back()->setState(false);
  for (const Method& each : methods) {
    items.push_back(orderEntry<std::int32_t>(each.title, each.actionName, &FolderOrder::sortMethod,
                                             each.method));
  }
  items.push_back(MenuItem::separatorItem());
  const Method& present = methodOf(order_);
  items.push_back(orderEntry<std::int64_t>(present.titleOfDescending, "descendingSelected",
                                           &FolderOrder::sortOrder, 1));
  items.push_back(orderEntry<std::int64_t>(present.titleOfAscending, "ascendingSelected",
                                           &FolderOrder::sortOrder, -1));
  items.push_back(MenuItem::separatorItem());
  for (const Segregation& each : segregations) {
    items.push_back(orderEntry<std::int32_t>(each.title, each.actionName,
                                             &FolderOrder::sortSegregation, each.segregation));
  }
  if (sourceFolderIsDownloads()) {
    items.push_back(MenuItem::separatorItem());
    items.push_back(menuItem("Move All Items to Trash", "moveAllItemsToTrash",
                             [this](MenuItem&) { moveAllItemsToTrash(); }));
  }
  return items;
}

template <class Field>
std::shared_ptr<MenuItem> FolderContentsProvider::orderEntry(const char* title,
                                                             const char* actionName,
                                                             Field FolderOrder::*field,
                                                             Field value) {
  auto entry = menuItem(title, actionName, [this, field, value](MenuItem&) {
    order_.*field = value;
    sortChanged();
  });
  entry->setState(order_.*field == value);
  return entry;
}

void FolderContentsProvider::sortChanged() {
  createFilesAndFolders();
  itemsHaveChanged();
}

}  // namespace qb
