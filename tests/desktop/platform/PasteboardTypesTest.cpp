#include "PlatformDesktop/clipboard/PasteboardTypes.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include "PlatformDesktop/clipboard/ClipboardForms.h"
#include "QuillboxCommon/richtext/RichText.h"

namespace qb {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Data = PropertyList::Data;

Data dataOf(std::string_view text) { return {text.begin(), text.end()}; }
std::string textOf(const Data& data) { return {data.begin(), data.end()}; }

TEST(PasteboardTypesTest, TypesHaveNamesHere) {
  const struct {
    const char* type;
    std::vector<std::string> targets;
  } cases[] = {
      {"public.utf8-plain-text",
       {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain;charset=UTF-8", "text/plain",
        "STRING"}},
      {"public.utf16-external-plain-text", {"text/plain;charset=utf-16"}},
      {"com.apple.traditional-mac-plain-text", {"text/plain;charset=macintosh"}},
      {"public.rtf", {"text/rtf", "application/rtf", "text/richtext"}},
      {"public.tiff", {"image/tiff"}},
      {"public.png", {"image/png"}},
      {"public.jpg", {"image/jpeg"}},
      {"public.jpeg", {"image/jpeg"}},
      {"com.apple.flat-rtfd", {"com.apple.flat-rtfd"}},
      {"com.vorlane.quillbox.clipboard", {"com.vorlane.quillbox.clipboard"}},
  };
  for (const auto& each : cases) EXPECT_EQ(targetsOfType(each.type), each.targets) << each.type;
}

TEST(PasteboardTypesTest, NamesHereAreOfOneType) {
  const struct {
    const char* target;
    const char* type;
  } cases[] = {
      {"UTF8_STRING", "public.utf8-plain-text"},
      {"text/plain;charset=utf-8", "public.utf8-plain-text"},
      {"text/plain;charset=UTF-8", "public.utf8-plain-text"},
      {"text/plain", "public.utf8-plain-text"},
      {"STRING", "public.utf8-plain-text"},
      {"text/plain;charset=utf-16", "public.utf16-external-plain-text"},
      {"text/plain;charset=macintosh", "com.apple.traditional-mac-plain-text"},
      {"text/rtf", "public.rtf"},
      {"application/rtf", "public.rtf"},
      {"text/richtext", "public.rtf"},
      {"image/tiff", "public.tiff"},
      {"image/png", "public.png"},
      {"image/jpeg", "public.jpeg"},
      {"com.apple.flat-rtfd", "com.apple.flat-rtfd"},
      {"text/html", "text/html"},
  };
  for (const auto& each : cases) EXPECT_EQ(typeOfTarget(each.target), each.type) << each.target;
}

// What other programs are offered.

std::vector<std::string> targetsOf(const std::vector<SelectionForm>& forms) {
  std::vector<std::string> targets;
  for (const SelectionForm& form : forms) targets.push_back(form.target);
  return targets;
}
/// "none" when it is not offered.
std::string formOf(const std::vector<PasteboardContents>& items, const std::string& target) {
  for (const SelectionForm& form : formsOfItems(items)) {
    if (form.target == target) return textOf(form.bytes());
  }
  return "none";
}

TEST(ClipboardFormsTest, TextGoesAsItIs) {
  const std::vector<PasteboardContents> items = {
      {{"public.utf8-plain-text", dataOf("caf\xc3\xa9 \xe2\x82\xac\xff")}}};
  EXPECT_THAT(targetsOf(formsOfItems(items)),
              ElementsAre("UTF8_STRING", "text/plain;charset=utf-8", "text/plain;charset=UTF-8",
                          "text/plain", "STRING"));
  EXPECT_EQ(formOf(items, "UTF8_STRING"), "caf\xc3\xa9 \xe2\x82\xac\xff");
  EXPECT_EQ(formOf(items, "STRING"), "caf\xe9 ??");
}

TEST(ClipboardFormsTest, RichTextCanBeHadAsSimplerText) {
  AttributedString text;
  text.append("bold", {12, true});
  const auto rtfd = dataOf(rtfdFromAttributedString(text));
  const std::vector<PasteboardContents> items = {{{"com.apple.flat-rtfd", rtfd}}};
  EXPECT_THAT(targetsOf(formsOfItems(items)),
              ElementsAre("com.apple.flat-rtfd", "text/rtf", "application/rtf", "text/richtext",
                          "UTF8_STRING", "text/plain;charset=utf-8", "text/plain;charset=UTF-8",
                          "text/plain", "STRING"));
  EXPECT_EQ(formOf(items, "com.apple.flat-rtfd"), textOf(rtfd));
  EXPECT_EQ(formOf(items, "text/rtf"), rtfFromAttributedString(text));
  EXPECT_EQ(formOf(items, "text/plain"), "bold");
  EXPECT_EQ(formOf({{{"public.rtf", dataOf("{\\rtf1 caf\\'e9}")}}}, "UTF8_STRING"), "caf\xc3\xa9");
  EXPECT_EQ(formOf({{{"public.rtf", dataOf("{\\rtf1 caf\\'e9}")}}}, "STRING"), "caf\xe9");
  EXPECT_EQ(formOf({{{"public.rtf", dataOf("damaged")}}}, "UTF8_STRING"), "");
}

TEST(ClipboardFormsTest, TIFFCanBeHadAsPNG) {
  if (!QImageReader::supportedImageFormats().contains("tiff")) GTEST_SKIP();
  QImage image(3, 2, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray tiff;
  QBuffer buffer(&tiff);
  buffer.open(QIODevice::WriteOnly);
  ASSERT_TRUE(image.save(&buffer, "TIFF"));
  const std::string png = formOf({{{"public.tiff", Data(tiff.begin(), tiff.end())}}}, "image/png");
  const QImage read = QImage::fromData(QByteArray::fromStdString(png), "PNG");
  EXPECT_EQ(read.size(), image.size());
  EXPECT_EQ(read.pixelColor(1, 1), QColor(Qt::red));
}

TEST(ClipboardFormsTest, WhatIsThereIsNotMadeAnew) {
  const std::vector<PasteboardContents> items = {
      {{"public.rtf", dataOf("{\\rtf1 rich}")}, {"public.utf8-plain-text", dataOf("plain")}}};
  EXPECT_EQ(formOf(items, "text/plain"), "plain");
  EXPECT_EQ(formOf({{{"public.png", dataOf("png")}, {"public.tiff", dataOf("tiff")}}}, "image/png"),
            "png");
}

TEST(ClipboardFormsTest, SeveralItemsTravelTogetherAndTheFirstByItself) {
  const std::vector<PasteboardContents> items = {
      {{"public.utf8-plain-text", dataOf("one")}, {"private", {0, 255}}},
      {{"public.png", dataOf("two")}}};
  EXPECT_EQ(formOf(items, "UTF8_STRING"), "one");
  EXPECT_EQ(formOf(items, "image/png"), "none");
  EXPECT_EQ(itemsOfSeveralItems(dataOf(formOf(items, std::string(severalItemsTarget)))), items);
  EXPECT_THAT(targetsOf(formsOfItems({items.front()})),
              ::testing::Not(Contains(std::string(severalItemsTarget))));
  EXPECT_THAT(formsOfItems({}), IsEmpty());
}

TEST(ClipboardFormsTest, DamagedItemsAreNone) {
  EXPECT_THAT(itemsOfSeveralItems({}), IsEmpty());
  EXPECT_THAT(itemsOfSeveralItems(dataOf("<plist><dict/></plist>")), IsEmpty());
  EXPECT_THAT(itemsOfSeveralItems(dataOf("<plist><array><string>a</string></array></plist>")),
              IsEmpty());
}

}  // namespace
}  // namespace qb
