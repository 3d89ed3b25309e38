#include "Quillbox/Item/ApplicationItem.h"

#include "Quillbox/providers/Process.h"
#include "support/TabRowFixture.h"

namespace qb::test {
namespace {

const Rect cell = Rect::make(0, 0, 42, 42);
const SimulatedApplication editor{"org.editor", "Editor", "/apps/Editor.desktop"};
const SimulatedApplication viewer{"org.viewer", "Viewer", "/apps/Viewer.desktop"};
const SimulatedApplication finder{"com.apple.finder", "Files", "/apps/Files.desktop"};

class ApplicationItemTest : public TabRowFixture {
 protected:
  std::shared_ptr<ApplicationItem> itemFor(const SimulatedApplication& application) {
    return ApplicationItem::create(cell, application.bundleIdentifier, application.name,
                                   application.bundlePath);
  }
  std::shared_ptr<ApplicationItem> itemFor(const SimulatedApplication& application,
                                           ProcessSerialNumber number) {
    auto item = itemFor(application);
    auto process = std::make_shared<Process>();
    process->processNumber = number;
    item->setRepresentedObject(process);
    return item;
  }
};

TEST_F(ApplicationItemTest, IsAnApplication) {
  platform.workspace().install(editor);
  EXPECT_EQ(itemFor(editor)->type(), ItemTypeApplication);
  EXPECT_EQ(itemFor(editor)->bundleIdentifier(), "org.editor");
}

TEST_F(ApplicationItemTest, TakesNameAndIdentifierFromThePath) {
  platform.workspace().install(editor);
  const auto byPath = ApplicationItem::create(cell, editor.bundlePath);
  EXPECT_EQ(byPath->name(), "Editor");
  EXPECT_EQ(byPath->bundleIdentifier(), "org.editor");
  const auto named = ApplicationItem::create(cell, "Mine", "/apps/Editor.desktop");
  EXPECT_EQ(named->name(), "Mine");
  EXPECT_EQ(named->bundleIdentifier(), "org.editor");
}

TEST_F(ApplicationItemTest, RestoredFromSavedStateItHasNoIdentifier) {
  platform.workspace().install(editor);
  const auto restored = ApplicationItem::create(cell, itemFor(editor)->state());
  EXPECT_EQ(restored->path(), "/apps/Editor.desktop");
  EXPECT_EQ(restored->name(), "Editor");
  EXPECT_EQ(restored->bundleIdentifier(), "");
}

TEST_F(ApplicationItemTest, DuplicateIsAnApplication) {
  platform.workspace().install(editor);
  EXPECT_EQ(itemFor(editor)->duplicate()->type(), ItemTypeApplication);
}

TEST_F(ApplicationItemTest, InvokeBringsARunningApplicationForward) {
  const auto process = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  itemFor(editor)->invoke();
  platform.runPending();
  EXPECT_EQ(platform.processes().frontClient(), process);
  EXPECT_EQ(platform.workspace().launches(),
            (std::vector<SimulatedWorkspace::Launch>{{"/apps/Editor.desktop", 0, std::nullopt}}));
}

TEST_F(ApplicationItemTest, InvokeStartsOneThatDoesNotRun) {
  platform.workspace().install(editor);
  itemFor(editor)->invoke();
  platform.runPending();
  EXPECT_EQ(platform.workspace().runningApplicationsWithBundleIdentifier("org.editor").size(), 1U);
}

TEST_F(ApplicationItemTest, InvokeOfAMissingApplicationDoesNothing) {
  itemFor(editor)->invoke();
  platform.runPending();
  EXPECT_EQ(platform.workspace().launches().size(), 1U);
  EXPECT_TRUE(platform.workspace().runningApplicationsWithBundleIdentifier("org.editor").empty());
}

TEST_F(ApplicationItemTest, InvokeReachesJustTheProcessThatTheItemStandsFor) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(editor);
  platform.processes().launchInFront(viewer);
  itemFor(editor, first)->invoke();
  platform.runPending();
  EXPECT_EQ(platform.processes().frontClient(), first);
  itemFor(editor, second)->invoke();
  platform.runPending();
  EXPECT_EQ(platform.processes().frontClient(), second);
}

TEST_F(ApplicationItemTest, InvokeActivatesARunningFileManagerOverOthers) {
  const auto process = platform.processes().launch(finder);
  itemFor(finder)->invoke();
  EXPECT_EQ(platform.workspace().activations(),
            (std::vector<SimulatedWorkspace::Activation>{
                {process, ApplicationActivateIgnoringOtherApps}}));
  EXPECT_TRUE(platform.workspace().launches().empty());
}

TEST_F(ApplicationItemTest, InvokeLaunchesAFileManagerThatDoesNotRun) {
  platform.workspace().install(finder);
  itemFor(finder)->invoke();
  EXPECT_EQ(platform.workspace().launches().size(), 1U);
  EXPECT_TRUE(platform.workspace().activations().empty());
}

TEST_F(ApplicationItemTest, QuitAsksTheApplicationAndDimsTheItem) {
  const auto process = platform.processes().launchInFront(editor);
  const auto item = itemFor(editor);
  item->quit();
  EXPECT_EQ(item->view()->alphaValue(), 0.5);
  platform.runPending();
  EXPECT_FALSE(platform.processes().isRunning(process));
}

TEST_F(ApplicationItemTest, QuitSelectsTheNextItem) {
  platform.processes().launchInFront(editor);
  makeOpenRow(3);
  select(1);
  const auto item = itemFor(editor);
  item->setTabRow(row);
  item->quit();
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(ApplicationItemTest, QuitOfTheLastItemStaysThere) {
  platform.processes().launchInFront(editor);
  makeOpenRow(3);
  select(2);
  const auto item = itemFor(editor);
  item->setTabRow(row);
  item->quit();
  EXPECT_EQ(selectedName(), "item2");
}

TEST_F(ApplicationItemTest, QuitReachesJustTheProcessThatTheItemStandsFor) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(editor);
  itemFor(editor, second)->quit();
  platform.runPending();
  EXPECT_TRUE(platform.processes().isRunning(first));
  EXPECT_FALSE(platform.processes().isRunning(second));
}

TEST_F(ApplicationItemTest, QuitOfAProcessThatHasGoneSparesItsSiblings) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(editor);
  const auto item = itemFor(editor, second);
  platform.processes().terminate(second);
  item->quit();
  platform.runPending();
  EXPECT_TRUE(platform.processes().isRunning(first));
}

TEST_F(ApplicationItemTest, QuitLeavesTheFileManagerAlone) {
  const auto process = platform.processes().launchInFront(finder);
  const auto item = itemFor(finder);
  item->quit();
  platform.runPending();
  EXPECT_TRUE(platform.processes().isRunning(process));
  EXPECT_EQ(item->view()->alphaValue(), 1);
}

TEST_F(ApplicationItemTest, HideHidesJustTheProcessThatTheItemStandsFor) {
  const auto first = platform.processes().launchInFront(editor);
  const auto second = platform.processes().launchInFront(editor);
  itemFor(editor, first)->hide();
  EXPECT_TRUE(platform.processes().isHidden(first));
  EXPECT_FALSE(platform.processes().isHidden(second));
}

TEST_F(ApplicationItemTest, HideOfOneThatDoesNotRunDoesNothing) {
  platform.workspace().install(editor);
  const auto other = platform.processes().launchInFront(viewer);
  itemFor(editor)->hide();
  EXPECT_FALSE(platform.processes().isHidden(other));
}

}  // namespace
}  // namespace qb::test
