#include <gmock/gmock.h>

#include "Quillbox/activation/EventListener.h"
#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Listener : public EventListener {
 public:
  Listener(std::string name, CallLog& log) : name_(std::move(name)), log_(log) {}
  void displayConfigurationChanged() override { log_.push_back(name_); }

 private:
  std::string name_;
  CallLog& log_;
};

class QuillboxRegistryTest : public ActivationFixture {
 protected:
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
};

TEST_F(QuillboxRegistryTest, ItemsOfATypeComeInTheOrderOfTheList) {
  const auto first = TestItem::create({}, "first", log);
  const auto other = TestItem::create({}, "other", log);
  const auto second = TestItem::create({}, "second", log);
  first->itemType = second->itemType = ItemTypeCubbyhole;
  EXPECT_THAT(quillbox->registeredItemsOfType(ItemTypeCubbyhole),
              ElementsAre(first.get(), second.get()));
  EXPECT_THAT(quillbox->registeredItemsOfType(ItemTypeMetaFolder), IsEmpty());
}

TEST_F(QuillboxRegistryTest, AnItemIsInvokedByItsIdentity) {
  const auto item = TestItem::create({}, "item", log);
  quillbox->invokeItemWithUniqueID(item->uniqueID());
  EXPECT_THAT(*log, ElementsAre("item: invoke"));
  quillbox->invokeItemWithUniqueID("nobody");
  EXPECT_THAT(*log, ElementsAre("item: invoke"));
}

TEST_F(QuillboxRegistryTest, ListenersHearOfDisplaysInTheirOrder) {
  CallLog heard;
  const auto first = std::make_shared<Listener>("first", heard);
  const auto second = std::make_shared<Listener>("second", heard);
  const auto silent = std::make_shared<EventListener>();
  quillbox->addEventListener(first);
  quillbox->addEventListener(silent);
  quillbox->addEventListener(nullptr);
  quillbox->addEventListener(second);
  appDelegate->displayConfigurationChanged();
  EXPECT_THAT(heard, ElementsAre("first", "second"));
  heard.clear();
  quillbox->removeEventListener(first);
  quillbox->sendDisplayConfigurationEvent();
  EXPECT_THAT(heard, ElementsAre("second"));
}

TEST_F(QuillboxRegistryTest, ListenersAreNotKeptAlive) {
  CallLog heard;
  auto listener = std::make_shared<Listener>("listener", heard);
  const std::weak_ptr<Listener> watched = listener;
  quillbox->addEventListener(listener);
  listener.reset();
  EXPECT_TRUE(watched.expired());
  quillbox->sendDisplayConfigurationEvent();
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(QuillboxRegistryTest, TheItemSizeIsThatOfTheFirstRow) {
  open(ActivationMethodCommandTab);
  ASSERT_EQ(quillbox->tabRows().front().get(), &row());
  EXPECT_GT(row().itemSize().width, 0);
  EXPECT_EQ(quillbox->tabRowItemSize(), row().itemSize());
  EXPECT_EQ(quillbox->defaultTabRowItemFrame(), (Rect{{0, 0}, row().itemSize()}));
}

TEST_F(QuillboxRegistryTest, AChangedDecorationMakesTheItemsAnew) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  platform.runFor(1);
  provider->log.clear();
  quillbox->itemDecorationChanged(*row().items().front());
  platform.runFor(1);
  EXPECT_EQ(countOf(provider->log, "createItems"), 1);
}

TEST_F(QuillboxRegistryTest, ThePanelCanBeHiddenToLookBelow) {
  open(ActivationMethodCommandTab);
  EXPECT_TRUE(quillbox->quillboxWindowIsVisible());
  quillbox->hideQuillboxWindowForDebugPurposes();
  EXPECT_FALSE(quillbox->quillboxWindowIsVisible());
}

TEST(FacadeWithoutPanelTest, HasNoRowsAndNoItemSize) {
  SimulatedPlatform platform;
  const auto appDelegate = AppDelegate::create(platform);
  const auto facade = Quillbox::quillboxWithAppDelegate(*appDelegate, platform);
  EXPECT_THAT(facade->tabRows(), IsEmpty());
  EXPECT_EQ(facade->tabRowItemSize(), Size{});
  EXPECT_EQ(facade->defaultTabRowItemFrame(), Rect{});
}

}  // namespace
}  // namespace qb::test
