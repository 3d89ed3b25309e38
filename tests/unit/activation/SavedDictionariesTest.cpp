#include "Quillbox/activation/SavedDictionaries.h"

#include <gmock/gmock.h>

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

constexpr char newPath[] = "/home/user/.local/share/Quillbox/Data/Cubbyhole";
constexpr char oldPath[] = "/home/user/Library/Preferences/com.vorlane.quillbox.Cubbyhole";

class SavedDictionariesTest : public QuillboxFixture {
 protected:
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  static PropertyList numbered(int number) {
    return PropertyList::dictionary({{"number", number}});
  }
};

TEST_F(SavedDictionariesTest, EachKeyHasAFileInAFolderThatIsMade) {
  EXPECT_EQ(quillbox->savedDictionaryPathWithKey("Cubbyhole"), newPath);
  EXPECT_TRUE(files().fileExistsAtPath("/home/user/.local/share/Quillbox/Data"));
  EXPECT_EQ(quillbox->savedDictionaryLegacyPathWithKey("Cubbyhole"), oldPath);
}

TEST_F(SavedDictionariesTest, WhatIsSavedIsLoaded) {
  EXPECT_FALSE(quillbox->loadDictionaryForKey("Cubbyhole"));
  EXPECT_TRUE(quillbox->saveDictionary(numbered(1), "Cubbyhole"));
  EXPECT_EQ(quillbox->loadDictionaryForKey("Cubbyhole"), numbered(1));
  EXPECT_EQ(files().propertyList(newPath), numbered(1));
}

TEST_F(SavedDictionariesTest, OfTwoFilesTheNewOneCounts) {
  files().putPropertyList(newPath, numbered(2));
  files().putPropertyList(oldPath, numbered(1));
  EXPECT_EQ(quillbox->loadDictionaryForKey("Cubbyhole"), numbered(2));
}

TEST_F(SavedDictionariesTest, WhatAnOlderVersionLeftIsReadAndMovesWhenSaved) {
  files().putPropertyList(oldPath, numbered(1));
  EXPECT_EQ(quillbox->loadDictionaryForKey("Cubbyhole"), numbered(1));
  EXPECT_TRUE(quillbox->saveDictionary(numbered(2), "Cubbyhole"));
  EXPECT_EQ(files().propertyList(newPath), numbered(2));
  EXPECT_EQ(files().propertyList(oldPath), numbered(1));
}

TEST_F(SavedDictionariesTest, AnUnreadableNewFileCountsAsAbsent) {
  files().putRaw(newPath, "damaged");
  EXPECT_FALSE(quillbox->loadDictionaryForKey("Cubbyhole"));
  files().putPropertyList(oldPath, numbered(1));
  EXPECT_EQ(quillbox->loadDictionaryForKey("Cubbyhole"), numbered(1));
}

TEST_F(SavedDictionariesTest, DeletingRemovesBothFiles) {
  files().putPropertyList(newPath, numbered(2));
  files().putPropertyList(oldPath, numbered(1));
  quillbox->deleteDictionaryForKey("Cubbyhole");
  EXPECT_FALSE(files().fileExistsAtPath(newPath));
  EXPECT_FALSE(files().fileExistsAtPath(oldPath));
  EXPECT_FALSE(quillbox->loadDictionaryForKey("Cubbyhole"));
}

TEST_F(SavedDictionariesTest, DeletingWhatIsNotThereIsHarmless) {
  quillbox->deleteDictionaryForKey("Cubbyhole");
  EXPECT_FALSE(quillbox->loadDictionaryForKey("Cubbyhole"));
}

TEST_F(SavedDictionariesTest, AFailedWriteAnswersFalse) {
  EXPECT_TRUE(quillbox->saveDictionary(numbered(1), "Cubbyhole"));
  files().setWritesFail(true);
  EXPECT_FALSE(quillbox->saveDictionary(numbered(2), "Cubbyhole"));
  EXPECT_EQ(quillbox->loadDictionaryForKey("Cubbyhole"), numbered(1));
}

}  // namespace
}  // namespace qb::test
