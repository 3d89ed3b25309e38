#include "Quillbox/Item/DecorationMenu.h"

#include <gmock/gmock.h>

#include "Quillbox/Item/Item.h"
#include "Quillbox/managers/DecorationManager.h"
#include "QuillboxCommon/views/ImageView.h"
#include "QuillboxCommon/views/LabelView.h"
#include "QuillboxCommon/views/RoundedRectangleView.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

constexpr std::size_t badgeEntry = 1, tintEntry = 4;

class PlainItem : public Item {
 public:
  explicit PlainItem(const Image& base)
      : Item(Rect::make(0, 0, 40, 40), std::string("Plain")), base_(base) {}
  Image getBaseIconImage() const override { return base_; }

 private:
  Image base_;
};

class DecorationMenuTest : public QuillboxFixture {
 protected:
  DecorationMenuTest() { giveBadges(12); }
  /// So many badges, the one for none among them.
  void giveBadges(int count) {
    std::set<std::string> names = {"BadgeZNone", "UnknownFile"};
    for (int number = 1; number < count; ++number) {
      names.insert("Badge" + std::string(1, static_cast<char>('A' + number / 10)) +
                   std::to_string(number % 10));
    }
    platform.graphics().setImageNames(names);
  }
  std::shared_ptr<GridView> gridOf(std::size_t entry) const {
    return std::dynamic_pointer_cast<GridView>(menu->items().at(entry)->view());
  }
  Point middleOf(const GridView& grid, std::size_t cell) const {
    const Point center = grid.items().at(cell)->view->frame().center();
    return {center.x, grid.frame().height() - center.y};
  }
  /// Opens the menu, as its item's menu does, for a user.
  void use(SimulatedMenuPresenter::Script script) {
    DecorationMenu::menuTrackingWillBegin();
    platform.menuPresenter().whenMenuOpens(std::move(script));
    platform.menuPresenter().popUpMenu(menu, nullptr, {});
    DecorationMenu::menuTrackingDidFinish();
  }
  void click(SimulatedMenuUser& user, std::size_t entry, std::size_t cell) const {
    user.highlight(entry);
    user.clickInView(middleOf(*gridOf(entry), cell));
  }
  void create() { menu = DecorationMenu::create(item); }

  std::shared_ptr<Item> item = std::make_shared<PlainItem>(platform.graphics().imageNamed("Base"));
  std::shared_ptr<Menu> menu;
};

TEST_F(DecorationMenuTest, HasTwoGridsUnderTheirHeadings) {
  create();
  EXPECT_EQ(menu->title(), "Decorate");
  EXPECT_FALSE(menu->autoenablesItems());
  ASSERT_EQ(menu->items().size(), 5U);
  EXPECT_EQ(menu->items()[0]->title(), "Badge");
  EXPECT_FALSE(menu->items()[0]->isEnabled());
  EXPECT_EQ(menu->items()[1]->title(), "Decorate");
  EXPECT_TRUE(menu->items()[1]->isEnabled());
  EXPECT_TRUE(menu->items()[2]->isSeparatorItem());
  EXPECT_EQ(menu->items()[3]->title(), "Tints");
  EXPECT_FALSE(menu->items()[3]->isEnabled());
  EXPECT_EQ(menu->items()[4]->title(), "Decorate");
  EXPECT_TRUE(menu->items()[4]->isEnabled());
  for (const std::size_t entry : {badgeEntry, tintEntry}) {
    EXPECT_EQ(menu->items()[entry]->action().name, "decorate");
    EXPECT_EQ(menu->items()[entry]->action().target.lock(), item);
    EXPECT_EQ(gridOf(entry)->owningMenuItem(), menu->items()[entry]);
  }
  EXPECT_EQ(gridOf(badgeEntry)->frame().size, (Size{280, 390}));
  EXPECT_EQ(gridOf(badgeEntry)->alernateTag(), 0);
  EXPECT_EQ(gridOf(tintEntry)->frame().size, (Size{280, 50}));
  EXPECT_EQ(gridOf(tintEntry)->alernateTag(), 1);
}

TEST_F(DecorationMenuTest, TheHeadingsAreLabelsWhileTheMenuIsOpen) {
  create();
  EXPECT_EQ(menu->items()[0]->view(), nullptr);
  use([](SimulatedMenuUser& user) { user.escape(); });
  const std::vector<std::pair<std::size_t, std::string>> headings = {{0, "Badge"}, {3, "Tint"}};
  for (const auto& [entry, text] : headings) {
    const auto* label = dynamic_cast<LabelView*>(menu->items()[entry]->view().get());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), text);
    EXPECT_EQ(label->frame().size, (Size{282, 16}));
    EXPECT_EQ(label->textColor(), Color::gray());
    EXPECT_EQ(label->horizontalAlignment(), TextAlignmentCenter);
    EXPECT_FALSE(label->renderBackground());
    EXPECT_FALSE(label->renderBorder());
  }
}

TEST_F(DecorationMenuTest, OnlyTheMenuMadeLastIsTracked) {
  create();
  const auto former = menu;
  create();
  DecorationMenu::menuTrackingWillBegin();
  EXPECT_EQ(former->items()[0]->view(), nullptr);
  EXPECT_NE(menu->items()[0]->view(), nullptr);
}

TEST_F(DecorationMenuTest, AMenuThatIsGoneIsNotTracked) {
  create();
  menu.reset();
  DecorationMenu::menuTrackingWillBegin();
  DecorationMenu::menuTrackingDidFinish();
  create();
  DecorationMenu::menuTrackingDidFinish();
  DecorationMenu::menuTrackingWillBegin();
  EXPECT_EQ(menu->items()[0]->view(), nullptr) << "closed is closed";
}

struct BadgeCount {
  int badges;
  std::size_t cells;
};

TEST_F(DecorationMenuTest, OnlyWholeRowsOfBadgesAreShown) {
  for (const BadgeCount& one : {BadgeCount{22, 18}, {5, 0}, {6, 6}, {48, 48}, {47, 42}, {0, 0}}) {
    giveBadges(one.badges);
    create();
    EXPECT_EQ(gridOf(badgeEntry)->numberOfCells(), one.cells) << one.badges;
  }
}

TEST_F(DecorationMenuTest, WithoutARowOfBadgesThereAreNoTintsEither) {
  giveBadges(5);
  create();
  EXPECT_EQ(gridOf(tintEntry)->numberOfCells(), 0U);
}

TEST_F(DecorationMenuTest, BadgesStandInTheOrderOfTheirNames) {
  create();
  const auto& grid = *gridOf(badgeEntry);
  ASSERT_EQ(grid.numberOfCells(), 12U);
  EXPECT_EQ(std::any_cast<std::string>(grid.items()[0]->userInfo), "BadgeA1.png");
  EXPECT_EQ(std::any_cast<std::string>(grid.items()[11]->userInfo), "BadgeZNone.png");
  const auto* picture = dynamic_cast<ImageView*>(grid.items()[0]->view.get());
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(simulatedImageName(picture->image()), "BadgeA1");
  EXPECT_EQ(picture->frame(), Rect::make(15, 15, 30, 30));
  EXPECT_EQ(grid.items()[7]->view->frame(), Rect::make(59, 59, 30, 30));
}

TEST_F(DecorationMenuTest, TintsAreColouredTilesAndThePictureForNone) {
  create();
  const auto& grid = *gridOf(tintEntry);
  ASSERT_EQ(grid.numberOfCells(), 6U);
  std::vector<std::string> names;
  for (const auto& cell : grid.items()) names.push_back(std::any_cast<std::string>(cell->userInfo));
  EXPECT_THAT(names, ElementsAre("Red", "Green", "Blue", "Yellow", "Black", "BadgeZNone.png"));
  for (std::size_t i = 0; i < 5; ++i) {
    const auto* tile = dynamic_cast<RoundedRectangleView*>(grid.items()[i]->view.get());
    ASSERT_NE(tile, nullptr);
    EXPECT_EQ(tile->backgroundColor(), DecorationManager::tints()[i].second.withAlpha(0.8));
    EXPECT_EQ(tile->frame().size, (Size{28, 28}));
    EXPECT_EQ(tile->cornerRadius(), 5);
    EXPECT_FALSE(tile->renderBorder());
  }
  const auto* none = dynamic_cast<ImageView*>(grid.items()[5]->view.get());
  ASSERT_NE(none, nullptr);
  EXPECT_EQ(simulatedImageName(none->image()), "BadgeZNone");
  EXPECT_EQ(none->frame().size, (Size{30, 30}));
}

TEST_F(DecorationMenuTest, TilesLookTheSameOnEveryGround) {
  create();
  auto* tile = dynamic_cast<RoundedRectangleView*>(gridOf(tintEntry)->items()[4]->view.get());
  ASSERT_NE(tile, nullptr);
  RecordingCanvas canvas(tile->bounds());
  tile->draw(canvas);
  ASSERT_EQ(canvas.operations().size(), 2U);
  EXPECT_EQ(canvas.operations()[0].color, Color::white());
  EXPECT_EQ(canvas.operations()[1].color, tile->backgroundColor());
  EXPECT_EQ(canvas.operations()[0].path, canvas.operations()[1].path);
}

TEST_F(DecorationMenuTest, TheHighlightFramesTheCellUnderThePointer) {
  create();
  use([this](SimulatedMenuUser& user) {
    for (const auto& [entry, offset] : {std::pair(badgeEntry, -5.0), {tintEntry, -6.0}}) {
      const GridView& grid = *gridOf(entry);
      const auto* frame = dynamic_cast<RoundedRectangleView*>(grid.highlightView().get());
      ASSERT_NE(frame, nullptr);
      EXPECT_TRUE(frame->isHidden());
      user.highlight(entry);
      user.moveInView(middleOf(grid, 2));
      EXPECT_FALSE(frame->isHidden());
      const Rect cell = grid.items()[2]->view->frame();
      EXPECT_EQ(frame->frame(), Rect::make(cell.x() + offset, cell.y() + offset, 40, 40));
      EXPECT_EQ(frame->cornerRadius(), 10);
      EXPECT_EQ(frame->borderWidth(), 3);
      EXPECT_TRUE(frame->renderBorder());
      user.moveInView({1, 1});
      EXPECT_TRUE(frame->isHidden());
    }
    user.escape();
  });
}

TEST_F(DecorationMenuTest, AClickOnABadgeShowsItOnTheItemAtOnce) {
  create();
  use([this](SimulatedMenuUser& user) {
    click(user, badgeEntry, 3);
    EXPECT_TRUE(user.menuIsOpen());
    EXPECT_EQ(simulatedImageName(quillbox->decorationManager().badgeImageForItem(*item)),
              "BadgeA4");
    const auto drawn = simulatedImageOperations(item->image());
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(simulatedImageName(drawn[0].image), "Base");
    EXPECT_EQ(simulatedImageName(drawn[1].image), "BadgeA4");
  });
}

TEST_F(DecorationMenuTest, AClickOnATintShowsItOnTheItemAtOnce) {
  create();
  use([this](SimulatedMenuUser& user) {
    click(user, tintEntry, 2);
    const Color blue = Color::colorWithCalibratedRed(0.5, 0.5, 1, 0.33);
    EXPECT_EQ(quillbox->decorationManager().tintColorForItem(*item), blue);
    const auto drawn = simulatedImageOperations(item->image());
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(drawn[1].color, blue);
  });
}

TEST_F(DecorationMenuTest, TheLastCellOfEachGridTakesTheDecorationOff) {
  quillbox->decorationManager().setBadgeName("BadgeA1.png", *item);
  quillbox->decorationManager().setTintName("Red", *item);
  create();
  use([this](SimulatedMenuUser& user) { click(user, badgeEntry, 11); });
  EXPECT_FALSE(quillbox->decorationManager().badgeImageForItem(*item));
  EXPECT_TRUE(quillbox->decorationManager().tintColorForItem(*item));
  create();
  use([this](SimulatedMenuUser& user) { click(user, tintEntry, 5); });
  EXPECT_FALSE(quillbox->decorationManager().tintColorForItem(*item));
  EXPECT_EQ(simulatedImageName(item->image()), "Base");
}

TEST_F(DecorationMenuTest, AClickBetweenTheCellsChoosesNothing) {
  create();
  use([](SimulatedMenuUser& user) {
    user.highlight(badgeEntry);
    user.clickInView({2, 2});
    user.rest(1);
    EXPECT_TRUE(user.menuIsOpen());
    user.escape();
  });
  EXPECT_FALSE(quillbox->decorationManager().badgeImageForItem(*item));
}

TEST_F(DecorationMenuTest, AClickFlashesAndThenClosesTheMenu) {
  create();
  use([this](SimulatedMenuUser& user) {
    click(user, badgeEntry, 0);
    const View& highlight = *gridOf(badgeEntry)->highlightView();
    EXPECT_TRUE(highlight.isHidden());
    user.rest(0.099);
    EXPECT_TRUE(highlight.isHidden());
    user.rest(0.002);
    EXPECT_FALSE(highlight.isHidden());
    user.rest(0.098);
    EXPECT_FALSE(highlight.isHidden());
    user.rest(0.002);
    EXPECT_TRUE(highlight.isHidden());
    user.rest(0.098);
    EXPECT_TRUE(user.menuIsOpen());
    user.rest(0.002);
    EXPECT_FALSE(user.menuIsOpen());
  });
}

TEST_F(DecorationMenuTest, TheMenuKeepsNoItemAlive) {
  create();
  item.reset();
  use([this](SimulatedMenuUser& user) {
    click(user, badgeEntry, 0);
    user.escape();
  });
  EXPECT_FALSE(
      platform.fileSystem().fileExistsAtPath("/home/user/Library/Preferences/"
                                             "com.vorlane.quillbox.decorations"));
}

TEST_F(DecorationMenuTest, TheFlashOutlivesMenuAndItem) {
  create();
  use([this](SimulatedMenuUser& user) {
    click(user, tintEntry, 0);
    user.escape();
  });
  item.reset();
  menu.reset();
  platform.runFor(1);
}

TEST_F(DecorationMenuTest, WhatHasBeenMadeGoesWithTheMenu) {
  create();
  const std::weak_ptr<GridView> grid = gridOf(badgeEntry);
  menu.reset();
  EXPECT_TRUE(grid.expired());
}

}  // namespace
}  // namespace qb::test
