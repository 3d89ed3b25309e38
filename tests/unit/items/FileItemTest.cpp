#include "Quillbox/Item/FileItem.h"

#include <gmock/gmock.h>

#include "Quillbox/managers/DecorationManager.h"
#include "QuillboxCommon/richtext/RichText.h"
#include "support/HotKeysFixture.h"
#include "support/MenuTitles.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

const Rect cell = Rect::make(0, 0, 42, 42);

class FileItemTest : public HotKeysFixture {
 protected:
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  /// An item for a file that is there.
  std::shared_ptr<FileItem> itemAt(const std::string& path, const std::string& contents = "text") {
    files().putRaw(path, contents);
    return FileItem::create(cell, path);
  }
  std::vector<std::string> titles(const std::string& path) {
    return titlesOf(itemAt(path)->configureMenuItems());
  }
  void choose(Item& item, const std::string& title) {
    for (const auto& entry : item.configureMenuItems()) {
      if (entry->title() == title) return entry->performAction();
    }
    FAIL() << title << " is not in the menu";
  }
  SimulatedPasteboard& clipboard() { return platform.pasteboards().general(); }
  /// What is on the clipboard in a type, as text; "none" where there is nothing.
  std::string copied(const std::string& type) {
    const auto data = clipboard().dataForType(type);
    return data ? std::string(data->begin(), data->end()) : "none";
  }
  std::string copiedText() { return copied("public.utf8-plain-text"); }
  /// What the newest window says, as the white text of its two.
  std::string notice() {
    const auto windows = platform.windowServer().visibleWindows();
    if (windows.empty()) return "none";
    const auto texts = platform.windowServer().paint(*windows.back()).texts();
    return texts.empty() ? "none" : texts.back();
  }
};

TEST_F(FileItemTest, CanBeDecorated) {
  const auto item = itemAt("/work/Notes.txt");
  EXPECT_EQ(item->type(), ItemTypeFile);
  EXPECT_TRUE(item->decorateable());
  EXPECT_EQ(item->name(), "Notes");
  platform.runFor(0.2);
  EXPECT_EQ(simulatedImageName(item->image()), "icon:/work/Notes.txt");
  quillbox->decorationManager().setTintName("Red", *item);
  item->setImage(item->getBaseIconImage());
  EXPECT_EQ(simulatedImageName(item->image()), "drawn");
}

// Its menu.

TEST_F(FileItemTest, EachKindHasItsEntries) {
  struct Row {
    const char* path;
    std::vector<std::string> own;
  };
  const std::vector<Row> rows = {
      {"/work/a.xyz", {"Share via Email..."}},
      {"/work/a.pdf", {"Share via Email..."}},
      {"/work/a.txt", {"Copy Contents to Clipboard...", "Share via Email..."}},
      {"/work/a.rtf", {"Copy Contents to Clipboard...", "Share via Email..."}},
      {"/work/a.png", {"Copy to Clipboard...", "Share via Email..."}},
      {"/work/a.scpt", {"Open in AppleScript Editor...", "Share via Email..."}},
  };
  for (const Row& row : rows) {
    std::vector<std::string> expected = {
        "Show in Finder...", "Get Info in Finder...", "-", "Preview", "-", "Set Hot Key...",
        "Decorate"};
    expected.insert(expected.end(), row.own.begin(), row.own.end());
    EXPECT_EQ(titles(row.path), expected) << row.path;
  }
}

TEST_F(FileItemTest, InARowOfAFolderItGoesToTheTrash) {
  const auto item = itemAt("/work/a.txt");
  item->setTrashable(true);
  EXPECT_THAT(titlesOf(item->configureMenuItems()),
              ElementsAre("Show in Finder...", "Get Info in Finder...", "-", "Preview", "-",
                          "Set Hot Key...", "Move to Trash...", "Decorate",
                          "Copy Contents to Clipboard...", "Share via Email..."));
}

TEST_F(FileItemTest, ItsOwnEntriesAreEnabledAndTheItems) {
  std::vector<std::string> actions;
  for (const char* path : {"/work/a.scpt", "/work/a.png", "/work/a.txt"}) {
    const auto item = itemAt(path);
    const auto entries = item->configureMenuItems();
    for (std::size_t i = 7; i < entries.size(); ++i) {
      EXPECT_TRUE(entries[i]->isEnabled()) << entries[i]->title();
      EXPECT_EQ(entries[i]->action().target.lock(), item) << entries[i]->title();
      actions.push_back(entries[i]->action().name);
    }
  }
  EXPECT_THAT(actions,
              ElementsAre("openAppleScriptSelected", "shareViaEmail", "copyToClipboardSelected",
                          "shareViaEmail", "copyToClipboardSelected", "shareViaEmail"));
}

TEST_F(FileItemTest, AScriptIsEditedInTheEditorOfScripts) {
  const auto item = itemAt("/work/Greeting.scpt");
  open(ActivationMethodCorner);
  choose(*item, "Open in AppleScript Editor...");
  EXPECT_THAT(platform.applicationControl().openedWith(),
              ElementsAre(Pair("/work/Greeting.scpt", "AppleScript Editor")));
  platform.runFor(0.02);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
}

TEST_F(FileItemTest, AMessageTakesTheFileAlong) {
  choose(*itemAt("/work/a.txt"), "Share via Email...");
  ASSERT_THAT(platform.sharing().composed(), SizeIs(1));
  EXPECT_EQ(platform.sharing().composed()[0].subject, "a.txt");
}

// Invocation.

TEST_F(FileItemTest, AScriptRunsWhenThePanelHasGone) {
  const auto item = itemAt("/work/Greeting.scpt", "do shell script \"greet\"");
  open(ActivationMethodCorner);
  item->invoke();
  platform.runFor(0.02);
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
  EXPECT_THAT(platform.scripts().shellCommands(), IsEmpty());
  platform.runFor(0.32);
  EXPECT_THAT(platform.scripts().shellCommands(), ElementsAre("greet"));
  EXPECT_THAT(platform.applicationControl().openedFiles(), IsEmpty());
}

TEST_F(FileItemTest, AnyOtherFileOpens) {
  itemAt("/work/a.txt")->invoke();
  EXPECT_THAT(platform.applicationControl().openedFiles(), ElementsAre("/work/a.txt"));
}

TEST_F(FileItemTest, AMissingFileIsIdentifiedByTheUser) {
  files().putRaw("/work/found.txt", "text");
  const auto item = FileItem::create(cell, std::string("/work/lost.txt"));
  platform.dialogs().answerOpenPanel({"/work/found.txt"});
  item->identifyMissingRepresentedItem();
  ASSERT_THAT(platform.dialogs().shownOpenPanels(), SizeIs(1));
  const auto& panel = platform.dialogs().shownOpenPanels()[0];
  EXPECT_TRUE(panel.canChooseFiles);
  EXPECT_FALSE(panel.canChooseDirectories);
  EXPECT_THAT(panel.allowedFileTypes, IsEmpty());
  EXPECT_EQ(panel.directory, "");
  EXPECT_EQ(item->path(), "/work/found.txt");
  EXPECT_EQ(item->name(), "found");
}

TEST_F(FileItemTest, AUserWhoCannotSayLeavesItMissing) {
  const auto item = FileItem::create(cell, std::string("/work/lost.txt"));
  platform.dialogs().cancelOpenPanel();
  item->identifyMissingRepresentedItem();
  EXPECT_THAT(platform.dialogs().shownOpenPanels(), SizeIs(1));
  EXPECT_EQ(item->path(), "/work/lost.txt");
}

// The clipboard.

TEST_F(FileItemTest, TheTextOfAFileIsCopied) {
  choose(*itemAt("/work/a.txt", "Gr\u00fc\u00dfe\n"), "Copy Contents to Clipboard...");
  EXPECT_EQ(copiedText(), "Gr\u00fc\u00dfe\n");
  platform.runFor(0.49);
  EXPECT_EQ(notice(), "none");
  platform.runFor(0.02);
  EXPECT_EQ(notice(), "Copied to System Clipboard");
  platform.runFor(1.9);
  EXPECT_EQ(notice(), "Copied to System Clipboard");
  platform.runFor(0.2);
  EXPECT_EQ(notice(), "none");
}

TEST_F(FileItemTest, PlainTextIsCopiedAsThatAlone) {
  choose(*itemAt("/work/a.txt"), "Copy Contents to Clipboard...");
  ASSERT_THAT(clipboard().items(), SizeIs(1));
  EXPECT_THAT(clipboard().items()[0], ElementsAre(Pair("public.utf8-plain-text", testing::_)));
}

TEST_F(FileItemTest, RichTextIsCopiedAsThatAndAsPlainText) {
  choose(*itemAt("/work/a.rtf", R"({\rtf1\ansi Dear {\b Reader}\par})"),
         "Copy Contents to Clipboard...");
  EXPECT_EQ(copiedText(), "Dear Reader\n");
  ASSERT_THAT(clipboard().items(), SizeIs(1));
  EXPECT_THAT(clipboard().items()[0], ElementsAre(Pair("public.rtf", testing::_),
                                                  Pair("public.utf8-plain-text", testing::_)));
  const auto rich = attributedStringWithRTF(copied("public.rtf"));
  ASSERT_TRUE(rich);
  EXPECT_EQ(rich->string(), "Dear Reader\n");
}

TEST_F(FileItemTest, ACopyTakesThePlaceOfWhatWasThere) {
  clipboard().setData({1}, "other");
  const auto count = clipboard().changeCount();
  choose(*itemAt("/work/a.txt"), "Copy Contents to Clipboard...");
  EXPECT_EQ(clipboard().changeCount(), count + 1);
  EXPECT_EQ(copied("other"), "none");
}

TEST_F(FileItemTest, WhatIsNoTextIsNotCopied) {
  clipboard().setData({'x'}, "public.utf8-plain-text");
  struct Row {
    const char *path, *contents;
  };
  for (const Row& row : {Row{"/work/a.txt", "no \xff text"}, Row{"/work/a.rtf", "plain"}}) {
    choose(*itemAt(row.path, row.contents), "Copy Contents to Clipboard...");
    platform.runFor(0.51);
    EXPECT_EQ(notice(), "Failed to Copy to System Clipboard") << row.path;
    EXPECT_EQ(copiedText(), "x") << row.path;
    platform.runFor(2.9);
    EXPECT_EQ(notice(), "Failed to Copy to System Clipboard") << row.path;
    platform.runFor(0.2);
    EXPECT_EQ(notice(), "none") << row.path;
  }
}

TEST_F(FileItemTest, AnImageIsCopiedInAllOfItsDetail) {
  platform.graphics().putImageFile("/work/a.png", {3000, 2000});
  choose(*itemAt("/work/a.png"), "Copy to Clipboard...");
  platform.runFor(0.6);
  EXPECT_EQ(copied("public.png"), "PNG of /work/a.png");
  EXPECT_EQ(notice(), "Copied to System Clipboard");
}

TEST_F(FileItemTest, NothingHappensForAnImageThatCannotBeLoaded) {
  choose(*itemAt("/work/a.png"), "Copy to Clipboard...");
  platform.runFor(1);
  EXPECT_EQ(clipboard().changeCount(), 0);
  EXPECT_EQ(notice(), "none");
}

TEST_F(FileItemTest, AClipboardThatCannotBeHadIsToldOf) {
  clipboard().setWritesFail(true);
  platform.graphics().putImageFile("/work/a.png", {30, 20});
  choose(*itemAt("/work/a.png"), "Copy to Clipboard...");
  platform.runFor(0.6);
  EXPECT_EQ(notice(), "Failed to Copy to System Clipboard");
}

}  // namespace
}  // namespace qb::test
