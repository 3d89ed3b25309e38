#include "Quillbox/rows/ConfigureTip.h"

#include "Platform/Graphics.h"
#include "QuillboxCommon/views/Button.h"

namespace qb {

namespace {

constexpr double labelWidth = 266;
constexpr double labelY = -1;
constexpr Rect closeButtonFrame = Rect::make(0, 1, 20, 20);
constexpr TimeInterval timeToRead = 20;

}  // namespace

ConfigureTip::ConfigureTip(Graphics& graphics, const Rect& frame, const Block& closePressed,
                           const Block& timeIsUp)
    : view_(std::make_shared<RoundedRectangleView>(frame)),
      label_(
          std::make_shared<LabelView>(graphics, Rect::make(0, labelY, labelWidth, frame.height()))),
      closeButton_(std::make_shared<Button>(closeButtonFrame)),
      timer_(Timer::triggerWithName("Tip View Timer", timeToRead,
                                    [timeIsUp](const auto&) { timeIsUp(); })) {
  view_->setRenderBackground(false);
  view_->setRenderBorder(false);
  label_->setRenderBackground(false);
  label_->setShadowed(true);
  label_->setText("Click this gear for Extra Options");
  const Image arrow = graphics.imageNamed("RightArrow");
  const auto arrowView = std::make_shared<ImageView>(
      Rect{{frame.width() - arrow.size().width, (frame.height() - arrow.size().height) / 2},
           arrow.size()});
  arrowView->setImage(arrow);
  closeButton_->setImage(graphics.imageNamed("DeleteElementButton"));
  closeButton_->setAction(closePressed);
  view_->addSubview(label_);
  view_->addSubview(arrowView);
  view_->addSubview(closeButton_);
}

ConfigureTip::~ConfigureTip() {
  endTimer();
  view_->removeFromSuperview();
}

void ConfigureTip::endTimer() {
  if (timer_) timer_ = timer_->done();
}

}  // namespace qb
