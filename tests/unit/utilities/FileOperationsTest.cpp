#include "Quillbox/activation/utilities/FileOperations.h"

#include <gmock/gmock.h>

#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class FileOperationsTest : public QuillboxFixture {
 protected:
  FileOperationsTest() {
    files().makeFolder("/there");
    put("/here/a.txt", "new a");
    put("/here/b.txt", "new b");
  }
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  void put(const std::string& path, const std::string& contents) { files().putRaw(path, contents); }
  std::string at(const std::string& path) { return files().raw(path).value_or("nothing"); }
  void answer(const char* button) { platform.dialogs().answerAlert(button); }
  std::size_t numberOfQuestions() { return platform.dialogs().shownAlerts().size(); }

  /// The text of the notification that is up now, "none" without one.
  std::string notification() {
    const auto windows = platform.windowServer().visibleWindows();
    if (windows.empty()) return "none";
    return platform.windowServer().paint(*windows.front()).texts().back();
  }
  /// The text that comes a tenth of a second later, with the time it stays: "text for 1".
  std::string toldAfterwards() {
    platform.runFor(0.09);
    EXPECT_EQ(notification(), "none");
    platform.runFor(0.02);
    const std::string text = notification();
    int tenths = 0;
    const auto isFull = [this] {
      const auto windows = platform.windowServer().visibleWindows();
      return !windows.empty() && windows.front()->contentAlphaValue() == 1;
    };
    for (; isFull(); ++tenths) platform.runFor(0.1);
    // It fades from then on.
    const int seconds = tenths / 10;
    return text + " for " + std::to_string(seconds);
  }
};

TEST_F(FileOperationsTest, FilesWithoutConflictMoveWithoutAQuestion) {
  quillbox->moveItems({"/here/a.txt", "/here/b.txt"}, "/there");
  EXPECT_EQ(at("/there/a.txt"), "new a");
  EXPECT_EQ(at("/there/b.txt"), "new b");
  EXPECT_EQ(at("/here/a.txt"), "nothing");
  EXPECT_EQ(numberOfQuestions(), 0U);
}

TEST_F(FileOperationsTest, CopiesLeaveTheirSources) {
  quillbox->copyItems({"/here/a.txt"}, "/there/");
  EXPECT_EQ(at("/there/a.txt"), "new a");
  EXPECT_EQ(at("/here/a.txt"), "new a");
}

TEST_F(FileOperationsTest, TheQuestionIsAskedByAScript) {
  put("/there/a.txt", "old a");
  answer("Stop");
  quillbox->moveItems({"/here/a.txt"}, "/there");
  EXPECT_THAT(platform.scripts().executed(),
              ElementsAre("\rtell application \"Quillbox\"\rset itemName to \"a.txt\"\rdisplay "
                          "alert \"An item named \" & itemName & \" already exists in this "
                          "location. Do you want to replace it with the one you're moving?\" "
                          "buttons {\"Keep Both\", \"Stop\", \"Replace\"}\rend tell\r"));
  ASSERT_EQ(numberOfQuestions(), 1U);
  EXPECT_EQ(platform.dialogs().shownAlerts().front().messageText,
            "An item named a.txt already exists in this location. Do you want to replace it with "
            "the one you're moving?");
}

TEST_F(FileOperationsTest, ANameCannotEndTheScriptsText) {
  const std::string name = "a\" & (do shell script \"x\") & \"\\.txt";
  put("/here/" + name, "new");
  put("/there/" + name, "old");
  answer("Replace");
  quillbox->moveItems({"/here/" + name}, "/there");
  ASSERT_EQ(numberOfQuestions(), 1U);
  EXPECT_EQ(platform.dialogs().shownAlerts().front().messageText,
            "An item named " + name +
                " already exists in this location. Do you want to replace it with the one you're "
                "moving?");
  EXPECT_THAT(platform.scripts().shellCommands(), IsEmpty());
  EXPECT_EQ(at("/there/" + name), "new");
}

TEST_F(FileOperationsTest, KeepingBothGivesTheNewOneANumber) {
  put("/there/a.txt", "old a");
  answer("Keep Both");
  quillbox->moveItems({"/here/a.txt"}, "/there");
  EXPECT_EQ(at("/there/a.txt"), "old a");
  EXPECT_EQ(at("/there/a 2.txt"), "new a");
  EXPECT_EQ(at("/here/a.txt"), "nothing");
}

TEST_F(FileOperationsTest, KeepingBothOfFoldersGivesANumberWithoutADot) {
  put("/here/folder/inside", "new");
  put("/there/folder/inside", "old");
  answer("Keep Both");
  quillbox->copyItems({"/here/folder"}, "/there");
  EXPECT_EQ(at("/there/folder/inside"), "old");
  EXPECT_EQ(at("/there/folder 2/inside"), "new");
}

TEST_F(FileOperationsTest, ReplacingPutsTheNewOneInTheOldOnesPlace) {
  put("/there/a.txt", "old a");
  answer("Replace");
  quillbox->copyItems({"/here/a.txt"}, "/there");
  EXPECT_EQ(at("/there/a.txt"), "new a");
}

TEST_F(FileOperationsTest, StopAtTheSecondLeavesTheFirstToo) {
  put("/there/b.txt", "old b");
  answer("Stop");
  quillbox->moveItems({"/here/a.txt", "/here/b.txt"}, "/there");
  EXPECT_EQ(at("/here/a.txt"), "new a");
  EXPECT_EQ(at("/here/b.txt"), "new b");
  EXPECT_EQ(at("/there/a.txt"), "nothing");
  EXPECT_EQ(at("/there/b.txt"), "old b");
  platform.runFor(0.2);
  EXPECT_EQ(notification(), "none");
}

TEST_F(FileOperationsTest, StopEndsTheQuestionsToo) {
  put("/there/a.txt", "old a");
  put("/there/b.txt", "old b");
  answer("Stop");
  quillbox->moveItems({"/here/a.txt", "/here/b.txt"}, "/there");
  EXPECT_EQ(numberOfQuestions(), 1U);
}

TEST_F(FileOperationsTest, EachConflictHasItsOwnAnswer) {
  put("/there/a.txt", "old a");
  put("/there/b.txt", "old b");
  answer("Keep Both");
  answer("Replace");
  quillbox->moveItems({"/here/a.txt", "/here/b.txt"}, "/there");
  EXPECT_EQ(at("/there/a.txt"), "old a");
  EXPECT_EQ(at("/there/a 2.txt"), "new a");
  EXPECT_EQ(at("/there/b.txt"), "new b");
}

TEST_F(FileOperationsTest, TwoFilesOfOneNameAreAConflictOfTheirOwn) {
  put("/elsewhere/a.txt", "another a");
  answer("Keep Both");
  quillbox->moveItems({"/here/a.txt", "/elsewhere/a.txt"}, "/there");
  EXPECT_EQ(at("/there/a.txt"), "new a");
  EXPECT_EQ(at("/there/a 2.txt"), "another a");
  EXPECT_EQ(numberOfQuestions(), 1U);
}

TEST_F(FileOperationsTest, KeepingBothOfTwoFilesOfOneNameTakesTwoNumbers) {
  put("/elsewhere/a.txt", "another a");
  put("/there/a.txt", "old a");
  answer("Keep Both");
  answer("Keep Both");
  quillbox->moveItems({"/here/a.txt", "/elsewhere/a.txt"}, "/there");
  EXPECT_EQ(at("/there/a.txt"), "old a");
  EXPECT_EQ(at("/there/a 2.txt"), "new a");
  EXPECT_EQ(at("/there/a 3.txt"), "another a");
}

TEST_F(FileOperationsTest, ReplacingAFileWithItselfKeepsIt) {
  for (const char* answers : {"Replace", "Replace"}) answer(answers);
  quillbox->moveItems({"/here/a.txt"}, "/here");
  EXPECT_EQ(at("/here/a.txt"), "new a");
  quillbox->copyItems({"/here/a.txt"}, "/here");
  EXPECT_EQ(at("/here/a.txt"), "new a");
}

TEST_F(FileOperationsTest, AFolderDoesNotMoveIntoItself) {
  put("/here/folder/inside", "kept");
  quillbox->moveItems({"/here/folder"}, "/here/folder");
  EXPECT_EQ(at("/here/folder/inside"), "kept");
  EXPECT_EQ(toldAfterwards(), "Could not Move File for 3");
}

TEST_F(FileOperationsTest, WhatFailsLeavesWhatItWasToReplace) {
  put("/there/a.txt", "old a");
  files().setWritesFail(true);
  answer("Replace");
  quillbox->copyItems({"/here/a.txt"}, "/there");
  files().setWritesFail(false);
  EXPECT_EQ(at("/there/a.txt"), "old a");
  EXPECT_EQ(toldAfterwards(), "Could not Copy File for 3");
}

TEST_F(FileOperationsTest, NothingToMoveIsNotWorthAWord) {
  quillbox->moveItems({}, "/there");
  platform.runFor(0.2);
  EXPECT_EQ(notification(), "none");
}

struct ResultRow {
  bool moves;
  int files, failures;
  const char* told;
};

void PrintTo(const ResultRow& row, std::ostream* out) { *out << row.told; }

class FileOperationResultsTest : public FileOperationsTest,
                                 public testing::WithParamInterface<ResultRow> {};

TEST_P(FileOperationResultsTest, AreTold) {
  const ResultRow& row = GetParam();
  std::vector<std::string> paths;
  for (int number = 0; number < row.files; ++number) {
    paths.push_back("/here/" + std::to_string(number));
    // A file that has gone meanwhile.
    if (number >= row.failures) put(paths.back(), "contents");
  }
  if (row.moves) {
    quillbox->moveItems(paths, "/there");
  } else {
    quillbox->copyItems(paths, "/there");
  }
  EXPECT_EQ(toldAfterwards(), row.told);
}

INSTANTIATE_TEST_SUITE_P(All, FileOperationResultsTest,
                         testing::Values(ResultRow{true, 1, 0, "File Moved for 1"},
                                         ResultRow{false, 1, 0, "File Copied for 1"},
                                         ResultRow{true, 2, 0, "2 Files Moved for 1"},
                                         ResultRow{false, 12, 0, "12 Files Copied for 1"},
                                         ResultRow{true, 1, 1, "Could not Move File for 3"},
                                         ResultRow{false, 1, 1, "Could not Copy File for 3"},
                                         ResultRow{true, 3, 1, "Could not Move One File for 3"},
                                         ResultRow{false, 2, 1, "Could not Copy One File for 3"},
                                         ResultRow{true, 3, 2, "2 Files could not be Moved for 3"},
                                         ResultRow{false, 2, 2,
                                                   "2 Files could not be Copied for 3"}));

}  // namespace
}  // namespace qb::test
