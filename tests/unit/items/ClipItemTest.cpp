#include "Quillbox/Item/ClipItem.h"

#include <gmock/gmock.h>

#include "QuillboxCommon/views/ImageView.h"
#include "support/ClipboardRowFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const Rect cell = Rect::make(0, 0, 42, 42);

class ClipItemTest : public ClipboardRowFixture {
 protected:
  /// One clipping in the row, of a text or of an image named "Shot".
  std::shared_ptr<ClipItem> textItem(const std::string& text = "text") {
    putTextClip("a.textclip", 1, text);
    showHistory();
    return clip(0);
  }
  std::shared_ptr<ClipItem> imageItem() {
    files().putPropertyList(path("a.imageclip"), Cubby("public.png", dataOf("image Shot")).state());
    showHistory();
    return clip(0);
  }
  std::shared_ptr<ClipItem> lostItem() {
    auto item = textItem();
    files().removeItemAtPath(item->clipFilePath());
    return item;
  }
  void choose(ClipItem& item, const std::string& title) {
    ClipboardRowFixture::choose(item.configureMenuItems(), title);
  }
  static std::vector<std::string> enabledTitles(ClipItem& item) {
    std::vector<std::string> titles;
    for (const auto& entry : item.configureMenuItems()) {
      if (!entry->isSeparatorItem() && entry->isEnabled()) titles.push_back(entry->title());
    }
    return titles;
  }
  const std::string pasteScript =
      "tell application \"System Events\" to key code 9 using command down\r";
};

TEST_F(ClipItemTest, AnswersForItself) {
  const auto item = ClipItem::create(cell);
  EXPECT_EQ(item->type(), 14);
  EXPECT_EQ(item->name(), "Click to Copy");
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownClipboardItem");
  EXPECT_TRUE(item->isRemovable());
  EXPECT_TRUE(item->configurable());
  EXPECT_TRUE(item->supportsQuickRemoval());
  EXPECT_EQ(item->cubbyOfContents(), nullptr);
}

TEST_F(ClipItemTest, ItsStateIsItsPath) {
  EXPECT_FALSE(ClipItem::create(cell)->state().hasKey("ClipItemFilePath"));
  const auto item = textItem();
  EXPECT_EQ(item->state().objectForKey("ClipItemFilePath"), path("a.textclip"));
  const auto information = ClipItem::information();
  EXPECT_EQ(information.className, "ClipItem");
  const auto restored =
      std::dynamic_pointer_cast<ClipItem>(information.create(cell, item->state()));
  ASSERT_TRUE(restored);
  EXPECT_EQ(restored->clipFilePath(), path("a.textclip"));
  EXPECT_EQ(restored->clipType(), ClipTypeText);
  EXPECT_EQ(restored->uniqueID(), item->uniqueID());
}

TEST_F(ClipItemTest, ItsPathDecidesOnItsPicture) {
  const auto item = ClipItem::create(cell);
  item->setClipFilePath(putTextClip("a.textclip", 1));
  EXPECT_EQ(item->clipType(), ClipTypeText);
  EXPECT_EQ(simulatedImageName(item->image()), "drawn");
  item->setClipFilePath("");
  EXPECT_EQ(item->clipFilePath(), path("a.textclip"));
  item->setClipFilePath(path("b.other"));
  EXPECT_EQ(item->clipType(), ClipTypeUnknown);
  EXPECT_EQ(simulatedImageName(item->image()), "UnknownClipboardItem");
}

// Copying and pasting.

TEST_F(ClipItemTest, AClickCopiesAndTheHistoryDoesNotGrow) {
  const auto item = textItem("again");
  item->invoke();
  EXPECT_EQ(copiedText(), "again");
  platform.runFor(0.5);
  EXPECT_EQ(notice(), "Copied to System Clipboard");
  platform.runFor(3);
  EXPECT_THAT(names(), SizeIs(1));
  clipboard().clearContents();
  EXPECT_TRUE(item->performPasteboardCopy());
  EXPECT_EQ(copiedText(), "again");
}

TEST_F(ClipItemTest, WithoutItsFileTheClipboardStaysAndTheNoticeComes) {
  const auto item = lostItem();
  clipboard().putByAnotherProgram({text("theirs")});
  manager().synchronizeWithClipboard();
  item->invoke();
  EXPECT_EQ(copiedText(), "theirs");
  platform.runFor(0.5);
  EXPECT_EQ(notice(), "Copied to System Clipboard");
}

TEST_F(ClipItemTest, AClickThatPastesLeavesTheClipboardAsItWas) {
  const auto item = textItem("pasted");
  chooseForRow("Paste Clipping");
  copy(text("theirs"));
  const std::size_t before = names().size();
  const std::int64_t count = clipboard().changeCount();
  item->invoke();
  EXPECT_THAT(platform.scripts().executed(), ElementsAre(pasteScript));
  EXPECT_EQ(clipboard().changeCount(), count + 2) << "the clipping, and what was there";
  EXPECT_EQ(copiedText(), "theirs");
  platform.runFor(3);
  EXPECT_EQ(names().size(), before);
}

TEST_F(ClipItemTest, PastingHasThePanelGoFirst) {
  textItem("pasted");
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(1);
  ASSERT_EQ(appDelegate->state(), ActivationStateActive);
  choose(*clip(0), "Paste into Current App");
  EXPECT_NE(appDelegate->state(), ActivationStateActive);
  EXPECT_THAT(platform.scripts().executed(), ElementsAre(pasteScript));
}

// Its menu.

TEST_F(ClipItemTest, ItsMenu) {
  EXPECT_THAT(
      titlesOf(textItem()->configureMenuItems()),
      ElementsAre("Paste into Current App", "-", "Share via Email...", "Add to New Document...",
                  "-", "Save to Desktop...", "-", "Remove from History..."));
  files().removeItemAtPath(path("a.textclip"));
  const auto image = imageItem();
  EXPECT_THAT(
      titlesOf(image->configureMenuItems()),
      ElementsAre("Paste into Current App", "-", "Share via Email...", "Add to New Document...",
                  "Show in Preview...", "-", "Save to Desktop...", "-", "Remove from History..."));
  chooseForRow("Paste Clipping");
  EXPECT_EQ(image->configureMenuItems().front()->title(), "Copy to System Clipboard");
}

TEST_F(ClipItemTest, WhatIsNeitherTextNorImageCanOnlyBePastedAndRemoved) {
  const auto item = ClipItem::create(cell);
  item->setClipFilePath(putTextClip("a.unknownclip", 1));
  EXPECT_THAT(enabledTitles(*item),
              ElementsAre("Paste into Current App", "Remove from History..."));
}

TEST_F(ClipItemTest, TextsAndImagesAreShared) {
  choose(*textItem("shared"), "Share via Email...");
  ASSERT_THAT(platform.sharing().composed(), SizeIs(1));
  EXPECT_EQ(std::get<AttributedString>(platform.sharing().composed()[0].items[1]).string(),
            "shared");
  files().removeItemAtPath(path("a.textclip"));
  choose(*imageItem(), "Share via Email...");
  ASSERT_THAT(platform.sharing().composed(), SizeIs(2));
  EXPECT_EQ(simulatedImageName(std::get<Image>(platform.sharing().composed()[1].items[1])), "Shot");
  choose(*lostItem(), "Share via Email...");
  EXPECT_THAT(platform.sharing().composed(), SizeIs(2));
}

TEST_F(ClipItemTest, ANewDocumentGetsItPasted) {
  choose(*textItem(), "Add to New Document...");
  const std::string documentScript =
      "tell application \"TextEdit\"\r  activate\r  make new document at the beginning of "
      "documents\rend tell\r";
  EXPECT_THAT(platform.scripts().executed(), ElementsAre(documentScript));
  platform.runFor(0.49);
  EXPECT_THAT(platform.scripts().executed(), SizeIs(1));
  platform.runFor(0.2);
  EXPECT_THAT(platform.scripts().executed(), ElementsAre(documentScript, pasteScript));
}

TEST_F(ClipItemTest, AnImageIsShownByTheViewersOwnCommand) {
  copy(text("theirs"));
  const auto item = imageItem();
  choose(*item, "Show in Preview...");
  ASSERT_THAT(platform.scripts().executed(), SizeIs(1));
  EXPECT_EQ(platform.scripts().executed()[0],
            "\rtell application \"Preview\"\r   activate\rend tell\r"
            "tell application \"System Events\"\r   tell process \"Preview\"\r"
            "   tell menu bar 1\r   tell menu bar item \"File\"\r   tell menu \"File\"\r"
            "      click menu item \"New from Clipboard\"\r   end tell\r   end tell\r"
            "   end tell\r   end tell\rend tell\rtell application \"Preview\"\r   activate\r"
            "end tell\r");
  EXPECT_EQ(copiedText(), "theirs");
  const std::size_t before = names().size();
  platform.runFor(3);
  EXPECT_EQ(names().size(), before);
}

TEST_F(ClipItemTest, SavingWritesTheBytesOfATextUnderFreeNames) {
  files().makeFolder("/home/user/Desktop");
  const auto item = textItem("plain");
  choose(*item, "Save to Desktop...");
  choose(*item, "Save to Desktop...");
  EXPECT_EQ(files().raw("/home/user/Desktop/Text Clipping.rtf"), "plain");
  EXPECT_EQ(files().raw("/home/user/Desktop/Text Clipping 2.rtf"), "plain");
}

TEST_F(ClipItemTest, SavingWritesAnImageAsPng) {
  files().makeFolder("/home/user/Desktop");
  choose(*imageItem(), "Save to Desktop...");
  EXPECT_EQ(files().raw("/home/user/Desktop/Image Clipping.png"), "image Shot");
}

TEST_F(ClipItemTest, WhatCannotBeSavedIsToldOf) {
  files().makeFolder("/home/user/Desktop");
  const auto expectNotice = [this] {
    platform.runFor(0.5);
    EXPECT_EQ(notice(), "Unable to save Clipping to Desktop");
    platform.runFor(4);
  };
  const auto item = textItem();
  files().setWritesFail(true);
  choose(*item, "Save to Desktop...");
  expectNotice();
  files().setWritesFail(false);
  choose(*lostItem(), "Save to Desktop...");
  expectNotice();
  EXPECT_THAT(files().contentsOfDirectoryAtPath("/home/user/Desktop"), IsEmpty());
}

TEST_F(ClipItemTest, RemovingGoesByTheRow) {
  const auto item = textItem();
  platform.dialogs().answerAlert("Remove");
  choose(*item, "Remove from History...");
  EXPECT_THAT(names(), IsEmpty());
}

// What pops up.

TEST_F(ClipItemTest, ItPopsUpSoonAndWhole) {
  const auto item = textItem(std::string(5000, 'x'));
  TimeInterval delay = 0.5;
  EXPECT_TRUE(item->shouldDisplayPopUpViewWithDelay(delay));
  EXPECT_EQ(delay, 0.1);
  const auto view = std::dynamic_pointer_cast<ImageView>(item->generatePopUpView());
  ASSERT_TRUE(view);
  EXPECT_EQ(view->frame(), (Rect{{0, 0}, view->image().size()}));
  std::size_t characters = 0;
  for (const auto& operation : simulatedImageOperations(view->image())) {
    characters += operation.text.size();
  }
  EXPECT_EQ(characters, 4000U);
}

TEST_F(ClipItemTest, NothingPopsUpForWhatHasGoneOrIsUnknown) {
  EXPECT_EQ(lostItem()->generatePopUpView(), nullptr);
  const auto item = ClipItem::create(cell);
  item->setClipFilePath(putTextClip("a.unknownclip", 1));
  EXPECT_EQ(item->generatePopUpView(), nullptr);
}

// Drags.

TEST_F(ClipItemTest, ItIsDraggedAsItselfAndAsItsContent) {
  const auto item = textItem("dragged");
  EXPECT_THAT(item->writableTypesForPasteboard(clipboard()),
              ElementsAre("com.vorlane.quillbox.clip", "public.utf8-plain-text"));
  EXPECT_EQ(item->pasteboardPropertyListForType("com.vorlane.quillbox.clip"), item->state());
  EXPECT_EQ(item->pasteboardPropertyListForType("public.utf8-plain-text"), dataOf("dragged"));
  const auto lost = lostItem();
  EXPECT_THAT(lost->writableTypesForPasteboard(clipboard()),
              ElementsAre("com.vorlane.quillbox.clip"));
  EXPECT_TRUE(lost->pasteboardPropertyListForType("public.utf8-plain-text").isNone());
}

}  // namespace
}  // namespace qb::test
