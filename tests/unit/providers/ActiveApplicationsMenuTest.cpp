// The configure menu of the Active Applications row, and its commands over all applications.

#include <gmock/gmock.h>

#include "Quillbox/activation/Settings.h"
#include "Quillbox/providers/ActiveApplicationsProvider.h"
#include "support/QuillboxFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const SimulatedApplication editor{"org.editor", "Editor", "/apps/Editor.desktop"};
const SimulatedApplication viewer{"org.viewer", "Viewer", "/apps/Viewer.desktop"};
const SimulatedApplication files{"com.apple.finder", "Files", "/apps/Files.desktop"};

class ActiveApplicationsMenuTest : public QuillboxFixture {
 protected:
  TabRowProvider::MenuItems items() { return applications->menuItemsForConfigure(); }
  void choose(const std::string& action) {
    for (const auto& item : items()) {
      if (item->action().name == action) return item->performAction();
    }
    FAIL() << action;
  }
  bool isRunning(ProcessSerialNumber number) { return platform.processes().isRunning(number); }
  bool isHidden(ProcessSerialNumber number) { return platform.processes().isHidden(number); }

  std::shared_ptr<ActiveApplicationsProvider> applications =
      std::make_shared<ActiveApplicationsProvider>();
};

TEST_F(ActiveApplicationsMenuTest, EveryEntryIsWhole) {
  struct Entry {
    std::string title, action;
  };
  const Entry expected[] = {
      {"Hide All Applications Except Viewer", "hideAllApplications"},
      {"Quit All Applications Except Finder", "quitAllApplications"},
      {"", ""},
      {"Keep Background Applications Hidden", "hideBackgroundApplications"},
  };
  platform.processes().launch(editor);
  platform.processes().launchInFront(viewer);
  const auto all = items();
  ASSERT_THAT(all, SizeIs(4));
  for (std::size_t index = 0; index < all.size(); ++index) {
    SCOPED_TRACE(index);
    EXPECT_EQ(all[index]->title(), expected[index].title);
    EXPECT_EQ(all[index]->action().name, expected[index].action);
    EXPECT_EQ(all[index]->isSeparatorItem(), index == 2);
    EXPECT_FALSE(all[index]->state());
    if (index == 2) continue;
    EXPECT_TRUE(all[index]->isEnabled());
    EXPECT_EQ(all[index]->action().target.lock(), applications);
  }
}

TEST_F(ActiveApplicationsMenuTest, TheTitleNamesWhoIsInFrontWhenTheMenuIsMade) {
  const auto first = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  const auto early = items();
  platform.processes().bringToFront(first);
  EXPECT_EQ(early[0]->title(), "Hide All Applications Except Viewer");
  EXPECT_EQ(items()[0]->title(), "Hide All Applications Except Editor");
  open(ActivationMethodCorner);
  EXPECT_EQ(items()[0]->title(), "Hide All Applications Except Editor");
  platform.processes().bringToFront({});
  EXPECT_EQ(items()[0]->title(), "Hide All Applications");
}

TEST_F(ActiveApplicationsMenuTest, HideAllLeavesTheOneInFrontAndEndsThePanel) {
  const auto first = platform.processes().launch(editor);
  const auto finder = platform.processes().launch(files);
  const auto front = platform.processes().launchInFront(viewer);
  applications->numberOfItems();
  open(ActivationMethodCorner);
  choose("hideAllApplications");
  EXPECT_TRUE(isHidden(first));
  EXPECT_TRUE(isHidden(finder));
  EXPECT_FALSE(isHidden(front));
  platform.runFor(0.02);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_EQ(platform.processes().getFrontProcess(), front);
}

TEST_F(ActiveApplicationsMenuTest, WhatStaysIsWhoIsInFrontThenWhateverTheTitleSays) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(viewer);
  applications->numberOfItems();
  const auto early = items();
  ASSERT_EQ(early[0]->title(), "Hide All Applications Except Viewer");
  platform.processes().bringToFront(first);
  early[0]->performAction();
  EXPECT_FALSE(isHidden(first));
  EXPECT_TRUE(isHidden(second));
}

TEST_F(ActiveApplicationsMenuTest, AllInstancesOfABundleAreReached) {
  const auto first = platform.processes().launch(editor);
  const auto second = platform.processes().launch(editor);
  const auto third = platform.processes().launchInFront(editor);
  applications->numberOfItems();
  choose("hideAllApplications");
  EXPECT_TRUE(isHidden(first));
  EXPECT_TRUE(isHidden(second));
  EXPECT_FALSE(isHidden(third));
  choose("quitAllApplications");
  platform.runPending();
  EXPECT_FALSE(isRunning(first));
  EXPECT_FALSE(isRunning(second));
  EXPECT_FALSE(isRunning(third));
}

TEST_F(ActiveApplicationsMenuTest, QuitAllLeavesTheFileManagerAndAsksNothing) {
  const auto first = platform.processes().launch(editor);
  const auto finder = platform.processes().launch(files);
  const auto front = platform.processes().launchInFront(viewer);
  applications->numberOfItems();
  open(ActivationMethodCorner);
  choose("quitAllApplications");
  platform.runFor(0.02);
  EXPECT_FALSE(isRunning(first));
  EXPECT_TRUE(isRunning(finder));
  EXPECT_FALSE(isRunning(front));
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_THAT(platform.dialogs().shownAlerts(), IsEmpty());
}

TEST_F(ActiveApplicationsMenuTest, WhatHasNoBundleIsLeftAlone) {
  const auto clock = platform.processes().launch({"", "xclock", ""});
  const auto other = platform.processes().launch({"", "xeyes", "", false, true});
  platform.processes().launchInFront(viewer);
  applications->numberOfItems();
  choose("hideAllApplications");
  choose("quitAllApplications");
  platform.runPending();
  EXPECT_TRUE(isRunning(clock));
  EXPECT_FALSE(isHidden(clock));
  EXPECT_TRUE(isRunning(other));
}

TEST_F(ActiveApplicationsMenuTest, KeepingTheBackgroundHiddenIsExplainedAndSaved) {
  const auto saved = [this] {
    const auto file = platform.fileSystem().propertyList(settings().pathToSettingsFile());
    return file && file->objectForKey("ActiveApplicationsProviderHidesAllBackgroundApplications")
                       .boolValue();
  };
  platform.dialogs().answerAlert("OK");
  choose("hideBackgroundApplications");
  EXPECT_TRUE(settings().activeApplicationsProviderHidesAllBackgroundApplications());
  EXPECT_TRUE(saved());
  EXPECT_TRUE(items()[3]->state());
  ASSERT_THAT(platform.dialogs().shownAlerts(), SizeIs(1));
  const auto& alert = platform.dialogs().shownAlerts()[0];
  EXPECT_EQ(alert.messageText, "Keep Background Applications Hidden");
  EXPECT_EQ(alert.informativeText,
            "While this option is in effect, any Application-specific Auto-Hide settings are "
            "ignored and all Applications will be hidden when in the background.\r\rIf you turn "
            "this option off, the Application-specific Auto-Hide settings will again become "
            "effective.\r\rAlso, note that you can temporarily keep background Applications "
            "visible by holding down any modifier key.");
  EXPECT_THAT(alert.buttons, ElementsAre("OK"));

  choose("hideBackgroundApplications");
  EXPECT_FALSE(settings().activeApplicationsProviderHidesAllBackgroundApplications());
  EXPECT_FALSE(saved());
  EXPECT_FALSE(items()[3]->state());
  EXPECT_THAT(platform.dialogs().shownAlerts(), SizeIs(1));
}

TEST_F(ActiveApplicationsMenuTest, EntriesOutliveTheirProviderWithoutHarm) {
  const auto front = platform.processes().launchInFront(viewer);
  applications->numberOfItems();
  const auto early = items();
  applications.reset();
  early[1]->performAction();
  platform.runPending();
  EXPECT_TRUE(isRunning(front));
}

TEST_F(ActiveApplicationsMenuTest, ItsItemsLeaveTheProgramByNoDrag) {
  EXPECT_EQ(applications->dragOperationForDraggingSession(DraggingContext::OutsideApplication), 8);
  EXPECT_EQ(applications->dragOperationForDraggingSession(DraggingContext::WithinApplication), 8);
}

}  // namespace
}  // namespace qb::test
