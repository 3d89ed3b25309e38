#include "Quillbox/Item/FileSystemItem.h"

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(0, 0, 42, 42);
const std::string path = "/home/user/Notes.txt";

class FileSystemItemTest : public QuillboxFixture {
 protected:
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
  EXPECT_FALSE(item->represenedFileSystemItemExists());
  platform.fileSystem().putRaw(path, "text");
  EXPECT_TRUE(item->represenedFileSystemItemExists());
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
