#include "Quillbox/activation/QuillboxDialogs.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class QuillboxDialogsTest : public ActivationFixture {
 protected:
  SimulatedDialogs& dialogs() { return platform.dialogs(); }
  const SimulatedDialogs::ShownAlert& lastAlert() { return dialogs().shownAlerts().back(); }
  std::int64_t levelNow() const { return appDelegate->userInteractionLevel(); }
};

TEST_F(QuillboxDialogsTest, AMessageHasOneButton) {
  dialogs().answerAlert("OK");
  quillbox->displayMessage("The disk is 100% full.\rNothing was saved.", "Disk Full");
  ASSERT_THAT(dialogs().shownAlerts(), SizeIs(1));
  EXPECT_EQ(lastAlert().messageText, "Disk Full");
  EXPECT_EQ(lastAlert().informativeText, "The disk is 100% full.\rNothing was saved.");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("OK"));
  EXPECT_EQ(lastAlert().escapeButton, "OK");
  EXPECT_EQ(lastAlert().style, AlertStyleWarning);
  EXPECT_EQ(lastAlert().iconName, "");
  EXPECT_EQ(lastAlert().accessoryView, "none");
  EXPECT_EQ(lastAlert().response, AlertDefaultReturn);
}

TEST_F(QuillboxDialogsTest, APercentSignInAMessageIsHarmless) {
  dialogs().answerAlert("OK");
  quillbox->displayMessage("%@ %s %n", "%@");
  EXPECT_EQ(lastAlert().messageText, "%@");
  EXPECT_EQ(lastAlert().informativeText, "%@ %s %n");
}

TEST_F(QuillboxDialogsTest, AConfirmationIsTrueOnlyForTheSecondButton) {
  dialogs().answerAlert("Delete");
  EXPECT_TRUE(quillbox->getConfirmationWithTitle("Delete Row", "Really?", "Delete"));
  EXPECT_EQ(lastAlert().messageText, "Delete Row");
  EXPECT_EQ(lastAlert().informativeText, "Really?");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Delete"));
  dialogs().answerAlert("Cancel");
  EXPECT_FALSE(quillbox->getConfirmationWithTitle("Delete Row", "Really?", "Delete"));
}

TEST_F(QuillboxDialogsTest, InAConfirmationReturnAndEscapeAreBothTheSafeChoice) {
  dialogs().answerAlert([](AlertOnScreen& alert) { alert.pressReturn(); });
  EXPECT_FALSE(quillbox->getConfirmationWithTitle("Delete Row", "Really?", "Delete"));
  dialogs().answerAlert([](AlertOnScreen& alert) { alert.pressEscape(); });
  EXPECT_FALSE(quillbox->getConfirmationWithTitle("Delete Row", "Really?", "Delete"));
}

TEST_F(QuillboxDialogsTest, AChoiceIsTrueForTheFirstButton) {
  dialogs().answerAlert("Replace");
  EXPECT_TRUE(quillbox->getChoiceWithTitle("Replace File", "There is one.", "Replace", "Stop"));
  EXPECT_EQ(lastAlert().messageText, "Replace File");
  EXPECT_EQ(lastAlert().informativeText, "There is one.");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Replace", "Stop"));
  dialogs().answerAlert("Stop");
  EXPECT_FALSE(quillbox->getChoiceWithTitle("Replace File", "There is one.", "Replace", "Stop"));
}

TEST_F(QuillboxDialogsTest, InAChoiceReturnActsAndEscapeDoesNot) {
  dialogs().answerAlert([](AlertOnScreen& alert) { alert.pressReturn(); });
  EXPECT_TRUE(quillbox->getChoiceWithTitle("Replace File", "There is one.", "Replace", "Stop"));
  dialogs().answerAlert([](AlertOnScreen& alert) { alert.pressEscape(); });
  EXPECT_FALSE(quillbox->getChoiceWithTitle("Replace File", "There is one.", "Replace", "Stop"));
}

TEST_F(QuillboxDialogsTest, AnAbortedQuestionIsNotAnsweredWithTheAction) {
  dialogs().leaveAlertUp();
  platform.schedule(0.1, [this] { dialogs().abortModal(); });
  EXPECT_FALSE(quillbox->getConfirmationWithTitle("Delete Row", "Really?", "Delete"));
  EXPECT_EQ(lastAlert().response, ModalResponseAbort);
  dialogs().leaveAlertUp();
  platform.schedule(0.1, [this] { dialogs().abortModal(); });
  EXPECT_FALSE(quillbox->getChoiceWithTitle("Replace File", "There is one.", "Replace", "Stop"));
}

TEST_F(QuillboxDialogsTest, EveryDialogIsAUserInteractionInTheModalMode) {
  std::vector<std::int64_t> levels;
  dialogs().setUser([&](AlertOnScreen& alert) {
    levels.push_back(levelNow());
    alert.pressEscape();
  });
  quillbox->displayMessage("text", "title");
  quillbox->getConfirmationWithTitle("title", "text", "Go");
  quillbox->getChoiceWithTitle("title", "text", "Go", "Stay");
  quillbox->changeNameOfObject("Row", "old");
  EXPECT_THAT(levels, ElementsAre(1, 1, 1, 1));
  EXPECT_EQ(levelNow(), 0);
  for (const auto& alert : dialogs().shownAlerts()) {
    EXPECT_EQ(alert.mode, RunLoopMode::ModalPanel);
  }
}

TEST_F(QuillboxDialogsTest, TheTapTakesNothingWhileADialogIsUp) {
  std::vector<int> taken;
  dialogs().answerAlert([&](AlertOnScreen& alert) {
    keyboard().press(KeyCodeLeftCommand);
    tap(KeyCodeTab);
    keyboard().release(KeyCodeLeftCommand);
    EXPECT_FALSE(isActive());
    alert.pressReturn();
  });
  quillbox->displayMessage("text", "title");
}

TEST_F(QuillboxDialogsTest, AnUnexpectedAlertIsAnError) {
  try {
    quillbox->displayMessage("text", "title");
    FAIL() << "no error";
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "Unexpected alert: title: text");
  }
  EXPECT_EQ(levelNow(), 0);
}

TEST_F(QuillboxDialogsTest, TheOpenPanelTakesSeveralAndAnswersWhatWasChosen) {
  dialogs().answerOpenPanel({"/a/one.txt", "/a/two.txt"});
  const auto chosen = quillbox->runOpenPanelWithAllowFiles(true, false, {"txt", "md"}, "/a");
  ASSERT_TRUE(chosen);
  EXPECT_THAT(*chosen, ElementsAre("/a/one.txt", "/a/two.txt"));
  ASSERT_THAT(dialogs().shownOpenPanels(), SizeIs(1));
  const OpenPanel& panel = dialogs().shownOpenPanels().front();
  EXPECT_TRUE(panel.canChooseFiles);
  EXPECT_FALSE(panel.canChooseDirectories);
  EXPECT_TRUE(panel.allowsMultipleSelection);
  EXPECT_THAT(panel.allowedFileTypes, ElementsAre("txt", "md"));
  EXPECT_EQ(panel.directory, "/a");
  EXPECT_EQ(levelNow(), 0);
}

TEST_F(QuillboxDialogsTest, ACancelledOpenPanelAnswersNone) {
  dialogs().cancelOpenPanel();
  EXPECT_FALSE(quillbox->runOpenPanelWithAllowFiles(false, true, {}, ""));
  EXPECT_TRUE(dialogs().shownOpenPanels().front().canChooseDirectories);
  EXPECT_FALSE(dialogs().shownOpenPanels().front().canChooseFiles);
}

TEST_F(QuillboxDialogsTest, TheNameAlertAsksWithAField) {
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("Second");
    alert.pressReturn();
  });
  EXPECT_EQ(quillbox->changeNameOfObject("Tab Row", "First"), "Second");
  ASSERT_THAT(dialogs().shownAlerts(), SizeIs(1));
  EXPECT_EQ(lastAlert().style, AlertStyleInformational);
  EXPECT_EQ(lastAlert().iconName, "QuillboxLogo");
  EXPECT_EQ(lastAlert().messageText, "Change Tab Row Name");
  EXPECT_EQ(lastAlert().informativeText, "Please enter the new name for this Tab Row:");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("OK", "Cancel"));
  EXPECT_EQ(lastAlert().escapeButton, "Cancel");
  EXPECT_EQ(lastAlert().accessoryView, "text field 240x22 'First'");
  EXPECT_EQ(lastAlert().response, 1000);
}

TEST_F(QuillboxDialogsTest, OKWithoutTypingKeepsTheName) {
  dialogs().answerAlert("OK");
  EXPECT_EQ(quillbox->changeNameOfObject("Cubbyhole", "First"), "First");
}

TEST_F(QuillboxDialogsTest, CancelKeepsTheNameWhateverWasTyped) {
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("Second");
    alert.press("Cancel");
  });
  EXPECT_EQ(quillbox->changeNameOfObject("Cubbyhole", "First"), "First");
  EXPECT_EQ(lastAlert().response, 1001);
}

TEST_F(QuillboxDialogsTest, AnEmptyNameIsAskedForAgain) {
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("");
    alert.press("OK");
  });
  dialogs().answerAlert("OK");
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("Third");
    alert.press("OK");
  });
  EXPECT_EQ(quillbox->changeNameOfObject("Cubbyhole", "First"), "Third");
  ASSERT_THAT(dialogs().shownAlerts(), SizeIs(3));
  const auto& required = dialogs().shownAlerts()[1];
  EXPECT_EQ(required.messageText, "Name Required");
  EXPECT_EQ(required.informativeText, "Please enter a name for this Cubbyhole.");
  EXPECT_THAT(required.buttons, ElementsAre("OK"));
  EXPECT_EQ(lastAlert().accessoryView, "text field 240x22 ''");
}

TEST_F(QuillboxDialogsTest, CancelAfterAnEmptyOKGivesBackThePresentName) {
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("");
    alert.press("OK");
  });
  dialogs().answerAlert("OK");
  dialogs().answerAlert("Cancel");
  EXPECT_EQ(quillbox->changeNameOfObject("Cubbyhole", "First"), "First");
  EXPECT_EQ(dialogs().numberOfAnswersLeft(), 0U);
}

TEST_F(QuillboxDialogsTest, TheStateIsSavedAfterTheNameDialogAlsoAfterCancel) {
  for (const char* button : {"OK", "Cancel"}) {
    const auto before = host().stateChanged().generation();
    dialogs().answerAlert([&](AlertOnScreen& alert) {
      EXPECT_EQ(host().stateChanged().generation(), before);
      alert.press(button);
    });
    quillbox->changeNameOfObject("Tab Row", "First");
    EXPECT_EQ(host().stateChanged().generation(), before + 1) << button;
  }
}

}  // namespace
}  // namespace qb::test
