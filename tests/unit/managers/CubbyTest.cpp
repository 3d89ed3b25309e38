#include "Quillbox/managers/Cubby.h"

#include <gmock/gmock.h>

#include "QuillboxCommon/richtext/RichText.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Data = PropertyList::Data;

Data dataOf(std::string_view text) { return {text.begin(), text.end()}; }

class CubbyTest : public QuillboxFixture {
 protected:
  static KeptPasteboardItem item(const PasteboardContents& contents) {
    return KeptPasteboardItem(contents);
  }
  static Cubby plain(std::string_view text) { return {"public.utf8-plain-text", dataOf(text)}; }
  static AttributedString attributed(const std::string& text, double size = 12) {
    AttributedString result;
    result.append(text, Font::systemFontOfSize(size));
    return result;
  }
  /// "no text" when there is none.
  static std::string textOf(const Cubby& cubby, std::size_t maximumLength = 1000) {
    const auto text = cubby.textContentsWithMaximumLength(maximumLength);
    return text ? text->string() : "no text";
  }
  static Image preview(const Cubby& cubby, Size size = {200, 100}, std::size_t length = 1000) {
    return cubby.popUpViewImageWithMaximumSize(size, length, Color::white());
  }
  static std::string previewName(const Cubby& cubby) { return simulatedImageName(preview(cubby)); }
  SimulatedPasteboard& clipboard() { return platform.pasteboards().general(); }
};

// Choosing.

TEST_F(CubbyTest, TypesAreKnownInTheirOrder) {
  EXPECT_THAT(
      Cubby::textTypes(),
      ElementsAre("com.apple.flat-rtfd", "public.rtf", "public.utf8-plain-text",
                  "public.utf16-external-plain-text", "com.apple.traditional-mac-plain-text"));
  EXPECT_THAT(Cubby::imageTypes(),
              ElementsAre("public.tiff", "public.png", "public.jpg", "public.jpeg"));
  EXPECT_THAT(
      Cubby::allTypes(),
      ElementsAre("com.apple.flat-rtfd", "public.rtf", "public.utf8-plain-text",
                  "public.utf16-external-plain-text", "com.apple.traditional-mac-plain-text",
                  "public.tiff", "public.png", "public.jpg", "public.jpeg"));
}

TEST_F(CubbyTest, RichTextIsChosenInWhateverOrderTheItemHasIt) {
  const PasteboardContents rich = {{"public.rtf", {1}}, {"public.utf8-plain-text", {2}}};
  const PasteboardContents plainFirst = {{"public.utf8-plain-text", {2}}, {"public.rtf", {1}}};
  for (const auto& contents : {rich, plainFirst}) {
    const auto cubby = Cubby::cubbyWithPasteboardItem(item(contents));
    ASSERT_TRUE(cubby);
    EXPECT_EQ(cubby->type(), "public.rtf");
    EXPECT_EQ(cubby->data(), Data{1});
  }
}

TEST_F(CubbyTest, TheBestOfAllTypesIsChosen) {
  const auto all = Cubby::allTypes();
  for (std::size_t best = 0; best < all.size(); ++best) {
    PasteboardContents contents;
    for (std::size_t at = all.size(); at-- > best;) {
      contents.emplace_back(all[at], Data{static_cast<std::uint8_t>(at)});
    }
    const auto cubby = Cubby::cubbyWithPasteboardItem(item(contents));
    ASSERT_TRUE(cubby);
    EXPECT_EQ(cubby->type(), all[best]);
    EXPECT_EQ(cubby->data(), Data{static_cast<std::uint8_t>(best)});
  }
}

TEST_F(CubbyTest, TiffComesBeforePngAndTextBeforeAnImage) {
  EXPECT_EQ(
      Cubby::cubbyWithPasteboardItem(item({{"public.png", {1}}, {"public.tiff", {2}}}))->type(),
      "public.tiff");
  EXPECT_EQ(Cubby::cubbyWithPasteboardItem(
                item({{"public.tiff", {1}}, {"com.apple.traditional-mac-plain-text", {2}}}))
                ->type(),
            "com.apple.traditional-mac-plain-text");
}

TEST_F(CubbyTest, OneKindOnlyCanBeAskedFor) {
  const auto both = item({{"public.png", {1}}, {"public.rtf", {2}}});
  EXPECT_EQ(Cubby::textCubbyWithPasteboardItem(both)->type(), "public.rtf");
  EXPECT_EQ(Cubby::imageCubbyWithPasteboardItem(both)->type(), "public.png");
  EXPECT_FALSE(Cubby::imageCubbyWithPasteboardItem(item({{"public.rtf", {2}}})));
  EXPECT_FALSE(Cubby::textCubbyWithPasteboardItem(item({{"public.png", {1}}})));
  EXPECT_EQ(Cubby::cubbyWithPasteboardItem(both, {"public.png", "public.rtf"})->type(),
            "public.png");
}

TEST_F(CubbyTest, AnItemOfOtherTypesGivesNone) {
  EXPECT_FALSE(Cubby::cubbyWithPasteboardItem(item({{"public.html", {1}}, {"text/plain", {2}}})));
  EXPECT_FALSE(Cubby::cubbyWithPasteboardItem(item({})));
}

TEST_F(CubbyTest, NoBytesAreSomethingToChooseButNoText) {
  const auto cubby =
      Cubby::cubbyWithPasteboardItem(item({{"public.png", {1}}, {"public.rtf", {}}}));
  ASSERT_TRUE(cubby);
  EXPECT_EQ(cubby->type(), "public.rtf");
  EXPECT_TRUE(cubby->isText());
  EXPECT_EQ(cubby->textContentsWithMaximumLength(100), std::nullopt);
  EXPECT_EQ(previewName(*cubby), "UnknownClipboardItem");
}

// State and kind.

TEST_F(CubbyTest, StateHasTypeAndBytesAndComesBack) {
  const Cubby cubby("public.png", {0, 255, 1});
  const PropertyList state = cubby.state();
  EXPECT_EQ(state, PropertyList::dictionary({{"Type", "public.png"}, {"Data", Data{0, 255, 1}}}));
  const Cubby restored(state);
  EXPECT_EQ(restored.type(), "public.png");
  EXPECT_EQ(restored.data(), (Data{0, 255, 1}));
}

TEST_F(CubbyTest, WhatTheStateLacksIsEmpty) {
  for (const PropertyList& state : {PropertyList(), PropertyList::dictionary(),
                                    PropertyList::dictionary({{"Type", 5}, {"Data", "text"}})}) {
    const Cubby cubby(state);
    EXPECT_EQ(cubby.type(), "");
    EXPECT_THAT(cubby.data(), IsEmpty());
    EXPECT_FALSE(cubby.isText() || cubby.isImage() || cubby.isRTF() || cubby.isRTFD());
  }
}

TEST_F(CubbyTest, TypesTellWhatItIsByTheirExactNames) {
  const struct {
    const char* type;
    bool rtfd, rtf, text, image;
  } cases[] = {
      {"com.apple.flat-rtfd", true, false, true, false},
      {"public.rtf", false, true, true, false},
      {"public.utf8-plain-text", false, false, true, false},
      {"public.utf16-external-plain-text", false, false, true, false},
      {"com.apple.traditional-mac-plain-text", false, false, true, false},
      {"public.tiff", false, false, false, true},
      {"public.png", false, false, false, true},
      {"public.jpg", false, false, false, true},
      {"public.jpeg", false, false, false, true},
      {"public.PNG", false, false, false, false},
      {"public.rtf ", false, false, false, false},
      {"", false, false, false, false},
  };
  for (const auto& each : cases) {
    const Cubby cubby(each.type, {});
    EXPECT_EQ(cubby.isRTFD(), each.rtfd) << each.type;
    EXPECT_EQ(cubby.isRTF(), each.rtf) << each.type;
    EXPECT_EQ(cubby.isText(), each.text) << each.type;
    EXPECT_EQ(cubby.isImage(), each.image) << each.type;
  }
}

TEST_F(CubbyTest, TypeAndBytesCanBeChanged) {
  Cubby cubby("public.png", {1});
  cubby.setType("public.rtf");
  cubby.setData({2});
  EXPECT_TRUE(cubby.isRTF());
  EXPECT_EQ(cubby.data(), Data{2});
}

// Made from texts and images.

TEST_F(CubbyTest, TextIsKeptAsFlattenedRTFD) {
  AttributedString text;
  text.append("bold", {14, true});
  text.append(" plain", {12});
  const Cubby cubby(text);
  EXPECT_EQ(cubby.type(), "com.apple.flat-rtfd");
  EXPECT_EQ(cubby.data(), dataOf(rtfdFromAttributedString(text)));
  EXPECT_EQ(cubby.textContentsWithMaximumLength(1000), text);
}

TEST_F(CubbyTest, AnImageIsKeptAsPng) {
  const Image image = platform.graphics().imageNamed("Picture");
  const Cubby cubby(image);
  EXPECT_EQ(cubby.type(), "public.png");
  EXPECT_EQ(cubby.data(), dataOf("image Picture"));
  EXPECT_EQ(cubby.imageContents(), image);
  EXPECT_THAT(Cubby(Image()).data(), IsEmpty());
}

TEST_F(CubbyTest, ImageContentsDoNotAskForTheType) {
  EXPECT_EQ(simulatedImageName(plain("image Picture").imageContents()), "Picture");
  EXPECT_EQ(platform.graphics().largestImageWanted(), std::nullopt) << "all of it";
  EXPECT_FALSE(Cubby("public.png", dataOf("damaged")).imageContents());
}

// Text.

TEST_F(CubbyTest, TextOfEachType) {
  const struct {
    const char* type;
    std::string bytes;
    const char* text;
  } cases[] = {
      {"com.apple.flat-rtfd", rtfdFromAttributedString(attributed("flat")), "flat"},
      {"public.rtf", "{\\rtf1 rich}", "rich"},
      {"public.utf8-plain-text", "caf\xc3\xa9", "caf\xc3\xa9"},
      {"com.apple.traditional-mac-plain-text", "caf\xc3\xa9", "caf\xc3\xa9"},
      {"com.apple.flat-rtfd", "damaged", "no text"},
      {"public.rtf", "damaged", "no text"},
      {"public.utf8-plain-text", "caf\xe9", "no text"},
      {"public.png", "text", "no text"},
      {"", "text", "no text"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(textOf(Cubby(each.type, dataOf(each.bytes))), each.text) << each.type << each.bytes;
  }
}

TEST_F(CubbyTest, TextIsCutAtTheMaximumLength) {
  EXPECT_EQ(textOf(plain(std::string(100, 'x')), 100), std::string(100, 'x'));
  EXPECT_EQ(textOf(plain(std::string(101, 'x')), 100), std::string(100, 'x'));
  EXPECT_EQ(textOf(plain("\xc3\xa9\xc3\xa9\xc3\xa9"), 2), "\xc3\xa9\xc3\xa9");
}

TEST_F(CubbyTest, CutTextKeepsItsLooks) {
  AttributedString text;
  text.append("bold", {14, true});
  text.append(" plain", {12});
  const auto cut = Cubby(text).textContentsWithMaximumLength(6);
  ASSERT_TRUE(cut);
  EXPECT_EQ(*cut, text.attributedSubstringFromRange(0, 6));
}

TEST_F(CubbyTest, NoLengthGivesEmptyTextAndNoPreview) {
  const auto text = plain("text").textContentsWithMaximumLength(0);
  ASSERT_TRUE(text);
  EXPECT_EQ(text->length(), 0U);
  EXPECT_EQ(simulatedImageName(preview(plain("text"), {200, 100}, 0)), "UnknownClipboardItem");
}

TEST_F(CubbyTest, Utf16IsGarbledInSightAndWholeOnTheClipboard) {
  const Data bytes = {0, 'h', 0, 'i'};
  const Cubby cubby("public.utf16-external-plain-text", bytes);
  EXPECT_EQ(textOf(cubby), std::string("\0h\0i", 4));
  EXPECT_TRUE(cubby.copyToClipboard());
  EXPECT_EQ(clipboard().dataForType("public.utf16-external-plain-text"), bytes);
}

TEST_F(CubbyTest, Utf16WithItsMarkIsNoText) {
  EXPECT_EQ(textOf(Cubby("public.utf16-external-plain-text", {0xFE, 0xFF, 0, 'h'})), "no text");
}

// Previews. A character of size 12 is 6 points wide and 14.4 high.

TEST_F(CubbyTest, TextIsDrawnOnAPageOfItsOwnHeight) {
  const Image image = preview(plain("one\ntwo"), {200.9, 100.9});
  EXPECT_EQ(image.size(), (Size{200, 28}));
  const auto drawn = simulatedImageOperations(image);
  ASSERT_THAT(drawn, SizeIs(3));
  EXPECT_EQ(drawn[0].kind, DrawOperation::Kind::FillRect);
  EXPECT_EQ(drawn[0].rect, Rect::make(0, 0, 200, 28));
  EXPECT_EQ(drawn[0].color, Color::white());
  EXPECT_EQ(drawn[1].text, "one");
  EXPECT_EQ(drawn[2].text, "two");
}

TEST_F(CubbyTest, LongTextIsShrunkAsAWholeAndNotCut) {
  std::string text;
  for (int line = 0; line < 100; ++line) text += "line\n";
  const Image image = preview(plain(text), {200, 100}, 1000);
  EXPECT_NEAR(image.size().height, 100, 0.001);
  EXPECT_LT(image.size().width, 200);
  EXPECT_THAT(simulatedImageOperations(image), SizeIs(101));
}

TEST_F(CubbyTest, ThePreviewShowsTheTextUpToItsMaximumLength) {
  const auto drawn = simulatedImageOperations(preview(plain("0123456789"), {200, 100}, 4));
  ASSERT_THAT(drawn, SizeIs(2));
  EXPECT_EQ(drawn[1].text, "0123");
}

TEST_F(CubbyTest, TooLittleTextShowsThatItIsUnknown) {
  EXPECT_EQ(previewName(plain("\n")), "UnknownClipboardItem");
  EXPECT_EQ(previewName(Cubby(attributed("tiny", 8))), "UnknownClipboardItem") << "9 points high";
  EXPECT_EQ(previewName(Cubby(attributed("small", 9))), "drawn") << "10 points high";
  EXPECT_EQ(simulatedImageName(preview(plain("text"), {9.9, 100})), "UnknownClipboardItem");
  EXPECT_EQ(simulatedImageName(preview(plain("text"), {10, 1000})), "drawn");
}

TEST_F(CubbyTest, AnImageIsItsOwnPreviewShrunkButNeverEnlarged) {
  platform.graphics().setImageSize("Large", {400, 100});
  const Image large = preview(Cubby("public.tiff", dataOf("image Large")));
  EXPECT_EQ(simulatedImageName(large), "Large");
  EXPECT_EQ(large.size(), (Size{200, 50}));
  EXPECT_EQ(platform.graphics().largestImageWanted(), (Size{200, 100})) << "no more detail";
  platform.graphics().setImageSize("Small", {20, 10});
  EXPECT_EQ(preview(Cubby("public.jpeg", dataOf("image Small"))).size(), (Size{20, 10}));
}

TEST_F(CubbyTest, WhatCannotBeShownHasAPictureOfItsOwn) {
  platform.graphics().setImageSize("UnknownClipboardItem", {400, 400});
  for (const Cubby& cubby :
       {Cubby("public.png", dataOf("damaged")), Cubby("public.rtf", dataOf("damaged")),
        Cubby("public.png", {}), Cubby("other", dataOf("image Picture"))}) {
    const Image image = preview(cubby);
    EXPECT_EQ(simulatedImageName(image), "UnknownClipboardItem") << cubby.type();
    EXPECT_EQ(image.size(), (Size{100, 100}));
  }
}

// Putting back.

TEST_F(CubbyTest, AddingTwiceGivesTwoItemsAndCopyingOne) {
  const Cubby one = plain("one"), two("public.png", {2});
  clipboard().clearContents();
  EXPECT_TRUE(one.addToClipboard());
  EXPECT_TRUE(two.addToClipboard());
  EXPECT_THAT(clipboard().items(),
              ElementsAre(PasteboardContents{{"public.utf8-plain-text", dataOf("one")}},
                          PasteboardContents{{"public.png", {2}}}));
  EXPECT_TRUE(two.copyToClipboard());
  EXPECT_THAT(clipboard().items(), ElementsAre(PasteboardContents{{"public.png", {2}}}));
}

TEST_F(CubbyTest, OtherPasteboardsWorkTheSame) {
  const auto named = platform.pasteboards().pasteboardWithName("other");
  EXPECT_TRUE(plain("one").addToPasteboard(*named));
  EXPECT_TRUE(plain("two").addToPasteboard(*named));
  EXPECT_THAT(named->pasteboardItems(), SizeIs(2));
  EXPECT_TRUE(plain("three").copyToPasteboard(*named));
  EXPECT_THAT(named->pasteboardItems(), SizeIs(1));
  EXPECT_EQ(named->dataForType("public.utf8-plain-text"), dataOf("three"));
}

TEST_F(CubbyTest, AWriteThatFailsIsTold) {
  clipboard().setWritesFail(true);
  EXPECT_FALSE(plain("one").copyToClipboard());
  EXPECT_FALSE(plain("one").addToClipboard());
  EXPECT_FALSE(plain("one").copyToPasteboard(clipboard()));
}

TEST_F(CubbyTest, WhatIsPutBackIsFoundAgainByteForByte) {
  const Cubby cubby("public.rtf", {0, 255, 13, 10});
  cubby.copyToClipboard();
  const auto items = clipboard().pasteboardItems();
  ASSERT_THAT(items, SizeIs(1));
  EXPECT_EQ(Cubby::cubbyWithPasteboardItem(*items.front())->state(), cubby.state());
}

TEST_F(CubbyTest, ItIsWrittenInItsOneTypeAtOnce) {
  const Cubby cubby("public.rtf", {1});
  EXPECT_THAT(cubby.writableTypesForPasteboard(clipboard()), ElementsAre("public.rtf"));
  EXPECT_EQ(cubby.writingOptionsForType("public.rtf", clipboard()), 0U);
  EXPECT_EQ(cubby.pasteboardPropertyListForType("public.rtf"), PropertyList(Data{1}));
  EXPECT_EQ(cubby.pasteboardPropertyListForType("anything"), PropertyList(Data{1}));
}

TEST_F(CubbyTest, LogTellsTypeSizeAndText) {
  const std::size_t before = platform.log().size();
  plain("caf\xc3\xa9").log();
  Cubby("public.png", {1, 2, 3}).log();
  plain("").log();
  plain("\xff").log();
  const auto all = platform.log();
  EXPECT_THAT(
      std::vector<std::string>(all.begin() + static_cast<std::ptrdiff_t>(before), all.end()),
      ElementsAre("Cubby type: public.utf8-plain-text, size: 5 - caf\xc3\xa9",
                  "Cubby type: public.png, size: 3 - <<>>",
                  "Cubby type: public.utf8-plain-text, size: 0 - ",
                  "Cubby type: public.utf8-plain-text, size: 1 - (null)"));
}

}  // namespace
}  // namespace qb::test
