#include "Quillbox/Item/DecorationMenu.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <deque>

#include "PlatformDesktop/DesktopPlatform.h"
#include "PlatformDesktop/menus/MenuWidget.h"
#include "Quillbox/Item/Item.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/DecorationManager.h"
#include "TemporaryFolder.h"
#include "XClient.h"
#include "XServer.h"

namespace qb::test {
namespace {

constexpr TimeInterval lookInterval = 0.005;
constexpr TimeInterval longestStep = 60;

class DecorateableItem : public Item {
 public:
  static std::shared_ptr<DecorateableItem> create() {
    std::shared_ptr<DecorateableItem> item(new DecorateableItem);
    item->setImage(item->getBaseIconImage());
    return item;
  }
  bool decorateable() const override { return true; }
  std::string decorationKey() const override { return "/files/Report.txt"; }
  Image getBaseIconImage() const override {
    return quillbox->platform().graphics().imageNamed("FileIcon");
  }

 private:
  DecorateableItem() : Item(Rect::make(0, 0, 64, 64), std::string("Report.txt")) {}
};

/// The program's facade on the real platform, without a panel, and the menu of an item on it. What
/// the user does is told ahead, step by step: each step waits until what came before is to be seen.
class DecorationMenuDesk : public ::testing::Test {
 protected:
  DecorationMenuDesk() {
    qputenv("HOME", home.path().c_str());
    auto created = DesktopPlatform::create();
    platform = std::move(std::get<std::unique_ptr<DesktopPlatform>>(created));
    delegate = AppDelegate::create(*platform);
    facade = Quillbox::quillboxWithAppDelegate(*delegate, *platform);
    item = DecorateableItem::create();
    for (const auto& entry : item->configureMenuItems()) menu->addItem(entry);
  }
  ~DecorationMenuDesk() override {
    item.reset();
    facade.reset();
    delegate.reset();
    platform->finishBackgroundWork();
  }

  void when(std::string what, std::function<bool()> condition, std::function<void()> action) {
    steps.push_back({std::move(what), std::move(condition), std::move(action)});
  }
  /// Opens the item's menu and runs the steps, until it has closed.
  void useMenu() {
    // Out of the way.
    user.movePointer(2399, 1799);
    user.sync();
    deadline = platform->runLoop().now() + longestStep;
    const auto timer = platform->runLoop().scheduleTimer(
        lookInterval, true, [this](RunLoopTimer&) { goOn(); }, RunLoopMode::EventTracking);
    item->menuTrackingWillBegin(*menu);
    const Rect screen = platform->displays().screens().front().frame;
    platform->menuPresenter().popUpMenu(menu, nullptr, {20, screen.maxY() - 20});
    item->menuTrackingDidFinish(*menu);
    timer->invalidate();
    EXPECT_TRUE(steps.empty()) << "closed before: " << steps.front().what;
  }
  /// Points at a cell of a grid of the decoration menu and clicks on it.
  void chooseCell(std::size_t entry, std::size_t cell, const std::string& picture) {
    const Menu& decorations = *menu->itemWithTag(MenuItemTagDecorate)->submenu();
    const auto& gridEntry = decorations.items().at(entry);
    const auto grid = std::dynamic_pointer_cast<GridView>(gridEntry->view());
    when(
        "the menu", [this] { return widgetOf(*menu) != nullptr; },
        [this] {
          const auto& decorate = *menu->itemWithTag(MenuItemTagDecorate);
          pointAt(menu->items().front()->menu(), decorate, {});
        });
    when(
        "the submenu", [this, &decorations] { return widgetOf(decorations) != nullptr; },
        [this, &decorations, gridEntry, grid, cell] {
          pointAt(&decorations, *gridEntry, centerInGrid(*grid, cell));
        });
    when(
        "the highlight", [grid, cell] { return grid->highlightedItem() == grid->items()[cell]; },
        [] {});
    // Once more, so that what it changes has been painted.
    when(
        "the picture of the highlight", [] { return true; },
        [this, picture] {
          QApplication::processEvents();
          shoot(picture);
          user.button(1, true);
          user.button(1, false);
        });
  }

  static MenuWidget* widgetOf(const Menu& shown) {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      auto* const found = dynamic_cast<MenuWidget*>(widget);
      if (found && found->menu().get() == &shown && found->windowHandle() &&
          found->windowHandle()->isExposed()) {
        return found;
      }
    }
    return nullptr;
  }
  /// From the middle of the grid.
  static QPointF centerInGrid(const GridView& grid, std::size_t cell) {
    const Point center = grid.items().at(cell)->view->frame().center();
    return QPointF(center.x, center.y) - QPointF(grid.frame().width(), grid.frame().height()) / 2;
  }
  /// Puts the pointer that far from the middle of an entry.
  void pointAt(const Menu* shown, const MenuItem& entry, QPointF offset) {
    const MenuWidget& widget = *widgetOf(*shown);
    const QPointF place = (widget.mapToGlobal(widget.geometryOf(entry).center()) + offset) *
                          widget.devicePixelRatioF();
    user.movePointer(static_cast<int>(place.x()) - 1, static_cast<int>(place.y()));
    user.movePointer(static_cast<int>(place.x()), static_cast<int>(place.y()));
  }
  /// Saves a picture of the screen where QUILLBOX_SCREENSHOTS names a folder.
  static void shoot(const std::string& name) {
    const QString folder = qEnvironmentVariable("QUILLBOX_SCREENSHOTS");
    if (folder.isEmpty()) return;
    const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR") == "2" ? "@2" : "";
    QGuiApplication::primaryScreen()->grabWindow(0).toImage().save(
        folder + "/" + QString::fromStdString(name) + scale + ".png");
  }
  /// The pixels of the item's picture.
  QImage shownByItem() const {
    return dynamic_cast<const DesktopImage&>(*item->image().source()).scaled({64, 64});
  }
  PropertyList savedFile() const {
    return platform->fileSystem()
        .dictionaryWithContentsOfFile(
            home.path("Library/Preferences/com.vorlane.quillbox.decorations"))
        .value_or(PropertyList());
  }

  TemporaryFolder home;
  std::unique_ptr<DesktopPlatform> platform;
  std::shared_ptr<AppDelegate> delegate;
  std::unique_ptr<Quillbox> facade;
  std::shared_ptr<DecorateableItem> item;
  std::shared_ptr<Menu> menu = Menu::create("Configure");
  XClient user{qEnvironmentVariable("DISPLAY").toStdString()};

 private:
  struct Step {
    std::string what;
    std::function<bool()> condition;
    std::function<void()> action;
  };
  void goOn() {
    if (!steps.empty() && steps.front().condition()) {
      const Step step = std::move(steps.front());
      steps.pop_front();
      deadline = platform->runLoop().now() + longestStep;
      step.action();
    } else if (platform->runLoop().now() > deadline) {
      ADD_FAILURE() << "waits for ever: " << (steps.empty() ? "to close" : steps.front().what);
      steps.clear();
      menu->cancelTracking();
    }
  }

  std::deque<Step> steps;
  Moment deadline = 0;
};

TEST_F(DecorationMenuDesk, AClickInAGridDecoratesTheItemAndClosesTheMenu) {
  const QImage plain = shownByItem();
  chooseCell(1, 38, "badges");
  useMenu();
  EXPECT_EQ(savedFile().objectForKey("BadgeNames"),
            PropertyList::dictionary({{"/files/Report.txt", "BadgeShapeHeart.png"}}));
  const QImage badged = shownByItem();
  EXPECT_EQ(badged.pixelColor(48, 48), QColor(Qt::white)) << "the heart";
  EXPECT_EQ(badged.copy(0, 0, 30, 30), plain.copy(0, 0, 30, 30));

  chooseCell(4, 0, "tints");
  useMenu();
  EXPECT_EQ(savedFile().objectForKey("TintNames"),
            PropertyList::dictionary({{"/files/Report.txt", "Red"}}));
  const QImage both = shownByItem();
  EXPECT_EQ(both.pixelColor(48, 48), QColor(Qt::white)) << "badges are not tinted";
  EXPECT_LT(both.pixelColor(20, 20).green(), badged.pixelColor(20, 20).green());
  EXPECT_EQ(both.pixelColor(0, 0).alpha(), 0);
}

TEST_F(DecorationMenuDesk, TheLastCellTakesTheDecorationOff) {
  const QImage plain = shownByItem();
  quillbox->decorationManager().setBadgeName("BadgeMarkCheck.png", *item);
  item->setImage(item->getBaseIconImage());
  ASSERT_NE(shownByItem(), plain);
  QPalette palette = QApplication::palette();
  palette.setColor(QPalette::Window, QColor(30, 30, 32));
  QApplication::setPalette(palette);
  chooseCell(1, 47, "none-dark");
  useMenu();
  QApplication::setPalette(QPalette());
  EXPECT_EQ(savedFile().objectForKey("BadgeNames"), PropertyList::dictionary());
  EXPECT_EQ(shownByItem(), plain);
}

}  // namespace
}  // namespace qb::test

int main(int argc, char* argv[]) {
  qputenv("QT_NO_GLIB", "1");
  ::testing::InitGoogleMock(&argc, argv);
  const qb::test::XServer server({"-screen", "0", "2400x1800x24"});
  qputenv("DISPLAY", server.display().c_str());
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  const qb::test::Program windowManager =
      qb::test::startWindowManager(server.display(), qb::test::WindowManagerKeys::None);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
