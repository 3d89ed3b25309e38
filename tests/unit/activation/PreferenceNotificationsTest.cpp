// What the preference program tells the running one.

#include "Quillbox/activation/PreferenceNotifications.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using ::testing::Each;

class PreferenceNotificationsTest : public ActivationFixture {
 protected:
  void post(const std::string& name,
            const std::string& object = "com.vorlane.quillboxPreferences") {
    platform.distributedNotifications().postFromAnotherProgram(name, object);
  }
  void write(PropertyList settings) {
    settings.setBool(true, "HasPerformedOneTimeStartUp");
    settings.setBool(true, "ActivatesOnCommandTab");
    platform.fileSystem().putPropertyList("~/Library/Preferences/com.vorlane.quillbox.settings",
                                          std::move(settings));
  }
  std::size_t visibleWindows() { return platform.windowServer().visibleWindows().size(); }
};

TEST_F(PreferenceNotificationsTest, ChangedSettingsCountAtOnce) {
  EXPECT_TRUE(platform.hotKeys().isRegistered(KeyCodeTab, HotKeyModifierOption));
  write(PropertyList::dictionary({{"ActivatesOnOptionTab", false},
                                  {"TwoPointOhSettingsHaveBeenSaved", true},
                                  {"MaxHostViewWidthPercent", 100}}));
  EXPECT_TRUE(settings().applicationActivatesOnOptionTab());
  post("Settings Changed");
  platform.runPending();
  EXPECT_FALSE(settings().applicationActivatesOnOptionTab());
  EXPECT_FALSE(platform.hotKeys().isRegistered(KeyCodeTab, HotKeyModifierOption));
  EXPECT_EQ(host().frame(), Rect::make(20, 20, 1400, 840));
}

TEST_F(PreferenceNotificationsTest, OtherObjectsAndNamesAreNotListenedTo) {
  write(PropertyList::dictionary({{"ActivatesOnOptionTab", false}}));
  post("Settings Changed", "com.vorlane.somethingElse");
  post("settings changed");
  platform.runPending();
  EXPECT_TRUE(settings().applicationActivatesOnOptionTab());
}

TEST_F(PreferenceNotificationsTest, NobodyListensAfterTheEnd) {
  EXPECT_EQ(platform.distributedNotifications().numberOfObservers(), 2U);
  appDelegate->applicationWillTerminate();
  EXPECT_EQ(platform.distributedNotifications().numberOfObservers(), 0U);
}

TEST_F(PreferenceNotificationsTest, FirstPreviewTellsHowToLeaveAndWaitsASecond) {
  post("Preview Quillbox");
  platform.schedule(0.5, [this] {
    EXPECT_FALSE(isActive());
    ASSERT_EQ(visibleWindows(), 1U);
    EXPECT_THAT(platform.windowServer().paint(*platform.windowServer().visibleWindows()[0]).texts(),
                Each(std::string("Press ESC to exit Preview")));
  });
  platform.runFor(0.99);
  ASSERT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCommandDoubleTap);
}

TEST_F(PreferenceNotificationsTest, NextPreviewWithinFiveMinutesComesAtOnce) {
  post("Preview Quillbox");
  platform.runFor(1.5);
  close();
  platform.runFor(297);
  post("Preview Quillbox");
  platform.runPending();
  EXPECT_TRUE(isActive());
}

TEST_F(PreferenceNotificationsTest, EveryPreviewProlongsTheFiveMinutes) {
  post("Preview Quillbox");
  platform.runFor(1.5);
  for (int i = 0; i < 2; ++i) {
    close();
    platform.runFor(200);
    post("Preview Quillbox");
    platform.runPending();
    EXPECT_TRUE(isActive());
  }
}

TEST_F(PreferenceNotificationsTest, PreviewAfterFiveMinutesWaitsAgain) {
  post("Preview Quillbox");
  platform.runFor(1.5);
  close();
  platform.runFor(300);
  bool wasActiveAtOnce = true;
  post("Preview Quillbox");
  platform.schedule(0.5, [&] { wasActiveAtOnce = isActive(); });
  platform.runFor(1.5);
  EXPECT_FALSE(wasActiveAtOnce);
  EXPECT_TRUE(isActive());
}

TEST_F(PreferenceNotificationsTest, SessionWithoutABusChangesNothingElse) {
  platform.distributedNotifications().setBusIsPresent(false);
  write(PropertyList::dictionary({{"ActivatesOnOptionTab", false}}));
  post("Settings Changed");
  platform.runFor(1);
  EXPECT_TRUE(settings().applicationActivatesOnOptionTab());
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_TRUE(isActive());
}

}  // namespace
}  // namespace qb::test
