#include "Quillbox/Item/FilePaths.h"

#include <gtest/gtest.h>

namespace qb::test {
namespace {

TEST(FilePathsTest, TakesPathsApart) {
  struct Row {
    const char* path;
    const char* last;
    const char* extension;
    const char* name;
  };
  const Row rows[] = {
      {"/usr/share/applications/xterm.desktop", "xterm.desktop", "desktop", "xterm"},
      {"/usr/bin/xterm", "xterm", "", "xterm"},
      {"/home/user/folder.old/", "folder.old", "old", "folder"},
      {"/home/user/.profile", ".profile", "", ".profile"},
      {"/a/archive.tar.gz", "archive.tar.gz", "gz", "archive.tar"},
      {"plain.txt", "plain.txt", "txt", "plain"},
      {"/a/ends.", "ends.", "", "ends."},
      {"/", "/", "", "/"},
      {"", "", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(lastPathComponent(row.path), row.last);
    EXPECT_EQ(pathExtension(row.path), row.extension);
    EXPECT_EQ(fileNameFromFullPath(row.path, false), row.name);
    EXPECT_EQ(fileNameFromFullPath(row.path, true), row.last);
  }
}

}  // namespace
}  // namespace qb::test
