#include "Quillbox/activation/utilities/FileKinds.h"

#include <gtest/gtest.h>

#include <vector>

namespace qb::test {
namespace {

const std::vector<std::string> all = {
    "jpg", "png",  "tif", "tiff", "bmp", "gif", "jpe", "ico",  "icns",        "jpeg", "txt",
    "rtf", "rtfd", "h",   "m",    "mm",  "c",   "pdf", "scpt", "savedSearch", "app",  "",
};

std::vector<std::string> extensionsOf(bool (*isOfKind)(const std::string&)) {
  std::vector<std::string> found;
  for (const std::string& extension : all) {
    if (isOfKind("/work.txt/My File." + extension)) found.push_back(extension);
  }
  return found;
}

using Extensions = std::vector<std::string>;

TEST(FileKindsTest, EachKindHasItsExtensions) {
  EXPECT_EQ(extensionsOf(FileKinds::fileAtPathIsImageFile),
            (Extensions{"jpg", "png", "tif", "tiff", "bmp", "gif", "jpe", "ico", "icns", "jpeg"}));
  EXPECT_EQ(extensionsOf(FileKinds::fileAtPathIsTextFile),
            (Extensions{"txt", "rtf", "rtfd", "h", "m", "mm", "c"}));
  EXPECT_EQ(extensionsOf(FileKinds::fileAtPathIsPDFFile), (Extensions{"pdf"}));
  EXPECT_EQ(extensionsOf(FileKinds::fileAtPathIsAppleScriptFile), (Extensions{"scpt"}));
}

TEST(FileKindsTest, TheCaseOfAnExtensionDoesNotMatter) {
  EXPECT_TRUE(FileKinds::fileAtPathIsImageFile("/work/a.JPG"));
  EXPECT_TRUE(FileKinds::fileAtPathIsTextFile("/work/a.TxT"));
  EXPECT_TRUE(FileKinds::fileAtPathIsPDFFile("/work/a.PDF"));
  EXPECT_TRUE(FileKinds::fileAtPathIsAppleScriptFile("/work/a.Scpt"));
  EXPECT_EQ(FileKinds::fileTypeDescriptorForFileAtPath("/work/a.PNG"), "public.png");
}

TEST(FileKindsTest, OnlyTheExtensionCounts) {
  for (const char* path : {"/work/png", "/work/.png", "/work/png.", "/work/a.png2", "/work/apng",
                           "/work/a.png/b", ""}) {
    EXPECT_FALSE(FileKinds::fileAtPathIsImageFile(path)) << path;
    EXPECT_EQ(FileKinds::fileTypeDescriptorForFileAtPath(path), "unknown") << path;
  }
  EXPECT_TRUE(FileKinds::fileAtPathIsImageFile("/work/a.txt.png"));
}

TEST(FileKindsTest, SomeKindsHaveADescriptor) {
  struct Row {
    const char *extension, *descriptor;
  };
  const Row rows[] = {
      {"rtf", "public.rtf"},
      {"rtfd", "com.apple.flat-rtfd"},
      {"txt", "public.utf8-plain-text"},
      {"h", "public.utf8-plain-text"},
      {"m", "public.utf8-plain-text"},
      {"c", "public.utf8-plain-text"},
      {"mm", "public.utf8-plain-text"},
      {"tiff", "public.tiff"},
      {"png", "public.png"},
      {"jpg", "public.jpg"},
      {"jpeg", "public.jpg"},
      {"pdf", "com.adobe.pdf"},
      // An image without one.
      {"tif", "unknown"},
      {"gif", "unknown"},
      {"scpt", "unknown"},
      {"", "unknown"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FileKinds::fileTypeDescriptorForPathExtension(row.extension), row.descriptor);
    EXPECT_EQ(FileKinds::fileTypeDescriptorForFileAtPath(std::string("/work/a.") + row.extension),
              row.descriptor);
  }
}

}  // namespace
}  // namespace qb::test
