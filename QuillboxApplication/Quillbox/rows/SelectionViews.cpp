#include "Quillbox/rows/SelectionViews.h"

#include "Platform/Graphics.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr Size buttonSize{20, 20};
/// How far the buttons stand out over the halo: upwards, to the left, and into the right side.
constexpr double buttonsAbove = 7, removeButtonLeft = 7, configureButtonFromRight = 12;

std::shared_ptr<RowButton> createButton(const char* imageName) {
  return std::make_shared<RowButton>(quillbox->platform().graphics().imageNamed(imageName),
                                     buttonSize);
}

}  // namespace

SelectionViews::SelectionViews()
    : eventCaptureView_(std::make_shared<EventCaptureView>(halo_.halo().frame())),
      removeButton_(createButton("DeleteItemButton")),
      configureButton_(createButton("ConfigureItemButton")) {
  eventCaptureView_->setAlphaValue(0);
  hide();
}

void SelectionViews::addToRow(View& row, EventCaptureViewDelegate& delegate) {
  eventCaptureView_->setDelegate(&delegate);
  halo_.addToView(row);
  row.addSubview(removeButton_);
  row.addSubview(configureButton_);
  row.addSubview(eventCaptureView_);
}

void SelectionViews::bringToFront(View& row) {
  row.addSubview(eventCaptureView_);
  row.addSubview(removeButton_);
  row.addSubview(configureButton_);
}

void SelectionViews::showAtItem(const Item& item, Size haloSize, Size rowSize) {
  hideButtons();
  halo_.showAtItem(item, haloSize, rowSize);
  const Rect& halo = halo_.halo().frame();
  eventCaptureView_->setFrame(halo);
  // A button takes its own clicks.
  eventCaptureView_->setHidden(item.type() == ItemTypeButton);
  const double y = halo.y() - buttonsAbove;
  removeButton_->setFrame({{halo.x() - removeButtonLeft, y}, buttonSize});
  configureButton_->setFrame({{halo.maxX() - configureButtonFromRight, y}, buttonSize});
}

void SelectionViews::hide() {
  halo_.hide();
  eventCaptureView_->setHidden(true);
  hideButtons();
}

void SelectionViews::showButtons(const Item& item) {
  removeButton_->setHidden(false);
  configureButton_->setHidden(false);
  if (item.isRemovable()) removeButton_->animator().setAlphaValue(1);
  if (item.configurable()) configureButton_->animator().setAlphaValue(1);
}

void SelectionViews::hideButtons() {
  for (const auto& button : {removeButton_, configureButton_}) {
    button->setHidden(true);
    button->setAlphaValue(0);
  }
}

void SelectionViews::makeButtonsReady() {
  removeButton_->setHidden(false);
  configureButton_->setHidden(false);
}

bool SelectionViews::buttonsAreHitBy(Point point) const {
  return (!removeButton_->isHidden() && contains(removeButton_->frame(), point)) ||
         (!configureButton_->isHidden() && contains(configureButton_->frame(), point));
}

}  // namespace qb
