#include "Quillbox/providers/RecentApplicationsProvider.h"

#include <gmock/gmock.h>

#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/activation/MenuHelpers.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Names = std::vector<std::string>;

const SimulatedApplication editor{"org.editor", "Editor", "/apps/Editor.desktop"};
const SimulatedApplication viewer{"org.viewer", "Viewer", "/apps/Viewer.desktop"};
const SimulatedApplication finder{"com.apple.finder", "Files", "/apps/Files.desktop"};

class RecentApplicationsProviderTest : public HostViewFixture {
 protected:
  RecentApplicationsProviderTest() {
    for (const auto& application : {editor, viewer, finder}) {
      platform.workspace().install(application);
      platform.fileSystem().putRaw(application.bundlePath, "[Desktop Entry]");
    }
  }
  SimulatedSharedFileLists& lists() { return platform.sharedFileLists(); }
  void make() { recent = RecentApplicationsProvider::create(); }
  void listEditorAndViewer() {
    lists().setItems({{"Editor", editor.bundlePath}, {"Viewer", viewer.bundlePath}});
  }
  Names names() {
    recent->numberOfItems();
    Names all;
    for (const auto& application : recent->recentApplications()) all.push_back(application.name);
    return all;
  }
  Names itemNames() {
    recent->deleteItems();
    recent->createItemsWithSize({42, 42});
    Names all;
    for (const auto& item : recent->items()) all.push_back(item->name());
    return all;
  }
  std::shared_ptr<MenuItem> exemptionEntry() {
    itemNames();
    TabRowProvider::MenuItems existing;
    return recent->menuItemsForItemConfigure(*recent->items().at(0), existing).at(0);
  }

  std::shared_ptr<RecentApplicationsProvider> recent;
};

TEST_F(RecentApplicationsProviderTest, AnswersForItself) {
  make();
  EXPECT_EQ(recent->name(), "Recent Applications");
  EXPECT_EQ(recent->className(), "RecentApplicationsProvider");
  EXPECT_TRUE(recent->canBeConfigured());
  EXPECT_FALSE(recent->wantsInvocationTabEvent());
  EXPECT_TRUE(recent->haveItemsChanged());
}

TEST_F(RecentApplicationsProviderTest, ShowsTheListInItsOrderWithoutExtensions) {
  lists().setItems({{"Viewer.app", viewer.bundlePath}, {"Editor", editor.bundlePath}});
  make();
  EXPECT_EQ(names(), (Names{"Viewer", "Editor"}));
  EXPECT_EQ(recent->numberOfItems(), 2);
}

TEST_F(RecentApplicationsProviderTest, MakesApplicationItemsOfTheSizeAskedFor) {
  listEditorAndViewer();
  make();
  EXPECT_EQ(itemNames(), (Names{"Editor", "Viewer"}));
  const auto& item = dynamic_cast<const ApplicationItem&>(*recent->items()[1]);
  EXPECT_EQ(item.path(), viewer.bundlePath);
  EXPECT_EQ(item.bundleIdentifier(), "org.viewer");
  EXPECT_EQ(item.view()->frame(), Rect::make(0, 0, 42, 42));
  EXPECT_EQ(std::any_cast<RecentApplication>(item.representedObject()).bundlePath,
            viewer.bundlePath);
}

TEST_F(RecentApplicationsProviderTest, AnEntryThatCannotBeResolvedIsSkipped) {
  lists().setItems({{"Gone", ""}, {"Editor", editor.bundlePath}});
  make();
  EXPECT_EQ(names(), (Names{"Editor"}));
}

TEST_F(RecentApplicationsProviderTest, ABundleThatHasGoneIsInTheListButGetsNoItem) {
  listEditorAndViewer();
  make();
  platform.fileSystem().removeItemAtPath(editor.bundlePath);
  EXPECT_EQ(recent->numberOfItems(), 2);
  EXPECT_EQ(itemNames(), (Names{"Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, FollowsTheListAsApplicationsStart) {
  make();
  EXPECT_THAT(names(), IsEmpty());
  platform.processes().launch(editor);
  platform.processes().launch(viewer);
  platform.runFor(0.01);
  EXPECT_EQ(names(), (Names{"Viewer", "Editor"}));
  platform.processes().launch(editor);
  platform.runFor(0.01);
  EXPECT_EQ(names(), (Names{"Editor", "Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, AFileManagerThatHasEndedComesFirst) {
  listEditorAndViewer();
  make();
  EXPECT_EQ(names(), (Names{"Editor", "Viewer"}));
  const auto process = platform.processes().launch(finder);
  listEditorAndViewer();
  EXPECT_EQ(names(), (Names{"Editor", "Viewer"}));
  platform.processes().terminate(process);
  EXPECT_EQ(names(), (Names{"Finder", "Editor", "Viewer"}));
  EXPECT_EQ(recent->recentApplications()[0].bundlePath, finder.bundlePath);
  EXPECT_EQ(itemNames(), (Names{"Finder", "Editor", "Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, AFileManagerThatIsListedStaysInItsPlace) {
  make();
  const auto process = platform.processes().launch(finder);
  names();
  platform.processes().terminate(process);
  platform.processes().launch(editor);
  platform.runFor(0.01);
  EXPECT_EQ(names(), (Names{"Editor", "Files"}));
}

TEST_F(RecentApplicationsProviderTest, AFileManagerWhosePlaceIsNotKnownIsNotShown) {
  listEditorAndViewer();
  make();
  EXPECT_EQ(names(), (Names{"Editor", "Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, AnExemptFileManagerIsNotPutBack) {
  make();
  const auto process = platform.processes().launch(finder);
  listEditorAndViewer();
  platform.runFor(0.01);
  lists().setItems({{"Files", finder.bundlePath}});
  platform.runFor(0.01);
  recent->excludeItem(finder.bundlePath);
  platform.processes().terminate(process);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(RecentApplicationsProviderTest, TheItemsMenuOffersTheExemption) {
  listEditorAndViewer();
  make();
  const auto entry = exemptionEntry();
  EXPECT_EQ(entry->title(), "Exempt from Recent Applications");
  EXPECT_EQ(entry->action().name, "excludeItem");
  EXPECT_EQ(entry->action().target.lock(), recent);
  EXPECT_TRUE(entry->isEnabled());
  EXPECT_EQ(std::any_cast<std::shared_ptr<Item>>(entry->representedObject()), recent->items()[0]);
  EXPECT_EQ(entry->attributedTitle(),
            MenuHelpers::menuTitleWithBeginning("Exempt ", "Editor", " from Recent Applications"));
}

TEST_F(RecentApplicationsProviderTest, AnExemptApplicationIsLeftOutByItsIdentifier) {
  listEditorAndViewer();
  make();
  exemptionEntry()->performAction();
  EXPECT_THAT(recent->exemptApplications(), ElementsAre("org.editor"));
  EXPECT_EQ(names(), (Names{"Viewer"}));
  platform.processes().launch(editor);
  platform.runFor(0.01);
  EXPECT_EQ(names(), (Names{"Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, WithoutAnIdentifierItIsExemptByItsPath) {
  platform.fileSystem().putRaw("/opt/tool/tool", "");
  lists().setItems({{"Tool", "/opt/tool/tool"}, {"Viewer", viewer.bundlePath}});
  make();
  exemptionEntry()->performAction();
  EXPECT_THAT(recent->exemptApplications(), ElementsAre("/opt/tool/tool"));
  EXPECT_EQ(names(), (Names{"Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, WithoutABundleNothingIsExempt) {
  listEditorAndViewer();
  make();
  const auto entry = exemptionEntry();
  platform.fileSystem().removeItemAtPath(editor.bundlePath);
  entry->performAction();
  EXPECT_THAT(recent->exemptApplications(), IsEmpty());
}

TEST_F(RecentApplicationsProviderTest, TheConfigureMenuClearsTheExemptions) {
  listEditorAndViewer();
  make();
  recent->excludeItem(editor.bundlePath);
  const auto items = recent->menuItemsForConfigure();
  ASSERT_THAT(items, SizeIs(1));
  EXPECT_EQ(items[0]->title(), "Clear Exemption List");
  EXPECT_EQ(items[0]->action().name, "resetExemptionListSelected");
  EXPECT_EQ(items[0]->action().target.lock(), recent);
  items[0]->performAction();
  EXPECT_THAT(recent->exemptApplications(), IsEmpty());
  EXPECT_EQ(names(), (Names{"Editor", "Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, ADisplayedRowShowsTheExemptionAtOnce) {
  listEditorAndViewer();
  make();
  const auto row = host().createTabRowAtIndex(0, recent, false);
  present(ActivationMethodCommandDoubleTap);
  ASSERT_THAT(row->items(), SizeIs(2));
  const auto saved = host().stateChanged().generation();
  recent->excludeItem(editor.bundlePath);
  platform.runFor(0.1);
  ASSERT_THAT(row->items(), SizeIs(1));
  EXPECT_EQ(row->items()[0]->name(), "Viewer");
  EXPECT_GT(host().stateChanged().generation(), saved);
}

TEST_F(RecentApplicationsProviderTest, TheExemptionsAreItsState) {
  listEditorAndViewer();
  make();
  recent->excludeItem(editor.bundlePath);
  const PropertyList state = recent->state();
  EXPECT_EQ(state, PropertyList::dictionary(
                       {{"ExemptApplicationsKey", PropertyList::Array{"org.editor"}}}));
  make();
  recent->restoreState(state);
  EXPECT_EQ(names(), (Names{"Viewer"}));
  recent->restoreState(PropertyList::dictionary());
  EXPECT_EQ(names(), (Names{"Editor", "Viewer"}));
}

TEST_F(RecentApplicationsProviderTest, OneThatIsNoLongerWantedStopsListening) {
  make();
  EXPECT_EQ(lists().numberOfObservers(), 1U);
  recent->prepareForDeallocation();
  EXPECT_EQ(lists().numberOfObservers(), 0U);
  make();
  recent.reset();
  EXPECT_EQ(lists().numberOfObservers(), 0U);
}

}  // namespace
}  // namespace qb::test
