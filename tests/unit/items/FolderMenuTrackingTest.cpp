#include "Quillbox/Item/folder/FolderMenuTracking.h"

#include <gmock/gmock.h>

#include "Platform/KeyCodes.h"
#include "support/FolderItemFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A folder's open menu, with a user who rests the pointer here and there.
class FolderMenuTrackingTest : public FolderItemFixture {
 protected:
  FolderMenuTrackingTest() {
    files().putRaw(folder + "/a.txt", "");
    files().putRaw(folder + "/inner/b.txt", "");
    files().putRaw(folder + "/inner/deep/c.txt", "");
    files().makeFolder(folder + "/inner/empty");
  }
  void openMenu(SimulatedMenuPresenter::Script script) {
    FolderItemFixture::openMenu(item, std::move(script));
  }
  bool hasSubmenu(const SimulatedMenuUser& user, const char* title) {
    return user.menu()->itemWithTitle(title)->submenu() != nullptr;
  }
  const Lines& trash() { return platform.trash().paths(); }
  SimulatedKeyboard& keyboard() { return platform.keyboard(); }

  const std::shared_ptr<FolderItem> item = make(folder);
};

TEST_F(FolderMenuTrackingTest, TheMenuKnowsItsFolder) {
  openMenu([&](SimulatedMenuUser& user) {
    EXPECT_EQ(user.menu()->title(), folder);
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, ARestOfHalfASecondBringsTheSubmenu) {
  openMenu([&](SimulatedMenuUser& user) {
    user.rest(3);
    EXPECT_FALSE(hasSubmenu(user, "a.txt")) << "nothing is made that nobody asks for";
    user.highlight("a.txt");
    user.rest(0.55);
    EXPECT_FALSE(hasSubmenu(user, "a.txt"));
    user.rest(0.15);
    EXPECT_TRUE(hasSubmenu(user, "a.txt"));
    user.rest(0.3);
    EXPECT_EQ(user.shownItems(),
              (Lines{"Move to Trash...", "Show in Finder...", "Share via Email..."}));
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, WhoMovesOnGetsNone) {
  openMenu([&](SimulatedMenuUser& user) {
    for (int round = 0; round < 4; ++round) {
      user.highlight("a.txt");
      user.rest(0.4);
      user.highlight("inner");
      user.rest(0.4);
    }
    EXPECT_FALSE(hasSubmenu(user, "a.txt"));
    EXPECT_FALSE(hasSubmenu(user, "inner"));
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, AKeyThatIsStillHeldBringsItAtOnce) {
  struct Case {
    std::uint16_t key;
    bool brings;
  };
  const Case cases[] = {{KeyCodeLeftCommand, true}, {KeyCodeLeftOption, true},
                        {KeyCodeTab, true},         {KeyCodeRightShift, true},
                        {KeyCodeA, false},          {KeyCodeDown, false}};
  for (const Case& each : cases) {
    SCOPED_TRACE(each.key);
    openMenu([&](SimulatedMenuUser& user) {
      keyboard().press(each.key);
      user.highlight("a.txt");
      user.rest(0.12);
      EXPECT_EQ(hasSubmenu(user, "a.txt"), each.brings);
      keyboard().release(each.key);
      user.escape();
    });
  }
}

TEST_F(FolderMenuTrackingTest, TheTreeGoesAsDeepAsTheFolders) {
  openMenu([&](SimulatedMenuUser& user) {
    user.highlight("inner");
    user.rest(1);
    EXPECT_EQ(user.shownItems(), (Lines{"Move to Trash...", "-", "b.txt", "deep", "empty"}));
    EXPECT_EQ(user.menu()->title(), folder + "/inner");
    user.highlight("empty");
    user.rest(1);
    EXPECT_EQ(user.shownItems(), (Lines{"Move to Trash...", "-", "(No Contents)"}));
    user.highlightInOuterMenu("deep");
    user.rest(1);
    EXPECT_EQ(user.shownItems(), (Lines{"Move to Trash...", "-", "c.txt"}));
    user.choose("c.txt");
  });
  EXPECT_THAT(openedFiles(), ElementsAre(folder + "/inner/deep/c.txt"));
}

TEST_F(FolderMenuTrackingTest, EntriesOfAnOpenMenuTellWhatTheyAre) {
  openMenu([&](SimulatedMenuUser& user) {
    user.highlight("inner");
    user.rest(1);
    const auto entry = user.menu()->itemWithTitle("b.txt");
    EXPECT_EQ(entry->tag(), 192);
    EXPECT_EQ(entry->action().name, "openItem");
    EXPECT_EQ(pathOfEntry(*entry), folder + "/inner/b.txt");
    EXPECT_EQ(simulatedImageName(entry->image()), "icon:" + folder + "/inner/b.txt");
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, WhatIsGoneGetsNoSubmenu) {
  openMenu([&](SimulatedMenuUser& user) {
    files().removeItemAtPath(folder + "/inner");
    user.highlight("inner");
    user.rest(2);
    EXPECT_FALSE(hasSubmenu(user, "inner"));
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, ANamesakeIsNotTakenForWhatIsRecent) {
  quillbox->saveDictionary(
      PropertyList::dictionary(
          {{"RecentlyAccessedItems", PropertyList::Array{folder + "/inner/a.txt"}}}),
      "home.user.Work");
  files().putRaw(folder + "/inner/a.txt", "");
  openMenu([&](SimulatedMenuUser& user) {
    const auto recent = user.menu()->itemWithTitle("a.txt");
    ASSERT_EQ(pathOfEntry(*recent), folder + "/inner/a.txt");
    user.highlight("a.txt");
    user.rest(1);
    EXPECT_EQ(recent->submenu(), nullptr);
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, AVeryLargeFolderHasIconsOnlyWhereItIsLookedAt) {
  for (int number = 10000; number < 11000; ++number) {
    files().putRaw(folder + "/many/" + std::to_string(number), "");
  }
  files().makeFolder(folder + "/many/zz");
  openMenu([&](SimulatedMenuUser& user) {
    user.highlight("many");
    user.rest(1);
    const auto& entries = user.menu()->items();
    ASSERT_EQ(entries.size(), 2U + 1001U);
    EXPECT_EQ(simulatedImageName(entries.at(199)->image()), "icon:" + folder + "/many/10197");
    EXPECT_EQ(simulatedImageName(entries.at(200)->image()), "FileIcon");
    EXPECT_EQ(simulatedImageName(entries.back()->image()), "Folder");
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, APictureShowsBehindItsEntry) {
  for (const std::string name : {"view.JPG", "page.pdf"}) {
    SCOPED_TRACE(name);
    const std::string path = folder + '/' + name;
    files().putRaw(path, "");
    platform.graphics().putImageFile(path, {800, 200});
    openMenu([&](SimulatedMenuUser& user) {
      user.highlight(name);
      user.rest(1);
      EXPECT_EQ(user.shownItems(),
                (Lines{"Move to Trash...", "Show in Finder...", "Share via Email...", "-", ""}));
      const Image picture = user.menu()->items().back()->image();
      EXPECT_EQ(simulatedImageName(picture), "file:" + path);
      EXPECT_EQ(picture.size(), (Size{400, 100}));
      EXPECT_EQ(platform.graphics().largestImageWanted(), (Size{400, 400}));
      user.highlight(4);
      user.choose();
    });
    EXPECT_EQ(openedFiles().back(), path);
  }
}

TEST_F(FolderMenuTrackingTest, WhatHasNoPictureOrGoesBeforeItComesShowsNone) {
  files().putRaw(folder + "/damaged.png", "");
  files().putRaw(folder + "/late.png", "");
  platform.graphics().putImageFile(folder + "/late.png", {800, 200});
  openMenu([&](SimulatedMenuUser& user) {
    user.highlight("damaged.png");
    user.rest(1);
    EXPECT_EQ(user.shownItems().back(), "Share via Email...");
    platform.graphics().holdImages(true);
    user.highlightInOuterMenu("late.png");
    user.rest(1);
    EXPECT_EQ(user.shownItems().back(), "Share via Email...");
    user.escape();
  });
  platform.graphics().deliverImages();
}

// Shift.

TEST_F(FolderMenuTrackingTest, ShiftThrowsAFileAwayAtOnce) {
  openMenu([&](SimulatedMenuUser& user) {
    const auto entry = user.menu()->itemWithTitle("a.txt");
    user.highlight("a.txt");
    user.rest(1);
    ASSERT_NE(entry->submenu(), nullptr);
    user.closeSubmenu();
    keyboard().press(KeyCodeLeftShift);
    user.rest(0.11);
    EXPECT_THAT(trash(), ElementsAre(folder + "/a.txt"));
    EXPECT_EQ(notification(), "Successfully Moved to Trash");
    EXPECT_FALSE(entry->isEnabled());
    EXPECT_EQ(entry->submenu(), nullptr);
    EXPECT_TRUE(user.menuIsOpen());
    user.rest(1);
    EXPECT_THAT(trash(), ElementsAre(folder + "/a.txt")) << "once";
    keyboard().release(KeyCodeLeftShift);
    user.escape();
  });
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

TEST_F(FolderMenuTrackingTest, ShiftThrowsAFolderAwayToo) {
  openMenu([&](SimulatedMenuUser& user) {
    keyboard().press(KeyCodeLeftShift);
    user.highlight("inner");
    user.rest(0.11);
    keyboard().release(KeyCodeLeftShift);
    user.escape();
  });
  EXPECT_THAT(trash(), ElementsAre(folder + "/inner"));
}

TEST_F(FolderMenuTrackingTest, ShiftWorksInASubmenu) {
  openMenu([&](SimulatedMenuUser& user) {
    user.highlight("inner");
    user.rest(1);
    user.highlight("b.txt");
    keyboard().press(KeyCodeLeftShift);
    user.rest(0.11);
    keyboard().release(KeyCodeLeftShift);
    EXPECT_EQ(user.menu()->title(), folder + "/inner") << "it stays open";
    user.escape();
  });
  EXPECT_THAT(trash(), ElementsAre(folder + "/inner/b.txt"));
}

TEST_F(FolderMenuTrackingTest, ShiftDisablesEveryEntryOfTheSameFile) {
  quillbox->saveDictionary(
      PropertyList::dictionary({{"RecentlyAccessedItems", PropertyList::Array{folder + "/a.txt"}}}),
      "home.user.Work");
  openMenu([&](SimulatedMenuUser& user) {
    keyboard().press(KeyCodeLeftShift);
    user.highlight("a.txt");
    user.rest(0.11);
    keyboard().release(KeyCodeLeftShift);
    int disabled = 0;
    for (const auto& entry : user.menu()->items()) {
      if (entry->title() != "a.txt") continue;
      EXPECT_FALSE(entry->isEnabled());
      ++disabled;
    }
    EXPECT_EQ(disabled, 2);
    user.escape();
  });
  EXPECT_THAT(trash(), ElementsAre(folder + "/a.txt"));
}

TEST_F(FolderMenuTrackingTest, OnlyLeftShiftAndOnlyOverFiles) {
  openMenu([&](SimulatedMenuUser& user) {
    const auto tryKeys = [&](const std::string& title, std::vector<std::uint16_t> keys) {
      user.highlightNothing();
      user.rest(0.1);
      for (const auto key : keys) keyboard().press(key);
      user.highlight(title);
      user.rest(0.2);
      for (const auto key : keys) keyboard().release(key);
    };
    tryKeys("a.txt", {KeyCodeRightShift});
    tryKeys("a.txt", {KeyCodeLeftShift, KeyCodeLeftCommand});
    tryKeys("Open all 2 Contained Items", {KeyCodeLeftShift});
    EXPECT_THAT(trash(), IsEmpty());
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, WhatCannotGoIsToldOnce) {
  platform.trash().setError("No room.");
  openMenu([&](SimulatedMenuUser& user) {
    keyboard().press(KeyCodeLeftShift);
    user.highlight("a.txt");
    user.rest(0.11);
    EXPECT_EQ(notification(), "Unable to Move to Trash");
    user.rest(2.5);
    EXPECT_EQ(notification(), "none");
    keyboard().release(KeyCodeLeftShift);
    user.escape();
  });
  EXPECT_TRUE(files().fileExistsAtPath(folder + "/a.txt"));
}

TEST_F(FolderMenuTrackingTest, ShiftThrowsADownloadAway) {
  files().putRaw(downloads + "/a.part", "");
  FolderItemFixture::openMenu(make(downloads), [&](SimulatedMenuUser& user) {
    keyboard().press(KeyCodeLeftShift);
    user.highlight("a.part");
    user.rest(0.11);
    keyboard().release(KeyCodeLeftShift);
    EXPECT_EQ(user.menu()->itemWithTitle("a.part")->tag(), 192);
    user.escape();
  });
  EXPECT_THAT(trash(), ElementsAre(downloads + "/a.part"));
}

// More.

TEST_F(FolderMenuTrackingTest, RestingOnMoreBringsTheRest) {
  const auto many = make("/home/user/Many");
  fill("/home/user/Many", 15);
  FolderItemFixture::openMenu(many, [&](SimulatedMenuUser& user) {
    const auto more = user.menu()->items().size() - 1;
    EXPECT_EQ(user.menu()->items().at(more)->title(), "...More...");
    user.highlight(more);
    user.rest(0.7);
    const Lines lines = user.shownItems();
    EXPECT_EQ(Lines(lines.end() - 5, lines.end()), (Lines{"11", "12", "13", "14", "15"}));
    user.highlight("15");
    user.rest(1);
    EXPECT_EQ(user.shownItems().front(), "Move to Trash...");
    user.escape();
  });
}

TEST_F(FolderMenuTrackingTest, ChoosingMoreOpensAMenuOfAll) {
  const auto many = make("/home/user/Many");
  const Lines paths = fill("/home/user/Many", 15);
  many->setViewFrame(Rect::make(700, 100, 42, 42), false);
  host().addSubview(many->view());
  const double menuWidth = 2 * 7 + 42;
  const Point inWindow = many->view()->convertPointToView({21 - menuWidth / 2, 21 - 6}, nullptr);
  const Point corner = appDelegate->window()->frame().origin;
  SimulatedMenuPresenter& presenter = platform.menuPresenter();
  Lines lines, inner;
  FolderItemFixture::openMenu(many, [&](SimulatedMenuUser& user) {
    presenter.whenMenuOpens([&](SimulatedMenuUser& second) {
      lines = second.shownItems();
      second.highlight("02");
      second.rest(1);
      inner = second.shownItems();
      second.escape();
    });
    user.highlight(user.menu()->items().size() - 1);
    user.choose();
  });
  EXPECT_EQ(lines, (Lines{"01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11", "12",
                          "13", "14", "15"}));
  EXPECT_EQ(inner, (Lines{"Move to Trash...", "Show in Finder...", "Share via Email..."}));
  ASSERT_EQ(presenter.shown().size(), 2U);
  EXPECT_EQ(presenter.shown().back().title, "/home/user/Many");
  EXPECT_EQ(presenter.shown().back().location,
            (Point{corner.x + inWindow.x, corner.y + inWindow.y}));
  many->view()->removeFromSuperview();
  platform.runFor(5);
  EXPECT_FALSE(quillbox->popUpMenuIsBeingDisplayed());
}

TEST_F(FolderMenuTrackingTest, TheMenuOfAllDownloadsListsThem) {
  fill(downloads, 15);
  const auto place = make(downloads);
  EXPECT_EQ(linesOf(*place->folderMenu().menuForFolder(downloads, FolderMenuOptionNone)).size(),
            15U);
}

TEST_F(FolderMenuTrackingTest, TheItemMayGoWhileItsMenuIsOpen) {
  auto many = make("/home/user/Many");
  fill("/home/user/Many", 15);
  const auto menu = menuOf(many->configureMenuItems());
  many.reset();
  platform.menuPresenter().whenMenuOpens([](SimulatedMenuUser& user) {
    user.highlight(user.menu()->items().size() - 1);
    user.rest(1);
    user.choose("01");
  });
  quillbox->popUpMenu(menu, nullptr, {100, 100}, nullptr, nullptr);
  EXPECT_THAT(openedFiles(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
