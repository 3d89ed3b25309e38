#include "Quillbox/activation/utilities/MailSharing.h"

#include <gmock/gmock.h>

#include "Quillbox/managers/Cubby.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class MailSharingTest : public ActivationFixture {
 protected:
  const EmailMessage& message() { return platform.sharing().composed().back(); }
  std::string text(std::size_t index) {
    return std::get<AttributedString>(message().items.at(index)).string();
  }
};

TEST_F(MailSharingTest, AFileGoesUnderItsName) {
  quillbox->shareFileViaEmail("/work/My%20Letter.txt");
  ASSERT_THAT(platform.sharing().composed(), SizeIs(1));
  EXPECT_EQ(message().subject, "My Letter.txt");
  ASSERT_THAT(message().items, SizeIs(2));
  EXPECT_EQ(text(0), "Hi, here is a copy of My Letter.txt:\r\n\r\n");
  EXPECT_EQ(std::get<SharedFile>(message().items[1]).path, "/work/My%20Letter.txt");
}

TEST_F(MailSharingTest, ATextGoesAsItIs) {
  AttributedString information;
  information.append("bold", Font::boldSystemFontOfSize(14));
  information.append(" and plain", Font::systemFontOfSize(14));
  quillbox->shareTextViaEmail(information);
  EXPECT_EQ(message().subject, "Information");
  ASSERT_THAT(message().items, SizeIs(2));
  EXPECT_EQ(text(0), "Hi, here is a copy of the following information: \r\r");
  EXPECT_EQ(std::get<AttributedString>(message().items[1]), information);
}

TEST_F(MailSharingTest, AnImageGoesAsItIs) {
  const Image image = platform.graphics().imageNamed("Picture");
  quillbox->shareImageViaEmail(image);
  EXPECT_EQ(message().subject, "Image for You");
  ASSERT_THAT(message().items, SizeIs(2));
  EXPECT_EQ(text(0), "Hi, here is an image for you: \r\r\n\n ");
  EXPECT_EQ(std::get<Image>(message().items[1]), image);
}

TEST_F(MailSharingTest, OneClippingGoesAsTextOrAsImage) {
  AttributedString text;
  text.append("bold", Font::boldSystemFontOfSize(14));
  quillbox->shareCubbiesViaEmail({std::make_shared<Cubby>(text)});
  EXPECT_EQ(message().subject, "A Clipping for You");
  ASSERT_THAT(message().items, SizeIs(2));
  EXPECT_EQ(this->text(0), "Hi, here is a clipping for you: \r\r\n\n ");
  EXPECT_EQ(std::get<AttributedString>(message().items[1]), text);

  platform.graphics().setImageSize("Large", {5000, 4000});
  const Image image = platform.graphics().imageNamed("Large");
  quillbox->shareCubbiesViaEmail({std::make_shared<Cubby>(image)});
  EXPECT_EQ(message().subject, "A Clipping for You");
  ASSERT_THAT(message().items, SizeIs(2));
  EXPECT_EQ(this->text(0), "Hi, here is a clipping for you: \r\r\n\n ");
  EXPECT_EQ(std::get<Image>(message().items[1]), image) << "in its own size";
}

TEST_F(MailSharingTest, SeveralClippingsGoTogetherInTheirOrder) {
  const Image image = platform.graphics().imageNamed("Picture");
  const auto data = [](std::string_view text) {
    return PropertyList::Data(text.begin(), text.end());
  };
  quillbox->shareCubbiesViaEmail({std::make_shared<Cubby>("public.utf8-plain-text", data("one")),
                                  std::make_shared<Cubby>(image),
                                  std::make_shared<Cubby>("public.rtf", data("damaged")),
                                  std::make_shared<Cubby>("public.utf8-plain-text", data("")),
                                  std::make_shared<Cubby>("other", data("other")),
                                  std::make_shared<Cubby>("public.rtf", data("{\\rtf1 two}"))});
  ASSERT_THAT(platform.sharing().composed(), SizeIs(1));
  EXPECT_EQ(message().subject, "Clippings for You");
  ASSERT_THAT(message().items, SizeIs(4));
  EXPECT_EQ(text(0), "Hi, here are some clippings for you: \r\r\n\n ");
  EXPECT_EQ(text(1), "one");
  EXPECT_EQ(std::get<Image>(message().items[2]), image);
  EXPECT_EQ(text(3), "two");
}

TEST_F(MailSharingTest, AClippingThatCannotBeShownLeavesTheGreeting) {
  quillbox->shareCubbiesViaEmail({std::make_shared<Cubby>("public.rtf", PropertyList::Data{'x'})});
  EXPECT_EQ(message().subject, "A Clipping for You");
  EXPECT_THAT(message().items, SizeIs(1));
}

TEST_F(MailSharingTest, LongClippingsAreCut) {
  quillbox->shareCubbiesViaEmail({std::make_shared<Cubby>(
      "public.utf8-plain-text", PropertyList::Data(100'000, std::uint8_t{'x'}))});
  EXPECT_EQ(text(1).size(), 99'999U);
}

TEST_F(MailSharingTest, NothingIsNotShared) {
  quillbox->shareTextViaEmail({});
  AttributedString emptyRun;
  emptyRun.append("", Font());
  quillbox->shareTextViaEmail(emptyRun);
  quillbox->shareImageViaEmail({});
  quillbox->shareCubbiesViaEmail({});
  EXPECT_THAT(platform.sharing().composed(), IsEmpty());
}

TEST_F(MailSharingTest, ThePanelGoesWhetherOrNotThereIsAMailProgram) {
  platform.sharing().removeMailProgram();
  appDelegate->activateApplicationWithActivationMethod(ActivationMethodCommandDoubleTap);
  ASSERT_TRUE(isActive());
  quillbox->shareFileViaEmail("/work/a.txt");
  platform.runFor(0.02);
  EXPECT_FALSE(isActive());
  EXPECT_THAT(platform.sharing().composed(), SizeIs(1));
}

}  // namespace
}  // namespace qb::test
