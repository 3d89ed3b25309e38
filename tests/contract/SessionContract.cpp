// What programs of one session share: notifications, pasteboards, defaults, login items, archives.

#include <algorithm>

#include "ContractTest.h"
#include "Platform/ApplicationControl.h"
#include "Platform/Archiver.h"
#include "Platform/DistributedNotifications.h"
#include "Platform/LoginItems.h"
#include "Platform/Pasteboards.h"
#include "Platform/UserDefaults.h"

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using SessionContract = ContractTest;

class NotificationsContract : public ContractTest {
 protected:
  DistributedNotifications& center() { return platform_.distributedNotifications(); }
  std::function<void()> note(const std::string& what) {
    return [this, what] { received_.push_back(what); };
  }
  /// Waits for a notification that is posted now: all that was posted before has come by then.
  bool catchUp() {
    bool came = false;
    const Subscription last = center().addObserver("last", "contract", [&] { came = true; });
    center().post("last", "contract");
    return waitUntil([&] { return came; });
  }
  std::vector<std::string> received_;
};

TEST_F(NotificationsContract, ObserversGetWhatHasTheirNameAndObject) {
  const Subscription both = center().addObserver("name", "object", note("both"));
  const Subscription anyObject = center().addObserver("name", "", note("any"));
  const Subscription other = center().addObserver("name", "other", note("other"));
  center().post("name", "object");
  center().post("Name", "object");
  ASSERT_TRUE(catchUp());
  EXPECT_THAT(received_, ::testing::UnorderedElementsAre("both", "any"));
}

TEST_F(NotificationsContract, NothingIsDeliveredBeforeThePostReturns) {
  const Subscription subscription = center().addObserver("name", "object", note("it"));
  ASSERT_TRUE(catchUp());
  center().post("name", "object");
  EXPECT_THAT(received_, IsEmpty());
  EXPECT_TRUE(waitUntil([&] { return !received_.empty(); }));
}

TEST_F(NotificationsContract, OrderIsKept) {
  const Subscription first = center().addObserver("first", "object", note("first"));
  const Subscription second = center().addObserver("second", "object", note("second"));
  for (int i = 0; i < 3; ++i) {
    center().post("first", "object");
    center().post("second", "object");
  }
  ASSERT_TRUE(catchUp());
  EXPECT_THAT(received_, ElementsAre("first", "second", "first", "second", "first", "second"));
}

TEST_F(NotificationsContract, EndedObservationHearsNothing) {
  Subscription subscription = center().addObserver("name", "object", note("it"));
  center().post("name", "object");
  subscription.cancel();
  ASSERT_TRUE(catchUp());
  EXPECT_THAT(received_, IsEmpty());
}

TEST_F(NotificationsContract, HandlerMayEndItsOwnObservation) {
  Subscription subscription;
  subscription = center().addObserver("name", "object", [&] {
    received_.push_back("once");
    subscription.cancel();
  });
  center().post("name", "object");
  center().post("name", "object");
  ASSERT_TRUE(catchUp());
  EXPECT_THAT(received_, ElementsAre("once"));
}

TEST_F(SessionContract, PasteboardKeepsDataByTypeUntilItIsCleared) {
  const auto pasteboard = platform_.pasteboards().pasteboardWithName("Contract/Name");
  const std::int64_t before = pasteboard->changeCount();
  EXPECT_EQ(pasteboard->clearContents(), before + 1);
  EXPECT_EQ(pasteboard->dataForType("a"), std::nullopt);
  EXPECT_TRUE(pasteboard->setData({1, 0, 255}, "a"));
  EXPECT_TRUE(pasteboard->setData({}, "b"));
  EXPECT_EQ(pasteboard->changeCount(), before + 1);
  const auto same = platform_.pasteboards().pasteboardWithName("Contract/Name");
  EXPECT_EQ(same->dataForType("a"), (PropertyList::Data{1, 0, 255}));
  EXPECT_EQ(same->dataForType("b"), PropertyList::Data{});
  EXPECT_EQ(same->clearContents(), before + 2);
  EXPECT_EQ(pasteboard->dataForType("a"), std::nullopt);
  EXPECT_EQ(pasteboard->changeCount(), before + 2);
}

TEST_F(SessionContract, PasteboardsOfDifferentNamesHaveNothingInCommon) {
  const auto one = platform_.pasteboards().pasteboardWithName("Contract A");
  const auto other = platform_.pasteboards().pasteboardWithName("Contract_A");
  one->clearContents();
  other->clearContents();
  EXPECT_TRUE(one->setData({1}, "type"));
  EXPECT_EQ(other->dataForType("type"), std::nullopt);
}

TEST_F(SessionContract, DefaultsKeepAndRemoveValuesAndTellOfIt) {
  UserDefaults& defaults = platform_.userDefaults();
  const auto generation = defaults.valuesChanged().generation();
  EXPECT_TRUE(defaults.objectForKey("contract").isNone());
  EXPECT_FALSE(defaults.boolForKey("contract"));
  defaults.setObject("a value", "contract");
  defaults.setObject(PropertyList::Date{500}, "contract date");
  EXPECT_EQ(defaults.objectForKey("contract"), PropertyList("a value"));
  EXPECT_EQ(defaults.objectForKey("contract date"), PropertyList(PropertyList::Date{500}));
  EXPECT_GT(defaults.valuesChanged().generation(), generation);
  defaults.setObject({}, "contract");
  EXPECT_TRUE(defaults.objectForKey("contract").isNone());
  defaults.setObject({}, "contract date");
}

TEST_F(SessionContract, DefaultsThatCannotBeSavedHoldForThisRun) {
  UserDefaults& defaults = platform_.userDefaults();
  defaults.setObject("saved", "contract");
  defaults.setObject("saved", "contract other");
  const auto generation = defaults.valuesChanged().generation();
  desktop_->setDiskIsFull(true);
  defaults.setObject("held", "contract");
  defaults.setObject({}, "contract other");
  desktop_->setDiskIsFull(false);
  EXPECT_GT(defaults.valuesChanged().generation(), generation);
  EXPECT_EQ(defaults.objectForKey("contract"), PropertyList("held"));
  EXPECT_TRUE(defaults.objectForKey("contract other").isNone());
  defaults.setObject(1, "contract third");
  EXPECT_EQ(defaults.objectForKey("contract"), PropertyList("held"));
  EXPECT_TRUE(defaults.objectForKey("contract other").isNone());
  for (const char* key : {"contract", "contract third"}) defaults.setObject({}, key);
}

TEST_F(SessionContract, LoginItemsComeAndGo) {
  LoginItems& items = platform_.loginItems();
  const auto present = items.snapshot();
  ASSERT_TRUE(items.insertItemLast("/opt/a folder/pro\"gram $1 100%"));
  const auto grown = items.snapshot();
  ASSERT_THAT(grown, SizeIs(present.size() + 1));
  const auto mine = std::find_if(grown.begin(), grown.end(), [](const auto& item) {
    return item.path == "/opt/a folder/pro\"gram $1 100%";
  });
  ASSERT_NE(mine, grown.end());
  EXPECT_TRUE(items.remove(*mine));
  EXPECT_FALSE(items.remove(*mine));
  EXPECT_EQ(items.snapshot(), present);
}

TEST_F(SessionContract, ArchivesAreReadAgainAndOtherBytesAreNone) {
  const PropertyList root = PropertyList::dictionary({{"yes", true}, {"text", "a < b"}});
  const auto data = platform_.archiver().archivedDataWithRootObject(root);
  EXPECT_EQ(platform_.archiver().unarchiveObjectWithData(data), root);
  EXPECT_EQ(platform_.archiver().unarchiveObjectWithData({1, 2, 3}), std::nullopt);
}

TEST_F(SessionContract, ProgramKnowsItself) {
  ApplicationControl& application = platform_.applicationControl();
  EXPECT_TRUE(application.bundlePath().starts_with("/"));
  EXPECT_FALSE(application.shortVersionString().empty());
  EXPECT_NE(application.operatingSystemVersionString().find("10.9"), std::string::npos);
  EXPECT_FALSE(application.humanReadableCopyright().empty());
  EXPECT_FALSE(application.textResource("LICENSE", "txt").empty());
  EXPECT_EQ(application.textResource("LICENSE", "none"), "");
  EXPECT_FALSE(application.openFile("/no such/file"));
  EXPECT_FALSE(application.launchAppWithBundleIdentifier("com.vorlane.none", 0));
}

}  // namespace
}  // namespace qb
