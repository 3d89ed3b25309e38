#include "Quillbox/providers/ItemMove.h"

#include "Quillbox/Item/FileSystemItem.h"
#include "Quillbox/managers/DropboxManager.h"
#include "Quillbox/providers/TabRowProvider.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

/// An item of a path, of any type.
class PathItem : public FileSystemItem {
 public:
  PathItem(const std::string& path, std::int32_t type)
      : FileSystemItem(Rect::make(0, 0, 42, 42), "The Item", path), type_(type) {}
  std::int32_t type() const override { return type_; }

 private:
  std::int32_t type_;
};

class ItemMoveTest : public QuillboxFixture {
 protected:
  ItemMoveTest() {
    files().putRaw(source, "new");
    files().makeFolder(folder);
  }
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  std::shared_ptr<PathItem> item(std::int32_t type = ItemTypeFile) const {
    return std::make_shared<PathItem>(source, type);
  }
  const SimulatedDialogs::ShownAlert& lastAlert() {
    return platform.dialogs().shownAlerts().back();
  }

  const std::string source = "/home/user/Desktop/letter.txt", folder = "/home/user/Letters";
  const std::string destination = folder + "/letter.txt";
  const std::string dropbox = "/home/user/Dropbox";
};

TEST_F(ItemMoveTest, FilesAndFoldersMoveAndNothingElse) {
  for (std::int32_t type = ItemTypeGeneric; type <= ItemTypeDragAndDropPlaceholder; ++type) {
    const auto moved = item(type);
    const bool moves = type == ItemTypeFile || type == ItemTypeFolder;
    EXPECT_EQ(moveItemToFolder(*moved, folder), moves) << type;
    EXPECT_EQ(moved->path(), moves ? destination : source);
    EXPECT_EQ(files().fileExistsAtPath(destination), moves);
    files().removeItemAtPath(destination);
    files().putRaw(source, "new");
  }
  EXPECT_TRUE(platform.dialogs().shownAlerts().empty());
}

TEST_F(ItemMoveTest, AnItemWithoutAPathDoesNotMove) {
  class Pretender : public Item {
   public:
    Pretender() : Item(Rect::make(0, 0, 42, 42), std::string("letter.txt")) {}
    std::int32_t type() const override { return ItemTypeFile; }
  };
  EXPECT_FALSE(moveItemToFolder(*std::make_shared<Pretender>(), folder));
}

TEST_F(ItemMoveTest, WhatHasNoNameDoesNotMove) {
  for (const char* path : {"", "/"}) {
    PathItem nameless(path, ItemTypeFolder);
    EXPECT_FALSE(moveItemToFolder(nameless, folder));
  }
  EXPECT_TRUE(files().fileExistsAtPath(folder));
  EXPECT_TRUE(platform.dialogs().shownAlerts().empty());
}

TEST_F(ItemMoveTest, ReplacingIsAskedAbout) {
  files().putRaw(destination, "old");
  platform.dialogs().answerAlert("Replace");
  const auto moved = item();
  EXPECT_TRUE(moveItemToFolder(*moved, folder));
  EXPECT_EQ(lastAlert().messageText, "Move to Folder");
  EXPECT_EQ(lastAlert().informativeText,
            "An item named \"The Item\" already exists in that Folder.  Do you wish to replace it "
            "with the item you are moving?");
  EXPECT_EQ(lastAlert().buttons, (std::vector<std::string>{"Cancel", "Replace"}));
  EXPECT_EQ(files().raw(destination), "new");
  EXPECT_FALSE(files().fileExistsAtPath(source));
  EXPECT_EQ(moved->path(), destination);
}

TEST_F(ItemMoveTest, TheDropboxHasAQuestionOfItsOwn) {
  files().makeFolder(dropbox);
  quillbox->dropboxManager().setDropboxFolderPath(dropbox);
  files().putRaw(dropbox + "/letter.txt", "old");
  platform.dialogs().answerAlert("Replace");
  EXPECT_TRUE(moveItemToFolder(*item(), dropbox));
  EXPECT_EQ(lastAlert().messageText, "Move to Dropbox");
  EXPECT_EQ(lastAlert().informativeText,
            "An item named \"The Item\" already exists in your Dropbox.  Do you wish to replace it "
            "with the item you are moving?");
  EXPECT_EQ(lastAlert().buttons, (std::vector<std::string>{"Cancel", "Replace"}));
}

TEST_F(ItemMoveTest, ARefusalLeavesBothInPlace) {
  files().putRaw(destination, "old");
  platform.dialogs().answerAlert("Cancel");
  const auto moved = item();
  EXPECT_FALSE(moveItemToFolder(*moved, folder));
  EXPECT_EQ(files().raw(destination), "old");
  EXPECT_EQ(files().raw(source), "new");
  EXPECT_EQ(moved->path(), source);
}

TEST_F(ItemMoveTest, WhatCannotBeRemovedIsTold) {
  files().putRaw(destination, "old");
  files().setReadOnly(folder);
  platform.dialogs().answerAlert("Replace");
  platform.dialogs().answerAlert("OK");
  EXPECT_FALSE(moveItemToFolder(*item(), folder));
  EXPECT_EQ(lastAlert().messageText, "Unable to Move");
  EXPECT_EQ(lastAlert().informativeText,
            "The item could not be moved becuase the pre-existing item could not be removed.");
  EXPECT_EQ(lastAlert().buttons, std::vector<std::string>{"OK"});
  EXPECT_EQ(files().raw(destination), "old");
  EXPECT_EQ(files().raw(source), "new");
}

TEST_F(ItemMoveTest, AFailureOfTheMoveItselfIsSilent) {
  files().setReadOnly(folder);
  const auto moved = item();
  EXPECT_FALSE(moveItemToFolder(*moved, folder));
  EXPECT_TRUE(platform.dialogs().shownAlerts().empty());
  EXPECT_EQ(moved->path(), source);
}

TEST_F(ItemMoveTest, AMoveToWhereItIsAsksAndCostsTheFile) {
  platform.dialogs().answerAlert("Replace");
  const auto moved = item();
  EXPECT_FALSE(moveItemToFolder(*moved, "/home/user/Desktop"));
  EXPECT_EQ(platform.dialogs().shownAlerts().size(), 1U);
  EXPECT_FALSE(files().fileExistsAtPath(source));
  EXPECT_EQ(moved->path(), source);
}

TEST_F(ItemMoveTest, ProvidersMoveByIt) {
  const auto provider = std::make_shared<TabRowProvider>();
  const auto moved = item();
  EXPECT_TRUE(provider->moveItem(*moved, folder));
  EXPECT_EQ(moved->path(), destination);
}

}  // namespace
}  // namespace qb::test
