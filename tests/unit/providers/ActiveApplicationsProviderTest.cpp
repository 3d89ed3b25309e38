#include "Quillbox/providers/ActiveApplicationsProvider.h"

#include "Platform/KeyCodes.h"
#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/activation/Environment.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

const SimulatedApplication editor{"org.editor", "Editor", "/apps/Editor.desktop"};
const SimulatedApplication viewer{"org.viewer", "Viewer", "/apps/Viewer.desktop"};
const SimulatedApplication player{"org.player", "Player", "/apps/Player.desktop"};

class ActiveApplicationsProviderTest : public TabRowFixture {
 protected:
  using Names = std::vector<std::string>;

  Names processNames() const {
    Names names;
    for (const auto& process : applications->processes()) names.push_back(process->name);
    return names;
  }
  Names itemNames() const {
    Names names;
    for (const auto& item : applications->items()) names.push_back(item->name());
    return names;
  }
  void sweep() { platform.runFor(1.0); }
  /// A row of its own over the provider, 600 points wide, open.
  void openApplicationsRow() {
    row = TabRow::create(nullptr, Rect::make(0, 0, 100, 100), applications);
    row->setFrame(Rect::make(0, 0, 600, 80), {50, 50}, false);
    openRow();
    row->gainActiveStatusAsDefault(true);
  }

  std::shared_ptr<ActiveApplicationsProvider> applications =
      std::make_shared<ActiveApplicationsProvider>();
};

TEST_F(ActiveApplicationsProviderTest, AnswersForItself) {
  EXPECT_EQ(applications->name(), "Active Applications");
  EXPECT_TRUE(applications->isActiveApplicationsProvider());
  EXPECT_TRUE(applications->wantsInvocationTabEvent());
  EXPECT_TRUE(applications->canBeConfigured());
}

TEST_F(ActiveApplicationsProviderTest, ItemsHaveAlwaysChanged) {
  EXPECT_TRUE(applications->haveItemsChanged());
  applications->numberOfItems();
  EXPECT_TRUE(applications->haveItemsChanged());
}

TEST_F(ActiveApplicationsProviderTest, ListsTheOtherProcessesButNotItself) {
  EXPECT_EQ(applications->numberOfItems(), 0);
  platform.processes().launch(editor);
  EXPECT_EQ(applications->numberOfItems(), 1);
  EXPECT_EQ(processNames(), (Names{"Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, NewProcessesGoToTheEndInTheOrderOfEnumeration) {
  platform.processes().launch(editor);
  platform.processes().launch(viewer);
  applications->numberOfItems();
  platform.processes().launch(player);
  applications->numberOfItems();
  EXPECT_EQ(processNames(), (Names{"Editor", "Viewer", "Player"}));
}

TEST_F(ActiveApplicationsProviderTest, BackgroundProcessesAndUIElementsAreLeftOut) {
  platform.processes().launch({"org.daemon", "Daemon", "/apps/Daemon.desktop", true, false});
  platform.processes().launch({"org.tray", "Tray", "/apps/Tray.desktop", false, true});
  EXPECT_EQ(applications->numberOfItems(), 0);
}

TEST_F(ActiveApplicationsProviderTest, TheFrontProcessGoesToTheHeadOncePerSecond) {
  const auto first = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  sweep();
  EXPECT_EQ(processNames(), (Names{"Viewer", "Editor"}));
  platform.processes().bringToFront(first);
  EXPECT_EQ(processNames(), (Names{"Viewer", "Editor"}));
  sweep();
  EXPECT_EQ(processNames(), (Names{"Editor", "Viewer"}));
}

TEST_F(ActiveApplicationsProviderTest, InFrontForLessThanASecondBetweenTwoLooksIsNotPromoted) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(viewer);
  sweep();
  platform.runFor(0.1);
  platform.processes().bringToFront(first);
  platform.runFor(0.5);
  platform.processes().bringToFront(second);
  sweep();
  EXPECT_EQ(processNames(), (Names{"Viewer", "Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, ProcessesThatHaveGoneAreDropped) {
  const auto first = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  sweep();
  platform.processes().terminate(first);
  sweep();
  EXPECT_EQ(processNames(), (Names{"Viewer"}));
}

TEST_F(ActiveApplicationsProviderTest, ARelaunchedApplicationGoesToTheEnd) {
  const auto first = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  const auto third = platform.processes().launchInFront(player);
  platform.processes().bringToFront(first);
  sweep();
  EXPECT_EQ(processNames(), (Names{"Editor", "Viewer", "Player"}));
  platform.processes().terminate(first);
  platform.processes().bringToFront(third);
  const auto again = platform.processes().launch(editor);
  sweep();
  EXPECT_EQ(processNames(), (Names{"Player", "Viewer", "Editor"}));
  EXPECT_EQ(applications->processes().back()->processNumber, again);
}

TEST_F(ActiveApplicationsProviderTest, TwoInstancesOfOneBundleAreTwoProcessesAndTwoItems) {
  const auto first = platform.processes().launch(editor);
  const auto second = platform.processes().launch(editor);
  EXPECT_EQ(applications->numberOfItems(), 2);
  applications->createItemsWithSize({42, 42});
  EXPECT_EQ(itemNames(), (Names{"Editor", "Editor"}));
  const auto processOf = [](const Item& item) {
    return std::any_cast<std::shared_ptr<Process>>(item.representedObject())->processNumber;
  };
  EXPECT_EQ(processOf(*applications->items()[0]), first);
  EXPECT_EQ(processOf(*applications->items()[1]), second);
}

TEST_F(ActiveApplicationsProviderTest, AProcessWithoutABundleCountsAndGetsNoItem) {
  platform.processes().launch({"", "xclock", ""});
  platform.processes().launch(editor);
  EXPECT_EQ(applications->numberOfItems(), 2);
  applications->createItemsWithSize({42, 42});
  EXPECT_EQ(itemNames(), (Names{"Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, MakesApplicationItemsOfTheSizeAskedFor) {
  platform.processes().launch(editor);
  applications->numberOfItems();
  applications->createItemsWithSize({42, 42});
  const auto& item = static_cast<ApplicationItem&>(*applications->items().front());
  EXPECT_EQ(item.type(), ItemTypeApplication);
  EXPECT_EQ(item.name(), "Editor");
  EXPECT_EQ(item.bundleIdentifier(), "org.editor");
  EXPECT_EQ(item.path(), "/apps/Editor.desktop");
  EXPECT_EQ(item.view()->frame(), Rect::make(0, 0, 42, 42));
  EXPECT_EQ(item.dragability(), 0);
}

TEST_F(ActiveApplicationsProviderTest, AProcessWithoutInformationIsTriedAgainAtTheNextLook) {
  const auto process = platform.processes().launch(editor);
  platform.processes().setInformationAvailable(process, false);
  sweep();
  EXPECT_EQ(processNames(), Names{});
  platform.processes().setInformationAvailable(process, true);
  sweep();
  EXPECT_EQ(processNames(), (Names{"Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, TheEnvironmentComesBeforeTheLastLook) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(viewer);
  sweep();
  ASSERT_EQ(processNames(), (Names{"Viewer", "Editor"}));
  platform.processes().bringToFront(first);
  applications->noteEnvironment(environmentWithFrontProcess(first));
  applications->numberOfItems();
  EXPECT_EQ(processNames(), (Names{"Editor", "Viewer"}));
  EXPECT_NE(first, second);
}

TEST_F(ActiveApplicationsProviderTest, TheNextLookComesBeforeTheEnvironment) {
  const auto first = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  sweep();
  applications->noteEnvironment(environmentWithFrontProcess(first));
  applications->numberOfItems();
  ASSERT_EQ(processNames(), (Names{"Editor", "Viewer"}));
  sweep();
  EXPECT_EQ(processNames(), (Names{"Viewer", "Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, WhileThePanelIsInFrontTheOrderStandsStill) {
  platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  sweep();
  open(ActivationMethodCommandDoubleTap);
  platform.runFor(3.0);
  EXPECT_EQ(processNames(), (Names{"Viewer", "Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, AskingForTheCountLooksAnew) {
  applications->numberOfItems();
  const auto process = platform.processes().launch(editor);
  EXPECT_EQ(applications->numberOfItems(), 1);
  platform.processes().terminate(process);
  EXPECT_EQ(applications->numberOfItems(), 0);
}

TEST_F(ActiveApplicationsProviderTest, ALaunchRebuildsADisplayedRow) {
  platform.processes().launchInFront(editor);
  openApplicationsRow();
  ASSERT_EQ(row->items().size(), 1U);
  platform.processes().launch(viewer);
  platform.runFor(1.1);
  row->numberOfItems();
  EXPECT_EQ(itemNames(), (Names{"Editor", "Viewer"}));
}

TEST_F(ActiveApplicationsProviderTest, ANewOrderAloneLeavesADisplayedRowAlone) {
  const auto first = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  sweep();
  openApplicationsRow();
  const auto before = applications->items();
  platform.processes().bringToFront(first);
  platform.runFor(1.5);
  EXPECT_EQ(processNames(), (Names{"Editor", "Viewer"}));
  EXPECT_EQ(applications->items(), before);
}

TEST_F(ActiveApplicationsProviderTest, ALaunchLeavesAClosedRowAlone) {
  openApplicationsRow();
  row->hostViewWillBeDismissed();
  row->hostViewWasDismissed();
  platform.processes().launch(viewer);
  platform.runFor(1.5);
  EXPECT_TRUE(applications->items().empty());
}

TEST_F(ActiveApplicationsProviderTest, ARebuildKeepsTheSelectionOnTheSameOfTwoLikeProcesses) {
  platform.processes().launch(editor);
  platform.processes().launch(editor);
  openApplicationsRow();
  row->setSelectedItem(applications->items()[0], SelectionMethodKeyboard);
  const auto before = applications->items()[0]->uniqueID();
  platform.processes().launch(viewer);
  platform.runFor(1.5);
  ASSERT_EQ(applications->items().size(), 3U);
  EXPECT_EQ(row->selectedItem(), applications->items()[0]);
  EXPECT_EQ(row->selectedItem()->uniqueID(), before);
}

TEST_F(ActiveApplicationsProviderTest, QAndHActOnTheSelectedApplicationWhileTheRowIsActive) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(viewer);
  openApplicationsRow();
  row->setSelectedItem(applications->items()[0], SelectionMethodKeyboard);
  const PropertyList information = PropertyList::dictionary();
  applications->performKeyAction("hideKeyPressed", information);
  EXPECT_TRUE(platform.processes().isHidden(first));
  applications->performKeyAction("quitKeyPressed", information);
  platform.runPending();
  EXPECT_FALSE(platform.processes().isRunning(first));
  EXPECT_TRUE(platform.processes().isRunning(second));
  EXPECT_EQ(row->selectedItem()->name(), "Viewer");
}

TEST_F(ActiveApplicationsProviderTest, QAndHWithoutASelectionDoNothing) {
  const auto process = platform.processes().launchInFront(editor);
  openApplicationsRow();
  applications->performKeyAction("quitKeyPressed", PropertyList::dictionary());
  applications->performKeyAction("hideKeyPressed", PropertyList::dictionary());
  platform.runPending();
  EXPECT_TRUE(platform.processes().isRunning(process));
  EXPECT_FALSE(platform.processes().isHidden(process));
}

TEST_F(ActiveApplicationsProviderTest, CommandHeldAndQQuitsTheSelectionAndThePanelStays) {
  platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(viewer);
  sweep();
  platform.keyboard().press(KeyCodeLeftCommand);
  platform.keyboard().press(KeyCodeTab);
  platform.keyboard().release(KeyCodeTab);
  platform.runFor(0.1);
  ASSERT_EQ(host().activeTabRow()->selectedItem()->name(), "Editor");
  platform.keyboard().type(KeyCodeQ);
  platform.runFor(0.1);
  EXPECT_EQ(platform.workspace().runningApplicationsWithBundleIdentifier("org.editor").size(), 0U);
  EXPECT_TRUE(platform.processes().isRunning(second));
  EXPECT_EQ(appDelegate->state(), ActivationStateActive);
}

TEST_F(ActiveApplicationsProviderTest, TheKeyHandlersGoWithTheActiveStatus) {
  platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  sweep();
  platform.keyboard().press(KeyCodeLeftCommand);
  platform.keyboard().type(KeyCodeTab);
  platform.runFor(0.1);
  host().setActiveTabRow(nullptr, false);
  platform.runFor(0.1);
  platform.keyboard().type(KeyCodeH);
  platform.runFor(0.01);
  for (const auto& application : platform.workspace().runningApplications()) {
    EXPECT_FALSE(application->isHidden());
  }
}

TEST_F(ActiveApplicationsProviderTest, AfterARestItLooksAtTheNextTickOfItsGrid) {
  platform.processes().launchInFront(editor);
  platform.runFor(5.0);
  platform.runFor(0.25);
  platform.processes().launchInFront(viewer);
  platform.runFor(0.749);
  EXPECT_EQ(processNames(), (Names{"Editor"}));
  platform.runFor(0.002);
  EXPECT_EQ(processNames(), (Names{"Viewer", "Editor"}));
}

TEST_F(ActiveApplicationsProviderTest, AProviderThatIsNoLongerWantedStopsLooking) {
  platform.processes().launchInFront(editor);
  applications->prepareForDeallocation();
  applications->prepareForDeallocation();
  platform.runFor(2.0);
  EXPECT_TRUE(applications->processes().empty());
}

}  // namespace
}  // namespace qb::test
