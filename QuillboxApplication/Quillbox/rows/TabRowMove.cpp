#include "Quillbox/rows/TabRowMove.h"

#include <algorithm>
#include <cstdint>

#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Animation.h"

namespace qb {

namespace {

constexpr TimeInterval slideDuration = 0.2;

}  // namespace

void TabRowMove::begin(TabRow& tabRow) {
  const auto& rows = host_.tabRows();
  if (tabRow_ || rows.size() < 2) return;
  tabRow_ = sharedFrom(tabRow);
  for (const auto& row : rows) {
    if (row != tabRow_) host_.addSubview(row, View::Ordering::Below, tabRow_.get());
  }
  // Where the rows belong, not where an arrangement under way has them at this moment.
  const Rect first = host_.frameForTabRowAtIndex(0, host_.haloSize());
  const Rect second = host_.frameForTabRowAtIndex(1, host_.haloSize());
  verticalLowerLimit_ = 0;
  verticalUpperLimit_ = host_.bounds().height() - first.height();
  verticalSpacingBetweenTabRows_ = second.y() - first.y();
}

void TabRowMove::moveBy(double deltaY) {
  if (!tabRow_) return;
  const double from = tabRow_->frame().center().y;
  Point origin = tabRow_->frame().origin;
  origin.y = std::max(verticalLowerLimit_, std::min(verticalUpperLimit_, origin.y + deltaY));
  tabRow_->setFrameOrigin(origin);
  const double to = tabRow_->frame().center().y;

  const AnimationGroup group(slideDuration);
  const std::int64_t step = to < from ? -1 : 1;
  const auto count = static_cast<std::int64_t>(host_.tabRows().size());
  const auto start = static_cast<std::int64_t>(tabRow_->index());
  std::int64_t place = start;
  // Outward from the moved row: of several rows passed at once the farthest one's place counts.
  for (std::int64_t index = start + step; index >= 0 && index < count; index += step) {
    const auto position = static_cast<std::size_t>(index);
    // Rows that are still sliding count as being where they will come to rest.
    const Rect resting = host_.frameForTabRowAtIndex(position, host_.haloSize());
    const double center = resting.center().y;
    const bool passed = step > 0 ? center > from && to >= center : center < from && center >= to;
    if (!passed) continue;
    const double shift = -static_cast<double>(step) * verticalSpacingBetweenTabRows_;
    host_.tabRows()[position]->animator().setFrameOrigin({resting.x(), resting.y() + shift});
    place = index;
  }
  if (place != start) host_.placeTabRowAtIndex(tabRow_, static_cast<std::size_t>(place));
}

void TabRowMove::end() {
  if (!tabRow_) return;
  tabRow_.reset();
  host_.arrangeTabRowsWithAnimate(true);
  host_.saveState();
}

}  // namespace qb
