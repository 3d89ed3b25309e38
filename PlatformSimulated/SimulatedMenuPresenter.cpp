#include "PlatformSimulated/SimulatedMenuPresenter.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "Platform/KeyCodes.h"
#include "QuillboxCommon/views/MenuItemView.h"

namespace qb {

namespace {

constexpr double widthOfCharacter = 7;
constexpr double widthBesides = 42;
constexpr double widthBesidesView = 10;
constexpr double itemHeight = 20;
constexpr double separatorHeight = 10;
constexpr double heightBesides = 8;

std::string shownTitle(const MenuItem& item) {
  return item.attributedTitle().isEmpty() ? item.title() : item.attributedTitle().string();
}

bool canBeHighlighted(const MenuItem& item) { return item.isEnabled() && !item.isSeparatorItem(); }

bool isTitleOrLike(const MenuItem& item) {
  return !item.view() || dynamic_cast<const MenuItemView*>(item.view().get()) != nullptr;
}

}  // namespace

// The user.

bool SimulatedMenuUser::menuIsOpen() const {
  return presenter_.menuIsOpen() && !presenter_.closing_;
}

std::shared_ptr<Menu> SimulatedMenuUser::menu() const {
  return menuIsOpen() ? presenter_.innermost().menu : nullptr;
}

std::vector<std::string> SimulatedMenuUser::shownItems() const {
  const auto shown = menu();
  return shown ? SimulatedMenuPresenter::shownItems(*shown) : std::vector<std::string>();
}

void SimulatedMenuUser::highlight(std::string_view title) {
  if (!menuIsOpen()) return;
  const auto item = menu()->itemWithTitle(title);
  if (!item) throw std::out_of_range("no menu item " + std::string(title));
  presenter_.highlight(presenter_.open_.size() - 1, item);
}

void SimulatedMenuUser::highlight(std::size_t index) {
  if (!menuIsOpen()) return;
  presenter_.highlight(presenter_.open_.size() - 1, menu()->items().at(index));
}

void SimulatedMenuUser::highlightNothing() {
  if (menuIsOpen()) presenter_.highlight(presenter_.open_.size() - 1, nullptr);
}

void SimulatedMenuUser::highlightInOuterMenu(std::string_view title) {
  if (!menuIsOpen()) return;
  for (std::size_t depth = presenter_.open_.size() - 1; depth-- > 0;) {
    const auto item = presenter_.open_[depth]->menu->itemWithTitle(title);
    if (item) return presenter_.highlight(depth, item);
  }
  throw std::out_of_range("no item in an outer menu " + std::string(title));
}

void SimulatedMenuUser::rest(TimeInterval seconds) {
  if (menuIsOpen()) presenter_.host_.runFor(seconds);
}

void SimulatedMenuUser::openSubmenu() {
  if (menuIsOpen()) presenter_.openSubmenu();
}

void SimulatedMenuUser::closeSubmenu() {
  if (menuIsOpen() && presenter_.open_.size() > 1) {
    presenter_.closeFrom(presenter_.open_.size() - 1);
  }
}

void SimulatedMenuUser::choose() {
  if (!menuIsOpen()) return;
  const auto item = menu()->highlightedItem();
  if (item && isTitleOrLike(*item) && !item->submenu()) presenter_.finish(item);
}

void SimulatedMenuUser::moveInView(Point point) { sendToView(EventTypeMouseMoved, point); }

void SimulatedMenuUser::clickInView(Point point) {
  for (const auto type : {EventTypeMouseMoved, EventTypeLeftMouseDown, EventTypeLeftMouseUp}) {
    sendToView(type, point);
  }
}

void SimulatedMenuUser::sendToView(EventType type, Point point) {
  if (!menuIsOpen()) return;
  const auto item = menu()->highlightedItem();
  MenuItemWindow* const window = item ? presenter_.windowOf(*item) : nullptr;
  if (window == nullptr) return;
  Event event;
  event.type = type;
  event.location = point;
  window->deliver(event);
}

void SimulatedMenuUser::escape() {
  if (menuIsOpen()) presenter_.finish(nullptr);
}

// The menu.

SimulatedMenuPresenter::~SimulatedMenuPresenter() = default;

bool SimulatedMenuPresenter::popUpMenu(const std::shared_ptr<Menu>& menu,
                                       const std::shared_ptr<MenuItem>& /*positioningItem*/,
                                       Point location) {
  if (menuIsOpen()) return false;
  const std::size_t record = shown_.size();
  shown_.push_back({menu->title(), location, shownItems(*menu), ""});
  const Script script = scripts_.empty() ? [](SimulatedMenuUser& user) { user.escape(); }
                                         : std::move(scripts_.front());
  if (!scripts_.empty()) scripts_.pop_front();
  if (menu->items().empty()) {
    menu->noteDidClose();
    return false;
  }
  closing_ = false;
  chosen_.reset();
  menu->setObserver(this);
  open(menu);
  {
    const RunLoop::ModeScope mode(RunLoop::main(), RunLoopMode::EventTracking);
    SimulatedMenuUser user(*this);
    script(user);
    host_.runUntil([this] { return closing_; });
  }
  menu->setObserver(nullptr);
  closeFrom(0);
  const auto chosen = std::exchange(chosen_, nullptr);
  if (!chosen) return false;
  shown_[record].chosen = shownTitle(*chosen);
  chosen->performAction();
  return true;
}

std::vector<std::string> SimulatedMenuPresenter::shownItems(const Menu& menu) {
  std::vector<std::string> lines;
  for (const auto& item : menu.items()) {
    if (item->isSeparatorItem()) {
      lines.emplace_back("-");
      continue;
    }
    std::string line = item->view() ? "[view]" : shownTitle(*item);
    if (item->state()) line = "* " + line;
    if (item->submenu()) line += " >";
    if (!item->isEnabled()) line = "(" + line + ")";
    lines.push_back(std::move(line));
  }
  return lines;
}

Size SimulatedMenuPresenter::itemSize(const MenuItem& item) const {
  if (item.isSeparatorItem()) return {0, separatorHeight};
  if (item.view()) {
    const Size view = item.view()->frame().size;
    return {view.width + widthBesidesView, view.height};
  }
  const auto characters = static_cast<double>(shownTitle(item).size());
  return {characters * widthOfCharacter + widthBesides, itemHeight};
}

Size SimulatedMenuPresenter::margins() const { return {0, heightBesides}; }

bool SimulatedMenuPresenter::keyDown(const Event& event) {
  if (!menuIsOpen() || closing_) return false;
  SimulatedMenuUser user(*this);
  switch (event.keyCode) {
    case KeyCodeEscape:
      if (open_.size() > 1) {
        user.closeSubmenu();
      } else {
        user.escape();
      }
      return true;
    case KeyCodeReturn:
    case KeyCodeEnter:
    case KeyCodeSpace:
      if (!enterSubmenu()) user.choose();
      return true;
    case KeyCodeRight:
      enterSubmenu();
      return true;
    case KeyCodeLeft:
      user.closeSubmenu();
      return true;
    case KeyCodeDown:
      highlightStep(1);
      return true;
    case KeyCodeUp:
      highlightStep(-1);
      return true;
    case KeyCodeHome:
    case KeyCodePageUp:
      innermost().menu->noteHighlightedItem(nullptr);
      highlightStep(1);
      return true;
    case KeyCodeEnd:
    case KeyCodePageDown:
      innermost().menu->noteHighlightedItem(nullptr);
      highlightStep(-1);
      return true;
    default:
      return false;
  }
}

void SimulatedMenuPresenter::pressOutside() {
  if (menuIsOpen()) finish(nullptr);
}

// What the model tells.

void SimulatedMenuPresenter::menuItemChanged(Menu& menu, MenuItem& item) {
  for (std::size_t depth = 0; depth < open_.size(); ++depth) {
    if (open_[depth]->menu.get() != &menu) continue;
    showView(*open_[depth], item);
    const bool holdsOpenSubmenu = depth + 1 < open_.size();
    if (holdsOpenSubmenu && menu.highlightedItem().get() == &item &&
        item.submenu() != open_[depth + 1]->menu) {
      closeFrom(depth + 1);
    }
    if (depth + 1 == open_.size() && menu.highlightedItem().get() == &item && item.submenu()) {
      waitForSubmenu();
    }
    return;
  }
}

void SimulatedMenuPresenter::menuItemInserted(Menu& menu, MenuItem& item, std::size_t) {
  for (const auto& each : open_) {
    if (each->menu.get() == &menu) showView(*each, item);
  }
}

void SimulatedMenuPresenter::menuItemRemoved(Menu& menu, MenuItem& item, std::size_t) {
  for (std::size_t depth = 0; depth < open_.size(); ++depth) {
    if (open_[depth]->menu.get() != &menu) continue;
    open_[depth]->windows.erase(&item);
    if (depth + 1 < open_.size() && open_[depth + 1]->menu == item.submenu()) closeFrom(depth + 1);
    return;
  }
}

void SimulatedMenuPresenter::menuShouldCancelTracking(Menu&) { finish(nullptr); }

// Opening and closing.

void SimulatedMenuPresenter::open(const std::shared_ptr<Menu>& menu) {
  open_.push_back(std::make_unique<OpenMenu>());
  open_.back()->menu = menu;
  for (const auto& item : menu->items()) showView(innermost(), *item);
}

void SimulatedMenuPresenter::closeFrom(std::size_t depth) {
  resting_.reset();
  while (open_.size() > depth) {
    const auto closed = std::move(open_.back());
    open_.pop_back();
    closed->windows.clear();
    closed->menu->noteDidClose();
  }
}

void SimulatedMenuPresenter::finish(const std::shared_ptr<MenuItem>& chosen) {
  if (closing_) return;
  closing_ = true;
  chosen_ = chosen;
  resting_.reset();
}

void SimulatedMenuPresenter::highlight(std::size_t depth, const std::shared_ptr<MenuItem>& item) {
  const auto highlighted = item && canBeHighlighted(*item) ? item : nullptr;
  Menu& menu = *open_[depth]->menu;
  const auto before = menu.highlightedItem();
  if (highlighted == before) return;
  closeFrom(depth + 1);
  if (before) {
    if (MenuItemWindow* const window = windowOf(*before)) window->pointerLeft();
  }
  menu.noteHighlightedItem(highlighted);
  if (!closing_ && highlighted && highlighted->submenu()) waitForSubmenu();
}

void SimulatedMenuPresenter::highlightStep(int step) {
  const auto& items = innermost().menu->items();
  const auto count = static_cast<int>(items.size());
  const auto found = std::find(items.begin(), items.end(), innermost().menu->highlightedItem());
  int index =
      found == items.end() ? (step > 0 ? -1 : count) : static_cast<int>(found - items.begin());
  for (int tried = 0; tried < count; ++tried) {
    index = (index + step + count) % count;
    const auto& item = items[static_cast<std::size_t>(index)];
    if (canBeHighlighted(*item)) return highlight(open_.size() - 1, item);
  }
}

void SimulatedMenuPresenter::openSubmenu() {
  const auto item = innermost().menu->highlightedItem();
  if (item && item->submenu() && !item->submenu()->items().empty()) open(item->submenu());
}

bool SimulatedMenuPresenter::enterSubmenu() {
  const std::size_t depth = open_.size();
  openSubmenu();
  if (open_.size() == depth) return false;
  highlightStep(1);
  return true;
}

void SimulatedMenuPresenter::waitForSubmenu() {
  resting_ = std::make_shared<const bool>(true);
  host_.schedule(submenuDelay, [this, resting = std::weak_ptr<const bool>(resting_)] {
    if (!resting.expired() && !closing_) openSubmenu();
  });
}

// Views.

MenuItemWindow* SimulatedMenuPresenter::windowOf(const MenuItem& item) {
  for (const auto& each : open_) {
    const auto found = each->windows.find(&item);
    if (found != each->windows.end()) return found->second.get();
  }
  return nullptr;
}

void SimulatedMenuPresenter::showView(OpenMenu& open, MenuItem& item) {
  const auto known = open.windows.find(&item);
  if (known != open.windows.end()) {
    if (item.view() && item.view()->window() == known->second.get()) return;
    open.windows.erase(known);
  }
  if (!item.view()) return;
  open.windows.emplace(&item, std::make_unique<MenuItemWindow>(item.view(), nullptr));
}

}  // namespace qb
