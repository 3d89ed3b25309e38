#include "Quillbox/activation/PopUpMenuService.h"

#include <algorithm>

#include "Platform/Graphics.h"
#include "Platform/MenuPresenter.h"
#include "Platform/Platform.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "QuillboxCommon/RunLoop.h"
#include "QuillboxCommon/views/EventCaptureView.h"
#include "QuillboxCommon/views/MenuItemView.h"
#include "QuillboxCommon/views/Window.h"

namespace qb {

namespace {

constexpr double textViewHeight = 16;
/// What a menu adds to the width of its views.
constexpr double menuWidthBesidesView = 10;
constexpr double textSize = 13;
/// The rest on the "More" item that counts as a wish for more.
constexpr TimeInterval restOnMoreMenuItem = 0.66;

Point screenLocation(Point location, const View* view) {
  if (view == nullptr) return location;
  const Point inWindow = view->convertPointToView(location, nullptr);
  const Window* const window = view->window();
  const Point origin = window ? window->frame().origin : Point{};
  return {origin.x + inWindow.x, origin.y + inWindow.y};
}

}  // namespace

PopUpMenuService::~PopUpMenuService() {
  if (popUpMenuBeingDisplayed_) popUpMenuBeingDisplayed_->setDelegate(nullptr);
}

void PopUpMenuService::popUpMenu(const std::shared_ptr<Menu>& menu,
                                 const std::shared_ptr<MenuItem>& positioningItem, Point location,
                                 View* view, const std::shared_ptr<MenuDelegate>& delegate) {
  if (!menu || popUpMenuIsBeingDisplayed()) return;
  MenuPresenter& presenter = platform_.menuPresenter();
  const double menuWidth = presenter.menuSize(*menu).width;
  for (const auto& item : menu->items()) {
    if (item->tag() == MenuItemTagGrayTitle) {
      item->setView(createTextView(menuWidth, item->title(), Color::gray()));
    } else if (item->tag() == MenuItemTagMore) {
      prepareMoreMenuItem(item, menuWidth);
    }
  }
  popUpMenuBeingDisplayed_ = menu;
  popUpMenuDelegate_ = delegate;
  menu->setDelegate(this);
  // Held: what the caller gave as a reference may change while the menu is open.
  const std::shared_ptr<Menu> shown = menu;  // NOLINT(performance-unnecessary-copy-initialization)
  presenter.popUpMenu(shown, positioningItem, screenLocation(location, view));
}

std::shared_ptr<LabelView> PopUpMenuService::createTextView(double menuWidth,
                                                            const std::string& text,
                                                            const Color& color) const {
  const double width = std::max(0.0, menuWidth - menuWidthBesidesView);
  auto textView =
      std::make_shared<LabelView>(platform_.graphics(), Rect::make(0, 0, width, textViewHeight));
  textView->setRenderBackground(false);
  textView->setFont(Font::systemFontOfSize(textSize));
  textView->setTextColor(color);
  textView->setText(text);
  return textView;
}

void PopUpMenuService::prepareMoreMenuItem(const std::shared_ptr<MenuItem>& item,
                                           double menuWidth) {
  moreMenuItem_ = item;
  moreItemTextView_ = createTextView(menuWidth, "-- More --", Color::black());
  moreItemTextViewHilited_ = false;
  const auto itemView = std::make_shared<MenuItemView>(moreItemTextView_->frame());
  itemView->addSubview(moreItemTextView_);
  item->setView(itemView);
  moreItemDelegate_ = std::dynamic_pointer_cast<MoreMenuItemDelegate>(item->action().target.lock());
  // Chosen only after the menu has closed, when all else here is forgotten.
  item->setAction({"moreMenuItemSelected", [delegate = moreItemDelegate_](MenuItem& chosen) {
                     if (const auto target = delegate.lock()) target->moreMenuItemSelected(chosen);
                   }});
}

void PopUpMenuService::invokeMoreMenuItem() {
  const auto item = moreMenuItem_;
  if (!item || item->menu() == nullptr) return;
  if (const auto delegate = moreItemDelegate_.lock()) delegate->moreMenuItemInvoked(*item);
  if (Menu* const menu = item->menu()) menu->removeItem(*item);
}

void PopUpMenuService::menuWillHighlightItem(Menu& menu, MenuItem* item) {
  if (item != nullptr && item == moreMenuItem_.get()) {
    if (!moreItemTextViewHilited_) {
      executeBlockAfterDelay(
          [this, alive = std::weak_ptr<const bool>(lifeSign_)] {
            if (!alive.expired()) moreMenuItemWasHighlited();
          },
          restOnMoreMenuItem);
      setMoreItemTextViewHilited(true);
    }
  } else if (moreItemTextViewHilited_) {
    setMoreItemTextViewHilited(false);
  }
  if (const auto delegate = popUpMenuDelegate_) delegate->menuWillHighlightItem(menu, item);
}

void PopUpMenuService::setMoreItemTextViewHilited(bool hilited) {
  moreItemTextViewHilited_ = hilited;
  moreItemTextView_->setTextColor(hilited ? Color::white() : Color::black());
}

void PopUpMenuService::moreMenuItemWasHighlited() {
  if (moreItemTextViewHilited_) invokeMoreMenuItem();
}

void PopUpMenuService::menuDidClose(Menu& menu) {
  if (const auto delegate = popUpMenuDelegate_) delegate->menuDidClose(menu);
  popUpMenuDelegate_.reset();
  popUpMenuBeingDisplayed_.reset();
  moreMenuItem_.reset();
  moreItemTextView_.reset();
  moreItemTextViewHilited_ = false;
  menu.setDelegate(nullptr);
  EventCaptureView::notePopUpMenuDidClose();
}

}  // namespace qb
