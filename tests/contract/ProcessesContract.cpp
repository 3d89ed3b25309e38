#include <algorithm>
#include <vector>

#include "ContractTest.h"

namespace qb {
namespace {

using ::testing::Contains;
using ::testing::Not;

class ProcessesContract : public ContractTest {
 protected:
  Processes& processes() { return platform_.processes(); }

  std::vector<ProcessSerialNumber> enumeration() {
    std::vector<ProcessSerialNumber> all;
    std::optional<ProcessSerialNumber> next = processes().getNextProcess({});
    while (next) {
      all.push_back(*next);
      next = processes().getNextProcess(*next);
    }
    return all;
  }
};

TEST_F(ProcessesContract, ThisProcessIsOneOfTheProcesses) {
  const ProcessSerialNumber own = processes().getCurrentProcess();
  EXPECT_FALSE(own.isNull());
  EXPECT_THAT(enumeration(), Contains(own));
  EXPECT_TRUE(processes().processInformation(own));
}

TEST_F(ProcessesContract, EnumerationVisitsEachProcessOnceInAFixedOrder) {
  const ProcessSerialNumber first = desktop_->startClient();
  const ProcessSerialNumber second = desktop_->startClient();
  const auto all = enumeration();
  EXPECT_EQ(std::count(all.begin(), all.end(), first), 1);
  EXPECT_EQ(std::count(all.begin(), all.end(), second), 1);
  desktop_->bringClientToFront(first);
  EXPECT_EQ(enumeration(), all);
}

TEST_F(ProcessesContract, InformationTellsOfAClient) {
  const ProcessSerialNumber client = desktop_->startClient();
  const auto information = processes().processInformation(client);
  ASSERT_TRUE(information);
  EXPECT_EQ(information->processNumber, client);
  EXPECT_GT(information->processIdentifier, 0);
  EXPECT_EQ(information->bundleIdentifier, desktop_->clientBundleIdentifier());
  EXPECT_EQ(information->bundlePath, desktop_->clientPath());
  EXPECT_NE(information->name, "");
  EXPECT_FALSE(information->isBackgroundOnly);
  EXPECT_FALSE(information->isUIElement);
}

TEST_F(ProcessesContract, InstancesDifferInNumberAndIdentifierOnly) {
  const auto first = processes().processInformation(desktop_->startClient());
  const auto second = processes().processInformation(desktop_->startClient());
  ASSERT_TRUE(first && second);
  EXPECT_NE(first->processNumber, second->processNumber);
  EXPECT_NE(first->processIdentifier, second->processIdentifier);
  EXPECT_EQ(first->bundleIdentifier, second->bundleIdentifier);
  EXPECT_EQ(first->name, second->name);
}

TEST_F(ProcessesContract, AProcessThatHasGoneAnswersNothing) {
  const ProcessSerialNumber client = desktop_->startClient();
  desktop_->stopClient(client);
  EXPECT_THAT(enumeration(), Not(Contains(client)));
  EXPECT_FALSE(processes().processInformation(client));
  EXPECT_FALSE(processes().getNextProcess(client));
}

TEST_F(ProcessesContract, ANumberIsNeverGivenAgain) {
  std::vector<ProcessSerialNumber> seen;
  for (int start = 0; start < 3; ++start) {
    const ProcessSerialNumber client = desktop_->startClient();
    EXPECT_FALSE(client.isNull());
    EXPECT_THAT(seen, Not(Contains(client)));
    seen.push_back(client);
    desktop_->stopClient(client);
  }
}

TEST_F(ProcessesContract, TheFrontProcessIsTheOneThatItsUserSwitchedTo) {
  const ProcessSerialNumber first = desktop_->startClient();
  const ProcessSerialNumber second = desktop_->startClient();
  EXPECT_EQ(processes().getFrontProcess(), second);
  desktop_->bringClientToFront(first);
  EXPECT_EQ(processes().getFrontProcess(), first);
}

TEST_F(ProcessesContract, SetFrontProcessGivesTheKeyboard) {
  const ProcessSerialNumber first = desktop_->startClient();
  const ProcessSerialNumber second = desktop_->startClient();
  processes().setFrontProcess(first);
  EXPECT_TRUE(waitForFront(first));
  EXPECT_TRUE(typeMarker(first));
  EXPECT_EQ(keyDowns(second, markerKey), 0);
}

TEST_F(ProcessesContract, SetFrontProcessOfOneThatHasGoneChangesNothing) {
  const ProcessSerialNumber gone = desktop_->startClient();
  desktop_->stopClient(gone);
  const ProcessSerialNumber client = desktop_->startClient();
  processes().setFrontProcess(gone);
  EXPECT_TRUE(typeMarker(client));
  EXPECT_EQ(processes().getFrontProcess(), client);
}

TEST_F(ProcessesContract, ComingGoingAndSwitchingAreSignalled) {
  ChangeNotice& notice = processes().processesChanged();
  std::uint64_t before = notice.generation();
  const auto isSignalled = [&] { return notice.generation() != before; };

  const ProcessSerialNumber first = desktop_->startClient();
  EXPECT_TRUE(waitUntil(isSignalled));
  desktop_->startClient();
  before = notice.generation();
  desktop_->bringClientToFront(first);
  EXPECT_TRUE(waitUntil(isSignalled));
  before = notice.generation();
  desktop_->stopClient(first);
  EXPECT_TRUE(waitUntil(isSignalled));
}

}  // namespace
}  // namespace qb
