#include "ContractTest.h"
#include "Platform/Scripts.h"

namespace qb {
namespace {

class ScriptsContract : public ContractTest {
 protected:
  ScriptOutcome run(const std::string& source) {
    return platform_.scripts().executeAndReturnError(source);
  }
  std::string errorOf(const std::string& source) {
    return run(source).error.objectForKey(NSAppleScriptErrorMessage).stringValue();
  }
  bool waitForText(ProcessSerialNumber client, const std::string& text) {
    const bool came =
        waitUntil([&] { return desktop_->textReceived(client).size() >= text.size(); });
    EXPECT_EQ(desktop_->textReceived(client), text);
    return came;
  }
};

TEST_F(ScriptsContract, TextIsTypedIntoTheProgramInFront) {
  const ProcessSerialNumber behind = desktop_->startClient();
  const ProcessSerialNumber client = desktop_->startClient();
  EXPECT_EQ(errorOf("tell application \"System Events\" to keystroke \"Hi, \u00e9 \u20ac5!\""), "");
  EXPECT_TRUE(waitForText(client, "Hi, \u00e9 \u20ac5!"));
  EXPECT_EQ(desktop_->textReceived(behind), "");
}

TEST_F(ScriptsContract, KeysAreTypedIntoTheProgramInFront) {
  const ProcessSerialNumber client = desktop_->startClient();
  EXPECT_EQ(errorOf("tell application \"System Events\"\rkey code 123\rkeystroke (ASCII character "
                    "13)\rend tell"),
            "");
  EXPECT_TRUE(waitUntil([&] { return desktop_->keysReceived(client, KeyCodeReturn).keyUps == 1; }));
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeLeft).keyDowns, 1);
}

TEST_F(ScriptsContract, PastingReachesTheProgramInFront) {
  const ProcessSerialNumber client = desktop_->startClient();
  EXPECT_EQ(errorOf("tell application \"System Events\" to key code 9 using command down\r"), "");
  EXPECT_TRUE(waitUntil([&] { return desktop_->keysReceived(client, KeyCodeV).keyUps == 1; }));
}

TEST_F(ScriptsContract, TypedKeysDoNotComeBackToTheTap) {
  const ProcessSerialNumber client = desktop_->startClient();
  std::vector<TappedEvent> tapped;
  EventTap& tap = platform_.eventTap();
  ASSERT_TRUE(tap.create([&](const TappedEvent& event) {
    tapped.push_back(event);
    return true;
  }));
  tap.addToRunLoop(RunLoopMode::Default);
  tap.setRules({});
  EXPECT_EQ(errorOf("tell application \"System Events\" to keystroke \"abc\""), "");
  EXPECT_TRUE(waitForText(client, "abc"));
  ASSERT_TRUE(typeMarker(client));
  ASSERT_TRUE(waitUntil([&] { return !tapped.empty(); }));
  EXPECT_EQ(tapped.front().keyCode, markerKey);
  tap.release();
}

TEST_F(ScriptsContract, AnApplicationComesToTheFront) {
  const ProcessSerialNumber client = desktop_->startClient();
  EXPECT_EQ(errorOf("tell application \"Client\" to activate"), "");
  EXPECT_TRUE(waitForFront(client));
  EXPECT_EQ(errorOf("tell application id \"org.contract.client\" to activate"), "");
  EXPECT_EQ(errorOf("tell application \"System Events\" to set frontmost of process \"Client\" to "
                    "true"),
            "");
}

TEST_F(ScriptsContract, AnApplicationIsStartedWhereNeeded) {
  EXPECT_EQ(errorOf("tell application \"Client\" to activate"), "");
  EXPECT_TRUE(waitUntil([&] {
    return !platform_.processes().getFrontProcess().isNull() &&
           platform_.processes()
                   .processInformation(platform_.processes().getFrontProcess())
                   ->bundleIdentifier == desktop_->clientBundleIdentifier();
  }));
}

TEST_F(ScriptsContract, ApplicationsThatAreNotThere) {
  EXPECT_EQ(errorOf("tell application \"Nobody\" to activate"),
            "Nobody got an error: Can\u2019t get application \"Nobody\".");
  EXPECT_EQ(errorOf("tell application \"Nobody\" to quit"),
            "Nobody got an error: Can\u2019t get application \"Nobody\".");
}

const std::string ofMenuBar = " of menu bar 1 of process \"Menus\"";

TEST_F(ScriptsContract, AnEntryOfAMenuIsClicked) {
  desktop_->startMenuClient();
  EXPECT_EQ(errorOf("tell application \"System Events\" to click menu item \"200 %\" of menu 1 of "
                    "menu item \"More\" of menu \"Zoom\" of menu item \"Zoom\" of menu \"View\"" +
                    ofMenuBar),
            "");
  EXPECT_TRUE(waitUntil([&] { return desktop_->menuClientHasZoomed(); }));
}

TEST_F(ScriptsContract, EntriesThatCannotBeClicked) {
  desktop_->startMenuClient();
  EXPECT_EQ(errorOf("tell application \"System Events\" to click menu item \"Close\" of menu "
                    "\"File\"" +
                    ofMenuBar),
            "System Events got an error: Can\u2019t click menu item \"Close\" of menu \"File\" of "
            "menu bar 1 of process \"Menus\": it is disabled.");
  EXPECT_EQ(
      errorOf("tell application \"System Events\" to click menu bar item \"Tools\"" + ofMenuBar),
      "System Events got an error: Can\u2019t get menu bar item \"Tools\" of menu bar 1 of "
      "process \"Menus\".");
  EXPECT_EQ(errorOf("tell application \"System Events\" to click menu bar item 1 of menu bar 1 of "
                    "process \"Nobody\""),
            "System Events got an error: Can\u2019t get process \"Nobody\".");
}

TEST_F(ScriptsContract, ScriptsCanAskForEntries) {
  desktop_->startMenuClient();
  const ScriptOutcome outcome = run(
      "tell application \"System Events\"\rtell menu bar 1 of process \"Menus\"\r{name of every "
      "menu bar item, exists menu bar item \"Edit\", enabled of menu item \"Close\" of menu "
      "\"File\"}\rend tell\rend tell");
  ASSERT_TRUE(outcome.succeeded());
  EXPECT_EQ(outcome.descriptor,
            (ScriptDescriptor{
                std::nullopt,
                {{std::nullopt, {{"File", {}}, {"View", {}}}}, {"false", {}}, {"false", {}}}}));
}

TEST_F(ScriptsContract, ThatWhichIsInNoMenuCannotBeReached) {
  desktop_->startMenuClient();
  EXPECT_EQ(errorOf("tell application \"System Events\" to click button 1 of window 1 of process "
                    "\"Menus\""),
            "System Events got an error: Can\u2019t get window 1 of process \"Menus\": only the "
            "menus of other programs can be reached.");
}

TEST_F(ScriptsContract, ResultsAndErrorsAreTheScripts) {
  const ScriptOutcome outcome = run("{\"a\", 1 + 1}");
  EXPECT_TRUE(outcome.succeeded());
  EXPECT_EQ(outcome.descriptor, (ScriptDescriptor{std::nullopt, {{"a", {}}, {"2", {}}}}));
  EXPECT_EQ(errorOf("foo"), "The variable foo is not defined.");
  EXPECT_EQ(errorOf(")"), "Expected expression but found \u201c)\u201d.");
}

}  // namespace
}  // namespace qb
