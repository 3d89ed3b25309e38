// How the rows are fitted to the screen.

#include <algorithm>
#include <cmath>

#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/HostView.h"
#include "Quillbox/rows/TabRow.h"

namespace qb {

namespace {

/// Between the halo and the upper or lower edge of its row.
constexpr std::int64_t haloMargin = 26;
/// Between two rows.
constexpr std::int64_t rowGap = 20;
/// Kept free of rows at the edges of the view, both sides together.
constexpr double edgeClearance = 40;
/// What a row is wider than its cells.
constexpr double rowMargin = 36;
/// What a row would like to be taller than the largest halo.
constexpr std::int64_t naturalHeightExcess = 50;

}  // namespace

void HostView::setMaximumFrame(const Rect& frame) { setFrame(frame); }

void HostView::setFrame(const Rect& frame) {
  View::setFrame(frame);
  arrangeTabRowsWithAnimate(false);
}

std::int64_t HostView::heightOfAllTabRowsWithTabRowHeight(std::int64_t height) const {
  const auto count = static_cast<std::int64_t>(tabRows_.size());
  return height * count + rowGap * (count - 1);
}

std::int64_t HostView::naturalFrameHeightOfTabRows() const {
  const std::int64_t natural =
      quillbox->settings().upperTabRowItemHaloHeight() + naturalHeightExcess;
  const auto excess = static_cast<std::int64_t>(
      static_cast<double>(heightOfAllTabRowsWithTabRowHeight(natural)) - bounds().height());
  if (excess <= 0 || tabRows_.empty()) return natural;
  return static_cast<std::int64_t>(static_cast<double>(natural) -
                                   static_cast<double>(excess) /
                                       static_cast<double>(tabRows_.size()));
}

std::int64_t HostView::naturalHaloHeight() const {
  return naturalFrameHeightOfTabRows() - 2 * haloMargin;
}

bool HostView::haloHeightFits(std::int64_t haloHeight) const {
  const auto width = static_cast<std::int64_t>(bounds().width() - edgeClearance);
  const auto height = static_cast<std::int64_t>(bounds().height() - edgeClearance);
  const auto count = static_cast<std::int64_t>(tabRows_.size());
  return haloHeight * largestNumberOfTabRowItems_ < width &&
         (haloHeight + 2 * haloMargin + rowGap) * count < height;
}

void HostView::arrangeTabRowsWithAnimate(bool animate) {
  if (tabRows_.empty()) return;
  const std::int64_t smallest = quillbox->settings().lowerTabRowItemHaloHeight();
  std::int64_t haloHeight = naturalHaloHeight();
  while (!haloHeightFits(haloHeight)) {
    if (haloHeight <= smallest) {
      haloHeight = smallest;
      break;
    }
    --haloHeight;
  }
  const auto edge = static_cast<double>(haloHeight);
  haloSize_ = {edge, edge};
  tabRowHeight_ = haloHeight + 2 * haloMargin;
  for (std::size_t index = 0; index < tabRows_.size(); ++index) {
    tabRows_[index]->setFrame(frameForTabRowAtIndex(index, haloSize_), haloSize_, animate);
  }
}

Rect HostView::frameForTabRowAtIndex(std::size_t index, Size haloSize) const {
  std::int64_t cells = largestNumberOfTabRowItems_;
  const auto widthOf = [&haloSize](std::int64_t count) {
    return static_cast<std::int64_t>(static_cast<double>(count) * haloSize.width + rowMargin);
  };
  while (cells > 0 && static_cast<double>(widthOf(cells)) > frame().width()) --cells;
  const std::int64_t width = widthOf(cells);
  const std::int64_t halfWidth = width / 2;
  const auto stackHeight = static_cast<double>(heightOfAllTabRowsWithTabRowHeight(tabRowHeight_));
  const auto offset =
      static_cast<double>((tabRowHeight_ + rowGap) * static_cast<std::int64_t>(index));
  return integral(Rect::make(bounds().width() / 2 - static_cast<double>(halfWidth),
                             bounds().height() / 2 - stackHeight / 2 + offset,
                             static_cast<double>(width), static_cast<double>(tabRowHeight_)));
}

std::int64_t HostView::calculateMaximumTabRowsSupportedByMainScreen() {
  arrangeTabRowsWithAnimate(false);
  const auto limit = static_cast<std::int64_t>(bounds().height() - edgeClearance);
  const std::int64_t rowHeight = quillbox->settings().lowerTabRowItemHaloHeight() + 2 * haloMargin;
  std::int64_t count = 2;
  do {
    ++count;
  } while (rowHeight * count + rowGap * (count - 1) <= limit);
  return count - 1;
}

void HostView::arrangeTabRowsAccordingToLargestNumberOfTabRowItemsWithAnimate(bool animate) {
  std::int64_t largest = 0;
  for (const auto& row : tabRows_) largest = std::max(largest, row->numberOfItems());
  if (largest == largestNumberOfTabRowItems_) return;
  largestNumberOfTabRowItems_ = largest;
  arrangeTabRowsWithAnimate(animate);
}

}  // namespace qb
