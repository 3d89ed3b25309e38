#pragma once

#include <memory>

#include "Quillbox/rows/DragButton.h"

namespace qb {

class TabRow;

/// The buttons that a row has for itself: delete it, add another below it, move it. They show while
/// the pointer is in the row. Main thread.
class RowButtons {
 public:
  /// The row owns the buttons and outlives them.
  explicit RowButtons(TabRow& row);

  void addToRow();
  void arrange(Size rowSize);
  /// The panel opens or closes: none of them is there.
  void hide();
  /// The panel has opened: they are there, all at alpha 0, the delete button only if wanted.
  void makeReady(bool canBeDeleted);
  /// Fade in or out. A request to show is refused while something is dragged over the panel.
  void showDeleteButton(bool show, bool animate);
  void showAddButton(bool show, bool animate);
  void showDragButton(bool show, bool animate);
  /// All three, for good or until the pointer calls them again.
  void fadeOut(bool animate);
  /// The pointer is at a height of the row. The add button shows when it has stayed in the bottom
  /// band for two polls.
  void noteMouseAt(double y);

  RowButton& deleteButton() { return *delete_.button; }
  RowButton& addButton() { return *add_.button; }
  DragButton& dragButton() { return *dragButton_; }
  bool deleteButtonShown() const { return delete_.shown; }
  bool addButtonShown() const { return add_.shown; }
  bool dragButtonShown() const { return drag_.shown; }

 private:
  struct ShownButton {
    std::shared_ptr<RowButton> button;
    bool shown = false;
  };
  static void show(ShownButton& button, bool show, bool animate);

  TabRow& row_;
  std::shared_ptr<DragButton> dragButton_;
  ShownButton delete_, add_, drag_;
};

}  // namespace qb
