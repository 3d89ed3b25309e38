#include "Quillbox/activation/utilities/FileItems.h"

#include <gmock/gmock.h>

#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/Item/FileItem.h"
#include "Quillbox/Item/FolderItem.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const Rect cell = Rect::make(0, 0, 42, 42);

class FileItemsTest : public QuillboxFixture {
 protected:
  FileItemsTest() {
    files().putRaw("/work/a.txt", "");
    files().putRaw("/work/Editor.desktop", "");
    files().makeFolder("/work/folder");
    files().makeFolder("/work/letter.rtfd");
    files().mountVolume("/media/disk");
  }
  SimulatedFileSystem& files() { return platform.fileSystem(); }
};

TEST_F(FileItemsTest, TheTypeOfAPathIsThatOfWhatIsThere) {
  struct Row {
    const char* path;
    std::int32_t type;
  };
  const Row rows[] = {
      {"", 18},
      {"/media/disk", ItemTypeVolume},
      {"/", ItemTypeVolume},
      {"/work/Editor.desktop", ItemTypeApplication},
      {"/work/folder", ItemTypeFolder},
      {"/work/letter.rtfd", ItemTypeFile},
      {"/work/a.txt", ItemTypeFile},
      {"/work/missing", ItemTypeFile},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(quillbox->itemTypeForFileSystemObjectAtPath(row.path), row.type) << row.path;
  }
}

TEST_F(FileItemsTest, AnApplicationBecomesAnApplicationItem) {
  platform.workspace().install({"org.editor", "Editor", "/work/Editor.desktop"});
  const auto item = std::dynamic_pointer_cast<ApplicationItem>(
      quillbox->createFileSystemItemWithFrame(cell, "Mine", "/work/Editor.desktop"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->name(), "Mine");
  EXPECT_EQ(item->path(), "/work/Editor.desktop");
  EXPECT_EQ(item->bundleIdentifier(), "org.editor");
  EXPECT_EQ(item->view()->frame(), cell);
}

TEST_F(FileItemsTest, FoldersAndVolumesBecomeItemsOfTheirTypes) {
  for (const char* path : {"/work/folder", "/media/disk"}) {
    const auto item = std::dynamic_pointer_cast<FolderItem>(
        quillbox->createFileSystemItemWithFrame(cell, "Mine", path));
    ASSERT_TRUE(item) << path;
    EXPECT_EQ(item->type(), quillbox->itemTypeForFileSystemObjectAtPath(path));
    EXPECT_EQ(item->name(), "Mine");
    EXPECT_EQ(item->path(), path);
  }
}

TEST_F(FileItemsTest, AnythingElseThatIsNoFolderBecomesAFileItem) {
  for (const char* path : {"/work/a.txt", "/work/letter.rtfd", "/work/missing"}) {
    const auto item = quillbox->createFileSystemItemWithFrame(cell, "Mine", path);
    ASSERT_TRUE(std::dynamic_pointer_cast<FileItem>(item)) << path;
    EXPECT_EQ(item->name(), "Mine");
    EXPECT_EQ(item->path(), path);
    EXPECT_EQ(item->view()->frame(), cell);
  }
}

TEST_F(FileItemsTest, NoPathBecomesNoItem) {
  EXPECT_FALSE(quillbox->createFileSystemItemWithFrame(cell, "Nothing", ""));
}

TEST_F(FileItemsTest, AMissingFileIsToldByItsName) {
  platform.dialogs().answerAlert("OK");
  quillbox->performSelectionActionForFileAtPath("/work/My%20Letter.txt");
  ASSERT_THAT(platform.dialogs().shownAlerts(), SizeIs(1));
  const auto& alert = platform.dialogs().shownAlerts().front();
  EXPECT_EQ(alert.messageText, "Item Missing");
  EXPECT_EQ(alert.informativeText, "\"My Letter\" cannot be found.");
  EXPECT_THAT(alert.buttons, ElementsAre("OK"));
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
}

TEST_F(FileItemsTest, AScriptRunsAThirdOfASecondLater) {
  files().putRaw("/work/Greeting.SCPT", "do shell script \"greet\"");
  quillbox->performSelectionActionForFileAtPath("/work/Greeting.SCPT");
  platform.runFor(0.32);
  EXPECT_THAT(platform.scripts().shellCommands(), IsEmpty());
  platform.runFor(0.02);
  EXPECT_THAT(platform.scripts().shellCommands(), ElementsAre("greet"));
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
}

TEST_F(FileItemsTest, AnyOtherFileOpens) {
  quillbox->performSelectionActionForFileAtPath("/work/a.txt");
  EXPECT_THAT(platform.applicationControl().openedFiles(), ElementsAre("/work/a.txt"));
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
