#include "Quillbox/Item/FileSystemItem.h"

#include <gmock/gmock.h>

#include "Quillbox/managers/ImageManager.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(0, 0, 42, 42);
const std::string path = "/home/user/Notes.txt";

class FileSystemItemTest : public QuillboxFixture {
 protected:
  FileSystemItemTest() { platform.fileSystem().putRaw(path, "text"); }
  int iconRequests() { return platform.graphics().numberOfIconRequests(path); }
};

TEST_F(FileSystemItemTest, IsNamedAfterItsFile) {
  const auto item = FileSystemItem::create(cell, path);
  EXPECT_EQ(item->name(), "Notes");
  EXPECT_EQ(item->path(), path);
  EXPECT_EQ(FileSystemItem::create(cell, "Mine", path)->name(), "Mine");
}

TEST_F(FileSystemItemTest, AnswersForItsFile) {
  const auto item = FileSystemItem::create(cell, path);
  EXPECT_TRUE(item->configurable());
  EXPECT_TRUE(item->previewable());
  EXPECT_TRUE(item->representsFileSystemItem());
  EXPECT_EQ(item->decorationKey(), path);
  EXPECT_EQ(item->hotKeyIdentifier(), path);
}

TEST_F(FileSystemItemTest, KnowsWhetherItsFileIsThere) {
  const auto item = FileSystemItem::create(cell, path);
  EXPECT_TRUE(item->exists());
  EXPECT_TRUE(item->represenedFileSystemItemExists());
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
  platform.fileSystem().removeItemAtPath(path);
  EXPECT_FALSE(item->exists());
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
  EXPECT_FALSE(item->represenedFileSystemItemExists());
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownFile");
}

TEST_F(FileSystemItemTest, TakesAnyImageInPlaceOfItsIcon) {
  const auto item =
      FileSystemItem::create(cell, platform.graphics().imageNamed("Other"), "Mine", path);
  platform.runFor(0.2);
  EXPECT_EQ(simulatedImageName(item->image()), "Other");
  EXPECT_EQ(item->name(), "Mine");
  EXPECT_EQ(item->path(), path);
  EXPECT_EQ(iconRequests(), 0);
}

TEST_F(FileSystemItemTest, AMissingFileHasAnIconOfItsOwnUntilItComes) {
  platform.fileSystem().removeItemAtPath(path);
  const auto item = FileSystemItem::create(cell, path);
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownFile");
  EXPECT_EQ(simulatedImageName(item->getBaseIconImage()), "UnknownFile");
  platform.runFor(0.2);
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownFile");
  EXPECT_EQ(iconRequests(), 0);
  platform.fileSystem().putRaw(path, "text");
  EXPECT_EQ(simulatedImageName(item->getBaseIconImage()), "generic icon");
}

TEST_F(FileSystemItemTest, ValidationKeepsTheIconOfAFileThatIsThere) {
  const auto item = FileSystemItem::create(cell, path);
  platform.runFor(0.2);
  item->validateIcon();
  EXPECT_EQ(simulatedImageName(item->image()), "icon:" + path);
}

TEST_F(FileSystemItemTest, ValidationFreesTheIconOfAFileThatHasGone) {
  const auto item = FileSystemItem::create(cell, path);
  platform.runFor(0.2);
  platform.fileSystem().removeItemAtPath(path);
  item->validateIcon();
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownFile");
  platform.graphics().holdIcons(true);
  EXPECT_EQ(simulatedImageName(quillbox->imageManager().iconForFile(path, nullptr)),
            "generic icon");
}

TEST_F(FileSystemItemTest, ANewLocationChangesThePathAlone) {
  const auto item = FileSystemItem::create(cell, path);
  platform.runFor(0.2);
  item->noteNewLocationAtPath("/home/user/Documents/Letter.txt");
  EXPECT_EQ(item->path(), "/home/user/Documents/Letter.txt");
  EXPECT_EQ(item->decorationKey(), "/home/user/Documents/Letter.txt");
  EXPECT_EQ(item->name(), "Notes");
  EXPECT_EQ(simulatedImageName(item->image()), "icon:" + path);
}

TEST_F(FileSystemItemTest, StandsForAnotherFileWhenTold) {
  const std::string other = "/home/user/Old%20Letter.txt";
  platform.fileSystem().putRaw(other, "text");
  platform.fileSystem().removeItemAtPath(path);
  const auto item = FileSystemItem::create(cell, "Mine", path);
  const auto saves = host().stateChanged().generation();
  item->representFileSystemObjectAtPath(other);
  EXPECT_EQ(item->path(), other);
  EXPECT_EQ(item->name(), "Old Letter");
  EXPECT_EQ(host().stateChanged().generation(), saves + 1);
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
  platform.runFor(1);
  EXPECT_EQ(simulatedImageName(item->image()), "icon:" + other);
}

TEST_F(FileSystemItemTest, AnIconOfTheFileThatItStoodForIsDropped) {
  const std::string other = "/home/user/Letter.txt";
  platform.fileSystem().putRaw(other, "text");
  platform.graphics().holdIcons(true);
  const auto item = FileSystemItem::create(cell, path);
  platform.runFor(0.2);
  item->noteNewLocationAtPath(other);
  platform.graphics().deliverIcons();
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
}

TEST_F(FileSystemItemTest, KnowsWhatItsPathIs) {
  platform.fileSystem().putRaw("/work/Editor.desktop", "");
  platform.fileSystem().makeFolder("/work/folder");
  platform.fileSystem().makeFolder("/work/letter.rtfd");
  platform.fileSystem().mountVolume("/media/disk");
  struct Row {
    const char* path;
    bool application, folder;
  };
  const Row rows[] = {
      {"/home/user/Notes.txt", false, false},
      {"/work/Editor.desktop", true, false},
      {"/work/folder", false, true},
      {"/work/letter.rtfd", false, false},
      {"/media/disk", false, true},
      {"/work/missing", false, false},
      {"/work/missing folder.desktop", false, false},
  };
  for (const Row& row : rows) {
    const auto item = FileSystemItem::create(cell, std::string(row.path));
    EXPECT_EQ(item->representsApplication(), row.application) << row.path;
    EXPECT_EQ(item->representsFolder(), row.folder) << row.path;
  }
}

TEST_F(FileSystemItemTest, InvokingOpensTheFile) {
  const auto item = FileSystemItem::create(cell, path);
  item->invoke();
  EXPECT_THAT(platform.applicationControl().openedFiles(), testing::ElementsAre(path));
}

TEST_F(FileSystemItemTest, InvokingAMissingFileShowsThatItHasGoneAndSaysNothing) {
  const auto item = FileSystemItem::create(cell, path);
  platform.fileSystem().removeItemAtPath(path);
  item->invoke();
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownFile");
  EXPECT_THAT(platform.applicationControl().openedFiles(), testing::ElementsAre(path));
  EXPECT_THAT(platform.dialogs().shownAlerts(), testing::IsEmpty());
}

TEST_F(FileSystemItemTest, IdentifyingItDoesNothing) {
  const auto item = FileSystemItem::create(cell, path);
  item->identifyMissingRepresentedItem();
  EXPECT_EQ(item->path(), path);
}

TEST_F(FileSystemItemTest, TheQuickLookComesWhenThePanelHasGone) {
  const auto item = FileSystemItem::create(cell, path);
  open(ActivationMethodCorner);
  item->preview();
  platform.runFor(0.02);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
  platform.runFor(0.22);
  EXPECT_THAT(platform.fileViewer().previewedFiles(), testing::IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(platform.fileViewer().previewedFiles(), testing::ElementsAre(path));
}

TEST_F(FileSystemItemTest, ThereIsNoQuickLookAtAnItemThatHasGone) {
  FileSystemItem::create(cell, path)->preview();
  platform.runFor(0.5);
  EXPECT_THAT(platform.fileViewer().previewedFiles(), testing::IsEmpty());
}

TEST_F(FileSystemItemTest, SavesItsPath) {
  const auto item = FileSystemItem::create(cell, "Mine", path);
  EXPECT_EQ(item->state(),
            PropertyList::dictionary(
                {{"Item Name", "Mine"}, {"Item Unique ID", item->uniqueID()}, {"Path", path}}));
  const auto restored = FileSystemItem::create(cell, item->state());
  EXPECT_EQ(restored->path(), path);
  EXPECT_EQ(restored->name(), "Mine");
  EXPECT_EQ(restored->uniqueID(), item->uniqueID());
  EXPECT_EQ(simulatedImageName(restored->image()), "generic icon");
}

TEST_F(FileSystemItemTest, DuplicateStandsForTheSameFile) {
  const auto copy = FileSystemItem::create(cell, "Mine", path)->duplicate();
  const auto* file = dynamic_cast<FileSystemItem*>(copy.get());
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->path(), path);
  EXPECT_EQ(file->name(), "Mine");
}

TEST_F(FileSystemItemTest, ShowsWhatIconThereIsAndTheBestOneLater) {
  platform.graphics().holdIcons(true);
  const auto item = FileSystemItem::create(cell, path);
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
  EXPECT_EQ(iconRequests(), 1);
  platform.runFor(0.099);
  EXPECT_EQ(iconRequests(), 1);
  platform.runFor(0.002);
  EXPECT_EQ(iconRequests(), 2);
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
  platform.graphics().deliverIcons();
  EXPECT_EQ(simulatedImageName(item->image()), "icon:" + path);
  EXPECT_EQ(item->image().size(), (Size{42, 42}));
}

TEST_F(FileSystemItemTest, ShowsAnIconThatComesBeforeTheSecondRequest) {
  platform.graphics().holdIcons(true);
  const auto item = FileSystemItem::create(cell, path);
  EXPECT_EQ(simulatedImageName(item->image()), "generic icon");
  platform.graphics().deliverIcons();
  platform.runFor(0.2);
  EXPECT_EQ(simulatedImageName(item->image()), "icon:" + path);
}

TEST_F(FileSystemItemTest, ShowsAKnownIconAtOnce) {
  const auto first = FileSystemItem::create(cell, path);
  platform.runFor(0.2);
  const auto second = FileSystemItem::create(cell, path);
  EXPECT_EQ(simulatedImageName(second->image()), "icon:" + path);
  EXPECT_EQ(simulatedImageName(second->getBaseIconImage()), "icon:" + path);
}

TEST_F(FileSystemItemTest, AnItemThatHasGoneAsksForNoIcon) {
  FileSystemItem::create(cell, path);
  platform.runFor(0.2);
  EXPECT_EQ(iconRequests(), 1);
}

TEST_F(FileSystemItemTest, AnIconForAnItemThatHasGoneIsDropped) {
  platform.graphics().holdIcons(true);
  auto item = FileSystemItem::create(cell, path);
  const auto view = item->view();
  platform.runFor(0.2);
  item.reset();
  platform.graphics().deliverIcons();
  EXPECT_EQ(quillbox->registeredItems().size(), 0U);
}

}  // namespace
}  // namespace qb::test
