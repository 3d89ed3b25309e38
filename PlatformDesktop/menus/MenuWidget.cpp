#include "PlatformDesktop/menus/MenuWidget.h"

#include <QCursor>
#include <QKeyEvent>
#include <QScreen>
#include <QStyleOptionMenuItem>
#include <QWidgetAction>
#include <QWindow>
#include <algorithm>

#include "PlatformDesktop/graphics/QtConversions.h"
#include "PlatformDesktop/menus/MenuItemWidget.h"
#include "PlatformDesktop/menus/MenuLook.h"
#include "PlatformDesktop/menus/MenuStyle.h"

namespace qb {

namespace {

MenuStyle& menuStyle() {
  static MenuStyle style;
  return style;
}

/// What Qt reads out to those who cannot see; the drawing does not use it.
QString actionText(const MenuItem& item) {
  const std::string& title =
      item.attributedTitle().isEmpty() ? item.title() : item.attributedTitle().string();
  return qtString(title).replace('&', "&&").replace('\t', ' ');
}

bool changesState(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::Timer:
    case QEvent::Show:
    case QEvent::Hide:
      return true;
    default:
      return false;
  }
}

bool choosesItem(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

}  // namespace

MenuWidget::MenuWidget(const std::shared_ptr<Menu>& menu, Surroundings& surroundings)
    : menu_(menu), surroundings_(&surroundings) {
  setStyle(&menuStyle());
  setAttribute(Qt::WA_TranslucentBackground, surroundings.translucent);
  // The press that closes a menu goes no further.
  setAttribute(Qt::WA_NoMouseReplay);
  rest_.setSingleShot(true);
  growth_.setSingleShot(true);
  connect(&growth_, &QTimer::timeout, this, [this] { keepOnScreen(); });
  for (const auto& item : menu_->items()) {
    entries_.push_back(makeEntry(*item));
    addAction(entries_.back().action.get());
  }
}

MenuWidget::~MenuWidget() {
  surroundings_ = nullptr;
  entries_.clear();
  retired_.clear();
}

MenuWidget* MenuWidget::widgetOf(const Menu& menu) {
  if (menu_.get() == &menu) return this;
  for (const Entry& entry : entries_) {
    if (!entry.submenu) continue;
    if (MenuWidget* const found = entry.submenu->widgetOf(menu)) return found;
  }
  return nullptr;
}

std::shared_ptr<MenuItem> MenuWidget::itemOf(const QAction* action) const {
  if (action == nullptr) return nullptr;
  for (const Entry& entry : entries_) {
    if (entry.action.get() == action) return entry.item;
    if (!entry.submenu) continue;
    if (auto item = entry.submenu->itemOf(action)) return item;
  }
  return nullptr;
}

QRect MenuWidget::geometryOf(const MenuItem& item) const {
  for (const Entry& entry : entries_) {
    if (entry.item.get() == &item) return actionGeometry(entry.action.get());
  }
  return {};
}

std::vector<MenuWidget*> MenuWidget::openMenus() {
  std::vector<MenuWidget*> open;
  if (!isVisible()) return open;
  open.push_back(this);
  for (const Entry& entry : entries_) {
    if (!entry.submenu) continue;
    const auto inside = entry.submenu->openMenus();
    open.insert(open.end(), inside.begin(), inside.end());
  }
  return open;
}

// Items.

MenuWidget::Entry MenuWidget::makeEntry(MenuItem& item) {
  Entry entry;
  entry.item = item.shared_from_this();
  if (item.view()) {
    auto action = std::make_unique<QWidgetAction>(nullptr);
    entry.view = new MenuItemWidget(item.view(), surroundings_->texts);
    entry.view->installEventFilter(this);
    action->setDefaultWidget(entry.view);
    entry.action = std::move(action);
  } else {
    entry.action = std::make_unique<QAction>();
  }
  entry.action->setSeparator(item.isSeparatorItem());
  entry.action->setText(actionText(item));
  entry.action->setEnabled(item.isEnabled());
  if (!item.view()) entry.size = MenuLook::sizeOfItem(item);
  items_[entry.action.get()] = &item;
  updateSubmenu(entry);
  return entry;
}

void MenuWidget::updateSubmenu(Entry& entry) {
  const auto& submenu = entry.item->submenu();
  const auto shown = entry.submenu ? entry.submenu->menu() : nullptr;
  if (shown == submenu) return;
  entry.action->setMenu(static_cast<QMenu*>(nullptr));
  if (entry.submenu) {
    entry.submenu->hide();
    Entry former;
    former.submenu = std::move(entry.submenu);
    retired_.push_back(std::move(former));
  }
  if (!submenu) return;
  entry.submenu = std::make_unique<MenuWidget>(submenu, *surroundings_);
  entry.action->setMenu(entry.submenu.get());
  connect(entry.submenu.get(), &QMenu::aboutToHide, this,
          [widget = entry.submenu.get()] { widget->menu()->noteDidClose(); });
  if (isVisible() && activeAction() == entry.action.get() && isUnderPointer(*entry.action)) {
    openSubmenuAfterRest(entry.action.get());
  }
}

// By keys one stays in this menu until one goes further in: a submenu that opened by itself would
// take the next keys.
bool MenuWidget::isUnderPointer(QAction& action) const {
  return actionGeometry(&action).contains(mapFromGlobal(QCursor::pos()));
}

// Qt looks for a submenu only when the pointer comes to the item.
void MenuWidget::openSubmenuAfterRest(const QAction* action) {
  rest_.disconnect();
  connect(&rest_, &QTimer::timeout, this, [this, action] {
    if (!isVisible() || activeAction() != action) return;
    setActiveAction(activeAction());
    if (surroundings_) surroundings_->stateMayHaveChanged();
  });
  rest_.start(style()->styleHint(QStyle::SH_Menu_SubMenuPopupDelay, nullptr, this));
}

MenuWidget::Entries::iterator MenuWidget::find(const MenuItem& item) {
  return std::find_if(entries_.begin(), entries_.end(),
                      [&item](const Entry& entry) { return entry.item.get() == &item; });
}

void MenuWidget::retire(Entries::iterator entry) {
  if (entry->submenu) entry->submenu->hide();
  removeAction(entry->action.get());
  items_.erase(entry->action.get());
  retired_.push_back(std::move(*entry));
  entries_.erase(entry);
}

QAction* MenuWidget::actionFrom(std::size_t index) const {
  return index < entries_.size() ? entries_[index].action.get() : nullptr;
}

void MenuWidget::itemChanged(MenuItem& item) {
  const auto entry = find(item);
  if (entry == entries_.end()) return;
  const std::shared_ptr<View> shownView = entry->view ? entry->view->view() : nullptr;
  if (shownView != item.view()) {
    const auto index = static_cast<std::size_t>(entry - entries_.begin());
    retire(entry);
    itemInserted(item, index);
    return;
  }
  entry->action->setText(actionText(item));
  entry->action->setEnabled(item.isEnabled());
  updateSubmenu(*entry);
  const QSize size = item.view() ? QSize() : MenuLook::sizeOfItem(item);
  if (size == entry->size) {
    update(actionGeometry(entry->action.get()));
    return;
  }
  entry->size = size;
  // Has Qt measure everything anew.
  entry->action->setData(++revision_);
  growth_.start(0);
}

void MenuWidget::itemInserted(MenuItem& item, std::size_t index) {
  QAction* const before = actionFrom(index);
  const auto place =
      entries_.begin() + static_cast<std::ptrdiff_t>(std::min(index, entries_.size()));
  const auto entry = entries_.insert(place, makeEntry(item));
  insertAction(before, entry->action.get());
  growth_.start(0);
}

void MenuWidget::itemRemoved(MenuItem& item) {
  const auto entry = find(item);
  if (entry != entries_.end()) retire(entry);
  growth_.start(0);
}

// Qt lets an open menu grow past the edge of the screen.
void MenuWidget::keepOnScreen() {
  if (!isVisible()) return;
  const QRect room = screen()->geometry();
  const QSize wanted = sizeHint();
  if (wanted.height() > room.height()) {
    // Only a new showing begins to scroll.
    popup(pos());
    return;
  }
  resize(wanted);
  move(std::clamp(x(), room.left(), std::max(room.left(), room.right() + 1 - width())),
       std::clamp(y(), room.top(), std::max(room.top(), room.bottom() + 1 - height())));
}

// Scrolling.

QRect MenuWidget::itemArea() const {
  QRect area = rect();
  if (entries_.empty()) return area;
  const int arrow = MenuStyle::scrollerHeight + MenuLook::menuMargin;
  const int top = actionGeometry(entries_.front().action.get()).top();
  const int bottom = actionGeometry(entries_.back().action.get()).bottom() + 1;
  if (top < MenuLook::menuMargin) area.setTop(arrow);
  if (bottom - MenuLook::menuMargin > height()) area.setBottom(height() - 1 - arrow);
  return area;
}

// Qt puts the widgets of views on top of its own arrows.
void MenuWidget::keepViewsOffArrows() {
  const QRect area = itemArea();
  for (const Entry& entry : entries_) {
    if (entry.view) entry.view->showWithin(area.translated(-entry.view->pos()));
  }
}

// Highlight.

void MenuWidget::noteHighlightedItem() {
  const QAction* const active = activeAction();
  for (const Entry& entry : entries_) {
    if (entry.view) entry.view->setHighlighted(entry.action.get() == active);
  }
  std::shared_ptr<MenuItem> item;
  const auto entry = std::find_if(entries_.begin(), entries_.end(), [active](const Entry& each) {
    return each.action.get() == active;
  });
  if (entry != entries_.end()) item = entry->item;
  if (item && (!item->isEnabled() || item->isSeparatorItem())) item = nullptr;
  menu_->noteHighlightedItem(item);
}

bool MenuWidget::isOnViewWithMouse() const {
  const QAction* const active = activeAction();
  return std::any_of(entries_.begin(), entries_.end(), [active](const Entry& entry) {
    return entry.action.get() == active && entry.view && entry.view->takesMouse();
  });
}

bool MenuWidget::event(QEvent* event) {
  // A view that takes the mouse is not chosen by keys either.
  if (choosesItem(*event) && isOnViewWithMouse()) {
    event->accept();
    return true;
  }
  // Whatever has moved the items is painted next.
  if (event->type() == QEvent::UpdateRequest) keepViewsOffArrows();
  const bool answer = QMenu::event(event);
  if (event->type() == QEvent::Show) keepViewsOffArrows();
  if (surroundings_ && changesState(event->type())) surroundings_->stateMayHaveChanged();
  return answer;
}

// Views that take the mouse keep its moves from the menu. It gets them as its own: to highlight an
// item by itself would scroll that into the middle, away from the pointer.
bool MenuWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseMove) {
    const auto& move = static_cast<const QMouseEvent&>(*event);
    QMouseEvent own(QEvent::MouseMove, mapFromGlobal(move.globalPosition()), move.globalPosition(),
                    move.button(), move.buttons(), move.modifiers());
    mouseMoveEvent(&own);
    if (surroundings_) surroundings_->stateMayHaveChanged();
  }
  return QMenu::eventFilter(watched, event);
}

void MenuWidget::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
  QMenu::initStyleOption(option, action);
  const auto item = items_.find(action);
  itemBeingStyled_ = item == items_.end() ? nullptr : item->second;
}

// Of a menu to be seen, Qt would measure all items again for each that comes. Once for all of them
// is enough: `growth_` sees to it.
void MenuWidget::actionEvent(QActionEvent* event) {
  const bool isShown = testAttribute(Qt::WA_WState_Visible);
  setAttribute(Qt::WA_WState_Visible, false);
  QMenu::actionEvent(event);
  setAttribute(Qt::WA_WState_Visible, isShown);
  if (isShown) growth_.start(0);
}

}  // namespace qb
