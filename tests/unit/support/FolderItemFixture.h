#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Quillbox/Item/FolderItem.h"
#include "Quillbox/rows/MenuGroup.h"
#include "support/QuillboxFixture.h"

namespace qb::test {

/// Folders with a few files, as items whose menus the user opens.
class FolderItemFixture : public QuillboxFixture {
 protected:
  using Lines = std::vector<std::string>;

  SimulatedFileSystem& files() { return platform.fileSystem(); }
  static std::shared_ptr<FolderItem> make(const std::string& path) {
    return FolderItem::create(Rect::make(0, 0, 42, 42), path);
  }
  /// Puts "01", "02" and so on into a folder, and answers their paths.
  Lines fill(const std::string& path, int count) {
    Lines paths;
    for (int number = 1; number <= count; ++number) {
      paths.push_back(path + (number < 10 ? "/0" : "/") + std::to_string(number));
      files().putRaw(paths.back(), "contents");
    }
    return paths;
  }

  static std::shared_ptr<Menu> menuOf(const Item::MenuItems& entries) {
    auto menu = Menu::create("QuillboxConfigurator");
    menu->setAutoenablesItems(false);
    addMenuGroup(*menu, entries);
    return menu;
  }
  /// The entries that folders have beyond those of every item that stands for a path.
  static Item::MenuItems ownEntries(FolderItem& item) {
    Item::MenuItems entries = item.configureMenuItems();
    const auto others = item.FileSystemItem::configureMenuItems().size();
    entries.erase(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(others));
    return entries;
  }
  /// As the simulated platform shows menus.
  static Lines linesOf(const Menu& menu) { return SimulatedMenuPresenter::shownItems(menu); }
  static Lines ownLines(FolderItem& item) { return linesOf(*menuOf(ownEntries(item))); }
  static std::shared_ptr<MenuItem> entryOf(FolderItem& item, const std::string& title) {
    for (const auto& entry : ownEntries(item)) {
      if (entry->title() == title) return entry;
    }
    throw std::out_of_range("no entry " + title);
  }
  /// Chooses the entry of that title, as the menu does when it has closed.
  static void choose(FolderItem& item, const std::string& title) {
    const auto entry = entryOf(item, title);
    const auto menu = menuOf({entry});
    entry->performAction();
  }

  /// The item's menu opens as its row does it.
  void openMenu(const std::shared_ptr<FolderItem>& item, SimulatedMenuPresenter::Script script) {
    const auto menu = menuOf(item->configureMenuItems());
    const auto timer = RunLoop::main().scheduleTimer(
        0.1, true, [&](RunLoopTimer&) { item->menuTrackingIsContinuing(*menu); },
        RunLoopModes::common());
    item->menuTrackingWillBegin(*menu);
    platform.menuPresenter().whenMenuOpens(std::move(script));
    quillbox->popUpMenu(menu, nullptr, {100, 100}, nullptr, nullptr);
    timer->invalidate();
    item->menuTrackingDidFinish(*menu);
  }

  /// The text of the notification that is up now, "none" without one.
  std::string notification() {
    const auto windows = platform.windowServer().visibleWindows();
    if (windows.empty()) return "none";
    return platform.windowServer().paint(*windows.front()).texts().back();
  }
  const Lines& openedFiles() { return platform.applicationControl().openedFiles(); }

  const std::string folder = "/home/user/Work";
  const std::string downloads = "/home/user/Downloads";
};

}  // namespace qb::test
