#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Quillbox/providers/FolderContentsProvider.h"
#include "support/HostViewFixture.h"
#include "support/SystemFolders.h"

namespace qb::test {

/// A provider of folders, and a folder with things in it for which there are items: applications.
class FolderContentsFixture : public HostViewFixture {
 protected:
  using Names = std::vector<std::string>;

  FolderContentsFixture() {
    files().makeFolder(folder);
    makeSystemFolders(files());
    contents = FolderContentsProvider::create();
  }

  SimulatedFileSystem& files() { return platform.fileSystem(); }
  static std::string pathOf(const std::string& name) { return folder + std::string("/") + name; }
  void put(const std::string& name, const std::string& bytes = "x") {
    files().putRaw(pathOf(name), bytes);
  }
  void showFolder(const std::string& path = folder) { contents->setFolderPath(path, false); }
  /// Puts the provider into a row of the panel and that up.
  void showInRow() {
    row = host().createTabRowAtIndex(0, contents, false);
    present(ActivationMethodCommandDoubleTap);
  }

  Names entryNames() const {
    Names names;
    for (const auto& entry : contents->filesAndFolders()) names.push_back(entry->name);
    return names;
  }
  static Names namesOf(const std::vector<std::shared_ptr<Item>>& items) {
    Names names;
    for (const auto& item : items) names.push_back(item->name());
    return names;
  }
  Names itemNames() {
    contents->deleteItems();
    contents->createItemsWithSize({42, 42});
    return namesOf(contents->items());
  }
  Names rowNames() const { return namesOf(row->items()); }
  static void press(Item& item) { dynamic_cast<Button&>(*item.view()).performClick(); }
  /// Presses the button of that name.
  void pressButton(const std::string& name) {
    itemNames();
    // Held: the press may do away with it.
    const auto items = contents->items();
    for (const auto& item : items) {
      if (item->name() == name) press(*item);
    }
  }
  const SimulatedDialogs::ShownAlert& lastAlert() {
    return platform.dialogs().shownAlerts().back();
  }

  static constexpr const char* folder = "/home/user/Work";
  std::shared_ptr<FolderContentsProvider> contents;
  std::shared_ptr<TabRow> row;
};

}  // namespace qb::test
