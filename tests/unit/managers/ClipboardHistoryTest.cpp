#include <gmock/gmock.h>

#include "support/ClipboardFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ClipboardHistoryTest : public ClipboardFixture {
 protected:
  std::shared_ptr<RecordingClipboardClient> addClient(std::int64_t maximum = 0) {
    auto client = std::make_shared<RecordingClipboardClient>(3, maximum);
    manager().addClient(client);
    return client;
  }
  std::string putImageClip(const std::string& name, Date date = 0) {
    const std::string clip = path(name);
    files().putPropertyList(clip, Cubby("public.png", dataOf("image Shot")).state());
    files().setCreationDate(clip, date);
    return clip;
  }
};

// The folder.

TEST_F(ClipboardHistoryTest, TheFolderIsMadeAtTheStartForTheUserAlone) {
  EXPECT_TRUE(files().fileExistsAtPath(folder));
  EXPECT_TRUE(files().isPrivate(folder));
}

TEST_F(ClipboardHistoryTest, AFolderThatWasThrownAwayComesBackPrivate) {
  files().removeItemAtPath(folder);
  copy(text("one"));
  EXPECT_THAT(history(), ElementsAre("one"));
  EXPECT_TRUE(files().isPrivate(folder));
}

TEST_F(ClipboardHistoryTest, WithoutTheFolderTheHistoryIsEmpty) {
  files().removeItemAtPath(folder);
  EXPECT_THAT(manager().pathsToClipFilesOfTypes(everyClipType, 10), IsEmpty());
  manager().removeFromClipboardHistoryAllClippingsWithTypes(everyClipType);
  manager().removeClipFileAtPathFromClipboardHistory(path("one.textclip"));
}

TEST_F(ClipboardHistoryTest, TheExtensionAloneTellsTheType) {
  const struct {
    const char* path;
    ClipType type;
  } cases[] = {
      {"/a/b.textclip", ClipTypeText},       {"/a/b.imageclip", ClipTypeImage},
      {"/a/b.unknownclip", ClipTypeUnknown}, {"/a/b.textclip.png", ClipTypeUnknown},
      {"/a/textclip", ClipTypeUnknown},      {"/a/b.TextClip", ClipTypeUnknown},
      {"/a.textclip/b", ClipTypeUnknown},    {"", ClipTypeUnknown},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ClipboardManager::clipTypeFromFilePath(each.path), each.type) << each.path;
  }
}

// Listing.

TEST_F(ClipboardHistoryTest, TheNewestComesFirst) {
  putTextClip("b.textclip", 2, "second");
  putTextClip("a.textclip", 1, "first");
  putTextClip("c.textclip", 3, "third");
  EXPECT_THAT(history(), ElementsAre("third", "second", "first"));
  EXPECT_THAT(manager().pathsToClipFilesOfTypes(ClipTypeText, 1), ElementsAre(path("c.textclip")));
  EXPECT_THAT(manager().pathsToClipFilesOfTypes(ClipTypeText, 2),
              ElementsAre(path("c.textclip"), path("b.textclip")));
}

TEST_F(ClipboardHistoryTest, NoMaximumBelowOneGivesAnything) {
  putTextClip("a.textclip", 1);
  EXPECT_THAT(manager().pathsToClipFilesOfTypes(ClipTypeText, 0), IsEmpty());
  EXPECT_THAT(manager().pathsToClipFilesOfTypes(ClipTypeText, -1), IsEmpty());
}

TEST_F(ClipboardHistoryTest, TheMaskChoosesTheTypes) {
  const std::string textClip = putTextClip("a.textclip", 1);
  const std::string imageClip = putImageClip("b.imageclip", 2);
  const std::string unknownClip = putTextClip("c.unknownclip", 3);
  putTextClip("foreign.txt", 4);
  putTextClip("textclip", 5);
  const auto paths = [this](std::uint32_t types) {
    return manager().pathsToClipFilesOfTypes(types, 100);
  };
  EXPECT_THAT(paths(0), IsEmpty());
  EXPECT_THAT(paths(1), ElementsAre(textClip));
  EXPECT_THAT(paths(2), ElementsAre(imageClip));
  EXPECT_THAT(paths(3), ElementsAre(imageClip, textClip));
  EXPECT_THAT(paths(4), ElementsAre(unknownClip));
  EXPECT_THAT(paths(8), IsEmpty());
  EXPECT_THAT(paths(everyClipType), ElementsAre(unknownClip, imageClip, textClip));
}

TEST_F(ClipboardHistoryTest, AForeignFileWithTheExtensionIsListedAndHasNothingInIt) {
  files().putRaw(path("raw.textclip"), "no property list");
  files().putPropertyList(path("empty.textclip"), PropertyList::dictionary());
  EXPECT_THAT(manager().pathsToClipFilesOfTypes(ClipTypeText, 10), SizeIs(2));
  EXPECT_THAT(history(), ElementsAre("none", "none"));
  EXPECT_EQ(manager().textPreviewForClipFileAtPath(path("raw.textclip")), std::nullopt);
}

TEST_F(ClipboardHistoryTest, AClippingComesBackFromItsFile) {
  copy({{"public.rtf", dataOf("{\\rtf1 rich}")}});
  const std::string clip = manager().pathsToClipFilesOfTypes(ClipTypeText, 1).front();
  const auto cubby = manager().createCubbyFromClipFileAtPath(clip);
  ASSERT_TRUE(cubby);
  EXPECT_EQ(cubby->type(), "public.rtf");
  EXPECT_EQ(cubby->data(), dataOf("{\\rtf1 rich}"));
  EXPECT_FALSE(manager().createCubbyFromClipFileAtPath(path("missing.textclip")));
}

TEST_F(ClipboardHistoryTest, TheTextPreviewHasFiftyCharacters) {
  const auto preview = [this](const std::string& clip) {
    const auto shown = manager().textPreviewForClipFileAtPath(clip);
    return shown ? shown->string() : "none";
  };
  const std::string long_(51, 'x');
  EXPECT_EQ(preview(putTextClip("a.textclip", 1, long_)), long_.substr(0, 50));
  EXPECT_EQ(preview(putTextClip("b.textclip", 1, "short")), "short");
  EXPECT_EQ(preview(putImageClip("c.imageclip")), "none");
}

// How many are kept.

TEST_F(ClipboardHistoryTest, ThirtyOfEachTypeAreKept) {
  putTextClips(31);
  files().putRaw(path("foreign.txt"), "stays");
  for (int index = 0; index < 30; ++index) {
    putImageClip(std::to_string(index) + ".imageclip", 1000 + index);
  }
  copy(picture("new"));
  EXPECT_EQ(numberOf(".textclip"), 30) << "the oldest text goes with a new image";
  EXPECT_FALSE(files().fileExistsAtPath(path("0000.textclip")));
  EXPECT_EQ(numberOf(".imageclip"), 30);
  EXPECT_FALSE(files().fileExistsAtPath(path("0.imageclip")));
  EXPECT_EQ(history(ClipTypeImage).front(), "image new");
  EXPECT_TRUE(files().fileExistsAtPath(path("foreign.txt")));
}

TEST_F(ClipboardHistoryTest, UnknownClippingsAreCulledTooAndFirstOfAllAtTheStart) {
  for (int index = 0; index < 32; ++index) {
    putTextClip(std::to_string(index) + ".unknownclip", index);
  }
  ClipboardManager::create(files(), platform.pasteboards());
  EXPECT_EQ(numberOf(".unknownclip"), 30);
  EXPECT_FALSE(files().fileExistsAtPath(path("0.unknownclip")));
  EXPECT_FALSE(files().fileExistsAtPath(path("1.unknownclip")));
}

TEST_F(ClipboardHistoryTest, OneCullTakesAHundredAtMost) {
  addClient(50);
  putTextClips(249);
  copy(text("new"));
  EXPECT_EQ(numberOf(".textclip"), 150);
  EXPECT_FALSE(files().fileExistsAtPath(path("0099.textclip")));
  EXPECT_TRUE(files().fileExistsAtPath(path("0100.textclip")));
  copy(text("newer"));
  EXPECT_EQ(numberOf(".textclip"), 51);
}

TEST_F(ClipboardHistoryTest, TheMostDemandingClientSaysHowManyButNeverLessThanThirty) {
  const auto many = addClient(50), few = addClient(10);
  putTextClips(60);
  copy(text("new"));
  EXPECT_EQ(numberOf(".textclip"), 50);
  manager().removeClient(many);
  EXPECT_EQ(numberOf(".textclip"), 50) << "that alone takes nothing away";
  copy(text("newer"));
  EXPECT_EQ(numberOf(".textclip"), 30);
  manager().removeClient(few);
  copy(text("newest"));
  EXPECT_EQ(numberOf(".textclip"), 30);
}

TEST_F(ClipboardHistoryTest, OfEquallyOldOnesTheOneThatIsListedLastGoesFirst) {
  for (int index = 0; index < 31; ++index) {
    putTextClip(std::string(1, static_cast<char>('A' + index)) + ".textclip", 5);
  }
  copy(picture("new"));
  EXPECT_EQ(numberOf(".textclip"), 30);
  EXPECT_FALSE(files().fileExistsAtPath(path("_.textclip")));
}

TEST_F(ClipboardHistoryTest, ForeignNamesThatEndAlikeAreCountedAndCulled) {
  putTextClips(30);
  putTextClip("foreigntextclip", -1);
  copy(picture("new"));
  EXPECT_FALSE(files().fileExistsAtPath(path("foreigntextclip")));
  EXPECT_EQ(numberOf(".textclip"), 30);
}

TEST_F(ClipboardHistoryTest, ACullTellsNobody) {
  const auto client = addClient();
  putTextClips(40);
  copy(picture("new"));
  EXPECT_THAT(client->removed, IsEmpty());
}

TEST_F(ClipboardHistoryTest, AFolderThatCannotBeWrittenLosesNothing) {
  putTextClips(40);
  files().setReadOnly(folder);
  copy(text("new"));
  EXPECT_GE(numberOf(".textclip"), 40);
}

// Removing.

TEST_F(ClipboardHistoryTest, RemovingOneTellsItsType) {
  const auto client = addClient();
  const std::string textClip = putTextClip("a.textclip", 1);
  const std::string imageClip = putImageClip("b.imageclip");
  manager().removeClipFileAtPathFromClipboardHistory(textClip);
  EXPECT_THAT(names(), ElementsAre("b.imageclip"));
  manager().removeClipFileAtPathFromClipboardHistory(imageClip);
  manager().removeClipFileAtPathFromClipboardHistory(path("missing.other"));
  EXPECT_THAT(client->removed, ElementsAre(ClipTypeText, ClipTypeImage, ClipTypeUnknown));
}

TEST_F(ClipboardHistoryTest, RemovingTypesTakesAllThatEndLikeThemAndTellsOnce) {
  const auto client = addClient();
  const auto fill = [this] {
    for (const char* name : {"a.textclip", "btextclip", "c.imageclip", "d.unknownclip", "e.txt"}) {
      putTextClip(name, 1);
    }
  };
  fill();
  manager().removeFromClipboardHistoryAllClippingsWithTypes(ClipTypeText);
  EXPECT_THAT(names(), ElementsAre("c.imageclip", "d.unknownclip", "e.txt"));
  fill();
  manager().removeFromClipboardHistoryAllClippingsWithTypes(ClipTypeImage | ClipTypeUnknown);
  EXPECT_THAT(names(), ElementsAre("a.textclip", "btextclip", "e.txt"));
  manager().removeFromClipboardHistoryAllClippingsWithTypes(everyClipType);
  manager().removeFromClipboardHistoryAllClippingsWithTypes(everyClipType);
  EXPECT_THAT(names(), ElementsAre("e.txt"));
  EXPECT_THAT(client->removed, ElementsAre(ClipTypeText, ClipTypeImage | ClipTypeUnknown,
                                           everyClipType, everyClipType));
}

// Icons.

TEST_F(ClipboardHistoryTest, AnImageStandsInTheMiddleOfItsIconAndCastsAShadow) {
  platform.graphics().setImageSize("Shot", {224, 100});
  const Image icon = manager().iconImageForClipFileAtPath(putImageClip("a.imageclip"));
  EXPECT_EQ(icon.size(), (Size{128, 128}));
  EXPECT_EQ(platform.graphics().largestImageWanted(), (Size{112, 112}));
  const auto drawn = simulatedImageOperations(icon);
  ASSERT_THAT(drawn, SizeIs(1));
  EXPECT_EQ(simulatedImageName(drawn[0].image), "Shot");
  EXPECT_EQ(drawn[0].rect, Rect::make(8, 39, 112, 50));
  EXPECT_EQ(drawn[0].shadow, (Shadow{Color::black().withAlpha(0.33), {0, 4}, 3}));
  EXPECT_EQ(drawn[0].operation, CompositingOperation::SourceOver);
  EXPECT_EQ(drawn[0].fraction, 1);
}

TEST_F(ClipboardHistoryTest, ATextStandsAtTheTopLeftOfItsSheet) {
  platform.graphics().setImageSize("TextClippingIcon", {128, 128});
  const std::string clip = putTextClip("a.textclip", 1, "one\ntwo");
  const Image icon = manager().iconImageForClipFileAtPath(clip);
  EXPECT_EQ(icon.size(), (Size{128, 128}));
  const auto drawn = simulatedImageOperations(icon);
  ASSERT_THAT(drawn, SizeIs(2));
  EXPECT_EQ(simulatedImageName(drawn[0].image), "TextClippingIcon");
  EXPECT_EQ(drawn[0].rect, Rect::make(0, 0, 128, 128));
  EXPECT_EQ(drawn[1].rect, Rect::make(12, 12, 104, 28));
  const auto page = simulatedImageOperations(drawn[1].image);
  ASSERT_THAT(page, SizeIs(3));
  EXPECT_EQ(page[0].color, Color::clear());
  EXPECT_EQ(page[1].text, "one");
  EXPECT_EQ(page[2].text, "two");
}

TEST_F(ClipboardHistoryTest, TheIconOfATextShowsAHundredCharacters) {
  const std::string clip = putTextClip("a.textclip", 1, std::string(200, 'x'));
  const auto drawn = simulatedImageOperations(manager().iconImageForClipFileAtPath(clip));
  ASSERT_THAT(drawn, SizeIs(2));
  std::size_t shown = 0;
  for (const auto& operation : simulatedImageOperations(drawn[1].image)) {
    shown += operation.text.size();
  }
  EXPECT_EQ(shown, 100U);
}

TEST_F(ClipboardHistoryTest, OtherFilesHaveNoIcon) {
  EXPECT_FALSE(manager().iconImageForClipFileAtPath(putTextClip("a.unknownclip", 1)));
  EXPECT_FALSE(manager().iconImageForClipFileAtPath(putTextClip("a.txt", 1)));
}

TEST_F(ClipboardHistoryTest, WhatCannotBeReadHasASheetWithNothingOnIt) {
  files().putRaw(path("raw.textclip"), "no property list");
  const auto sheet =
      simulatedImageOperations(manager().iconImageForClipFileAtPath(path("raw.textclip")));
  ASSERT_FALSE(sheet.empty());
  EXPECT_EQ(simulatedImageName(sheet[0].image), "TextClippingIcon");
  const Image image = manager().iconImageForClipFileAtPath(path("missing.imageclip"));
  EXPECT_EQ(image.size(), (Size{128, 128}));
}

TEST_F(ClipboardHistoryTest, AnIconIsKeptUntilItsFileIsRemoved) {
  const std::string clip = putTextClip("a.textclip", 1);
  const Image icon = manager().iconImageForClipFileAtPath(clip);
  EXPECT_EQ(manager().iconImageForClipFileAtPath(clip), icon);
  manager().removeClipFileAtPathFromClipboardHistory(clip);
  putTextClip("a.textclip", 1);
  EXPECT_NE(manager().iconImageForClipFileAtPath(clip), icon);
}

TEST_F(ClipboardHistoryTest, AHundredAndOneIconsAreKept) {
  std::vector<Image> icons;
  putTextClips(102);
  const auto icon = [this](int index) {
    const std::string number = std::to_string(index);
    return manager().iconImageForClipFileAtPath(
        path(std::string(4 - number.size(), '0') + number + ".textclip"));
  };
  for (int index = 0; index < 102; ++index) icons.push_back(icon(index));
  for (int index = 0; index <= 100; ++index) EXPECT_EQ(icon(index), icons[index]) << index;
  EXPECT_NE(icon(101), icons[101]);
  manager().removeClipFileAtPathFromClipboardHistory(path("0000.textclip"));
  const Image kept = icon(101);
  EXPECT_EQ(icon(101), kept);
}

}  // namespace
}  // namespace qb::test
