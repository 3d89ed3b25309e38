#include <gmock/gmock.h>

#include "Platform/Workspace.h"
#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/Item/ButtonItem.h"
#include "Quillbox/Item/CustomItem.h"
#include "Quillbox/Item/RepresentedObject.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(0, 0, 42, 42);
const std::string path = "/apps/Editor.desktop";

class ItemClassesTest : public QuillboxFixture {};

TEST_F(ItemClassesTest, EveryClassHasItsType) {
  class MadeItem : public CustomItem {
   public:
    MadeItem() : CustomItem(cell, std::string("Made")) {}
  };
  const Button::Action nothing = [] {};
  const std::vector<std::pair<std::shared_ptr<Item>, std::int32_t>> classes = {
      {Item::create(cell, Image(), "Plain"), 0},
      {std::make_shared<MadeItem>(), 0},
      {FileSystemItem::create(cell, std::string("/home/user/letter.txt")), 0},
      {ApplicationItem::create(cell, path), 5},
      {ButtonItem::create(cell, Image(), "Push", nothing), 6},
      {AddButtonItem::create(cell, "Add", nothing), 6},
      {RevealButtonItem::create(cell, "Reveal", nothing), 6},
  };
  for (const auto& [item, type] : classes) EXPECT_EQ(item->type(), type) << item->name();
}

TEST_F(ItemClassesTest, AnApplicationIsRestoredByItsInformation) {
  const ItemInformation information = ApplicationItem::information();
  EXPECT_EQ(information.name, "Application");
  EXPECT_EQ(information.className, "ApplicationItem");
  const auto saved = ApplicationItem::create(cell, path);
  const auto restored =
      std::dynamic_pointer_cast<ApplicationItem>(information.create(cell, saved->state()));
  ASSERT_NE(restored, nullptr);
  EXPECT_EQ(restored->uniqueID(), saved->uniqueID());
  EXPECT_EQ(restored->name(), "Editor");
  EXPECT_EQ(restored->path(), path);
}

TEST_F(ItemClassesTest, AMenuEntryCanCarryAnApplication) {
  const auto number = platform.processes().launchInFront({"org.editor", "Editor"});
  const auto applications = platform.workspace().runningApplications();
  const auto found = std::find_if(applications.begin(), applications.end(), [&](const auto& each) {
    return each->processNumber() == number;
  });
  ASSERT_NE(found, applications.end());
  const auto entry = MenuItem::create("Quit");
  entry->setRepresentedObject(RepresentedObject{*found, {}});
  const auto carried = std::any_cast<RepresentedObject>(entry->representedObject());
  EXPECT_EQ(carried.runningApplication->bundleIdentifier(), "org.editor");
  EXPECT_TRUE(carried.window.expired());
}

}  // namespace
}  // namespace qb::test
