#include "Quillbox/Item/CustomItem.h"

#include "Quillbox/activation/MenuItemTags.h"
#include "support/MenuTitles.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

class MadeItem : public CustomItem {
 public:
  MadeItem() : CustomItem(Rect::make(0, 0, 42, 42), std::string("Made")) {}
  bool isDecorateable = false;
  bool decorateable() const override { return isDecorateable; }
};

class CustomItemTest : public QuillboxFixture {
 protected:
  std::shared_ptr<MadeItem> item = std::make_shared<MadeItem>();
};

TEST_F(CustomItemTest, TheDecorationComesLastAfterASeparator) {
  item->setRemovable(true);
  item->isDecorateable = true;
  EXPECT_EQ(
      titlesOf(item->configureMenuItems()),
      (std::vector<std::string>{"Set Hot Key...", "Remove from Tab Row....", "-", "Decorate"}));
  EXPECT_EQ(item->configureMenuItems().back()->tag(), MenuItemTagDecorate);
}

TEST_F(CustomItemTest, WithoutADecorationTheSeparatorComesLast) {
  EXPECT_EQ(titlesOf(item->configureMenuItems()),
            (std::vector<std::string>{"Set Hot Key...", "-"}));
}

}  // namespace
}  // namespace qb::test
