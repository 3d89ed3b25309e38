#include <gmock/gmock.h>

#include "Platform/Workspace.h"
#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/Item/ButtonItem.h"
#include "Quillbox/Item/CustomItem.h"
#include "Quillbox/Item/FileItem.h"
#include "Quillbox/Item/RepresentedObject.h"
#include "Quillbox/Item/ServerItem.h"
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
      {FileItem::create(cell, std::string("/home/user/letter.txt")), 1},
      {ServerItem::create(cell, "Server", "/home/user/server.url"), 2},
      {ApplicationItem::create(cell, path), 5},
      {ButtonItem::create(cell, Image(), "Push", nothing), 6},
      {AddButtonItem::create(cell, "Add", nothing), 6},
      {RevealButtonItem::create(cell, "Reveal", nothing), 6},
  };
  for (const auto& [item, type] : classes) EXPECT_EQ(item->type(), type) << item->name();
}

/// A class saves what its information restores.
template <class Class>
void expectToRestore(const std::string& name, const std::string& className) {
  const ItemInformation information = Class::information();
  EXPECT_EQ(information.name, name);
  EXPECT_EQ(information.className, className);
  const auto saved = Class::create(cell, "Mine", path);
  for (const auto& item : {information.create(cell, saved->state()), saved->duplicate()}) {
    const auto restored = std::dynamic_pointer_cast<Class>(item);
    ASSERT_NE(restored, nullptr) << name;
    EXPECT_EQ(restored->name(), "Mine");
    EXPECT_EQ(restored->path(), path);
    EXPECT_EQ(restored->view()->frame(), cell);
  }
  EXPECT_EQ(information.create(cell, saved->state())->uniqueID(), saved->uniqueID());
}

TEST_F(ItemClassesTest, ItemsOfFilesAreRestoredByTheirInformation) {
  expectToRestore<ApplicationItem>("Application", "ApplicationItem");
  expectToRestore<FileItem>("File", "FileItem");
  expectToRestore<ServerItem>("Server", "ServerItem");
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
