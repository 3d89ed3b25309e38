#include <gmock/gmock.h>

#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/FileSystemItem.h"
#include "support/FolderContentsFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FolderContentsTrashTest : public FolderContentsFixture {
 protected:
  FolderContentsTrashTest() {
    for (const char* name : {"a.desktop", "b.desktop"}) put(name);
    showFolder();
    showInRow();
  }
  /// The items are b, a and the button.
  std::shared_ptr<Item> item(std::size_t index) const { return row->items().at(index); }
  std::vector<double> alphas() const {
    std::vector<double> all;
    for (const auto& each : row->items()) all.push_back(each->view()->alphaValue());
    return all;
  }
};

TEST_F(FolderContentsTrashTest, AnItemGoesWhenTheUserAgrees) {
  const auto trashed = item(0);
  platform.dialogs().answerAlert("Move to Trash");
  EXPECT_TRUE(row->trashItem(trashed));
  EXPECT_EQ(lastAlert().messageText, "Move Item to Trash");
  EXPECT_EQ(lastAlert().informativeText, "Are you sure you want to move 'b.desktop' to the Trash?");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Move to Trash"));
  EXPECT_EQ(entryNames(), (Names{"a.desktop"}));
  EXPECT_EQ(trashed->view()->alphaValue(), 0.5);
  platform.runFor(1);
  EXPECT_THAT(platform.trash().paths(), ElementsAre(pathOf("b.desktop")));
  EXPECT_EQ(rowNames(), (Names{"a.desktop", "Open Work in Finder..."}));
}

TEST_F(FolderContentsTrashTest, ARefusalKeepsTheItem) {
  platform.dialogs().answerAlert("Cancel");
  EXPECT_FALSE(row->trashItem(item(0)));
  platform.runFor(1);
  EXPECT_THAT(platform.trash().paths(), IsEmpty());
  EXPECT_EQ(rowNames(), (Names{"b.desktop", "a.desktop", "Open Work in Finder..."}));
  EXPECT_EQ(item(0)->view()->alphaValue(), 1);
}

TEST_F(FolderContentsTrashTest, WhatIsNoEntryDoesNotGo) {
  platform.dialogs().answerAlert("Move to Trash");
  EXPECT_FALSE(contents->moveItemToTrash(*item(2)));
  platform.runFor(1);
  EXPECT_THAT(platform.trash().paths(), IsEmpty());
}

TEST_F(FolderContentsTrashTest, AnItemThatCannotGoComesBack) {
  platform.trash().setError("The volume is locked.");
  platform.dialogs().answerAlert("Move to Trash");
  platform.dialogs().answerAlert("OK");
  EXPECT_TRUE(row->trashItem(item(0)));
  platform.runFor(2);
  EXPECT_EQ(lastAlert().informativeText, "The volume is locked.");
  row->itemsHaveChangedWithMaintainSelection(false, false);
  platform.runFor(1);
  EXPECT_EQ(rowNames(), (Names{"b.desktop", "a.desktop", "Open Work in Finder..."}));
}

class Mover : public FileSystemItem {
 public:
  static std::shared_ptr<Mover> create(const std::string& path) {
    return std::shared_ptr<Mover>(new Mover(path));
  }
  std::int32_t type() const override { return ItemTypeFile; }

 private:
  explicit Mover(const std::string& path)
      : FileSystemItem(Rect::make(0, 0, 42, 42), lastPathComponent(path), path) {}
};

TEST_F(FolderContentsTrashTest, WhatIsMovedElsewhereLeavesTheList) {
  files().makeFolder("/home/user/Other");
  const auto mover = Mover::create(pathOf("a.desktop"));
  mover->setRepresentedObject(contents->filesAndFolders().at(1));
  EXPECT_TRUE(contents->moveItem(*mover, "/home/user/Other"));
  EXPECT_EQ(entryNames(), (Names{"b.desktop"}));
  EXPECT_TRUE(files().fileExistsAtPath("/home/user/Other/a.desktop"));
}

TEST_F(FolderContentsTrashTest, WhatCannotBeMovedStaysInTheList) {
  const auto mover = Mover::create(pathOf("a.desktop"));
  mover->setRepresentedObject(contents->filesAndFolders().at(1));
  EXPECT_FALSE(contents->moveItem(*mover, "/none"));
  EXPECT_EQ(entryNames(), (Names{"b.desktop", "a.desktop"}));
}

TEST_F(FolderContentsTrashTest, AllGoAfterTheyHaveFadedFromTheLastToTheFirst) {
  platform.dialogs().answerAlert("Move to Trash");
  contents->moveAllItemsToTrash();
  EXPECT_EQ(lastAlert().messageText, "Move Items to Trash");
  EXPECT_EQ(lastAlert().informativeText, "Are you sure you want to move all items to the trash??");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Move to Trash"));
  platform.runFor(0.049);
  EXPECT_LT(alphas()[2], 1);
  EXPECT_EQ(alphas()[1], 1);
  platform.runFor(0.05);
  EXPECT_LT(alphas()[1], 1);
  EXPECT_EQ(alphas()[0], 1);
  platform.runFor(0.05);
  EXPECT_LT(alphas()[0], 1);
  EXPECT_THAT(platform.trash().paths(), IsEmpty());
  EXPECT_EQ(entryNames(), (Names{"b.desktop", "a.desktop"}));
  platform.runFor(0.002);
  EXPECT_THAT(platform.trash().paths(), ElementsAre(pathOf("b.desktop"), pathOf("a.desktop")));
  platform.runFor(1);
  EXPECT_EQ(rowNames(), (Names{"Open Work in Finder..."}));
}

TEST_F(FolderContentsTrashTest, ARefusalKeepsAll) {
  platform.dialogs().answerAlert("Cancel");
  contents->moveAllItemsToTrash();
  platform.runFor(1);
  EXPECT_THAT(platform.trash().paths(), IsEmpty());
  EXPECT_EQ(alphas(), (std::vector<double>{1, 1, 1}));
}

TEST_F(FolderContentsTrashTest, NothingGoesOnceTheProviderHasGone) {
  platform.dialogs().answerAlert("Move to Trash");
  contents->moveAllItemsToTrash();
  row->setProvider(nullptr);
  contents.reset();
  platform.runFor(1);
  EXPECT_THAT(platform.trash().paths(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
