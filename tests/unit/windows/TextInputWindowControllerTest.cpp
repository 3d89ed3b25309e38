#include "Quillbox/windows/TextInputWindowController.h"

#include <gmock/gmock.h>

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;

class TextInputWindowControllerTest : public ActivationFixture {
 protected:
  SimulatedDialogs& dialogs() { return platform.dialogs(); }
  TextInputWindowController controller{*quillbox, "Add Text", "Enter the text to add..."};
};

TEST_F(TextInputWindowControllerTest, ItAsksForALine) {
  dialogs().answerAlert([this](AlertOnScreen& alert) {
    EXPECT_EQ(appDelegate->userInteractionLevel(), 1);
    alert.type("100% of it");
    alert.pressReturn();
  });
  EXPECT_EQ(controller.runModal(), "100% of it");
  const auto& shown = dialogs().shownAlerts().front();
  EXPECT_EQ(shown.messageText, "Add Text");
  EXPECT_EQ(shown.informativeText, "Enter the text to add...");
  EXPECT_THAT(shown.buttons, ElementsAre("OK", "Cancel"));
  EXPECT_EQ(shown.escapeButton, "Cancel");
  EXPECT_EQ(shown.iconName, "QuillboxLogo");
  EXPECT_EQ(shown.accessoryView, "text field 340x22 ''");
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(TextInputWindowControllerTest, AnEmptyTextIsAnAnswer) {
  dialogs().answerAlert("OK");
  EXPECT_EQ(controller.runModal(), "");
}

TEST_F(TextInputWindowControllerTest, CancelAndAnAbortAreNone) {
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("text");
    alert.pressEscape();
  });
  EXPECT_EQ(controller.runModal(), std::nullopt);
  dialogs().leaveAlertUp();
  platform.schedule(0.1, [this] { dialogs().abortModal(); });
  EXPECT_EQ(controller.runModal(), std::nullopt);
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(TextInputWindowControllerTest, AFurtherRunBeginsWithTheText) {
  dialogs().answerAlert([](AlertOnScreen& alert) {
    alert.type("first");
    alert.pressReturn();
  });
  controller.runModal();
  dialogs().answerAlert("OK");
  EXPECT_EQ(controller.runModal(), "first");
}

}  // namespace
}  // namespace qb::test
