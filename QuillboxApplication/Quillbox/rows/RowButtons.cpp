#include "Quillbox/rows/RowButtons.h"

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr Size cornerButtonSize{24, 24};
constexpr Size addButtonSize{28, 28};
constexpr double cornerButtonY = -1;
constexpr double addButtonBottomDistance = 3;
constexpr TimeInterval fadeDuration = static_cast<double>(0.1F);

/// How many polls in a row have found the pointer in a bottom band, of whichever row.
int pollsInBottomBand = 0;

}  // namespace

RowButtons::RowButtons(TabRow& row) : row_(row) {
  Graphics& graphics = quillbox->platform().graphics();
  delete_.button =
      std::make_shared<RowButton>(graphics.imageNamed("DeleteTabRowButton"), cornerButtonSize);
  delete_.button->setAction([this] { row_.deleteTabButtonPressed(); });
  add_.button = std::make_shared<RowButton>(graphics.imageNamed("AddTabRowButton"), addButtonSize);
  add_.button->setAction([this] { row_.addButtonPressed(); });
  dragButton_ =
      std::make_shared<DragButton>(graphics.imageNamed("DragTabRowButton"), cornerButtonSize, row_);
  drag_.button = dragButton_;
}

void RowButtons::addToRow() {
  for (const ShownButton* each : {&delete_, &add_, &drag_}) row_.addSubview(each->button);
}

void RowButtons::arrange(Size rowSize) {
  delete_.button->setFrame({{0, cornerButtonY}, cornerButtonSize});
  add_.button->setFrame({{rowSize.width / 2 - addButtonSize.width / 2,
                          rowSize.height - addButtonBottomDistance - addButtonSize.height},
                         addButtonSize});
  drag_.button->setFrame(
      {{rowSize.width - cornerButtonSize.width + 1, cornerButtonY}, cornerButtonSize});
}

void RowButtons::hide() {
  for (const ShownButton* each : {&delete_, &add_, &drag_}) each->button->setHidden(true);
}

void RowButtons::makeReady(bool canBeDeleted) {
  for (ShownButton* each : {&delete_, &add_, &drag_}) {
    each->button->setAlphaValue(0);
    each->button->setHidden(false);
    // The panel may have closed with the pointer in the row.
    each->shown = false;
  }
  delete_.button->setHidden(!canBeDeleted);
}

void RowButtons::show(ShownButton& button, bool show, bool animate) {
  if (show == button.shown) return;
  if (show && quillbox->dragOperationIsInProgress()) return;
  button.shown = show;
  button.button->setHidden(false);
  const double alpha = show ? 1 : 0;
  if (!animate) {
    button.button->setAlphaValue(alpha);
    return;
  }
  const AnimationGroup group(fadeDuration);
  button.button->animator().setAlphaValue(alpha);
}

void RowButtons::showDeleteButton(bool wanted, bool animate) { show(delete_, wanted, animate); }

void RowButtons::showAddButton(bool wanted, bool animate) { show(add_, wanted, animate); }

void RowButtons::showDragButton(bool wanted, bool animate) { show(drag_, wanted, animate); }

void RowButtons::fadeOut(bool animate) {
  showDeleteButton(false, animate);
  showDragButton(false, animate);
  showAddButton(false, animate);
}

void RowButtons::noteMouseAt(double y) {
  pollsInBottomBand = y >= add_.button->frame().y() ? pollsInBottomBand + 1 : 0;
  showAddButton(pollsInBottomBand > 1, true);
}

}  // namespace qb
