#include "Quillbox/activation/Settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "PlatformSimulated/SimulatedPlatform.h"

namespace qb::test {
namespace {

using testing::ElementsAre;

constexpr const char* path = "/home/user/Library/Preferences/com.vorlane.quillbox.settings";

/// One key of the file: a way to read its property, its default and another value.
struct KeyCase {
  const char* key;
  std::function<PropertyList(const Settings&)> get;
  PropertyList byDefault;
  PropertyList other;
  enum Generation { Always, OnePointOne, TwoPointOh } generation;
};

PropertyList number(std::int64_t value) { return static_cast<long>(value); }

#define QB_FLAG(key, property, byDefault, generation)                                         \
  KeyCase {                                                                                   \
    key, [](const Settings& s) { return PropertyList(s.property()); }, byDefault, !byDefault, \
        KeyCase::generation                                                                   \
  }
#define QB_NUMBER(key, property, byDefault, other, generation)                                     \
  KeyCase {                                                                                        \
    key, [](const Settings& s) { return number(s.property()); }, number(byDefault), number(other), \
        KeyCase::generation                                                                        \
  }
#define QB_FLOAT(key, property, byDefault, generation)                                          \
  KeyCase {                                                                                     \
    key, [](const Settings& s) { return PropertyList(s.property()); }, PropertyList(byDefault), \
        PropertyList(0.75), KeyCase::generation                                                 \
  }

/// In the order of the file.
std::vector<KeyCase> keyCases() {
  return {
      QB_FLAG("ActivatesOnOptionTab", applicationActivatesOnOptionTab, true, Always),
      QB_FLAG("ActivatesOnCommandTab", applicationActivatesOnCommandTab, true, Always),
      QB_FLAG("ActivatesViaTopLeftCorner", applicationActivatesViaTopLeftCorner, false, Always),
      QB_FLAG("ActivatesViaTopRightCorner", applicationActivatesViaTopRightCorner, false, Always),
      QB_FLAG("ActivatesViaBottomLeftCorner", applicationActivatesViaBottomLeftCorner, false,
              Always),
      QB_FLAG("ActivatesViaBottomRightCorner", applicationActivatesViaBottomRightCorner, false,
              Always),
      QB_FLAG("ActivatesOnCommandKeyDoubleTap", applicationActivatesOnCommandKeyDoubleTap, false,
              Always),
      QB_FLAG("ActivatesViaLeftEdge", applicationActivatesViaLeftEdge, false, Always),
      QB_FLAG("ActivatesViaBottomEdge", applicationActivatesViaBottomEdge, false, Always),
      QB_FLAG("ActivatesViaRightEdge", applicationActivatesViaRightEdge, false, Always),
      QB_FLAG("HasPerformedOneTimeStartUp", applicationHasPerformedOneTimeStartUp, false, Always),
      QB_FLAG("OnePointOneSettingsHaveBeenSaved", onePointOneSettingsHaveBeenSaved, false, Always),
      QB_FLAG("KeepQuillboxActiveWhenMouseMovedWithCommandTabActivation",
              keepQuillboxActiveWhenMouseMovedWithCommandTabActivation, true, OnePointOne),
      QB_FLAG("KeepQuillboxActiveWhenMouseMovedWithOptionTabActivation",
              keepQuillboxActiveWhenMouseMovedWithOptionTabActivation, true, OnePointOne),
      QB_FLAG("KeepQuillboxActiveUponCommandTabActivation",
              keepQuillboxActiveUponCommandTabActivation, false, OnePointOne),
      QB_FLAG("KeepQuillboxActiveUponOptionTabActivation",
              keepQuillboxActiveUponOptionTabActivation, false, OnePointOne),
      QB_NUMBER("LowerTabRowItemHaloHeight", lowerTabRowItemHaloHeight, 50, 40, OnePointOne),
      QB_NUMBER("UpperTabRowItemHaloHeight", upperTabRowItemHaloHeight, 85, 90, OnePointOne),
      QB_FLOAT("TabRowColorRed", tabRowColorRed, 0.0, OnePointOne),
      QB_FLOAT("TabRowColorGreen", tabRowColorGreen, 0.0, OnePointOne),
      QB_FLOAT("TabRowColorBlue", tabRowColorBlue, 0.125, OnePointOne),
      QB_FLOAT("TabRowColorAlpha", tabRowColorAlpha, 0.5, OnePointOne),
      QB_FLAG("TwoPointOhSettingsHaveBeenSaved", twoPointOhSettingsHaveBeenSaved, false, Always),
      QB_FLAG("ActiveApplicationsProviderHidesAllBackgroundApplications",
              activeApplicationsProviderHidesAllBackgroundApplications, false, TwoPointOh),
      QB_FLAG("NotifyUserOfApplicationLaunch", notifyUserOfApplicationLaunch, true, TwoPointOh),
      QB_NUMBER("ClipboardManagerHistoryCaptureMode", clipboardManagerHistoryCaptureMode, 1, 2,
                TwoPointOh),
      QB_NUMBER("MaxHostViewWidthPercent", maxHostViewWidthPercent, 66, 80, TwoPointOh),
      QB_NUMBER("BackropBlurPercent", backdropBlurPercent, 0, 12, TwoPointOh),
      QB_FLOAT("BackdropColorRed", backdropColorRed, 0.0, TwoPointOh),
      QB_FLOAT("BackdropColorGreen", backdropColorGreen, 0.0, TwoPointOh),
      QB_FLOAT("BackdropColorBlue", backdropColorBlue, 0.0, TwoPointOh),
      QB_FLOAT("BackdropColorAlpha", backdropColorAlpha, 0.0, TwoPointOh),
  };
}

#undef QB_FLAG
#undef QB_NUMBER
#undef QB_FLOAT

class CountingDelegate : public SettingsDelegate {
 public:
  void settingsChanged() override { ++calls; }
  int calls = 0;
};

class SettingsTest : public testing::Test {
 protected:
  SimulatedFileSystem& files() { return platform.fileSystem(); }
  PropertyList written() {
    settings().save();
    return *files().propertyList(path);
  }
  /// Reads `file` anew.
  Settings& settingsOver(PropertyList file) {
    files().putPropertyList(path, std::move(file));
    settings_.reset();
    return settings();
  }
  Settings& settings() {
    if (!settings_) settings_ = std::make_unique<Settings>(platform.fileSystem());
    return *settings_;
  }

  SimulatedPlatform platform;

 private:
  std::unique_ptr<Settings> settings_;
};

TEST_F(SettingsTest, WithoutAFileDefaultsApply) {
  for (const KeyCase& each : keyCases()) {
    EXPECT_EQ(each.get(settings()), each.byDefault) << each.key;
  }
  EXPECT_EQ(settings().tabRowColor(), Color::colorWithCalibratedRed(0, 0, 0.125, 0.5));
  EXPECT_EQ(settings().backdropColor(), Color::colorWithCalibratedRed(0, 0, 0, 0));
  EXPECT_FALSE(settings().applicationActivationViaCornerIsInPlay());
  EXPECT_EQ(files().paths(), std::vector<std::string>{});
}

TEST_F(SettingsTest, FileLiesInTheUsersPreferences) {
  EXPECT_EQ(settings().pathToSettingsFile(), path);
}

TEST_F(SettingsTest, SavesAllKeysInOrder) {
  std::vector<std::string> expected, actual;
  for (const KeyCase& each : keyCases()) expected.emplace_back(each.key);
  const PropertyList file = written();
  for (const auto& entry : file.dictionaryValue()) actual.push_back(entry.key);
  EXPECT_EQ(actual, expected);
}

TEST_F(SettingsTest, SavesEachKindAsItsNumber) {
  const PropertyList file = written();
  EXPECT_EQ(file.objectForKey("ActivatesOnOptionTab"), PropertyList(true));
  EXPECT_EQ(file.objectForKey("UpperTabRowItemHaloHeight"), number(85));
  EXPECT_EQ(file.objectForKey("ClipboardManagerHistoryCaptureMode"), number(1));
  EXPECT_EQ(file.objectForKey("TabRowColorBlue"), PropertyList(0.125));
}

TEST_F(SettingsTest, SavingMarksTheGenerationsInMemoryAndFile) {
  const PropertyList file = written();
  EXPECT_TRUE(settings().onePointOneSettingsHaveBeenSaved());
  EXPECT_TRUE(settings().twoPointOhSettingsHaveBeenSaved());
  EXPECT_TRUE(file.boolForKey("OnePointOneSettingsHaveBeenSaved"));
  EXPECT_TRUE(file.boolForKey("TwoPointOhSettingsHaveBeenSaved"));
}

TEST_F(SettingsTest, ReadsEachKeyOfAPresentFile) {
  for (const KeyCase& each : keyCases()) {
    PropertyList file = PropertyList::dictionary(
        {{"OnePointOneSettingsHaveBeenSaved", true}, {"TwoPointOhSettingsHaveBeenSaved", true}});
    file.setObject(each.other, each.key);
    EXPECT_EQ(each.get(settingsOver(file)), each.other) << each.key;
  }
}

TEST_F(SettingsTest, IgnoresKeysOfAGenerationThatTheFileDoesNotMark) {
  for (const KeyCase& each : keyCases()) {
    if (each.generation == KeyCase::Always) continue;
    const char* otherMark = each.generation == KeyCase::OnePointOne
                                ? "TwoPointOhSettingsHaveBeenSaved"
                                : "OnePointOneSettingsHaveBeenSaved";
    PropertyList file = PropertyList::dictionary({{otherMark, true}});
    file.setObject(each.other, each.key);
    EXPECT_EQ(each.get(settingsOver(file)), each.byDefault) << each.key;
  }
}

TEST_F(SettingsTest, ColorInAFileWithoutTheMarkIsIgnored) {
  settingsOver(PropertyList::dictionary(
      {{"OnePointOneSettingsHaveBeenSaved", false}, {"TabRowColorBlue", 0.9}}));
  EXPECT_EQ(settings().tabRowColorBlue(), 0.125);
  EXPECT_EQ(settings().tabRowColor(), Color::colorWithCalibratedRed(0, 0, 0.125, 0.5));
}

TEST_F(SettingsTest, AbsentKeysOfAMarkedFileReadAsNothing) {
  settingsOver(PropertyList::dictionary(
      {{"OnePointOneSettingsHaveBeenSaved", true}, {"TwoPointOhSettingsHaveBeenSaved", true}}));
  EXPECT_FALSE(settings().applicationActivatesOnOptionTab());
  EXPECT_FALSE(settings().keepQuillboxActiveWhenMouseMovedWithCommandTabActivation());
  EXPECT_EQ(settings().tabRowColorBlue(), 0.0);
  EXPECT_EQ(settings().maxHostViewWidthPercent(), 0);
  EXPECT_EQ(settings().tabRowColorAlpha(), 0.25);
  EXPECT_EQ(settings().tabRowColor(), Color::colorWithCalibratedRed(0, 0, 0, 0.25));
  EXPECT_EQ(settings().lowerTabRowItemHaloHeight(), 30);
  EXPECT_EQ(settings().upperTabRowItemHaloHeight(), 30);
}

TEST_F(SettingsTest, LoadingMakesTheColorsAnew) {
  settingsOver(PropertyList::dictionary({{"OnePointOneSettingsHaveBeenSaved", true},
                                         {"TabRowColorRed", 0.5},
                                         {"TabRowColorAlpha", 0.75},
                                         {"TwoPointOhSettingsHaveBeenSaved", true},
                                         {"BackdropColorGreen", 0.25},
                                         {"BackdropColorAlpha", 0.125}}));
  EXPECT_EQ(settings().tabRowColor(), Color::colorWithCalibratedRed(0.5, 0, 0, 0.75));
  EXPECT_EQ(settings().backdropColor(), Color::colorWithCalibratedRed(0, 0.25, 0, 0.125));
}

TEST_F(SettingsTest, SavedFractionComesBackInSinglePrecision) {
  settings().setTabRowColorWithRed(0.33, 0, 0);
  settings().save();
  settings().load();
  EXPECT_EQ(settings().tabRowColorRed(), static_cast<double>(0.33F));
  EXPECT_NE(settings().tabRowColorRed(), 0.33);
}

TEST_F(SettingsTest, LoadingTakesHaloHeightsToTheirRange) {
  settingsOver(PropertyList::dictionary({{"OnePointOneSettingsHaveBeenSaved", true},
                                         {"LowerTabRowItemHaloHeight", 5},
                                         {"UpperTabRowItemHaloHeight", 900}}));
  EXPECT_EQ(settings().lowerTabRowItemHaloHeight(), 30);
  EXPECT_EQ(settings().upperTabRowItemHaloHeight(), 200);
}

TEST_F(SettingsTest, LoadingTakesOtherNumbersAsTheyStand) {
  settingsOver(PropertyList::dictionary({{"TwoPointOhSettingsHaveBeenSaved", true},
                                         {"MaxHostViewWidthPercent", 250},
                                         {"BackropBlurPercent", -3},
                                         {"BackdropColorRed", 7.5}}));
  EXPECT_EQ(settings().maxHostViewWidthPercent(), 250);
  EXPECT_EQ(settings().backdropBlurPercent(), -3);
  EXPECT_EQ(settings().backdropColorRed(), 7.5);
}

TEST_F(SettingsTest, WrongTypesAreCoerced) {
  settingsOver(PropertyList::dictionary({{"ActivatesOnOptionTab", "NO"},
                                         {"ActivatesOnCommandTab", 7},
                                         {"OnePointOneSettingsHaveBeenSaved", "yes"},
                                         {"UpperTabRowItemHaloHeight", "120 points"},
                                         {"TabRowColorRed", true}}));
  EXPECT_FALSE(settings().applicationActivatesOnOptionTab());
  EXPECT_TRUE(settings().applicationActivatesOnCommandTab());
  EXPECT_EQ(settings().upperTabRowItemHaloHeight(), 120);
  EXPECT_EQ(settings().tabRowColorRed(), 1.0);
}

TEST_F(SettingsTest, FileThatIsNoPropertyListGivesDefaultsAndIsKeptBesideTheNewOne) {
  files().putRaw(path, "not a property list");
  EXPECT_TRUE(settings().applicationActivatesOnOptionTab());
  settings().save();
  EXPECT_TRUE(files().propertyList(path).has_value());
  EXPECT_EQ(files().raw(std::string(path) + ".unreadable"), "not a property list");
}

TEST_F(SettingsTest, FailedWriteGoesUnreported) {
  files().setWritesFail(true);
  settings().save();
  EXPECT_FALSE(files().fileExistsAtPath(path));
  EXPECT_EQ(platform.log(), std::vector<std::string>{});
}

TEST_F(SettingsTest, LoadingAMissingFileKeepsPresentValues) {
  settings().setMaxHostViewWidthPercent(42);
  settings().load();
  EXPECT_EQ(settings().maxHostViewWidthPercent(), 42);
}

TEST_F(SettingsTest, AnyCornerOrEdgeAloneBringsTheCornersIntoPlay) {
  using Setter = void (Settings::*)(bool);
  for (const Setter setter : {&Settings::setApplicationActivatesViaTopLeftCorner,
                              &Settings::setApplicationActivatesViaTopRightCorner,
                              &Settings::setApplicationActivatesViaBottomLeftCorner,
                              &Settings::setApplicationActivatesViaBottomRightCorner,
                              &Settings::setApplicationActivatesViaLeftEdge,
                              &Settings::setApplicationActivatesViaBottomEdge,
                              &Settings::setApplicationActivatesViaRightEdge}) {
    (settings().*setter)(true);
    EXPECT_TRUE(settings().applicationActivationViaCornerIsInPlay());
    (settings().*setter)(false);
    EXPECT_FALSE(settings().applicationActivationViaCornerIsInPlay());
  }
}

TEST_F(SettingsTest, EdgeInTheFileBringsTheCornersIntoPlay) {
  settingsOver(PropertyList::dictionary({{"ActivatesViaRightEdge", true}}));
  EXPECT_TRUE(settings().applicationActivationViaCornerIsInPlay());
}

TEST_F(SettingsTest, HaloHeightSettersKeepToTheRange) {
  settings().setUpperTabRowItemHaloHeight(29);
  settings().setLowerTabRowItemHaloHeight(201);
  EXPECT_EQ(settings().upperTabRowItemHaloHeight(), 30);
  EXPECT_EQ(settings().lowerTabRowItemHaloHeight(), 200);
}

TEST_F(SettingsTest, TabRowAlphaIsAtLeastAQuarter) {
  settings().setTabRowColorAlpha(0.1);
  EXPECT_EQ(settings().tabRowColorAlpha(), 0.25);
  EXPECT_EQ(settings().tabRowColor(), Color::colorWithCalibratedRed(0, 0, 0.125, 0.25));
}

TEST_F(SettingsTest, ColorSettersMakeTheColorBeforeTheyNotify) {
  class ReadingDelegate : public SettingsDelegate {
   public:
    explicit ReadingDelegate(Settings& settings) : settings_(settings) {}
    void settingsChanged() override { seen = settings_.backdropColor(); }
    Color seen;

   private:
    Settings& settings_;
  };
  const auto delegate = std::make_shared<ReadingDelegate>(settings());
  settings().setDelegate(delegate);
  settings().setBackdropColorWithRed(0.25, 0.5, 0.75);
  EXPECT_EQ(delegate->seen, Color::colorWithCalibratedRed(0.25, 0.5, 0.75, 0));
  settings().setBackdropColorAlpha(0.5);
  EXPECT_EQ(delegate->seen, Color::colorWithCalibratedRed(0.25, 0.5, 0.75, 0.5));
}

TEST_F(SettingsTest, EverySetterNotifiesOnce) {
  const auto delegate = std::make_shared<CountingDelegate>();
  settings().setDelegate(delegate);
  Settings& s = settings();
  const std::vector<std::function<void()>> setters = {
      [&] { s.setApplicationActivatesOnOptionTab(false); },
      [&] { s.setApplicationActivatesOnCommandTab(false); },
      [&] { s.setApplicationActivatesOnCommandKeyDoubleTap(true); },
      [&] { s.setApplicationActivatesViaTopLeftCorner(true); },
      [&] { s.setApplicationActivatesViaTopRightCorner(true); },
      [&] { s.setApplicationActivatesViaBottomLeftCorner(true); },
      [&] { s.setApplicationActivatesViaBottomRightCorner(true); },
      [&] { s.setApplicationActivatesViaLeftEdge(true); },
      [&] { s.setApplicationActivatesViaBottomEdge(true); },
      [&] { s.setApplicationActivatesViaRightEdge(true); },
      [&] { s.setApplicationHasPerformedOneTimeStartUp(true); },
      [&] { s.setKeepQuillboxActiveWhenMouseMovedWithCommandTabActivation(false); },
      [&] { s.setKeepQuillboxActiveWhenMouseMovedWithOptionTabActivation(false); },
      [&] { s.setKeepQuillboxActiveUponCommandTabActivation(true); },
      [&] { s.setKeepQuillboxActiveUponOptionTabActivation(true); },
      [&] { s.setLowerTabRowItemHaloHeight(40); },
      [&] { s.setUpperTabRowItemHaloHeight(90); },
      [&] { s.setTabRowColorWithRed(1, 1, 1); },
      [&] { s.setTabRowColorAlpha(1); },
      [&] { s.setActiveApplicationsProviderHidesAllBackgroundApplications(true); },
      [&] { s.setNotifyUserOfApplicationLaunch(false); },
      [&] { s.setClipboardManagerHistoryCaptureMode(2); },
      [&] { s.setMaxHostViewWidthPercent(80); },
      [&] { s.setBackdropBlurPercent(12); },
      [&] { s.setBackdropColorWithRed(1, 1, 1); },
      [&] { s.setBackdropColorAlpha(1); },
  };
  int expected = 0;
  for (const auto& set : setters) {
    set();
    EXPECT_EQ(delegate->calls, ++expected);
  }
}

TEST_F(SettingsTest, ColorObjectsAndGenerationMarksAndLoadingNotifyNobody) {
  const auto delegate = std::make_shared<CountingDelegate>();
  settings().setDelegate(delegate);
  settings().setTabRowColor(Color::white());
  settings().setBackdropColor(Color::black());
  settings().setOnePointOneSettingsHaveBeenSaved(true);
  settings().setTwoPointOhSettingsHaveBeenSaved(true);
  settings().load();
  EXPECT_EQ(delegate->calls, 0);
  EXPECT_EQ(settings().tabRowColor(), Color::white());
  EXPECT_EQ(settings().backdropColor(), Color::black());
}

TEST_F(SettingsTest, SettersDoNotSave) {
  settings().setMaxHostViewWidthPercent(80);
  EXPECT_EQ(files().numberOfWrites(), 0);
}

TEST_F(SettingsTest, SharedSettingsAreOneObjectThatReadsTheFileOnEveryCall) {
  const auto first = Settings::sharedSettings(platform.fileSystem());
  files().putPropertyList(path, PropertyList::dictionary({{"ActivatesOnCommandTab", true}}));
  EXPECT_TRUE(first->applicationActivatesOnOptionTab());
  const auto second = Settings::sharedSettings(platform.fileSystem());
  EXPECT_EQ(first, second);
  EXPECT_FALSE(first->applicationActivatesOnOptionTab());
}

TEST_F(SettingsTest, LogsItsFlags) {
  settings().setApplicationActivatesViaTopRightCorner(true);
  settings().log();
  EXPECT_THAT(
      platform.log(),
      ElementsAre(
          "---------------- Settings --------------------", "applicationActivatesViaBottomEdge: 0",
          "applicationActivatesViaLeftEdge: 0", "applicationActivatesViaRightEdge: 0",
          "applicationActivatesViaTopLeftCorner: 0", "applicationActivatesViaTopRightCorner: 1",
          "applicationActivatesViaBottomLeftCorner: 0",
          "applicationActivatesViaBottomRightCorner: 0",
          "applicationActivatesOnCommandKeyDoubleTap: 0", "applicationActivatesOnCommandTab: 1",
          "applicationActivatesOnOptionTab: 1", "applicationActivationViaCornerIsInPlay: 1",
          "applicationHasPerformedOneTimeStartUp: 0"));
}

TEST_F(SettingsTest, OffersTwentyColors) {
  struct Offered {
    const char* name;
    double red, green, blue, alpha;
  };
  const std::vector<Offered> expected = {
      {"Quillbox Blue", 0.0, 0.0, 0.125, 0.5}, {"Neon Blue", 0.0, 0.0, 0.75, 0.5},
      {"Blue", 0.0, 0.0, 0.25, 0.5},           {"Dark Red", 0.25, 0.0, 0.0, 0.5},
      {"Neon Red", 1.0, 0.0, 0.0, 0.75},       {"Red", 0.75, 0.0, 0.0, 0.5},
      {"Dark Green", 0.0, 0.125, 0.0, 0.5},    {"Neon Green", 0.0, 0.75, 0.0, 0.5},
      {"Green", 0.0, 0.25, 0.0, 0.5},          {"Dark Orange", 0.55, 0.125, 0.0, 0.5},
      {"Neon Orange", 1.0, 0.33, 0.0, 0.5},    {"Orange", 0.75, 0.25, 0.0, 0.5},
      {"Dark Yellow", 0.5, 0.5, 0.0, 0.5},     {"Neon Yellow", 1.0, 1.0, 0.0, 0.5},
      {"Yellow", 0.75, 0.75, 0.0, 0.5},        {"Aqua", 0.0, 0.5, 0.5, 0.5},
      {"Purple", 0.5, 0.0, 0.5, 0.5},          {"Pink", 0.99, 0.46, 0.64, 0.5},
      {"Brown", 0.42, 0.32, 0.2, 0.5},         {"Black", 0.0, 0.0, 0.0, 0.5},
  };
  const auto offered = Settings::appearanceColors();
  ASSERT_EQ(offered.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(std::get<std::string>(offered[i].at("ColorName")), expected[i].name);
    EXPECT_EQ(std::get<Color>(offered[i].at("Color")),
              Color::colorWithCalibratedRed(expected[i].red, expected[i].green, expected[i].blue,
                                            expected[i].alpha))
        << expected[i].name;
  }
  EXPECT_EQ(std::get<Color>(offered[0].at(kColorKey)), settings().tabRowColor());
}

}  // namespace
}  // namespace qb::test
