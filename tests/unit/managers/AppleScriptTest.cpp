// The builder and runner of scripts.

#include "Quillbox/managers/AppleScript.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

class AppleScriptTest : public ActivationFixture {};

TEST_F(AppleScriptTest, ANewScriptBeginsWithAnEmptyLine) {
  AppleScript script;
  EXPECT_EQ(script.source(), "\r");
  script.addLine("activate");
  EXPECT_EQ(script.source(), "\ractivate\r");
}

TEST_F(AppleScriptTest, ASourceIsEndedAndKept) {
  EXPECT_EQ(AppleScript::appleScriptWithSource("beep")->source(), "beep\r");
  EXPECT_EQ(AppleScript("a\rb").source(), "a\rb\r");
}

TEST_F(AppleScriptTest, ALineIsAFormatAlways) {
  AppleScript script;
  script.addLine("keystroke %@ %@", "\"a\"", "");
  script.addLine("%@", "50% of %@");
  script.addLine("do shell script \"sleep %f\"", 1.5);
  script.addLine("100%%");
  EXPECT_EQ(script.source(),
            "\rkeystroke \"a\" \r50% of %@\rdo shell script \"sleep 1.500000\"\r100%\r");
}

TEST_F(AppleScriptTest, ATextIsTheOneResult) {
  EXPECT_EQ(AppleScript("\"a\"").execute(), PropertyList::dictionary({{"0", "a"}}));
  EXPECT_EQ(AppleScript("40 + 2").execute(), PropertyList::dictionary({{"0", "42"}}));
}

TEST_F(AppleScriptTest, NoResultGivesAnEmptyDictionary) {
  EXPECT_EQ(AppleScript("").execute(), PropertyList::dictionary());
}

TEST_F(AppleScriptTest, EachTextOfAListIsThereTwice) {
  EXPECT_EQ(AppleScript("{\"a\", \"b\"}").execute(),
            PropertyList::dictionary({{"0", "a"}, {"1", "a"}, {"2", "b"}, {"3", "b"}}));
}

TEST_F(AppleScriptTest, TextsOfAListInAListAreThereTwiceToo) {
  EXPECT_EQ(AppleScript("{{\"a\"}, \"b\"}").execute(),
            PropertyList::dictionary({{"0", "a"}, {"1", "a"}, {"2", "b"}, {"3", "b"}}));
}

TEST_F(AppleScriptTest, KeysGoOnFromWhatIsThere) {
  PropertyList results = PropertyList::dictionary({{"x", 1}});
  AppleScript::addValue({std::nullopt, {{"a", {}}}}, results);
  EXPECT_EQ(results, PropertyList::dictionary({{"x", 1}, {"1", "a"}, {"2", "a"}}));
}

TEST_F(AppleScriptTest, AnErrorIsInTheResultsAndInTheLog) {
  EXPECT_EQ(
      AppleScript("tell application \"System Events\" to click menu bar 1").execute(),
      PropertyList::dictionary(
          {{"NSAppleScriptErrorMessage", "System Events got an error: Can\u2019t get menu bar 1."},
           {"NSAppleScriptErrorBriefMessage", "Can\u2019t get menu bar 1."},
           {"NSAppleScriptErrorNumber", -1728}}));
  AppleScript("foo").execute();
  EXPECT_THAT(platform.log(),
              Contains("Quillbox AppleScript Error: {\n"
                       "    NSAppleScriptErrorBriefMessage = \"The variable foo is not "
                       "defined.\";\n"
                       "    NSAppleScriptErrorMessage = \"The variable foo is not defined.\";\n"
                       "    NSAppleScriptErrorNumber = -2753;\n}"));
}

TEST_F(AppleScriptTest, LinesAfterTheFirstRunDoNotCount) {
  AppleScript script("\"a\"");
  EXPECT_EQ(script.execute(), PropertyList::dictionary({{"0", "a"}}));
  script.addLine("\"b\"");
  EXPECT_EQ(script.source(), "\"a\"\r\"b\"\r");
  EXPECT_EQ(script.execute(), PropertyList::dictionary({{"0", "a"}}));
}

TEST_F(AppleScriptTest, CompilingReadsAndComplains) {
  EXPECT_TRUE(AppleScript("do shell script \"x\"").compile());
  EXPECT_TRUE(platform.scripts().shellCommands().empty());
  EXPECT_FALSE(AppleScript(")").compile());
  EXPECT_THAT(platform.log(), Contains("AppleScript Error: {\n"
                                       "    NSAppleScriptErrorBriefMessage = \"Expected expression "
                                       "but found \u201c)\u201d.\";\n"
                                       "    NSAppleScriptErrorMessage = \"Expected expression but "
                                       "found \u201c)\u201d.\";\n"
                                       "    NSAppleScriptErrorNumber = -2741;\n}"));
}

TEST_F(AppleScriptTest, CompilingKeepsTheLinesOfThatMoment) {
  AppleScript script("\"a\"");
  EXPECT_TRUE(script.compile());
  script.addLine("\"b\"");
  EXPECT_EQ(script.execute(), PropertyList::dictionary({{"0", "a"}}));
}

TEST_F(AppleScriptTest, ThatWhichCannotBeReadFailsWithoutAnyStep) {
  const PropertyList results = AppleScript("do shell script \"x\"\r)").execute();
  EXPECT_TRUE(results.hasKey(NSAppleScriptErrorBriefMessage));
  EXPECT_TRUE(platform.scripts().shellCommands().empty());
}

TEST_F(AppleScriptTest, TheLogTellsSourceAndLength) {
  AppleScript("a\u00ac\U0001f600").logSource();
  EXPECT_THAT(platform.log(), Contains("\rAppleScript Source:\ra\u00ac\U0001f600\r (5)"));
}

TEST_F(AppleScriptTest, TypedTextReachesTheFrontProgram) {
  AppleScript("tell application \"System Events\" to keystroke \"Hi \u00e9\" & return").execute();
  EXPECT_EQ(keyboard().typedCharacters(), "Hi \u00e9\r");
  const auto& first = keyboard().frontApplicationReceived().front();
  EXPECT_EQ(first.process, editor);
  EXPECT_EQ(first.keyCode, KeyCodeH);
  EXPECT_EQ(first.flags, EventFlagShift);
}

TEST_F(AppleScriptTest, APauseKeepsTheTimersWaiting) {
  int ticks = 0;
  executeBlockAfterDelay([&] { ++ticks; }, 1);
  const Moment before = platform.runLoopHost().now();
  AppleScript("do shell script \"sleep 1.500000\"").execute();
  EXPECT_NEAR(platform.runLoopHost().now() - before, 1.5, 1e-6);
  EXPECT_EQ(ticks, 0);
  platform.runPending();
  EXPECT_EQ(ticks, 1);
}

TEST_F(AppleScriptTest, CommandsOfTheShellGiveTheirOutputOrTheirComplaint) {
  platform.scripts().setShellResult("list", {"a\nb\n", 0, ""});
  platform.scripts().setShellResult("break", {"", 3, "broken"});
  EXPECT_EQ(AppleScript("do shell script \"list\"").execute(),
            PropertyList::dictionary({{"0", "a\rb"}}));
  EXPECT_EQ(AppleScript("do shell script \"break\"").execute(),
            PropertyList::dictionary({{"NSAppleScriptErrorMessage", "broken"},
                                      {"NSAppleScriptErrorBriefMessage", "broken"},
                                      {"NSAppleScriptErrorNumber", 3}}));
}

TEST_F(AppleScriptTest, AnAlertIsAnsweredByTheUser) {
  platform.dialogs().answerAlert("Keep Both");
  EXPECT_EQ(
      AppleScript("display alert \"A?\" buttons {\"Keep Both\", \"Stop\", \"Replace\"}").execute(),
      PropertyList::dictionary({{"0", "Keep Both"}, {"1", "Keep Both"}}));
  const auto& alert = platform.dialogs().shownAlerts().back();
  EXPECT_EQ(alert.messageText, "A?");
  EXPECT_EQ(alert.informativeText, "");
  EXPECT_THAT(alert.buttons, ElementsAre("Replace", "Stop", "Keep Both"));
  EXPECT_EQ(alert.escapeButton, "Stop");
}

TEST_F(AppleScriptTest, AnAlertIsAUserInteraction) {
  std::int64_t level = 0;
  platform.dialogs().setUser([&](AlertOnScreen& alert) {
    level = appDelegate->userInteractionLevel();
    alert.pressReturn();
  });
  AppleScript("display alert \"A?\"").execute();
  EXPECT_EQ(level, 1);
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(AppleScriptTest, ApplicationsComeToTheFront) {
  const auto mail = platform.processes().launch({"org.mail", "Mail", "/apps/Mail.desktop"});
  EXPECT_EQ(AppleScript("tell application \"Mail\" to activate").execute(),
            PropertyList::dictionary());
  EXPECT_EQ(platform.processes().frontClient(), mail);
  EXPECT_EQ(AppleScript("tell application \"Nobody\" to activate")
                .execute()
                .objectForKey(NSAppleScriptErrorMessage),
            PropertyList("Nobody got an error: Can\u2019t get application \"Nobody\"."));
}

}  // namespace
}  // namespace qb::test
