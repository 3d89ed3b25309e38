#include "QuillboxCommon/AllocationManager.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/RecordingLog.h"
#include "support/VirtualHost.h"

namespace qb {
namespace {

using Entries = std::vector<std::string>;

const std::string head =
    "\r\n\r\n-------------------------- Displaying Allocations -----------------------\r\n";
const std::string foot =
    "-------------------------------------------------------------------------\r\n";

class AllocationManagerTest : public testing::Test {
 protected:
  AllocationManagerTest() { AllocationManager::reset(); }
  ~AllocationManagerTest() override { AllocationManager::reset(); }

  test::VirtualHost host_;
  RunLoop loop_{host_};
  test::RecordingLog log_;
};

TEST_F(AllocationManagerTest, CountsByClass) {
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::registerAllocationOfClass("TabRow");
  AllocationManager::registerDeallocationOfClass("Item");
  EXPECT_EQ(AllocationManager::countForClass("Item"), 1);
  EXPECT_EQ(AllocationManager::countForClass("TabRow"), 1);
}

TEST_F(AllocationManagerTest, ADeallocationNeverCountedLeavesNoEntry) {
  AllocationManager::registerDeallocationOfClass("Item");
  EXPECT_EQ(AllocationManager::countForClass("Item"), -1);
}

TEST_F(AllocationManagerTest, NoCountGoesBelowZero) {
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::registerDeallocationOfClass("Item");
  AllocationManager::registerDeallocationOfClass("Item");
  EXPECT_EQ(AllocationManager::countForClass("Item"), 0);
}

TEST_F(AllocationManagerTest, AMissingClassIsIgnored) {
  AllocationManager::registerAllocationOfClass("");
  AllocationManager::registerDeallocationOfClass("");
  AllocationManager::registerIntendedSingletonClass("");
  AllocationManager::allocationCountForClass("", 3);
  EXPECT_EQ(AllocationManager::countForClass(""), -1);
  AllocationManager::displayAllocations();
  EXPECT_EQ(log_.entries, Entries{head + foot});
}

TEST_F(AllocationManagerTest, DisplaysLiveClassesInOrder) {
  AllocationManager::registerAllocationOfClass("TabRow");
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::registerAllocationOfClass("Gone");
  AllocationManager::registerDeallocationOfClass("Gone");
  AllocationManager::displayAllocations();
  EXPECT_EQ(log_.entries, Entries{head + "Item: 2\rTabRow: 1\r" + foot});
}

TEST_F(AllocationManagerTest, TellsOfSingletonsThatAreNot) {
  for (const char* name : {"Settings", "Quillbox"}) {
    AllocationManager::registerIntendedSingletonClass(name);
    AllocationManager::registerAllocationOfClass(name);
  }
  AllocationManager::registerAllocationOfClass("Settings");
  AllocationManager::displayAllocations();
  EXPECT_EQ(log_.entries,
            (Entries{head + "Quillbox: 1\rSettings: 2\r" + foot,
                     "Allocation Manager: \r\nSingleton Class 'Settings' has 2 instances "
                     "allocated."}));
}

TEST_F(AllocationManagerTest, TellsOfUnexpectedCounts) {
  AllocationManager::allocationCountForClass("Item", 1);
  AllocationManager::allocationCountForClass("TabRow", 1);
  AllocationManager::allocationCountForClass("Gone", 2);
  AllocationManager::allocationCountForClass("NeverCounted", 2);
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::registerAllocationOfClass("TabRow");
  AllocationManager::registerAllocationOfClass("TabRow");
  AllocationManager::registerAllocationOfClass("Gone");
  AllocationManager::registerDeallocationOfClass("Gone");
  AllocationManager::displayAllocations();
  EXPECT_EQ(log_.entries,
            (Entries{head + "Item: 1\rTabRow: 2\r" + foot,
                     "There are 0 instances of Gone while there should only be 2.  If you just "
                     "made a change that caused this, undo it",
                     "There are 2 instances of TabRow while there should only be 1.  If you just "
                     "made a change that caused this, undo it"}));
}

TEST_F(AllocationManagerTest, ForAnEndUserNoTimerEverRuns) {
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::allocationCountForClass("Item", 1);
  EXPECT_EQ(host_.deadline(), distantFuture);
  host_.advance(30);
  EXPECT_TRUE(log_.entries.empty());
}

class AllocationManagerForDevelopersTest : public testing::Test {
 protected:
  AllocationManagerForDevelopersTest() { AllocationManager::reset(); }
  ~AllocationManagerForDevelopersTest() override { AllocationManager::reset(); }

  test::VirtualHost host_;
  RunLoop loop_{host_};
  test::RecordingLog log_{true};
};

TEST_F(AllocationManagerForDevelopersTest, DisplaysEveryThreeSecondsFromItsFirstUse) {
  AllocationManager::registerAllocationOfClass("Item");
  host_.advance(2.9);
  EXPECT_TRUE(log_.entries.empty());
  host_.advance(0.1);
  EXPECT_EQ(log_.entries, Entries{head + "Item: 1\r" + foot});
  host_.advance(6);
  EXPECT_EQ(log_.entries.size(), 3U);
}

TEST_F(AllocationManagerForDevelopersTest, ANewExpectationStartsTheThreeSecondsAnew) {
  AllocationManager::registerAllocationOfClass("Item");
  host_.advance(2);
  AllocationManager::allocationCountForClass("Item", 1);
  host_.advance(2.9);
  EXPECT_TRUE(log_.entries.empty());
  host_.advance(3.1);
  EXPECT_EQ(log_.entries.size(), 2U);
}

TEST_F(AllocationManagerForDevelopersTest, DroppingTheManagerEndsItsTimer) {
  AllocationManager::registerAllocationOfClass("Item");
  AllocationManager::reset();
  EXPECT_EQ(host_.deadline(), distantFuture);
}

}  // namespace
}  // namespace qb
