#include "PlatformDesktop/processes/ApplicationIndex.h"

#include <gmock/gmock.h>

#include "TemporaryFolder.h"

namespace qb {
namespace {

class ApplicationIndexTest : public ::testing::Test {
 protected:
  void addEntry(const std::string& file, const std::string& lines) {
    folder_.write("user/applications/" + file, "[Desktop Entry]\nType=Application\n" + lines);
  }
  void addSystemEntry(const std::string& file, const std::string& lines) {
    folder_.write("system/applications/" + file, "[Desktop Entry]\nType=Application\n" + lines);
  }
  void load() {
    index_ = ApplicationIndex::load({folder_.path("user"), folder_.path("system")},
                                    {folder_.path("config")}, "C");
  }
  std::string matchedId(const ProgramTraits& traits) const {
    const DesktopEntry* const entry = index_.match(traits);
    return entry ? entry->id : "";
  }

  TemporaryFolder folder_;
  ApplicationIndex index_;
};

TEST_F(ApplicationIndexTest, AnIdIsThePathBelowItsFolder) {
  addEntry("editor.desktop", "Name=Editor\nExec=edit\n");
  addEntry("suite/writer.desktop", "Name=Writer\nExec=write\n");
  addEntry("notes.txt", "Name=Notes\n");
  load();
  ASSERT_EQ(index_.entries().size(), 2U);
  EXPECT_EQ(index_.entryAtPath(folder_.path("user/applications/suite/writer.desktop"))->id,
            "suite-writer");
  EXPECT_EQ(index_.entryAtPath("/no/such.desktop"), nullptr);
}

TEST_F(ApplicationIndexTest, TheUsersEntryHidesTheSystems) {
  addEntry("editor.desktop", "Name=Mine\nExec=mine\n");
  addSystemEntry("editor.desktop", "Name=Theirs\nExec=theirs\n");
  load();
  ASSERT_EQ(index_.entries().size(), 1U);
  EXPECT_EQ(index_.entries()[0].name, "Mine");
}

TEST_F(ApplicationIndexTest, AHiddenEntryTakesTheSystemsAway) {
  addEntry("editor.desktop", "Name=Mine\nExec=edit\nHidden=true\n");
  addSystemEntry("editor.desktop", "Name=Theirs\nExec=edit\n");
  load();
  EXPECT_EQ(matchedId({"Editor", "editor", {"edit"}}), "");
}

TEST_F(ApplicationIndexTest, TheClaimedClassCountsFirst) {
  addEntry("one.desktop", "Name=One\nExec=run\nStartupWMClass=Suite\n");
  addEntry("suite.desktop", "Name=Two\nExec=suite\n");
  load();
  EXPECT_EQ(matchedId({"Suite", "suite", {"suite"}}), "one");
  EXPECT_EQ(matchedId({"Other", "suite", {}}), "one");
}

TEST_F(ApplicationIndexTest, ThenTheIdWhateverItsCase) {
  addEntry("org.example.Viewer.desktop", "Name=Viewer\nExec=launcher view\n");
  addEntry("editor.desktop", "Name=Editor\nExec=launcher edit\n");
  load();
  EXPECT_EQ(matchedId({"Editor", "x", {}}), "editor");
  EXPECT_EQ(matchedId({"X", "EDITOR", {}}), "editor");
  EXPECT_EQ(matchedId({"org.example.viewer", "", {}}), "org.example.Viewer");
  EXPECT_EQ(matchedId({"Viewer", "", {}}), "org.example.Viewer");
}

TEST_F(ApplicationIndexTest, ThenTheProgram) {
  addEntry("debian-term.desktop", "Name=Term\nExec=/usr/bin/term -ls\n");
  load();
  EXPECT_EQ(matchedId({"TermWindow", "x", {"python3.11", "term"}}), "debian-term");
  EXPECT_EQ(matchedId({"TermWindow", "x", {"other"}}), "");
  EXPECT_EQ(matchedId({"", "", {}}), "");
}

TEST_F(ApplicationIndexTest, OfTwoEntriesForOneProgramTheOneThatMenusShowIsMeant) {
  addEntry("a-url-handler.desktop", "Name=Handler\nExec=browse --url %u\nNoDisplay=true\n");
  addEntry("browser.desktop", "Name=Browser\nExec=browse\n");
  load();
  EXPECT_EQ(matchedId({"X", "x", {"browse"}}), "browser");
}

TEST_F(ApplicationIndexTest, WhatRunsInATerminalIsNotMatchedByItsProgram) {
  addEntry("top.desktop", "Name=Top\nExec=top\nTerminal=true\n");
  load();
  EXPECT_EQ(matchedId({"X", "x", {"top"}}), "");
}

TEST_F(ApplicationIndexTest, AnIdentifierIsTheIdOrTheNameOfTheRole) {
  addEntry("files.desktop", "Name=Files\nExec=files\n");
  addEntry("other-files.desktop", "Name=Other\nExec=other\n");
  addEntry("post.desktop", "Name=Post\nExec=post\n");
  addEntry("firefox-esr.desktop", "Name=Browser\nExec=firefox\n");
  folder_.write("config/mimeapps.list",
                "[Default Applications]\ninode/directory=gone.desktop;files.desktop;\n"
                "x-scheme-handler/mailto=post.desktop\n");
  load();
  std::map<std::string, std::string> identifiers;
  for (const DesktopEntry& entry : index_.entries()) {
    identifiers[entry.id] = index_.identifierOf(entry);
  }
  EXPECT_EQ(identifiers["files"], "com.apple.finder");
  EXPECT_EQ(identifiers["other-files"], "other-files");
  EXPECT_EQ(identifiers["post"], "com.apple.mail");
  EXPECT_EQ(identifiers["firefox-esr"], "org.mozilla.firefox");
}

TEST_F(ApplicationIndexTest, WithoutAChoiceTheCacheNamesTheFileManager) {
  addEntry("files.desktop", "Name=Files\nExec=files\n");
  folder_.write("user/applications/mimeinfo.cache",
                "[MIME Cache]\ninode/directory=files.desktop;\n");
  load();
  EXPECT_EQ(index_.identifierOf(index_.entries()[0]), "com.apple.finder");
}

TEST_F(ApplicationIndexTest, AnApplicationIsFoundByItsIdentifier) {
  addEntry("editor.desktop", "Name=Editor\nExec=edit\n");
  addEntry("dropbox.desktop", "Name=Dropbox\nExec=dropbox\n");
  addEntry("gone.desktop", "Name=Gone\nExec=gone\nHidden=true\n");
  load();
  const auto found = [this](const std::string& identifier) {
    const DesktopEntry* const entry = index_.entryWithIdentifier(identifier);
    return entry ? entry->id : "none";
  };
  EXPECT_EQ(found("editor"), "editor");
  EXPECT_EQ(found("com.getdropbox.dropbox"), "dropbox");
  // It goes by the other name.
  EXPECT_EQ(found("dropbox"), "none");
  EXPECT_EQ(found("gone"), "none");
  EXPECT_EQ(found(""), "none");
}

TEST_F(ApplicationIndexTest, OfSeveralWithOneIdentifierTheOneThatMenusShowIsFound) {
  addEntry("a.desktop", "Name=A\nExec=a\n");
  addEntry("com.dropbox.Client.desktop", "Name=Client\nExec=client\nNoDisplay=true\n");
  load();
  EXPECT_EQ(index_.entryWithIdentifier("com.getdropbox.dropbox")->id, "com.dropbox.Client");
  addEntry("dropbox.desktop", "Name=Dropbox\nExec=dropbox\n");
  load();
  EXPECT_EQ(index_.entryWithIdentifier("com.getdropbox.dropbox")->id, "dropbox");
}

TEST_F(ApplicationIndexTest, AProgramWithoutAnEntryGoesByItsNameOrByTheOneItIsKnownBy) {
  EXPECT_EQ(ApplicationIndex::identifierOfProgram("xclock"), "xclock");
  EXPECT_EQ(ApplicationIndex::identifierOfProgram("quillbox-preferences"),
            "com.apple.systempreferences");
}

}  // namespace
}  // namespace qb
