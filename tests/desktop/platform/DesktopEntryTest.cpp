#include "PlatformDesktop/processes/DesktopEntry.h"

#include <gmock/gmock.h>

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

DesktopEntry entryWithExec(const std::string& exec) {
  const auto entry = DesktopEntry::parse(
      "[Desktop Entry]\nType=Application\nName=Editor\nIcon=pen\nExec=" + exec + "\n", "editor",
      "/apps/editor.desktop", "C");
  return entry.value_or(DesktopEntry{});
}

TEST(DesktopEntry, ReadsTheKeysOfItsGroupOnly) {
  const auto entry = DesktopEntry::parse(
      "# comment\n[Desktop Entry]\nType = Application\nName=Editor\nExec=edit %F\nIcon=pen\n"
      "StartupWMClass=Edit\nNoDisplay=true\n\n[Desktop Action new]\nName=New\nExec=edit --new\n",
      "editor", "/apps/editor.desktop", "C");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->id, "editor");
  EXPECT_EQ(entry->path, "/apps/editor.desktop");
  EXPECT_EQ(entry->name, "Editor");
  EXPECT_EQ(entry->exec, "edit %F");
  EXPECT_EQ(entry->icon, "pen");
  EXPECT_EQ(entry->startupWmClass, "Edit");
  EXPECT_TRUE(entry->noDisplay);
  EXPECT_FALSE(entry->hidden);
  EXPECT_FALSE(entry->runsInTerminal);
}

TEST(DesktopEntry, WhatIsNoApplicationIsNone) {
  EXPECT_FALSE(DesktopEntry::parse("[Desktop Entry]\nType=Link\nName=a\n", "a", "/a", "C"));
  EXPECT_FALSE(DesktopEntry::parse("", "a", "/a", "C"));
  EXPECT_FALSE(DesktopEntry::parse("Type=Application\n", "a", "/a", "C"));
  EXPECT_FALSE(DesktopEntry::parse(std::string(1000, '['), "a", "/a", "C"));
}

struct NameCase {
  const char* locale;
  const char* name;
};
class DesktopEntryName : public ::testing::TestWithParam<NameCase> {};

TEST_P(DesktopEntryName, IsThatOfTheNearestLocale) {
  const auto entry = DesktopEntry::parse(
      "[Desktop Entry]\nType=Application\nName=Files\nName[de]=Dateien\nName[de_CH]=Dateie\n"
      "Name[sr@latin]=Datoteke\n",
      "files", "/files.desktop", GetParam().locale);
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Locales, DesktopEntryName,
    ::testing::Values(NameCase{"C", "Files"}, NameCase{"", "Files"}, NameCase{"de", "Dateien"},
                      NameCase{"de_DE.UTF-8", "Dateien"}, NameCase{"de_CH.UTF-8", "Dateie"},
                      NameCase{"de_AT@euro", "Dateien"}, NameCase{"sr_RS.UTF-8@latin", "Datoteke"},
                      NameCase{"fr_FR", "Files"}));

struct CommandCase {
  const char* exec;
  std::vector<std::string> words;
};
class DesktopEntryCommand : public ::testing::TestWithParam<CommandCase> {};

TEST_P(DesktopEntryCommand, HasItsFieldCodesFilledIn) {
  EXPECT_EQ(entryWithExec(GetParam().exec).commandLine(), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, DesktopEntryCommand,
    ::testing::Values(
        CommandCase{"edit", {"edit"}}, CommandCase{"edit %f", {"edit"}},
        CommandCase{"edit  --new %U", {"edit", "--new"}},
        CommandCase{"edit %i -c %c %k",
                    {"edit", "--icon", "pen", "-c", "Editor", "/apps/editor.desktop"}},
        CommandCase{"edit --share=100%%", {"edit", "--share=100%"}},
        CommandCase{R"("/opt/my editor/edit" "a b" "")", {"/opt/my editor/edit", "a b", ""}},
        CommandCase{R"(sh -c "echo \\"hi\\" \\$HOME")", {"sh", "-c", "echo \"hi\" $HOME"}},
        CommandCase{R"(edit "open)", {}}, CommandCase{"", {}}));

TEST(DesktopEntry, TheProgramIsTheFirstWordThatRuns) {
  EXPECT_EQ(entryWithExec("/usr/bin/edit %F").programName(), "edit");
  EXPECT_EQ(entryWithExec("env LANG=C edit").programName(), "edit");
  EXPECT_EQ(entryWithExec("\"/opt/a b/edit\"").programName(), "edit");
  EXPECT_EQ(entryWithExec("").programName(), "");
}

TEST(DesktopEntry, ListsHaveNoEmptyParts) {
  EXPECT_THAT(splitList("a;b;;c;", ';'), ElementsAre("a", "b", "c"));
  EXPECT_THAT(splitList("", ';'), IsEmpty());
}

TEST(DesktopEntry, AnAddressToOpenTakesItsPlaceInTheLine) {
  EXPECT_THAT(entryWithExec("edit --new %u --end").commandLine("mailto:a"),
              ElementsAre("edit", "--new", "mailto:a", "--end"));
  EXPECT_THAT(entryWithExec("edit %U").commandLine("mailto:a"), ElementsAre("edit", "mailto:a"));
  EXPECT_THAT(entryWithExec("edit --open=%u %u").commandLine("mailto:a"),
              ElementsAre("edit", "--open=mailto:a"));
  EXPECT_THAT(entryWithExec("edit").commandLine("mailto:a"), ElementsAre("edit", "mailto:a"));
  EXPECT_THAT(entryWithExec("\"broken").commandLine("mailto:a"), IsEmpty());
}

}  // namespace
}  // namespace qb
