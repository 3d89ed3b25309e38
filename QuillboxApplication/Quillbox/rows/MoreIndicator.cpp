#include "Quillbox/rows/MoreIndicator.h"

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr double leftDistance = 2;
constexpr double rightDistance = 14;
constexpr double hitMargin = 5;
constexpr TimeInterval scrollInterval = 0.1;

}  // namespace

void MoreIndicator::show(bool visible) {
  visible_ = visible;
  if (visible && !view_) {
    const Image image = quillbox->platform().graphics().imageNamed(
        side_ == Side::Left ? "LeftIndicator" : "RightIndicator");
    view_ = std::make_shared<ImageView>(Rect{{0, 0}, image.size()});
    view_->setImage(image);
    view_->setAlphaValue(0);
    row_.addSubview(view_);
    arrange(row_.selfBounds().size);
  }
  if (view_) view_->animator().setAlphaValue(visible ? 1 : 0);
  if (!visible) exitHoverState();
}

void MoreIndicator::arrange(Size rowSize) {
  if (!view_) return;
  view_->setFrameOrigin({side_ == Side::Left ? leftDistance : rowSize.width - rightDistance,
                         rowSize.height / 2 - view_->frame().height() / 2});
}

bool MoreIndicator::isHitBy(Point point) const {
  return visible_ && contains(inset(view_->frame(), -hitMargin, -hitMargin), point);
}

void MoreIndicator::enterHoverState() {
  if (timer_) return;
  timer_ = RunLoop::main().scheduleTimer(scrollInterval, true, [this](RunLoopTimer&) { invoke(); });
  row_.setSelectedItem(nullptr, SelectionMethodPointer);
  invoke();
}

void MoreIndicator::exitHoverState() {
  if (!timer_) return;
  timer_->invalidate();
  timer_.reset();
}

void MoreIndicator::invoke() { row_.scrollItemsBy(side_ == Side::Left ? 1 : -1); }

}  // namespace qb
