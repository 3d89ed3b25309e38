#include "Quillbox/activation/Quillbox.h"

#include <regex>
#include <set>

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

class QuillboxTest : public ActivationFixture {};

TEST_F(QuillboxTest, IdentitiesAreRandomOnesInUpperCase) {
  static const std::regex form(
      "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) {
    const std::string identity = Quillbox::generateUUID();
    EXPECT_TRUE(std::regex_match(identity, form)) << identity;
    EXPECT_TRUE(seen.insert(identity).second) << identity;
  }
}

TEST_F(QuillboxTest, ItemsAreRegisteredInOrderForAsLongAsTheyLive) {
  const auto before = quillbox->registeredItems().size();
  const auto log = std::make_shared<CallLog>();
  auto first = TestItem::create({}, "first", log);
  const auto second = TestItem::create({}, "second", log);
  ASSERT_EQ(quillbox->registeredItems().size(), before + 2);
  EXPECT_EQ(quillbox->registeredItems()[before], first.get());
  EXPECT_EQ(quillbox->registeredItems()[before + 1], second.get());
  first.reset();
  ASSERT_EQ(quillbox->registeredItems().size(), before + 1);
  EXPECT_EQ(quillbox->registeredItems()[before], second.get());
}

TEST_F(QuillboxTest, FindsTheFirstItemOfAnIdentity) {
  const auto log = std::make_shared<CallLog>();
  const auto first = TestItem::create({}, "first", log);
  const auto second = TestItem::create({}, "second", log);
  second->setUniqueID(first->uniqueID());
  EXPECT_EQ(quillbox->registeredItemWithUniqueID(first->uniqueID()), first.get());
  EXPECT_EQ(quillbox->registeredItemWithUniqueID("nobody"), nullptr);
}

TEST(QuillboxWithoutPanelTest, AnswersNoneForThePanel) {
  SimulatedPlatform platform;
  const auto appDelegate = AppDelegate::create(platform);
  const auto facade = Quillbox::quillboxWithAppDelegate(*appDelegate, platform);
  EXPECT_EQ(quillbox, facade.get());
  EXPECT_EQ(facade->hostView(), nullptr);
  EXPECT_FALSE(facade->quillboxWindowIsVisible());
  facade->orderOutQuillboxWindow();
}

}  // namespace
}  // namespace qb::test
