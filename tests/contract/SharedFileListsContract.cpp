#include <algorithm>

#include "ContractTest.h"
#include "Platform/SharedFileLists.h"

namespace qb {
namespace {

class SharedFileListsContract : public ContractTest {
 protected:
  SharedFileLists& lists() { return platform_.sharedFileLists(); }
  std::vector<SharedFileListItem> applications() {
    return lists().snapshot(SharedFileList::RecentApplicationItems);
  }
  bool clientIsFirst() {
    return !applications().empty() && applications().front().path == desktop_->clientPath();
  }
};

TEST_F(SharedFileListsContract, AnApplicationThatIsStartedComesFirst) {
  desktop_->startClient();
  EXPECT_TRUE(waitUntil([&] { return clientIsFirst(); }));
  EXPECT_FALSE(applications().front().displayName.empty());
}

TEST_F(SharedFileListsContract, AnApplicationIsListedOnceAndStaysWhenItEnds) {
  const auto first = desktop_->startClient();
  desktop_->startClient();
  EXPECT_TRUE(waitUntil([&] { return clientIsFirst(); }));
  desktop_->stopClient(first);
  const auto all = applications();
  EXPECT_EQ(std::count_if(all.begin(), all.end(),
                          [&](const auto& item) { return item.path == desktop_->clientPath(); }),
            1);
}

TEST_F(SharedFileListsContract, ObserversHearOfAChangeForAsLongAsTheyLive) {
  int heard = 0, cancelled = 0;
  const Subscription observer =
      lists().addObserver(SharedFileList::RecentApplicationItems, [&] { ++heard; });
  Subscription other =
      lists().addObserver(SharedFileList::RecentApplicationItems, [&] { ++cancelled; });
  other.cancel();
  desktop_->startClient();
  EXPECT_TRUE(waitUntil([&] { return heard > 0; }));
  EXPECT_EQ(cancelled, 0);
}

}  // namespace
}  // namespace qb
