#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include "DialogDesk.h"
#include "Platform/KeyCodes.h"
#include "PlatformDesktop/dialogs/DialogColors.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

class OpenPanelTest : public DialogDesk {
 protected:
  OpenPanelTest() {
    for (const char* const name : {"one.txt", "two.txt", "three.md"}) {
      QFile file(folder.filePath(name));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QDir(folder.path()).mkdir("inside");
    panel.directory = folder.path().toStdString();
    panel.allowsMultipleSelection = true;
  }
  std::optional<std::vector<std::string>> choose() {
    return during([&] { return dialogs.runModal(panel); });
  }
  static QLineEdit* nameField() { return dialog()->findChild<QLineEdit*>("fileNameEdit"); }
  /// Puts the names where the user would type them, then presses Return.
  void enter(const QString& names) {
    nameField()->setText(names);
    nameField()->setFocus();
    type({KeyCodeReturn});
  }
  std::string path(const char* name) const { return folder.filePath(name).toStdString(); }

  QTemporaryDir folder;
  OpenPanel panel;
};

TEST_F(OpenPanelTest, SeveralFilesCanBeChosen) {
  when("shown", shown(), [&] {
    shoot("open");
    enter("\"one.txt\" \"two.txt\"");
  });
  const auto chosen = choose();
  ASSERT_TRUE(chosen);
  EXPECT_THAT(*chosen, ElementsAre(path("one.txt"), path("two.txt")));
}

TEST_F(OpenPanelTest, WhatIsTypedIsTheName) {
  panel.directory = folder.filePath("inside").toStdString();
  when("shown", shown(), [&] { type({KeyCodeA, KeyCodeW}); });
  when(
      "typed", [] { return nameField()->text() == "aw"; }, [&] { type({KeyCodeEscape}); });
  EXPECT_FALSE(choose());
}

TEST_F(OpenPanelTest, EscapeChoosesNothing) {
  when("shown", shown(), [&] { type({KeyCodeEscape}); });
  EXPECT_FALSE(choose());
}

TEST_F(OpenPanelTest, AnAbortChoosesNothing) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(DialogColors::dark().palette());
  when("shown", shown(), [&] {
    shoot("open-dark");
    dialogs.abortModal();
  });
  EXPECT_FALSE(choose());
  QApplication::setPalette(light);
}

TEST_F(OpenPanelTest, AFolderIsEnteredUnlessFoldersMayBeChosen) {
  when("shown", shown(), [&] { enter("inside"); });
  when(
      "entered",
      [&] {
        return dialog()->findChild<QFileDialog*>()->directory().path() == folder.filePath("inside");
      },
      [&] { type({KeyCodeEscape}); });
  EXPECT_FALSE(choose());
  panel.canChooseDirectories = true;
  panel.canChooseFiles = false;
  when("shown", shown(), [&] { enter("inside"); });
  const auto chosen = choose();
  ASSERT_TRUE(chosen);
  EXPECT_THAT(*chosen, ElementsAre(path("inside")));
}

TEST_F(OpenPanelTest, ANameThatDoesNotExistLeavesThePanelUp) {
  when("shown", shown(), [&] {
    enter("nothing.txt");
    type({KeyCodeEscape});
  });
  EXPECT_FALSE(choose());
}

}  // namespace
}  // namespace qb::test
