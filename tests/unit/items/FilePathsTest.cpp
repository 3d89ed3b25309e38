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

TEST(FilePathsTest, AFileIsInItsParentFolder) {
  const struct {
    const char* path;
    const char* parent;
  } rows[] = {
      {"/home/user/letter.txt", "/home/user"},
      {"/home/user/folder/", "/home/user"},
      {"/home//letter.txt", "/home"},
      {"/home", "/"},
      {"letters/letter.txt", "letters"},
      {"letter.txt", ""},
      {"/", "/"},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(pathOfParentFolder(row.path), row.parent) << row.path;
}

}  // namespace
}  // namespace qb::test
