#include "Quillbox/rows/SelectionViews.h"

#include "Platform/Graphics.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr double haloMargin = 4;
constexpr double initialHaloSize = 50;
constexpr double labelPadding = 20;
constexpr double labelHeight = 19;
constexpr double labelBottomDistance = 22;
constexpr double labelRowMargin = 15;
constexpr Color shade = Color::colorWithCalibratedWhite(0, 0.5);

}  // namespace

SelectionViews::SelectionViews()
    : label_(std::make_shared<LabelView>(quillbox->platform().graphics())),
      halo_(std::make_shared<RoundedRectangleView>(
          Rect::make(0, 0, initialHaloSize, initialHaloSize))),
      eventCaptureView_(std::make_shared<EventCaptureView>(halo_->frame())) {
  label_->setCornerRadius(10);
  label_->setBackgroundColor(shade);
  label_->setShadowed(true);
  halo_->setBackgroundColor(shade);
  halo_->setRenderBorder(true);
  halo_->setBorderColor(Color::white());
  setLookForHaloHeight(initialHaloSize + 1);
  eventCaptureView_->setAlphaValue(0);
  hide();
}

void SelectionViews::addToRow(View& row, EventCaptureViewDelegate& delegate) {
  eventCaptureView_->setDelegate(&delegate);
  row.addSubview(label_);
  row.addSubview(halo_);
  row.addSubview(eventCaptureView_);
}

void SelectionViews::bringToFront(View& row) { row.addSubview(eventCaptureView_); }

void SelectionViews::showAtItem(const Item& item, Size haloSize, Size rowSize) {
  const Point corner = item.view()->frame().origin;
  halo_->setFrame({{corner.x - haloMargin, corner.y - haloMargin}, haloSize});
  halo_->setHidden(false);
  placeLabel(item, rowSize);
  eventCaptureView_->setFrame(halo_->frame());
  // A button takes its own clicks.
  eventCaptureView_->setHidden(item.type() == ItemTypeButton);
}

void SelectionViews::placeLabel(const Item& item, Size rowSize) {
  label_->setText(item.name());
  const double width = label_->textWidth() + labelPadding;
  double x = item.view()->frame().center().x - width / 2;
  if (x < labelRowMargin) x = labelRowMargin;
  const double excess = x + width - (rowSize.width - labelRowMargin);
  if (excess > 0) x -= excess;
  label_->setFrame(Rect::make(x, rowSize.height - labelBottomDistance, width, labelHeight));
  label_->setHidden(item.name().empty());
}

void SelectionViews::hide() {
  halo_->setHidden(true);
  label_->setHidden(true);
  eventCaptureView_->setHidden(true);
}

void SelectionViews::setLookForHaloHeight(double height) {
  struct Look {
    double borderWidth, cornerRadius;
  };
  const Look look = height > 50 ? Look{3, 10} : height > 40 ? Look{2.67, 9} : Look{2.34, 7};
  halo_->setBorderWidth(look.borderWidth);
  halo_->setCornerRadius(look.cornerRadius);
}

}  // namespace qb
