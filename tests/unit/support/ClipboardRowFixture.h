#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Quillbox/providers/ClipboardHistoryProvider.h"
#include "Quillbox/rows/TabRow.h"
#include "support/ClipboardFixture.h"
#include "support/MenuTitles.h"

namespace qb::test {

/// A row of the clipboard history, over an editor that is in front.
class ClipboardRowFixture : public ClipboardFixture {
 protected:
  ClipboardRowFixture() {
    platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
    provider = ClipboardHistoryProvider::create();
    row = host().createTabRowAtIndex(0, provider, false);
  }

  /// Has the row make its items for the history as it is.
  void showHistory() {
    provider->updateItems();
    provider->deleteItems();
    provider->createItemsWithSize({42, 42});
    provider->assignTabRowToAllItems();
  }
  std::shared_ptr<ClipItem> clip(std::size_t index) {
    return std::dynamic_pointer_cast<ClipItem>(provider->items().at(index));
  }
  /// What the items hold, in their order.
  std::vector<std::string> shown() {
    std::vector<std::string> contents;
    for (const auto& item : provider->items()) {
      const auto cubby = dynamic_cast<ClipItem&>(*item).cubbyOfContents();
      contents.push_back(cubby ? std::string(cubby->data().begin(), cubby->data().end()) : "none");
    }
    return contents;
  }
  static void choose(const std::vector<std::shared_ptr<MenuItem>>& menu, const std::string& title) {
    for (const auto& entry : menu) {
      if (entry->title() == title) return entry->performAction();
    }
    FAIL() << title << " is not in the menu";
  }
  void chooseForRow(const std::string& title) { choose(provider->menuItemsForConfigure(), title); }
  std::string copiedText() {
    const auto data = clipboard().dataForType("public.utf8-plain-text");
    return data ? std::string(data->begin(), data->end()) : "none";
  }
  /// What the newest window says, as the white text of its two.
  std::string notice() {
    const auto windows = platform.windowServer().visibleWindows();
    if (windows.empty()) return "none";
    const auto texts = platform.windowServer().paint(*windows.back()).texts();
    return texts.empty() ? "none" : texts.back();
  }
  const SimulatedDialogs::ShownAlert& lastAlert() {
    return platform.dialogs().shownAlerts().back();
  }

  std::shared_ptr<ClipboardHistoryProvider> provider;
  std::shared_ptr<TabRow> row;
};

}  // namespace qb::test
