#include "Quillbox/rows/SelectionHalo.h"

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

SelectionHalo::SelectionHalo()
    : label_(std::make_shared<LabelView>(quillbox->platform().graphics())),
      halo_(std::make_shared<RoundedRectangleView>(
          Rect::make(0, 0, initialHaloSize, initialHaloSize))) {
  label_->setCornerRadius(10);
  label_->setBackgroundColor(shade);
  label_->setShadowed(true);
  halo_->setBackgroundColor(shade);
  halo_->setRenderBorder(true);
  halo_->setBorderColor(Color::white());
  setLookForHaloHeight(initialHaloSize + 1);
  hide();
}

void SelectionHalo::addToView(View& view) {
  view.addSubview(label_);
  view.addSubview(halo_);
}

void SelectionHalo::showAtItem(const Item& item, Size haloSize, Size rowSize) {
  const Point corner = item.view()->frame().origin;
  halo_->setFrame({{corner.x - haloMargin, corner.y - haloMargin}, haloSize});
  halo_->setHidden(false);
  placeLabel(item, rowSize);
}

void SelectionHalo::placeLabel(const Item& item, Size rowSize) {
  label_->setText(item.name());
  const double width = label_->textWidth() + labelPadding;
  double x = item.view()->frame().center().x - width / 2;
  if (x < labelRowMargin) x = labelRowMargin;
  const double excess = x + width - (rowSize.width - labelRowMargin);
  if (excess > 0) x -= excess;
  label_->setFrame(Rect::make(x, rowSize.height - labelBottomDistance, width, labelHeight));
  label_->setHidden(item.name().empty());
}

void SelectionHalo::hide() {
  halo_->setHidden(true);
  label_->setHidden(true);
}

void SelectionHalo::setLookForHaloHeight(double height) {
  struct Look {
    double borderWidth, cornerRadius;
  };
  const Look look = height > 50 ? Look{3, 10} : height > 40 ? Look{2.67, 9} : Look{2.34, 7};
  halo_->setBorderWidth(look.borderWidth);
  halo_->setCornerRadius(look.cornerRadius);
}

}  // namespace qb
