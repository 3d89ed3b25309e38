#include "Quillbox/Item/DecorationMenu.h"

#include <algorithm>
#include <utility>

#include "Platform/Graphics.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/MenuHelpers.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DecorationManager.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/Canvas.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"

namespace qb {

namespace {

/// Tell the grids apart.
constexpr std::int64_t badgeGridTag = 0, tintGridTag = 1;
constexpr std::int64_t columnCount = 6;
constexpr std::int64_t gridMargin = 15;
constexpr double gridWidth = 280, badgeGridHeight = 390, tintGridHeight = 50;
constexpr Size headingSize{282, 16};
constexpr double headingFontSize = 12;
constexpr Rect badgeCell = Rect::make(0, 0, 30, 30), tintCell = Rect::make(0, 0, 28, 28);
constexpr Size highlightSize{40, 40};
/// From a cell's corner to that of its highlight, both ways.
constexpr double badgeHighlightOffset = -5, tintHighlightOffset = -6;
/// Tints are offered more strongly than they are applied.
constexpr double offeredTintAlpha = 0.8;
constexpr double tintCornerRadius = 5, tintBorderWidth = 3;
/// The highlight goes at once, comes back after one of these, and goes after another.
constexpr TimeInterval flashInterval = 0.1F;

/// A translucent tile that looks the same on the ground of every menu: as on white.
class TintTile : public RoundedRectangleView {
 public:
  using RoundedRectangleView::RoundedRectangleView;
  void draw(Canvas& canvas) override {
    canvas.fill(Path::roundedRect(bounds(), cornerRadius()), Color::white());
    RoundedRectangleView::draw(canvas);
  }
};

std::shared_ptr<GridViewItem> cellOf(std::shared_ptr<View> view, std::string name) {
  return std::make_shared<GridViewItem>(GridViewItem{std::move(view), std::move(name)});
}

std::shared_ptr<GridViewItem> pictureCell(const std::string& badge) {
  auto view = std::make_shared<ImageView>(badgeCell);
  view->setImage(quillbox->decorationManager().badgeImageNamed(badge));
  return cellOf(view, badge);
}

std::shared_ptr<GridViewItem> colorCell(const std::string& name, const Color& tint) {
  auto view = std::make_shared<TintTile>(tintCell);
  view->setCornerRadius(tintCornerRadius);
  view->setBackgroundColor(tint.withAlpha(offeredTintAlpha));
  view->setRenderBorder(false);
  view->setBorderWidth(tintBorderWidth);
  view->setBorderColor(Color::white());
  return cellOf(view, name);
}

void showHeading(const std::shared_ptr<MenuItem>& entry, const std::string& text) {
  if (!entry) return;
  auto label =
      std::make_shared<LabelView>(quillbox->platform().graphics(), Rect{{0, 0}, headingSize});
  label->setRenderBackground(false);
  label->setFont(Font::systemFontOfSize(headingFontSize));
  label->setTextColor(Color::gray());
  label->setText(text);
  entry->setView(label);
}

}  // namespace

std::weak_ptr<DecorationMenu> DecorationMenu::current_;

std::shared_ptr<Menu> DecorationMenu::create(const std::shared_ptr<Item>& item) {
  const std::shared_ptr<DecorationMenu> made(new DecorationMenu(item));
  current_ = made;
  return made->build();
}

std::shared_ptr<Menu> DecorationMenu::build() {
  const std::vector<std::string> badges = quillbox->decorationManager().badgeNames();
  // Intended: what does not fill a row is left out, and both grids have that many rows.
  const auto rowCount = static_cast<std::int64_t>(badges.size()) / columnCount;
  auto menu = Menu::create("Decorate");
  menu->setAutoenablesItems(false);
  const auto badgeHeading = entry("Badge"), tintHeading = entry("Tints");
  badgeHeading->setEnabled(false);
  tintHeading->setEnabled(false);
  menu->addItem(badgeHeading);
  menu->addItem(entry("Decorate", badgeGrid(badges, rowCount)));
  menu->addItem(MenuItem::separatorItem());
  menu->addItem(tintHeading);
  menu->addItem(entry("Decorate", tintGrid(rowCount)));
  menu_ = menu;
  badgeHeading_ = badgeHeading;
  tintHeading_ = tintHeading;
  return menu;
}

std::shared_ptr<MenuItem> DecorationMenu::entry(const std::string& title,
                                                const std::shared_ptr<GridView>& grid) const {
  // Choosing it by a key does nothing; the grid sees to clicks.
  auto entry = MenuItem::create(title, {"decorate", [](MenuItem&) {}, item_});
  if (grid) {
    entry->setView(grid);
    grid->setOwningMenuItem(entry);
  }
  return entry;
}

std::shared_ptr<GridView> DecorationMenu::badgeGrid(const std::vector<std::string>& badges,
                                                    std::int64_t rowCount) {
  std::vector<std::shared_ptr<GridViewItem>> cells;
  for (const std::string& badge : badges) cells.push_back(pictureCell(badge));
  return createGrid(badgeGridHeight, badgeGridTag, rowCount, badgeHighlightOffset,
                    std::move(cells));
}

std::shared_ptr<GridView> DecorationMenu::tintGrid(std::int64_t rowCount) {
  std::vector<std::shared_ptr<GridViewItem>> cells;
  for (const auto& [name, color] : DecorationManager::tints()) {
    cells.push_back(colorCell(name, color));
  }
  cells.push_back(pictureCell(DecorationManager::noDecorationName));
  return createGrid(tintGridHeight, tintGridTag, rowCount, tintHighlightOffset, std::move(cells));
}

std::shared_ptr<GridView> DecorationMenu::createGrid(
    double height, std::int64_t tag, std::int64_t rowCount, double highlightOffset,
    std::vector<std::shared_ptr<GridViewItem>> cells) {
  auto grid = std::make_shared<GridView>(Rect::make(0, 0, gridWidth, height));
  grid->setGeometry({.rowCount = rowCount,
                     .columnCount = columnCount,
                     .leftMargin = gridMargin,
                     .topMargin = gridMargin,
                     .highlightViewOffset = {highlightOffset, highlightOffset}});
  grid->setAlernateTag(tag);
  grid->setDelegate(shared_from_this());
  grid->setUserInfo(shared_from_this());
  grid->setContentItems(std::move(cells), MenuHelpers::createHighlightFrame(highlightSize));
  return grid;
}

void DecorationMenu::menuTrackingWillBegin() {
  const auto menu = current_.lock();
  if (!menu) return;
  showHeading(menu->badgeHeading_.lock(), "Badge");
  showHeading(menu->tintHeading_.lock(), "Tint");
}

void DecorationMenu::menuTrackingDidFinish() { current_.reset(); }

void DecorationMenu::moveEntryToEnd(std::vector<std::shared_ptr<MenuItem>>& entries) {
  const auto decorate = std::find_if(entries.begin(), entries.end(), [](const auto& entry) {
    return entry->tag() == MenuItemTagDecorate;
  });
  if (decorate != entries.end()) std::rotate(decorate, decorate + 1, entries.end());
}

void DecorationMenu::itemWasSelected(GridViewItem& cell, GridView& grid) {
  const auto item = item_.lock();
  const auto* const name = std::any_cast<std::string>(&cell.userInfo);
  if (!item || name == nullptr || quillbox == nullptr) return;
  DecorationManager& decorations = quillbox->decorationManager();
  if (grid.alernateTag() == badgeGridTag) decorations.setBadgeName(*name, *item);
  if (grid.alernateTag() == tintGridTag) decorations.setTintName(*name, *item);
  item->setImage(item->getBaseIconImage());
  quillbox->itemDecorationChanged(*item);
  quillbox->saveStateCoallesced();
  flash(std::static_pointer_cast<GridView>(grid.shared_from_this()), menu_);
}

void DecorationMenu::flash(const std::shared_ptr<GridView>& grid, const std::weak_ptr<Menu>& menu) {
  const auto highlight = grid->highlightView();
  highlight->setHidden(true);
  executeBlockAfterDelay([grid, highlight] { highlight->setHidden(false); }, flashInterval);
  executeBlockAfterDelay([grid, highlight] { highlight->setHidden(true); }, 2 * flashInterval);
  executeBlockAfterDelay(
      [grid, menu] {
        if (const auto open = menu.lock()) open->cancelTracking();
      },
      3 * flashInterval);
}

}  // namespace qb
