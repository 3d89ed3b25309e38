// The rows that open on Command-Tab and Option-Tab, and the questions that come with choosing them.

#include "Quillbox/rows/DefaultTabRows.h"

#include <gmock/gmock.h>

#include "Platform/Scripts.h"
#include "Quillbox/activation/Settings.h"
#include "support/HostViewFixture.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class DefaultTabRowsTest : public HostViewFixture {
 protected:
  void SetUp() override {
    makeRows({2, 2});
    makeDefaults(0, 0);
  }
  DefaultTabRows& defaults() { return host().defaultTabRows(); }
  /// Takes the row of applications away.
  void deleteApplications() { host().deleteTabRow(*host().getActiveApplicationsTabRow()); }
  const std::vector<SimulatedDialogs::ShownAlert>& alerts() {
    return platform.dialogs().shownAlerts();
  }
  std::vector<bool> commandFlags() const {
    std::vector<bool> flags;
    for (const auto& row : host().tabRows()) flags.push_back(row->isDefaultCommandTabRow());
    return flags;
  }
  std::vector<bool> optionFlags() const {
    std::vector<bool> flags;
    for (const auto& row : host().tabRows()) flags.push_back(row->isDefaultOptionTabRow());
    return flags;
  }
};

TEST_F(DefaultTabRowsTest, OneRowIsTheDefaultForEachKey) {
  const auto saved = host().stateChanged().generation();
  defaults().setAsCommandTabDefaultSelected(*rows[1]);
  EXPECT_THAT(commandFlags(), ElementsAre(false, true, false));
  EXPECT_THAT(optionFlags(), ElementsAre(true, false, false));
  EXPECT_EQ(host().stateChanged().generation(), saved + 1);
  defaults().setAsOptionTabDefaultSelected(*rows[1]);
  EXPECT_THAT(commandFlags(), ElementsAre(false, true, false));
  EXPECT_THAT(optionFlags(), ElementsAre(false, true, false));
  EXPECT_EQ(host().stateChanged().generation(), saved + 2);
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(DefaultTabRowsTest, DeselectingGivesTheDefaultBackToTheApplications) {
  const auto saved = host().stateChanged().generation();
  defaults().setAsCommandTabDefaultDeselected();
  EXPECT_THAT(commandFlags(), ElementsAre(false, false, true));
  EXPECT_THAT(optionFlags(), ElementsAre(true, false, false));
  defaults().setAsOptionTabDefaultDeselected();
  EXPECT_THAT(optionFlags(), ElementsAre(false, false, true));
  EXPECT_EQ(host().stateChanged().generation(), saved + 2);
  EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(DefaultTabRowsTest, WithoutApplicationsTheCommandTabDefaultStaysWithAMessage) {
  deleteApplications();
  const auto saved = host().stateChanged().generation();
  platform.dialogs().answerAlert("OK");
  defaults().setAsCommandTabDefaultDeselected();
  EXPECT_THAT(commandFlags(), ElementsAre(true, false));
  EXPECT_EQ(host().stateChanged().generation(), saved);
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts()[0].messageText, "Unable to Change");
  EXPECT_EQ(alerts()[0].informativeText,
            "This Tab Row cannot be de-selected as the default Command-Tab Tab Row because you "
            "have no Active Applications Tab Row to set the default back to.");
}

TEST_F(DefaultTabRowsTest, WithoutApplicationsTheOptionTabDefaultStaysWithAMessage) {
  deleteApplications();
  platform.dialogs().answerAlert("OK");
  defaults().setAsOptionTabDefaultDeselected();
  EXPECT_THAT(optionFlags(), ElementsAre(true, false));
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts()[0].messageText, "Unable to Change");
  EXPECT_EQ(alerts()[0].informativeText,
            "This Tab Row cannot be de-selected as the default Option-Tab Tab Row because you have "
            "no Active Applications Tab Row to set the default back to.");
}

TEST_F(DefaultTabRowsTest, WithoutAccessTheUserIsAskedToGrantIt) {
  platform.accessibility().setTrusted(false);
  platform.dialogs().answerAlert("Not Now");
  defaults().setAsCommandTabDefaultSelected(*rows[1]);
  EXPECT_THAT(commandFlags(), ElementsAre(false, true, false));
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts()[0].messageText, "Quillbox Access");
  EXPECT_EQ(alerts()[0].informativeText,
            "Command-Tab activation of Quillbox requires that you grant Quillbox accessibility "
            "access in System Preferences.  Would you like to grant access now?");
  EXPECT_THAT(alerts()[0].buttons, ElementsAre("Open System Preferences...", "Not Now"));
  EXPECT_EQ(alerts()[0].escapeButton, "Not Now");
  platform.runFor(0.3);
  EXPECT_THAT(platform.scripts().executed(), IsEmpty());
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(DefaultTabRowsTest, OnAnEarlySystemTheQuestionSpeaksOfAssistiveDevices) {
  platform.applicationControl().setOperatingSystemVersionString("Version 10.8.5 (Build 12F45)");
  platform.accessibility().setTrusted(false);
  platform.dialogs().answerAlert("Not Now");
  defaults().setAsCommandTabDefaultSelected(*rows[1]);
  ASSERT_THAT(alerts(), SizeIs(1));
  EXPECT_EQ(alerts()[0].messageText, "Quillbox Access");
  EXPECT_EQ(alerts()[0].informativeText,
            "Command-Tab activation of Quillbox requires that access to Assistive Devices be "
            "enabled.  Would you like to enable this access now?");
  EXPECT_THAT(alerts()[0].buttons, ElementsAre("Open Accessibility...", "Not Now"));
}

TEST_F(DefaultTabRowsTest, GrantingGoesToTheSettingsWithHelpInPlaceOfThePanel) {
  open(ActivationMethodCorner);
  platform.accessibility().setTrusted(false);
  platform.dialogs().answerAlert("Open System Preferences...");
  defaults().setAsCommandTabDefaultSelected(*rows[1]);
  platform.dialogs().answerAlert("OK");
  platform.runFor(0.5);
  EXPECT_EQ(appDelegate->state(), ActivationStateInactive);
  EXPECT_THAT(platform.scripts().executed(), SizeIs(1));
  ASSERT_THAT(alerts(), SizeIs(2));
  EXPECT_EQ(alerts()[1].messageText, "Enable Access");
  EXPECT_THAT(alerts()[1].informativeText, testing::HasSubstr("Please grant acccess"));
}

TEST_F(DefaultTabRowsTest, WithoutAccessNobodyIsAskedAboutCommandTabItself) {
  platform.accessibility().setTrusted(false);
  settings().setApplicationActivatesOnCommandTab(false);
  platform.dialogs().answerAlert("Not Now");
  defaults().setAsCommandTabDefaultSelected(*rows[1]);
  EXPECT_THAT(alerts(), SizeIs(1));
  EXPECT_FALSE(settings().applicationActivatesOnCommandTab());
}

TEST_F(DefaultTabRowsTest, AKeyThatIsOffIsOffered) {
  struct Case {
    const char* title;
    const char* text;
    const char* button;
    void (DefaultTabRows::*select)(TabRow&);
    void (Settings::*setOn)(bool);
    bool (Settings::*isOn)() const;
    const char* savedKey;
  };
  const Case cases[] = {
      {"Command-Tab Activation",
       "Quillbox is not currently configured to activate upon pressing Command-Tab.  Would you "
       "like to enable Command-Tab Activation now?",
       "Enable Command-Tab", &DefaultTabRows::setAsCommandTabDefaultSelected,
       &Settings::setApplicationActivatesOnCommandTab, &Settings::applicationActivatesOnCommandTab,
       "ActivatesOnCommandTab"},
      {"Option-Tab Activation",
       "Quillbox is not currently configured to activate upon pressing Option-Tab.  Would you like "
       "to enable Option-Tab Activation now?",
       "Enable Option-Tab", &DefaultTabRows::setAsOptionTabDefaultSelected,
       &Settings::setApplicationActivatesOnOptionTab, &Settings::applicationActivatesOnOptionTab,
       "ActivatesOnOptionTab"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.title);
    (settings().*one.setOn)(false);
    platform.dialogs().answerAlert("Not Now");
    (defaults().*one.select)(*rows[1]);
    EXPECT_FALSE((settings().*one.isOn)());
    const auto& alert = alerts().back();
    EXPECT_EQ(alert.messageText, one.title);
    EXPECT_EQ(alert.informativeText, one.text);
    EXPECT_THAT(alert.buttons, ElementsAre(one.button, "Not Now"));
    EXPECT_EQ(alert.escapeButton, "Not Now");

    platform.dialogs().answerAlert(one.button);
    (defaults().*one.select)(*rows[1]);
    EXPECT_TRUE((settings().*one.isOn)());
    const auto saved = platform.fileSystem().propertyList(settings().pathToSettingsFile());
    ASSERT_TRUE(saved);
    EXPECT_TRUE(saved->objectForKey(one.savedKey).boolValue());
    EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
  }
}

TEST_F(DefaultTabRowsTest, OptionTabNeedsNoAccess) {
  platform.accessibility().setTrusted(false);
  defaults().setAsOptionTabDefaultSelected(*rows[1]);
  EXPECT_THAT(alerts(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
