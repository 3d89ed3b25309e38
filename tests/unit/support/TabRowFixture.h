#pragma once

#include <memory>

#include "Quillbox/rows/TabRow.h"
#include "support/QuillboxFixture.h"
#include "support/TestItems.h"

namespace qb::test {

/// A row on its own: no host view sizes it or sees its news. 600 by 80 points with cells of 50, so
/// that items stand at x 16, 66, 116 ... and eleven of them are to be seen.
class TabRowFixture : public QuillboxFixture {
 protected:
  void makeRow(std::shared_ptr<TestProvider> rowProvider) {
    provider = std::move(rowProvider);
    row = TabRow::create(nullptr, Rect::make(0, 0, 100, 100), provider);
    row->setFrame(Rect::make(0, 0, 600, 80), {50, 50}, false);
  }
  void makeRow(int numberOfItems) { makeRow(TestProvider::withItems(numberOfItems)); }
  void openRow() {
    row->numberOfItems();
    row->hostViewWillBeDisplayed();
  }
  void makeOpenRow(int numberOfItems) {
    makeRow(numberOfItems);
    openRow();
  }
  void closeRow() {
    row->hostViewWillBeDismissed();
    row->hostViewWasDismissed();
  }
  std::string selectedName() const {
    return row->selectedItem() ? row->selectedItem()->name() : "none";
  }
  void select(int index) {
    row->setSelectedItem(provider->items().at(static_cast<std::size_t>(index)),
                         SelectionMethodProgram);
  }
  void perform(std::int32_t code) { row->handleAction(QuillboxAction::actionWithCode(code)); }
  void moveTo(Point point) {
    row->mouseMovedWithinViewFromLocation(lastPoint, point);
    lastPoint = point;
  }

  std::shared_ptr<TestProvider> provider;
  std::shared_ptr<TabRow> row;
  Point lastPoint;
};

}  // namespace qb::test
