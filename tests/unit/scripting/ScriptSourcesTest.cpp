// The scripts that this system writes, and what they do to the world.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "QuillboxCommon/scripting/Script.h"
#include "support/MenuScripts.h"
#include "support/RecordingScriptHost.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ScriptSourcesTest : public testing::Test {
 protected:
  ScriptOutcome run(const std::string& source) {
    Script script(source);
    return script.executeAndReturnError(host);
  }
  static std::string messageOf(const ScriptOutcome& outcome) {
    return outcome.error.objectForKey(NSAppleScriptErrorMessage).stringValue();
  }

  RecordingScriptHost host;
};

TEST_F(ScriptSourcesTest, TextOfTwoLines) {
  EXPECT_TRUE(run("\rtell application \"System Events\"\rkeystroke \"a\" \rkeystroke (ASCII "
                  "character 13) \rkeystroke \"b\" \rend tell\r")
                  .succeeded());
  EXPECT_THAT(host.calls, ElementsAre("type 'a'", "type '\r'", "type 'b'"));
}

TEST_F(ScriptSourcesTest, TextThatEndsInALineFeed) {
  EXPECT_TRUE(run("\rtell application \"System Events\"\rkeystroke \"a\" \rkeystroke (ASCII "
                  "character 13) \rkeystroke \"\" \rend tell\r")
                  .succeeded());
  EXPECT_THAT(host.calls, ElementsAre("type 'a'", "type '\r'", "type ''"));
}

TEST_F(ScriptSourcesTest, KeysWithModifiers) {
  EXPECT_TRUE(run("tell application \"System Events\"\r"
                  "keystroke (ASCII character 28) using {shift down, command down}\r"
                  "keystroke \"c\" using {control down, option down}\r"
                  "keystroke \"d\" using {}\r"
                  "keystroke \"e\" using command down\r"
                  "key code {123, 124} using shift down\r"
                  "end tell\r")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("type '\x1c' shift command", "type 'c' control option", "type 'd'",
                          "type 'e' command", "key 123 shift", "key 124 shift"));
}

TEST_F(ScriptSourcesTest, AKeyWithoutAValueFailsAtRunTime) {
  const auto outcome =
      run("\rtell application \"System Events\"\rkeystroke \"before\" \rkeystroke "
          "(null) \rend tell\r");
  EXPECT_EQ(messageOf(outcome), "The variable null is not defined.");
  EXPECT_THAT(host.calls, ElementsAre("type 'before'"));
}

TEST_F(ScriptSourcesTest, Pause) {
  EXPECT_TRUE(run("\rdo shell script \"sleep 1.500000\"\r").succeeded());
  EXPECT_THAT(host.calls, ElementsAre("shell sleep 1.500000"));
}

TEST_F(ScriptSourcesTest, Paste) {
  EXPECT_TRUE(
      run("tell application \"System Events\" to key code 9 using command down\r").succeeded());
  EXPECT_THAT(host.calls, ElementsAre("key 9 command"));
}

TEST_F(ScriptSourcesTest, MenuItemOfANamedApplication) {
  EXPECT_TRUE(run("\rtell application \"TextEdit\" to activate\r" + menuHandlers +
                  "menu_click({\"TextEdit\", \"Edit\", \"Paste\"})\r")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("activate TextEdit",
                          "click menu item \"Paste\" of menu \"Edit\" of menu bar item \"Edit\" of "
                          "menu bar 1 of process \"TextEdit\""));
}

TEST_F(ScriptSourcesTest, MenuItemOfASubmenu) {
  EXPECT_TRUE(run("\r" + menuHandlers +
                  "menu_click({\"Editor\", \"View\", \"Zoom\", \"More\", \"200 %\"})\r")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("click menu item \"200 %\" of menu \"More\" of menu item \"More\" of "
                          "menu \"Zoom\" of menu item \"Zoom\" of menu \"View\" of menu bar item "
                          "\"View\" of menu bar 1 of process \"Editor\""));
}

TEST_F(ScriptSourcesTest, TwoMenuItemsShareTheHandlers) {
  EXPECT_TRUE(run("\r" + menuHandlers + "menu_click({\"A\", \"M\", \"x\"})\r" +
                  "menu_click({\"A\", \"M\", \"y\"})\r")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("click menu item \"x\" of menu \"M\" of menu bar item \"M\" of menu bar "
                          "1 of process \"A\"",
                          "click menu item \"y\" of menu \"M\" of menu bar item \"M\" of menu bar "
                          "1 of process \"A\""));
}

TEST_F(ScriptSourcesTest, APathOfTwoPartsFailsAtRunTime) {
  const auto outcome = run("\rtell application \"TextEdit\" to activate\r" + menuHandlers +
                           "menu_click({\"TextEdit\", \"Edit\"})\r");
  EXPECT_EQ(messageOf(outcome), "Can\u2019t get items 3 thru 2 of {\"TextEdit\", \"Edit\"}.");
  EXPECT_THAT(host.calls, ElementsAre("activate TextEdit"));
}

TEST_F(ScriptSourcesTest, AMissingMenuItemFailsAfterWhatWasBeforeIt) {
  host.failingCall =
      "click menu item \"x\" of menu \"M\" of menu bar item \"M\" of menu bar 1 of process \"A\"";
  host.failure = {ScriptErrorNoSuchObject, "Can\u2019t get menu item \"x\".", ""};
  const auto outcome = run("\rdo shell script \"before\"\r" + menuHandlers +
                           "menu_click({\"A\", \"M\", \"x\"})\rdo shell script \"after\"\r");
  EXPECT_EQ(messageOf(outcome), "System Events got an error: Can\u2019t get menu item \"x\".");
  EXPECT_EQ(host.calls.front(), "shell before");
  EXPECT_EQ(host.calls.size(), 2U);
}

TEST_F(ScriptSourcesTest, NestedTellsLeadToAMenuItem) {
  EXPECT_TRUE(run("\rtell application \"Preview\"\r   activate\rend tell\rtell application "
                  "\"System Events\"\r   tell process \"Preview\"\r   tell menu bar 1\r   tell "
                  "menu bar item \"File\"\r   tell menu \"File\"\r      click menu item \"New from "
                  "Clipboard\"\r   end tell\r   end tell\r   end tell\r   end tell\rend tell\rtell "
                  "application \"Preview\"\r   activate\rend tell\r")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("activate Preview",
                          "click menu item \"New from Clipboard\" of menu \"File\" of menu bar "
                          "item \"File\" of menu bar 1 of process \"Preview\"",
                          "activate Preview"));
}

TEST_F(ScriptSourcesTest, ElementsByOf) {
  EXPECT_TRUE(run("tell application \"System Events\"\rtell process \"A\"\rclick menu item \"x\" "
                  "of menu 1 of menu bar item \"M\" of menu bar 1\rend tell\rend tell")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("click menu item \"x\" of menu 1 of menu bar item \"M\" of menu bar 1 of "
                          "process \"A\""));
}

TEST_F(ScriptSourcesTest, AProcessIsBroughtToTheFront) {
  EXPECT_TRUE(run("tell application \"System Events\"\rset frontmost of process \"Editor\" to "
                  "true\rset frontmost to true\rend tell")
                  .succeeded());
  EXPECT_THAT(host.calls, ElementsAre("activate Editor"));
}

TEST_F(ScriptSourcesTest, ANewDocument) {
  EXPECT_TRUE(run("tell application \"TextEdit\"\r  activate\r  make new document at the beginning "
                  "of documents\rend tell\r")
                  .succeeded());
  EXPECT_THAT(host.calls, ElementsAre("activate TextEdit", "new document of TextEdit"));
}

TEST_F(ScriptSourcesTest, QuitAndApplicationsByIdentifier) {
  EXPECT_TRUE(run("tell application \"Dock\" to quit\rquit application \"Notes\"\rtell application "
                  "id \"org.editor\" to activate\ractivate application \"Editor\"")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("quit Dock", "quit Notes", "activate id org.editor", "activate Editor"));
}

TEST_F(ScriptSourcesTest, PanesOfTheSettings) {
  EXPECT_TRUE(run("tell application \"System Preferences\"\ractivate\rset the current pane to pane "
                  "id \"com.apple.preference.universalaccess\"\rend tell")
                  .succeeded());
  EXPECT_TRUE(run("tell application \"System Preferences\"\ractivate\rset the securityPane to pane "
                  "id \"com.apple.preference.security\"\rtell securityPane to reveal anchor "
                  "\"Privacy\"\rend tell")
                  .succeeded());
  EXPECT_TRUE(run("tell application \"System Preferences\"\r set current pane to pane "
                  "\"org.sound\"\r activate\rend tell\r")
                  .succeeded());
  EXPECT_THAT(host.calls,
              ElementsAre("activate System Preferences",
                          "reveal pane id \"com.apple.preference.universalaccess\"",
                          "activate System Preferences",
                          "reveal anchor \"Privacy\" of pane id \"com.apple.preference.security\"",
                          "reveal pane \"org.sound\"", "activate System Preferences"));
}

const std::string conflict =
    "tell application \"Quillbox\"\rset itemName to \"a.txt\"\rdisplay alert \"An item named \" & "
    "itemName & \" already exists in this location. Do you want to replace it with the one you're "
    "moving?\" buttons {\"Keep Both\", \"Stop\", \"Replace\"}\rend tell\r";

TEST_F(ScriptSourcesTest, TheQuestionOfAConflict) {
  host.answer = 2;
  const auto outcome = run("\r" + conflict);
  EXPECT_EQ(outcome.descriptor, (ScriptDescriptor{std::nullopt, {{"Replace", {}}}}));
  EXPECT_THAT(host.alerts,
              ElementsAre(ScriptAlert{"An item named a.txt already exists in this location. Do you "
                                      "want to replace it with the one you're moving?",
                                      "",
                                      ScriptAlert::Style::Informational,
                                      {"Keep Both", "Stop", "Replace"},
                                      2,
                                      std::nullopt}));
}

TEST_F(ScriptSourcesTest, AnAlertWithAllItsParts) {
  const auto outcome =
      run("button returned of (display alert \"Sure?\" message \"It is final.\" as critical "
          "buttons {\"Cancel\", \"OK\"} default button \"Cancel\" cancel button 1)");
  EXPECT_EQ(outcome.error.longForKey(NSAppleScriptErrorNumber), ScriptErrorUserCanceled);
  EXPECT_THAT(host.alerts,
              ElementsAre(ScriptAlert{
                  "Sure?", "It is final.", ScriptAlert::Style::Critical, {"Cancel", "OK"}, 0, 0}));
  host.answer = 1;
  EXPECT_EQ(
      run("button returned of (display alert \"Sure?\" buttons {\"Cancel\", \"OK\"})").descriptor,
      (ScriptDescriptor{"OK", {}}));
}

TEST_F(ScriptSourcesTest, AnAlertThatIsTakenBackStopsTheScript) {
  host.answer = std::nullopt;
  EXPECT_EQ(messageOf(run("display alert \"x\"\rdo shell script \"after\"")), "User canceled.");
  EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(ScriptSourcesTest, KeysAreForSystemEventsOnly) {
  EXPECT_EQ(messageOf(run("tell application \"Editor\" to keystroke \"a\"")),
            "Editor got an error: Can\u2019t continue keystroke.");
  EXPECT_EQ(messageOf(run("on f()\rtell me to key code 9\rend f\rf()")),
            "Can\u2019t continue key code.");
  EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(ScriptSourcesTest, HandlersAreNotThoseOfTheApplication) {
  EXPECT_EQ(messageOf(run("tell application \"Editor\" to f()\ron f()\rend f")),
            "Editor got an error: Can\u2019t continue f.");
}

TEST_F(ScriptSourcesTest, WordsThatApplicationsDoNotKnow) {
  EXPECT_EQ(messageOf(run("tell application \"Finder\" to empty trash")),
            "Expected end of line but found \u201ctrash\u201d.");
  EXPECT_EQ(messageOf(run("tell application \"Finder\" to set bounds to 5\rtell application "
                          "\"Finder\" to set current pane to 5")),
            "Can\u2019t set current pane to 5.");
}

}  // namespace
}  // namespace qb::test
