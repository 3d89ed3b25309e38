#include "ScriptDesk.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* pasteScript =
    "tell application \"System Events\" to key code 9 using command down\r";

class DesktopScriptsTest : public ScriptDesk {};

TEST_F(DesktopScriptsTest, PastingIsControlVInAProgram) {
  const auto plain = startClient("Plain");
  EXPECT_EQ(errorOf(pasteScript), "");
  EXPECT_TRUE(plain->tells("command v control"));
}

TEST_F(DesktopScriptsTest, PastingIsControlShiftVInATerminal) {
  const auto terminal = startClient("Term");
  EXPECT_EQ(errorOf(pasteScript), "");
  EXPECT_TRUE(terminal->tells("command v control shift"));
}

TEST_F(DesktopScriptsTest, OtherModifiersAreThemselves) {
  const auto terminal = startClient("Term");
  EXPECT_EQ(errorOf("tell application \"System Events\"\rkey code 123 using {option down, shift "
                    "down}\rkeystroke \"c\" using control down\rend tell"),
            "");
  EXPECT_TRUE(terminal->tells("command Left alt shift"));
  EXPECT_TRUE(terminal->tells("command c control"));
}

TEST_F(DesktopScriptsTest, WhatIsTypedAfterActivatingGoesThere) {
  const auto plain = startClient("Plain");
  const auto terminal = startClient("Term");
  EXPECT_EQ(errorOf("tell application \"Plain\" to activate\rtell application \"System Events\" "
                    "to keystroke \"x\u00e9\" & return"),
            "");
  EXPECT_TRUE(plain->tells("press Return"));
  EXPECT_EQ(plain->text(), "x\u00e9");
  EXPECT_EQ(terminal->text(), "");
}

TEST_F(DesktopScriptsTest, RolesStandForTheDesktopsOwnPrograms) {
  EXPECT_EQ(errorOf("tell application \"Finder\" to activate"), "");
  EXPECT_EQ(nameOfFrontProgram(), "Files");
  EXPECT_EQ(errorOf("activate application id \"com.apple.finder\""), "");
  EXPECT_THAT(programs(), SizeIs(1));
}

TEST_F(DesktopScriptsTest, ANewDocumentIsANewInstance) {
  EXPECT_EQ(errorOf("tell application \"Plain\"\ractivate\rmake new document at the beginning of "
                    "documents\rend tell"),
            "");
  EXPECT_THAT(programs(), SizeIs(2));
}

TEST_F(DesktopScriptsTest, NothingIsTypedElsewhereWhenItDoesNotComeForward) {
  const auto plain = startClient("Plain");
  scripts.setPatience({0.01, 0.02});
  EXPECT_EQ(errorOf("tell application \"Mute\" to activate\rtell application \"System Events\" to "
                    "keystroke \"secret\""),
            "Mute got an error: AppleEvent timed out.");
  EXPECT_EQ(errorOf(pasteScript), "");
  EXPECT_TRUE(plain->tells("command v control"));
  EXPECT_EQ(plain->text(), "");
}

TEST_F(DesktopScriptsTest, AProgramOfOneWindowIsAskedAgain) {
  const auto mute = startClient("Mute");
  scripts.setPatience({0.01, 0.02});
  EXPECT_EQ(errorOf("tell application \"Mute\" to make new document"), "");
  EXPECT_THAT(programs(), SizeIs(1));
}

TEST_F(DesktopScriptsTest, QuittingEndsIt) {
  const auto plain = startClient("Plain");
  EXPECT_EQ(errorOf("tell application \"Plain\" to quit"), "");
  EXPECT_TRUE(waitFor([&] { return programs().empty(); }));
}

TEST_F(DesktopScriptsTest, TheSettingsComeUpOnceWhateverTheOrder) {
  EXPECT_EQ(errorOf("tell application \"System Preferences\"\r set current pane to pane "
                    "\"org.none\"\r activate\rend tell\r"),
            "");
  EXPECT_EQ(nameOfFrontProgram(), "Control");
  EXPECT_EQ(errorOf("tell application \"System Preferences\" to activate"), "");
  EXPECT_THAT(programs(), SizeIs(1));
}

TEST_F(DesktopScriptsTest, APaneThatIsAProgramComesUpItself) {
  EXPECT_EQ(errorOf("tell application \"System Preferences\"\ractivate\rset current pane to pane "
                    "\"org.test.plain\"\rend tell"),
            "");
  EXPECT_EQ(nameOfFrontProgram(), "Plain");
  EXPECT_THAT(programs(), SizeIs(1));
}

TEST_F(DesktopScriptsTest, PanesAreOfTheSettings) {
  EXPECT_EQ(errorOf("tell application \"Plain\" to reveal pane \"x\""),
            "Plain got an error: Can\u2019t get pane \"x\".");
}

TEST_F(DesktopScriptsTest, CommandsOfTheShell) {
  const struct {
    const char* command;
    const char* output;
  } rows[] = {{"printf 'a\\\\nb\\\\n'", "a\rb"},
              {"echo out; echo complaint >&2", "out"},
              {"true", ""},
              {"cat", ""},
              {"head -c 300000 /dev/zero | tr '\\\\0' x | wc -c", "300000"},
              {"sleep 0.05; echo late", "late"}};
  for (const auto& row : rows) {
    const auto outcome = run(std::string("do shell script \"") + row.command + "\"");
    EXPECT_EQ(outcome.descriptor, (ScriptDescriptor{row.output, {}})) << row.command;
  }
}

TEST_F(DesktopScriptsTest, CommandsOfTheShellThatFail) {
  const struct {
    const char* command;
    int number;
    const char* message;
  } rows[] = {{"echo broken >&2; exit 3", 3, "broken"},
              {"false", 1, "The command exited with a non-zero status."},
              {"kill -9 $$", 137, "The command exited with a non-zero status."}};
  for (const auto& row : rows) {
    const auto error = run(std::string("do shell script \"") + row.command + "\"").error;
    EXPECT_EQ(error.longForKey(NSAppleScriptErrorNumber), row.number) << row.command;
    EXPECT_EQ(error.objectForKey(NSAppleScriptErrorMessage).stringValue(), row.message);
  }
}

TEST_F(DesktopScriptsTest, AnAlertIsAskedWithinAnInteraction) {
  std::vector<std::string> order;
  scripts.setBeginUserInteraction([&] {
    order.emplace_back("begin");
    return Subscription([&] { order.emplace_back("end"); });
  });
  dialogs.answer = AlertFirstButtonReturn;
  const auto outcome =
      run("display alert \"Replace?\" message \"It is there.\" as critical buttons {\"Keep Both\", "
          "\"Stop\", \"Replace\"}");
  EXPECT_EQ(outcome.descriptor, (ScriptDescriptor{std::nullopt, {{"Keep Both", {}}}}));
  EXPECT_THAT(order, ElementsAre("begin", "end"));
  ASSERT_THAT(dialogs.shown, SizeIs(1));
  const Alert& alert = dialogs.shown.front();
  EXPECT_EQ(alert.messageText, "Replace?");
  EXPECT_EQ(alert.informativeText, "It is there.");
  EXPECT_EQ(alert.style, AlertStyleCritical);
  EXPECT_EQ(alert.escapeButton().title, "Stop");
  EXPECT_THAT(alert.buttons,
              ElementsAre(Alert::Button{"Replace", 1002}, Alert::Button{"Stop", 1001},
                          Alert::Button{"Keep Both", 1000}));
}

TEST_F(DesktopScriptsTest, AnAlertThatIsTakenBackEndsTheScript) {
  dialogs.answer = ModalResponseAbort;
  EXPECT_EQ(errorOf("display alert \"x\""), "User canceled.");
}

TEST_F(DesktopScriptsTest, NothingRunsOnceTheProgramEnds) {
  application.terminate();
  EXPECT_EQ(errorOf("do shell script \"true\""), "User canceled.");
}

}  // namespace
}  // namespace qb::test
