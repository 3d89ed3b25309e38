#include <gmock/gmock.h>

#include "Platform/KeyCodes.h"
#include "Quillbox/activation/MenuItemTags.h"
#include "QuillboxCommon/views/LabelView.h"
#include "support/ClipboardRowFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ClipboardHistoryProviderTest : public ClipboardRowFixture {
 protected:
  std::string message() {
    provider->numberOfItems();
    const LabelView* const label = row->instructionalMessageLabel();
    return label != nullptr ? label->text() : "none";
  }
  /// Each entry as "title: action", with a "*" before those that are checked and a "-" after those
  /// that cannot be chosen.
  std::vector<std::string> menu() {
    std::vector<std::string> entries;
    for (const auto& entry : provider->menuItemsForConfigure()) {
      entries.push_back(entry->isSeparatorItem()
                            ? "-"
                            : (entry->state() ? "*" : "") + entry->title() + ": " +
                                  entry->action().name + (entry->isEnabled() ? "" : " -"));
    }
    return entries;
  }
};

TEST_F(ClipboardHistoryProviderTest, AnswersForItself) {
  const auto information = ClipboardHistoryProvider::information();
  EXPECT_EQ(information->name(), "Clipboard History");
  EXPECT_EQ(information->className(), "ClipboardHistoryProvider");
  EXPECT_EQ(provider->name(), "Clipboard History");
  EXPECT_EQ(provider->className(), "ClipboardHistoryProvider");
  EXPECT_TRUE(provider->canBeConfigured());
  EXPECT_EQ(provider->clipboardTypes(), 3U);
  EXPECT_EQ(provider->maximumNumberOfItems(), 25);
  EXPECT_EQ(provider->defaultClipAction(), 0);
}

TEST_F(ClipboardHistoryProviderTest, ShowsTheNewestOfItsTypesFirst) {
  putTextClip("a.textclip", 1, "oldest");
  putTextClip("b.unknownclip", 2, "unknown");
  putTextClip("c.imageclip", 3, "image");
  putTextClip("d.textclip", 4, "newest");
  showHistory();
  EXPECT_EQ(provider->numberOfItems(), 3);
  EXPECT_THAT(shown(), ElementsAre("newest", "image", "oldest"));
  EXPECT_EQ(clip(0)->view()->frame(), Rect::make(0, 0, 42, 42));
  EXPECT_EQ(clip(0)->dragability(), 4);
  EXPECT_TRUE(clip(0)->isRemovable());
}

TEST_F(ClipboardHistoryProviderTest, ShowsAsManyAsItMayAndTheHistoryKeepsFifty) {
  EXPECT_EQ(provider->theoreticalMaximumItemsNeededInClipboardHistory(), 50);
  putTextClips(60);
  copy(text("new"));
  EXPECT_EQ(numberOf(".textclip"), 50);
  EXPECT_EQ(provider->numberOfItems(), 25);
  for (const auto& [title, count] : {std::pair{"10", 10}, {"50", 50}, {"25", 25}}) {
    chooseForRow(title);
    EXPECT_EQ(provider->numberOfItems(), count);
    EXPECT_EQ(provider->maximumNumberOfItems(), count);
    EXPECT_EQ(numberOf(".textclip"), 50) << "none goes for that";
  }
}

TEST_F(ClipboardHistoryProviderTest, WhatIsCopiedWhileThePanelIsHiddenShowsAtTheNextOpening) {
  showHistory();
  EXPECT_FALSE(provider->haveItemsChanged());
  copy(text("new"));
  EXPECT_TRUE(provider->haveItemsChanged());
  EXPECT_THAT(shown(), IsEmpty());
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(1);
  EXPECT_THAT(shown(), ElementsAre("new"));
  EXPECT_FALSE(provider->haveItemsChanged());
}

TEST_F(ClipboardHistoryProviderTest, WhatIsCopiedWhileThePanelShowsIsThereSoon) {
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(1);
  copy(text("one"));
  platform.runFor(1);
  EXPECT_THAT(shown(), ElementsAre("one"));
  copy(text("two"));
  platform.runFor(1);
  EXPECT_THAT(shown(), ElementsAre("two", "one"));
}

TEST_F(ClipboardHistoryProviderTest, TypesThatItDoesNotShowMakeNoChange) {
  chooseForRow("Images");
  showHistory();
  copy(picture("one"));
  EXPECT_FALSE(provider->haveItemsChanged());
  EXPECT_EQ(numberOf(".imageclip"), 1) << "the history records all the same";
  chooseForRow("Images");
  showHistory();
  EXPECT_THAT(shown(), ElementsAre("image one"));
}

TEST_F(ClipboardHistoryProviderTest, AsTheOnlyClientItHasOnlyItsTypesRecorded) {
  manager().setHistoryCaptureMode(ClipboardCaptureForClients);
  chooseForRow("Images");
  copy(picture("one"));
  copy(text("two"));
  EXPECT_THAT(history(), ElementsAre("two"));
  chooseForRow("Images");
  chooseForRow("Text");
  copy(text("three"));
  copy(picture("four"));
  EXPECT_THAT(history(), ElementsAre("image four", "two"));
}

TEST_F(ClipboardHistoryProviderTest, SaysWhyItIsEmpty) {
  EXPECT_EQ(message(), "Clipboard History is Empty");
  putTextClip("a.textclip", 1);
  provider->updateItems();
  EXPECT_EQ(message(), "none");
  chooseForRow("Text");
  EXPECT_EQ(message(), "Clipboard History is Empty");
  chooseForRow("Images");
  EXPECT_EQ(message(), "No Clipping Type Selected");
}

TEST_F(ClipboardHistoryProviderTest, OnceTheRowShowsSomethingElseItIsNoClient) {
  manager().setHistoryCaptureMode(ClipboardCaptureForClients);
  const std::weak_ptr<ClipboardHistoryProvider> gone = provider;
  provider.reset();
  row->setProvider(std::make_shared<TabRowProvider>());
  EXPECT_TRUE(gone.expired());
  copy(text("unwanted"));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ClipboardHistoryProviderTest, IconsAreMadeAheadOfTheOpening) {
  platform.graphics().setImageSize("TextClippingIcon", {128, 128});
  const std::string first = putTextClip("a.textclip", 1, "first");
  provider->updateItems();
  platform.runPending();
  // What has been made needs the file no more.
  files().removeItemAtPath(first);
  const auto drawn = simulatedImageOperations(manager().iconImageForClipFileAtPath(first));
  ASSERT_THAT(drawn, SizeIs(2));
  EXPECT_EQ(simulatedImageName(drawn[1].image), "drawn");
}

// Saved state.

TEST_F(ClipboardHistoryProviderTest, ItsStateComesBack) {
  EXPECT_EQ(provider->state(),
            PropertyList::dictionary(
                {{"ClipboardTypes", 3}, {"MaximumItems", 25}, {"DefaultClipAction", 0}}));
  const PropertyList saved = PropertyList::dictionary(
      {{"ClipboardTypes", 2}, {"MaximumItems", 50}, {"DefaultClipAction", 1}});
  provider->restoreState(saved);
  EXPECT_EQ(provider->clipboardTypes(), 2U);
  EXPECT_EQ(provider->maximumNumberOfItems(), 50);
  EXPECT_EQ(provider->defaultClipAction(), 1);
  EXPECT_EQ(provider->state(), saved);
  provider->restoreState(PropertyList::dictionary());
  EXPECT_EQ(provider->clipboardTypes(), 0U) << "what is missing is 0";
}

// Removing.

TEST_F(ClipboardHistoryProviderTest, RemovingAsksAndThenDeletesTheFile) {
  putTextClip("a.textclip", 1, "kept");
  putTextClip("b.textclip", 2, "removed");
  showHistory();
  platform.dialogs().answerAlert("Cancel");
  EXPECT_FALSE(provider->removeItemFromTabRow(*clip(0), true));
  EXPECT_EQ(lastAlert().messageText, "Remove Clipping");
  EXPECT_EQ(lastAlert().informativeText,
            "Are you sure you want to remove this Clipping from the Clipboard History?");
  EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Remove"));
  EXPECT_THAT(names(), SizeIs(2));
  platform.dialogs().answerAlert("Remove");
  EXPECT_TRUE(provider->removeItemFromTabRow(*clip(0), true));
  EXPECT_THAT(names(), ElementsAre("a.textclip"));
  EXPECT_TRUE(provider->haveItemsChanged());
}

TEST_F(ClipboardHistoryProviderTest, WithTheOptionKeyOrWithoutConfirmationNobodyIsAsked) {
  putTextClip("a.textclip", 1);
  putTextClip("b.textclip", 2);
  showHistory();
  EXPECT_TRUE(provider->removeItemFromTabRow(*clip(0), false));
  EXPECT_THAT(names(), ElementsAre("a.textclip"));
  platform.keyboard().press(KeyCodeLeftOption);
  EXPECT_TRUE(provider->removeItemFromTabRow(*clip(1), true));
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

// Its menu.

TEST_F(ClipboardHistoryProviderTest, ItsMenu) {
  EXPECT_THAT(
      menu(),
      ElementsAre("Clipping Types: dummy", "*Text: textSelected", "*Images: imagesSelected", "-",
                  "Maximum Items: dummy", "10: numberOfClippingsSelected",
                  "*25: numberOfClippingsSelected", "50: numberOfClippingsSelected", "-",
                  "Default Action when Clipping Selected: dummy",
                  "Paste Clipping: pasteClippingSelected", "*Copy Clipping: copyClippingSelected",
                  "-", "Remove All Text Clippings...: removeTextSelected -",
                  "Remove All Image Clippings...: removeImagesSelected -",
                  "Remove All Clippings...: removeAllSelected -"));
  for (const std::size_t heading : {0, 4, 9}) {
    EXPECT_EQ(provider->menuItemsForConfigure()[heading]->tag(), MenuItemTagGrayTitle);
  }
}

TEST_F(ClipboardHistoryProviderTest, RemovalIsOfferedByWhatTheWholeHistoryHolds) {
  const auto offered = [this] {
    std::vector<bool> enabled;
    for (const auto& entry : provider->menuItemsForConfigure()) {
      if (entry->title().starts_with("Remove")) enabled.push_back(entry->isEnabled());
    }
    return enabled;
  };
  chooseForRow("Text");
  chooseForRow("Images");
  putTextClip("a.unknownclip", 1);
  EXPECT_THAT(offered(), ElementsAre(false, false, true));
  putTextClip("a.textclip", 1);
  EXPECT_THAT(offered(), ElementsAre(true, false, true));
  putTextClip("a.imageclip", 1);
  EXPECT_THAT(offered(), ElementsAre(true, true, true));
}

TEST_F(ClipboardHistoryProviderTest, RemovalAsksAndRemovesItsTypes) {
  const struct {
    const char *entry, *title, *message;
    std::vector<std::string> left;
  } cases[] = {
      {"Remove All Text Clippings...",
       "Remove All Text Clippings",
       "Are you sure you want to remove all text Clippings from the Clipboard History?",
       {"b.imageclip", "c.unknownclip"}},
      {"Remove All Image Clippings...",
       "Remove All Images",
       "Are you sure you want to remove all images from the Clipboard History?",
       {"a.textclip", "c.unknownclip"}},
      {"Remove All Clippings...",
       "Remove All Clippings",
       "Are you sure you want to remove all Clippings from the Clipboard History?",
       {}},
  };
  for (const auto& each : cases) {
    for (const char* name : {"a.textclip", "b.imageclip", "c.unknownclip"}) putTextClip(name, 1);
    platform.dialogs().answerAlert("Cancel");
    chooseForRow(each.entry);
    EXPECT_THAT(names(), SizeIs(3));
    EXPECT_EQ(lastAlert().messageText, each.title);
    EXPECT_EQ(lastAlert().informativeText, each.message);
    EXPECT_THAT(lastAlert().buttons, ElementsAre("Cancel", "Remove"));
    platform.dialogs().answerAlert("Remove");
    chooseForRow(each.entry);
    EXPECT_EQ(names(), each.left);
  }
}

TEST_F(ClipboardHistoryProviderTest, TheActionIsToldByTheItemsNames) {
  putTextClip("a.textclip", 1);
  showHistory();
  EXPECT_EQ(clip(0)->name(), "Click to Copy");
  chooseForRow("Paste Clipping");
  EXPECT_EQ(provider->defaultClipAction(), ClipActionPaste);
  EXPECT_EQ(clip(0)->name(), "Click to Paste");
  chooseForRow("Copy Clipping");
  EXPECT_EQ(clip(0)->name(), "Click to Copy");
}

}  // namespace
}  // namespace qb::test
