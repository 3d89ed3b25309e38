#include "Quillbox/activation/shortcuts/MASShortcutStorage.h"

#include <gmock/gmock.h>

#include <memory>

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* path = "/home/user/Library/Preferences/com.vorlane.quillbox.hotkeys";

class MASShortcutStorageTest : public testing::Test {
 protected:
  SimulatedFileSystem& files() { return platform.fileSystem(); }

  SimulatedPlatform platform;
  MASShortcutStorage storage{platform.fileSystem(), platform.archiver()};
  const MASShortcut shortcut{17, EventFlagControl};
};

TEST_F(MASShortcutStorageTest, ItHasAFileOfItsOwn) { EXPECT_EQ(storage.path(), path); }

TEST_F(MASShortcutStorageTest, WithoutAFileItIsEmpty) {
  EXPECT_EQ(storage.storage(), PropertyList::dictionary());
  EXPECT_FALSE(storage.shortcutForKey("item"));
}

TEST_F(MASShortcutStorageTest, TheFileIsReadOnEveryCall) {
  files().putPropertyList(path, PropertyList::dictionary({{"one", 1}}));
  EXPECT_EQ(storage.storage(), PropertyList::dictionary({{"one", 1}}));
  files().putPropertyList(path, PropertyList::dictionary({{"two", 2}}));
  EXPECT_EQ(storage.storage(), PropertyList::dictionary({{"two", 2}}));
}

TEST_F(MASShortcutStorageTest, AnObjectIsAddedToWhatTheFileHoldsNow) {
  files().putPropertyList(path, PropertyList::dictionary({{"one", 1}}));
  EXPECT_TRUE(storage.setObject(2, "two"));
  EXPECT_EQ(files().propertyList(path), PropertyList::dictionary({{"one", 1}, {"two", 2}}));
  EXPECT_TRUE(storage.setObject(3, "two"));
  EXPECT_EQ(files().propertyList(path), PropertyList::dictionary({{"one", 1}, {"two", 3}}));
}

TEST_F(MASShortcutStorageTest, AnObjectIsRemoved) {
  files().putPropertyList(path, PropertyList::dictionary({{"one", 1}, {"two", 2}}));
  EXPECT_TRUE(storage.removeObjectForKey("one"));
  EXPECT_EQ(files().propertyList(path), PropertyList::dictionary({{"two", 2}}));
}

TEST_F(MASShortcutStorageTest, RemovingWhatIsNotThereChangesNothing) {
  int changes = 0;
  const Subscription watch = storage.addObserver([&](std::string_view) { ++changes; });
  EXPECT_TRUE(storage.removeObjectForKey("one"));
  EXPECT_FALSE(files().fileExistsAtPath(path));
  EXPECT_EQ(changes, 0);
}

TEST_F(MASShortcutStorageTest, AShortcutIsKeptAsData) {
  EXPECT_TRUE(storage.setShortcut(shortcut, "item"));
  EXPECT_EQ(files().propertyList(path)->objectForKey("item").kind(), PropertyList::Kind::Data);
  EXPECT_EQ(storage.shortcutForKey("item"), shortcut);
  EXPECT_FALSE(storage.shortcutForKey("other"));
  files().putPropertyList(path, PropertyList::dictionary({{"item", "text"}}));
  EXPECT_FALSE(storage.shortcutForKey("item"));
}

TEST_F(MASShortcutStorageTest, AnUnreadableFileCountsAsAbsentAndIsKeptAside) {
  files().putRaw(path, "damaged");
  EXPECT_EQ(storage.storage(), PropertyList::dictionary());
  EXPECT_EQ(files().raw(path), "damaged");
  EXPECT_TRUE(storage.setShortcut(shortcut, "item"));
  EXPECT_EQ(files().raw(std::string(path) + ".unreadable"), "damaged");
  EXPECT_EQ(storage.shortcutForKey("item"), shortcut);
}

TEST_F(MASShortcutStorageTest, AFailedWriteLeavesTheFileAndTellsNobody) {
  ASSERT_TRUE(storage.setObject(1, "one"));
  int changes = 0;
  const Subscription watch = storage.addObserver([&](std::string_view) { ++changes; });
  files().setWritesFail(true);
  EXPECT_FALSE(storage.setObject(2, "one"));
  EXPECT_FALSE(storage.removeObjectForKey("one"));
  EXPECT_EQ(files().propertyList(path), PropertyList::dictionary({{"one", 1}}));
  EXPECT_EQ(changes, 0);
}

TEST_F(MASShortcutStorageTest, AChangeIsPosted) {
  std::vector<std::string> posted;
  Subscription watch =
      storage.addObserver([&](std::string_view name) { posted.emplace_back(name); });
  storage.setObject(1, "one");
  EXPECT_THAT(posted, ElementsAre("NSMASShortcutStorageDidChangeNotification"));
  storage.removeObjectForKey("one");
  storage.sendChangedNotification();
  EXPECT_EQ(posted.size(), 3U);
  watch.cancel();
  posted.clear();
  storage.sendChangedNotification();
  EXPECT_THAT(posted, IsEmpty());
}

TEST_F(MASShortcutStorageTest, AnObserverMayLeaveMeanwhileOrOutliveTheStorage) {
  Subscription first, second;
  int calls = 0;
  first = storage.addObserver([&](std::string_view) {
    ++calls;
    first.cancel();
  });
  second = storage.addObserver([&](std::string_view) { ++calls; });
  storage.sendChangedNotification();
  storage.sendChangedNotification();
  EXPECT_EQ(calls, 3);
  auto other = std::make_unique<MASShortcutStorage>(platform.fileSystem(), platform.archiver());
  Subscription late = other->addObserver([](std::string_view) {});
  other.reset();
  late.cancel();
}

}  // namespace
}  // namespace qb::test
