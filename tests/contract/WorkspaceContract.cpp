#include "ContractTest.h"
#include "Platform/Workspace.h"

namespace qb {
namespace {

class WorkspaceContract : public ContractTest {
 protected:
  Workspace& workspace() { return platform_.workspace(); }

  std::shared_ptr<RunningApplication> application(ProcessSerialNumber client) {
    for (const auto& running : workspace().runningApplications()) {
      if (running->processNumber() == client) return running;
    }
    return nullptr;
  }
  std::size_t instances() {
    return workspace()
        .runningApplicationsWithBundleIdentifier(desktop_->clientBundleIdentifier())
        .size();
  }
};

TEST_F(WorkspaceContract, RunningApplicationsAreThoseOfTheProcesses) {
  const ProcessSerialNumber client = desktop_->startClient();
  const auto running = application(client);
  ASSERT_TRUE(running);
  const auto information = platform_.processes().processInformation(client);
  ASSERT_TRUE(information);
  EXPECT_EQ(running->processIdentifier(), information->processIdentifier);
  EXPECT_EQ(running->bundleIdentifier(), information->bundleIdentifier);
  EXPECT_EQ(running->localizedName(), information->name);
  EXPECT_FALSE(running->isTerminated());
  EXPECT_FALSE(running->isHidden());
  EXPECT_TRUE(running->isActive());
}

TEST_F(WorkspaceContract, RunningApplicationsAreInOrderOfLaunch) {
  const ProcessSerialNumber first = desktop_->startClient();
  const ProcessSerialNumber second = desktop_->startClient();
  desktop_->bringClientToFront(first);
  const auto running =
      workspace().runningApplicationsWithBundleIdentifier(desktop_->clientBundleIdentifier());
  ASSERT_EQ(running.size(), 2U);
  EXPECT_EQ(running[0]->processNumber(), first);
  EXPECT_EQ(running[1]->processNumber(), second);
}

TEST_F(WorkspaceContract, ApplicationsAreFoundByProcessIdentifier) {
  const ProcessSerialNumber client = desktop_->startClient();
  const auto information = platform_.processes().processInformation(client);
  ASSERT_TRUE(information);
  const auto found =
      workspace().runningApplicationWithProcessIdentifier(information->processIdentifier);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->processNumber(), client);
  EXPECT_FALSE(workspace().runningApplicationWithProcessIdentifier(-1));
  EXPECT_TRUE(workspace().runningApplicationsWithBundleIdentifier("no.such.application").empty());
}

TEST_F(WorkspaceContract, ActivatingBringsForward) {
  const ProcessSerialNumber first = desktop_->startClient();
  const ProcessSerialNumber second = desktop_->startClient();
  ASSERT_TRUE(application(first));
  EXPECT_TRUE(application(first)->activateWithOptions(ApplicationActivateAllWindows |
                                                      ApplicationActivateIgnoringOtherApps));
  EXPECT_TRUE(waitForFront(first));
  EXPECT_TRUE(application(first)->isActive());
  EXPECT_FALSE(application(second)->isActive());
}

TEST_F(WorkspaceContract, HidingTakesOutOfFrontAndUnhidingShowsAgain) {
  const ProcessSerialNumber first = desktop_->startClient();
  const ProcessSerialNumber second = desktop_->startClient();
  const auto running = application(second);
  ASSERT_TRUE(running);
  EXPECT_TRUE(running->hide());
  EXPECT_TRUE(waitUntil([&] { return running->isHidden() && !running->isActive(); }));
  EXPECT_TRUE(waitForFront(first));
  EXPECT_TRUE(running->unhide());
  EXPECT_TRUE(waitUntil([&] { return !running->isHidden(); }));
}

TEST_F(WorkspaceContract, AHiddenApplicationShowsWhenBroughtForward) {
  const ProcessSerialNumber client = desktop_->startClient();
  desktop_->startClient();
  const auto running = application(client);
  ASSERT_TRUE(running);
  running->hide();
  ASSERT_TRUE(waitUntil([&] { return running->isHidden(); }));
  platform_.processes().setFrontProcess(client);
  EXPECT_TRUE(waitForFront(client));
  EXPECT_TRUE(waitUntil([&] { return !running->isHidden(); }));
}

TEST_F(WorkspaceContract, TerminatingEndsTheInstanceAloneAndItThenAnswersNothing) {
  const auto running = application(desktop_->startClient());
  desktop_->startClient();
  ASSERT_TRUE(running);
  EXPECT_TRUE(running->terminate());
  EXPECT_TRUE(waitUntil([&] { return running->isTerminated(); }));
  EXPECT_EQ(running->bundleIdentifier(), "");
  EXPECT_EQ(running->localizedName(), "");
  EXPECT_FALSE(running->isActive());
  EXPECT_FALSE(running->isHidden());
  EXPECT_FALSE(running->hide());
  EXPECT_FALSE(running->unhide());
  EXPECT_FALSE(running->activateWithOptions(0));
  EXPECT_FALSE(running->terminate());
  EXPECT_FALSE(running->forceTerminate());
  EXPECT_EQ(instances(), 1U);
}

TEST_F(WorkspaceContract, ForceTerminatingEndsIt) {
  const auto running = application(desktop_->startClient());
  ASSERT_TRUE(running);
  EXPECT_TRUE(running->forceTerminate());
  EXPECT_TRUE(waitUntil([&] { return running->isTerminated() && instances() == 0; }));
}

TEST_F(WorkspaceContract, TheMenuBarBelongsToTheFrontClient) {
  desktop_->startClient();
  const ProcessSerialNumber client = desktop_->startClient();
  ASSERT_TRUE(workspace().menuBarOwningApplication());
  EXPECT_EQ(workspace().menuBarOwningApplication()->processNumber(), client);
}

TEST_F(WorkspaceContract, ApplicationFilesHaveIdentifiers) {
  EXPECT_EQ(workspace().bundleIdentifierOfApplicationAtPath(desktop_->clientPath()),
            desktop_->clientBundleIdentifier());
  EXPECT_EQ(workspace().bundleIdentifierOfApplicationAtPath("/no/such/application"), "");
}

TEST_F(WorkspaceContract, ApplicationsAreFoundByTheirIdentifiersWhetherTheyRunOrNot) {
  const std::string identifier = desktop_->clientBundleIdentifier();
  EXPECT_EQ(workspace().pathForApplicationWithBundleIdentifier(identifier), desktop_->clientPath());
  desktop_->startClient();
  EXPECT_EQ(workspace().pathForApplicationWithBundleIdentifier(identifier), desktop_->clientPath());
  EXPECT_EQ(workspace().pathForApplicationWithBundleIdentifier("no.such.application"), "");
  EXPECT_EQ(workspace().pathForApplicationWithBundleIdentifier(""), "");
}

TEST_F(WorkspaceContract, ApplicationFilesHaveTheNamesThatTheirUsersKnow) {
  const auto running = application(desktop_->startClient());
  ASSERT_TRUE(running);
  EXPECT_EQ(workspace().localizedNameOfApplicationAtPath(desktop_->clientPath()),
            running->localizedName());
  EXPECT_EQ(workspace().localizedNameOfApplicationAtPath("/no/such/application"), "");
}

TEST_F(WorkspaceContract, LaunchingStartsAnApplicationInFront) {
  ASSERT_EQ(instances(), 0U);
  EXPECT_TRUE(workspace().launchApplicationAtPath(desktop_->clientPath(), 0, {}));
  EXPECT_TRUE(waitUntil([&] {
    const auto front =
        platform_.processes().processInformation(platform_.processes().getFrontProcess());
    return front && front->bundleIdentifier == desktop_->clientBundleIdentifier();
  }));
  EXPECT_EQ(instances(), 1U);
}

TEST_F(WorkspaceContract, LaunchingARunningApplicationBringsItForward) {
  const ProcessSerialNumber client = desktop_->startClient();
  application(client)->hide();
  ASSERT_TRUE(waitUntil([&] { return !application(client)->isActive(); }));
  EXPECT_TRUE(workspace().launchApplicationAtPath(desktop_->clientPath(), 0, {}));
  EXPECT_TRUE(waitForFront(client));
  EXPECT_EQ(instances(), 1U);
}

TEST_F(WorkspaceContract, LaunchingCanBeToldTheInstance) {
  const ProcessSerialNumber clients[] = {desktop_->startClient(), desktop_->startClient(),
                                         desktop_->startClient()};
  for (const ProcessSerialNumber client : clients) {
    EXPECT_TRUE(workspace().launchApplicationAtPath(desktop_->clientPath(), 0, {client}));
    EXPECT_TRUE(waitForFront(client));
  }
  EXPECT_EQ(instances(), 3U);
}

TEST_F(WorkspaceContract, WhatIsNoApplicationCannotBeLaunched) {
  EXPECT_FALSE(workspace().launchApplicationAtPath("/no/such/application", 0, {}));
  EXPECT_FALSE(workspace().launchApplicationAtPath("", 0, {}));
}

}  // namespace
}  // namespace qb
