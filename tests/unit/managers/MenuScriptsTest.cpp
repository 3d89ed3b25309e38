// Scripts that reach into the menus of other programs.

#include <ostream>

#include "Quillbox/managers/AppleScript.h"
#include "support/ActivationFixture.h"
#include "support/MenuScripts.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Click = SimulatedProgramMenus::Click;

class MenuScriptsTest : public ActivationFixture {
 protected:
  MenuScriptsTest() {
    menus().setMenuBar(
        editor, {{"File",
                  {{"Open\u2026", {}},
                   {"", {}},
                   {"Close", {}, false},
                   {.name = "Recent", .entries = {{"letter.txt", {}}}, .fillsWhenOpened = true},
                   {"R\u00e9duire", {}},
                   {.name = "Vault", .refuses = true}}},
                 {"View",
                  {{"Zoom", {{"More...", {{"200 %", {}}, {"More...", {}}}}}},
                   {"toolbar", {}},
                   {"Toolbar", {}}}}});
  }
  SimulatedProgramMenus& menus() { return platform.scripts().menus(); }
  static PropertyList execute(const std::string& source) { return AppleScript(source).execute(); }
  /// Empty for a script that came to its end.
  static std::string errorOf(const std::string& source) {
    return execute(source).objectForKey(NSAppleScriptErrorMessage).stringValue();
  }
  static std::string asked(const std::string& question) {
    const PropertyList results = execute("tell application \"System Events\" to " + question);
    if (results.hasKey(NSAppleScriptErrorMessage)) {
      return results.objectForKey(NSAppleScriptErrorMessage).stringValue();
    }
    return results.objectForKey("0").stringValue();
  }
};

TEST_F(MenuScriptsTest, AnEntryIsClicked) {
  EXPECT_EQ(execute(menuScript({"Editor", "View", "Toolbar"})), PropertyList::dictionary());
  EXPECT_THAT(menus().clicks(), ElementsAre(Click{editor, "View:Toolbar"}));
}

TEST_F(MenuScriptsTest, AnEntryOfASubmenuIsClicked) {
  EXPECT_EQ(errorOf(menuScript({"Editor", "View", "Zoom", "More...", "200 %"})), "");
  EXPECT_THAT(menus().clicks(), ElementsAre(Click{editor, "View:Zoom:More...:200 %"}));
  EXPECT_THAT(menus().openings(), IsEmpty());
}

TEST_F(MenuScriptsTest, TheApplicationThatIsNamedComesForwardFirst) {
  const auto mail = platform.processes().launch({"org.mail", "Mail", "/apps/Mail.desktop"});
  menus().setMenuBar(mail, {{"Edit", {{"Paste", {}}}}});
  EXPECT_EQ(errorOf("\rtell application \"Mail\" to activate" +
                    menuScript({"Mail", "Edit", "Paste"}) + menuClick({"Mail", "Edit", "Paste"})),
            "");
  EXPECT_EQ(platform.processes().frontClient(), mail);
  EXPECT_THAT(menus().clicks(), ElementsAre(Click{mail, "Edit:Paste"}, Click{mail, "Edit:Paste"}));
}

TEST_F(MenuScriptsTest, OfTwoProcessesOfANameTheOneInFrontIsMeant) {
  const SimulatedApplication mail{"org.mail", "Mail", "/apps/Mail.desktop"};
  const auto first = platform.processes().launch(mail), second = platform.processes().launch(mail);
  for (const auto process : {first, second}) menus().setMenuBar(process, {{"Edit", {{"Cut", {}}}}});
  EXPECT_EQ(errorOf(menuScript({"Mail", "Edit", "Cut"})), "");
  platform.processes().bringToFront(second);
  EXPECT_EQ(errorOf(menuScript({"Mail", "Edit", "Cut"})), "");
  EXPECT_THAT(menus().clicks(), ElementsAre(Click{first, "Edit:Cut"}, Click{second, "Edit:Cut"}));
}

TEST_F(MenuScriptsTest, NamesAreComparedAsUsersSeeThem) {
  const struct {
    std::initializer_list<std::string> path;
    const char* clicked;
  } rows[] = {
      {{"Editor", "File", "Open\u2026"}, "File:Open\u2026"},
      {{"Editor", "File", "Open..."}, "File:Open\u2026"},
      {{"Editor", "file", "open..."}, "File:Open\u2026"},
      {{"Editor", "File", "R\u00c9DUIRE"}, "File:R\u00e9duire"},
      // The one that is so to the letter goes before the first that looks like it.
      {{"Editor", "View", "toolbar"}, "View:toolbar"},
      {{"Editor", "View", "Toolbar"}, "View:Toolbar"},
      {{"Editor", "View", "TOOLBAR"}, "View:toolbar"},
      {{"Editor", "View", "Zoom", "More\u2026", "more\u2026"}, "View:Zoom:More...:More..."}};
  for (const auto& row : rows) {
    EXPECT_EQ(errorOf(menuScript(row.path)), "");
    EXPECT_EQ(menus().clicks().back().path, row.clicked);
  }
  EXPECT_NE(errorOf(menuScript({"Editor", "File", "Open"})), "");
}

TEST_F(MenuScriptsTest, AMenuThatIsFilledWhenItOpensIsOpened) {
  EXPECT_EQ(errorOf(menuScript({"Editor", "File", "Recent", "letter.txt"})), "");
  EXPECT_THAT(menus().openings(), ElementsAre(Click{editor, "File:Recent"}));
  EXPECT_THAT(menus().clicks(), ElementsAre(Click{editor, "File:Recent:letter.txt"}));
}

TEST_F(MenuScriptsTest, AFailureIsInTheResultsAndComesAfterTheStepsBeforeIt) {
  EXPECT_EQ(execute("do shell script \"before\"" + menuScript({"Editor", "View", "Nothing"}) +
                    "do shell script \"after\""),
            PropertyList::dictionary(
                {{"NSAppleScriptErrorMessage",
                  "System Events got an error: Can\u2019t get menu item \"Nothing\" of menu "
                  "\"View\" of menu bar item \"View\" of menu bar 1 of process \"Editor\"."},
                 {"NSAppleScriptErrorBriefMessage",
                  "Can\u2019t get menu item \"Nothing\" of menu \"View\" of menu bar item \"View\" "
                  "of menu bar 1 of process \"Editor\"."},
                 {"NSAppleScriptErrorNumber", -1728}}));
  EXPECT_THAT(platform.scripts().shellCommands(), ElementsAre("before"));
}

TEST_F(MenuScriptsTest, APathOfTwoPartsFails) {
  EXPECT_EQ(errorOf(menuScript({"Editor", "View"})),
            "Can\u2019t get items 3 thru 2 of {\"Editor\", \"View\"}.");
  EXPECT_THAT(menus().clicks(), IsEmpty());
}

const std::string ofFile =
    " of menu \"File\" of menu bar item \"File\" of menu bar 1 of process \"Editor\"";

TEST_F(MenuScriptsTest, WhatCannotBeClicked) {
  platform.processes().launch({"org.bare", "Bare", "/apps/Bare.desktop"});
  const struct {
    std::initializer_list<std::string> path;
    std::string problem;
  } rows[] = {
      {{"Nobody", "File", "Open"}, "Can\u2019t get process \"Nobody\"."},
      {{"Bare", "File", "Open"},
       "Can\u2019t get menu bar 1 of process \"Bare\": it shows no menus to other programs."},
      {{"Editor", "Tools", "Open"},
       "Can\u2019t get menu bar item \"Tools\" of menu bar 1 of process \"Editor\"."},
      {{"Editor", "File", "Close"},
       "Can\u2019t click menu item \"Close\"" + ofFile + ": it is disabled."},
      {{"Editor", "File", "Vault"},
       "Can\u2019t click menu item \"Vault\"" + ofFile + ": the program refuses."},
      {{"Editor", "File", "Vault", "Open"},
       "Can\u2019t get menu item \"Open\" of menu \"Vault\" of menu item \"Vault\"" + ofFile + "."},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(errorOf(menuScript(row.path)), "System Events got an error: " + row.problem);
  }
  EXPECT_THAT(menus().clicks(), IsEmpty());
}

TEST_F(MenuScriptsTest, PathsThatLeadNowhere) {
  const struct {
    const char* element;
    const char* problem;
  } rows[] = {
      {"menu bar 1", "Can\u2019t get menu bar 1."},
      {"menu bar 2 of process \"Editor\"", "Can\u2019t get menu bar 2 of process \"Editor\"."},
      {"menu bar item 3 of menu bar 1 of process \"Editor\"",
       "Can\u2019t get menu bar item 3 of menu bar 1 of process \"Editor\"."},
      {"menu bar item 0 of menu bar 1 of process \"Editor\"",
       "Can\u2019t get menu bar item 0 of menu bar 1 of process \"Editor\"."},
      {"menu \"View\" of menu bar item \"File\" of menu bar 1 of process \"Editor\"",
       "Can\u2019t get menu \"View\" of menu bar item \"File\" of menu bar 1 of process "
       "\"Editor\"."},
      {"menu item 1 of menu bar 1 of process \"Editor\"",
       "Can\u2019t get menu item 1 of menu bar 1 of process \"Editor\"."},
      {"menu item 1 of every menu item of menu \"File\" of menu bar 1 of process \"Editor\"",
       "Can\u2019t get menu item 1 of every menu item of menu \"File\" of menu bar 1 of process "
       "\"Editor\"."},
      {"process \"Editor\" of process \"Editor\"",
       "Can\u2019t get process \"Editor\" of process \"Editor\"."},
      {"process 1", "Can\u2019t get process 1."},
      {"button \"OK\" of window 1 of process \"Editor\"",
       "Can\u2019t get window 1 of process \"Editor\": only the menus of other programs can be "
       "reached."},
      {"menu bar 1 of process \"Editor\"", "Can\u2019t click menu bar 1 of process \"Editor\"."},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(asked(std::string("click ") + row.element),
              std::string("System Events got an error: ") + row.problem);
  }
}

TEST_F(MenuScriptsTest, OtherWaysToSayIt) {
  for (const char* const way : {
           "menu item 1 of menu 1 of menu bar item 1 of menu bar 1 of process \"Editor\"",
           "menu item \"Open...\" of menu \"File\" of menu bar 1 of process \"Editor\"",
           "menu item -6 of menu 1 of menu bar item -2 of menu bar 1 of process id \"org.editor\"",
           "process \"Editor\"'s menu bar 1's menu \"File\"'s menu item 1",
       }) {
    asked(std::string("click ") + way);
    EXPECT_EQ(menus().clicks().back(), (Click{editor, "File:Open\u2026"})) << way;
  }
  EXPECT_THAT(menus().clicks(), testing::SizeIs(4));
  asked("click menu bar item \"View\" of menu bar 1 of process \"Editor\"");
  EXPECT_EQ(menus().clicks().back(), (Click{editor, "View"}));
}

TEST_F(MenuScriptsTest, AScriptCanLookBeforeItClicks) {
  const struct {
    std::string question;
    const char* answer;
  } rows[] = {
      {"exists process \"Editor\"", "true"},
      {"exists process \"Nobody\"", "false"},
      {"process \"Editor\" exists", "true"},
      {"exists menu bar 1 of process \"Nobody\"", "false"},
      {"exists menu item \"Close\"" + ofFile, "true"},
      {"exists menu item \"Quit\"" + ofFile, "false"},
      {"not (menu item \"Quit\"" + ofFile + " exists)", "true"},
      {"exists every menu item" + ofFile, "true"},
      {"exists menu items of menu 1 of menu item 1" + ofFile, "false"},
      // Nothing is opened for a question.
      {"exists menu item 1 of menu 1 of menu item \"Recent\"" + ofFile, "false"},
      {"enabled of menu item \"Close\"" + ofFile, "false"},
      {"(menu item 1" + ofFile + ")'s enabled", "true"},
      {"enabled of menu bar 1 of process \"Editor\"", "true"},
      {"enabled of menu item \"Quit\"" + ofFile,
       "System Events got an error: Can\u2019t get menu item \"Quit\""},
      {"name of menu item 1" + ofFile, "Open\u2026"},
      {"name of menu item \"close\"" + ofFile, "close"},
      {"exists 5", "Can\u2019t make 5 into type element."},
  };
  for (const auto& row : rows) {
    EXPECT_THAT(asked(row.question), testing::StartsWith(row.answer)) << row.question;
  }
  EXPECT_THAT(menus().openings(), IsEmpty());
}

TEST_F(MenuScriptsTest, TheNamesOfAllEntries) {
  for (const char* const entries : {"every menu bar item", "menu bar items"}) {
    EXPECT_EQ(
        asked(std::string("(name of ") + entries + " of menu bar 1 of process \"Editor\") as text"),
        "FileView");
  }
  EXPECT_EQ(asked("length of (name of every menu item" + ofFile + " as list)"), "6");
}

TEST_F(MenuScriptsTest, OnlySystemEventsKnowsMenus) {
  EXPECT_EQ(errorOf("tell application \"Editor\" to click menu item 1" + ofFile),
            "Editor got an error: Can\u2019t continue click.");
  EXPECT_EQ(errorOf("tell application \"Editor\" to exists process \"Editor\""),
            "Editor got an error: Can\u2019t continue exists.");
  EXPECT_EQ(errorOf("tell application \"Editor\" to enabled of process \"Editor\""),
            "Can\u2019t get enabled of process \"Editor\".");
}

}  // namespace
}  // namespace qb::test
