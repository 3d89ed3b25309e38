#include "Quillbox/activation/utilities/FileNames.h"

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

class FileNamesTest : public QuillboxFixture {
 protected:
  FileNamesTest() { files().makeFolder("/work"); }
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  std::string available(const std::string& name, const std::string& extension,
                        bool includePrecedingSlash = false) {
    return quillbox->availableFileNameInFolder("/work", name, extension, includePrecedingSlash);
  }
};

TEST_F(FileNamesTest, NamesShowAsUsersReadThem) {
  struct Row {
    const char* path;
    const char* whole;
    const char* withoutExtension;
  };
  const Row rows[] = {
      {"/work/My%20Letter.txt", "My Letter.txt", "My Letter"},
      {"/work/a%20%20b%20", "a  b ", "a  b "},
      {"/My%20Folder/plain.txt", "plain.txt", "plain"},
      {"/work/archive.tar.gz", "archive.tar.gz", "archive.tar"},
      {"/work/50%2", "50%2", "50%2"},
      {"", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(Quillbox::fileNameFromFullPath(row.path, true), row.whole);
    EXPECT_EQ(Quillbox::fileNameFromFullPath(row.path, false), row.withoutExtension);
  }
}

TEST_F(FileNamesTest, AFreeNameIsTakenAsItIs) {
  EXPECT_EQ(available("a", "txt"), "a.txt");
  EXPECT_EQ(available("a", ".txt"), "a.txt");
  EXPECT_EQ(available("a", "txt", true), "/a.txt");
}

TEST_F(FileNamesTest, ATakenNameGetsTheFirstFreeNumberFromTwoOn) {
  files().putRaw("/work/a.txt", "");
  EXPECT_EQ(available("a", "txt"), "a 2.txt");
  files().putRaw("/work/a 2.txt", "");
  files().putRaw("/work/a 4.txt", "");
  EXPECT_EQ(available("a", ".txt", true), "/a 3.txt");
}

TEST_F(FileNamesTest, ANameWithoutExtensionGetsNoDot) {
  files().makeFolder("/work/folder");
  EXPECT_EQ(available("folder", ""), "folder 2");
}

TEST_F(FileNamesTest, PercentSignsInNamesAreNothingSpecial) {
  files().putRaw("/work/100%@.txt", "");
  EXPECT_EQ(available("100%@", "txt"), "100%@ 2.txt");
}

TEST_F(FileNamesTest, NothingOnTheDesktopIsOverwritten) {
  EXPECT_EQ(quillbox->desktopPathWithName("Clipping", "png"), "/home/user/Desktop/Clipping.png");
  files().putRaw("/home/user/Desktop/Clipping.png", "");
  EXPECT_EQ(quillbox->desktopPathWithName("Clipping", "png"), "/home/user/Desktop/Clipping 2.png");
  files().putRaw("/home/user/Desktop/Clipping 2.png", "");
  EXPECT_EQ(quillbox->desktopPathWithName("Clipping", "png"), "/home/user/Desktop/Clipping 3.png");
}

TEST_F(FileNamesTest, WithoutADesktopTheNameIsAnIdentity) {
  files().setPathForDirectory(DesktopDirectory, std::nullopt);
  const std::string name = quillbox->desktopPathWithName("Clipping", "png");
  EXPECT_EQ(name.size(), 36U);
  EXPECT_EQ(name.find('/'), std::string::npos);
  EXPECT_NE(name, quillbox->desktopPathWithName("Clipping", "png"));
}

}  // namespace
}  // namespace qb::test
