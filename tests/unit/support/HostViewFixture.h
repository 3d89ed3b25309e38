#pragma once

#include <initializer_list>
#include <memory>
#include <vector>

#include "Quillbox/activation/Environment.h"
#include "Quillbox/rows/TabRow.h"
#include "support/QuillboxFixture.h"
#include "support/TestItems.h"

namespace qb::test {

/// The panel's own host view with rows of test items put above its first row, which has no items
/// as long as the desktop has no applications.
class HostViewFixture : public QuillboxFixture {
 protected:
  /// Top row first, with so many items each.
  void makeRows(std::initializer_list<int> counts) {
    for (const int count : counts) {
      providers.push_back(TestProvider::withItems(count));
      rows.push_back(host().createTabRowAtIndex(rows.size(), providers.back(), false));
    }
  }
  void makeDefaults(std::size_t commandTabRow, std::size_t optionTabRow) {
    for (const auto& row : host().tabRows()) {
      row->setIsDefaultCommandTabRow(row == rows[commandTabRow]);
      row->setIsDefaultOptionTabRow(row == rows[optionTabRow]);
    }
  }
  void present(std::int32_t method) {
    Window& window = *appDelegate->window();
    host().windowWillBeDisplayed(window, environmentWithFrontProcess({}), method);
    host().windowWasDisplayed(window);
  }
  void dismiss() {
    Window& window = *appDelegate->window();
    host().windowWillBeDismissed(window);
    host().windowWasDismissed(window);
  }
  std::string selectedName(std::size_t row) const {
    const auto& item = rows[row]->selectedItem();
    return item ? item->name() : "none";
  }
  /// A point of a row's coordinates on the screen.
  Point onScreen(const TabRow& row, Point point) const {
    const Point inWindow = row.convertPointToView(point, nullptr);
    const Rect frame = appDelegate->window()->frame();
    return {inWindow.x + frame.x(), inWindow.y + frame.y()};
  }
  /// The middle of an item on the screen.
  Point onItem(std::size_t row, std::size_t item) const {
    return onScreen(*rows[row], rows[row]->items()[item]->view()->frame().center());
  }

  std::vector<std::shared_ptr<TestProvider>> providers;
  std::vector<std::shared_ptr<TabRow>> rows;
};

}  // namespace qb::test
