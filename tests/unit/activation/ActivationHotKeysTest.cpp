#include "Quillbox/activation/ActivationHotKeys.h"

#include "support/ActivationFixture.h"

namespace qb {

void PrintTo(const SimulatedHotKeys::Entry& entry, std::ostream* out) {
  *out << "{key " << entry.keyCode << ", modifiers " << entry.modifiers << ", signature "
       << entry.id.signature << ", id " << entry.id.id << "}";
}

namespace test {
namespace {

using Entries = std::vector<SimulatedHotKeys::Entry>;

constexpr std::uint32_t command = 0x100, shift = 0x200, option = 0x800;

SimulatedHotKeys::Entry entry(std::uint32_t id, const char (&signature)[5], std::uint16_t keyCode,
                              std::uint32_t modifiers) {
  return {keyCode, modifiers, {fourCharacterCode(signature), id}};
}

Entries secondary(std::uint32_t modifier) {
  return {
      entry(1003, "QBb3", 126, modifier), entry(1002, "QBb4", 125, modifier),
      entry(1001, "QBb5", 123, modifier), entry(1000, "QBb6", 124, modifier),
      entry(1004, "QBb7", 0, modifier),   entry(1005, "QBb8", 6, modifier),
      entry(1006, "QBb9", 53, modifier),  entry(1011, "QB10", 49, modifier),
      entry(1009, "QB12", 50, option),    entry(13, "QB13", 13, option),
  };
}

class ActivationHotKeysTest : public ActivationFixture {
 protected:
  /// What is registered beyond what stood before.
  Entries added(const Entries& before) {
    Entries now = platform.hotKeys().registered();
    std::erase_if(now, [&before](const auto& each) {
      return std::find(before.begin(), before.end(), each) != before.end();
    });
    return now;
  }
  const Entries atLaunch = platform.hotKeys().registered();
};

TEST_F(ActivationHotKeysTest, CommandHAndOptionTabStandFromTheLaunchOn) {
  EXPECT_EQ(atLaunch,
            (Entries{entry(1007, "QBb1", 48, option), entry(1008, "QBb2", 48, option | shift),
                     entry(1012, "QB11", 4, command)}));
}

TEST_F(ActivationHotKeysTest, OptionTabFollowsItsSetting) {
  settings().setApplicationActivatesOnOptionTab(false);
  EXPECT_EQ(platform.hotKeys().registered(), (Entries{entry(1012, "QB11", 4, command)}));
  settings().setApplicationActivatesOnOptionTab(true);
  EXPECT_EQ(platform.hotKeys().registered().size(), 3U);
}

TEST_F(ActivationHotKeysTest, NavigationStandsExactlyAsLongAsAnActivationByAKey) {
  const struct {
    std::int32_t method;
    Entries expected;
  } cases[] = {
      {ActivationMethodCommandDoubleTap, {}},
      {ActivationMethodCommandTab, secondary(command)},
      {ActivationMethodOptionTab, secondary(option)},
      {ActivationMethodCorner, {}},
  };
  for (const auto& each : cases) {
    open(each.method);
    EXPECT_EQ(added(atLaunch), each.expected) << each.method;
    close();
    EXPECT_EQ(added(atLaunch), Entries{}) << each.method;
  }
}

TEST_F(ActivationHotKeysTest, NavigationIsNotInstalledForAMethodThatIsSwitchedOff) {
  settings().setApplicationActivatesOnCommandTab(false);
  appDelegate->installSecondaryHotKeysForActivationMethod(ActivationMethodCommandTab);
  EXPECT_EQ(added(atLaunch), Entries{});
  settings().setApplicationActivatesOnOptionTab(false);
  appDelegate->installSecondaryHotKeysForActivationMethod(ActivationMethodOptionTab);
  EXPECT_EQ(added(atLaunch), Entries{});
}

TEST_F(ActivationHotKeysTest, GroupsAreNotInstalledTwice) {
  appDelegate->installPrimaryHotKeysForOptionTabActivationMethod();
  appDelegate->installPrimaryHotKeys();
  EXPECT_EQ(platform.hotKeys().registered(), atLaunch);
  appDelegate->installSecondaryHotKeysForActivationMethod(ActivationMethodCommandTab);
  appDelegate->installSecondaryHotKeysForActivationMethod(ActivationMethodOptionTab);
  EXPECT_EQ(added(atLaunch), secondary(command));
  appDelegate->removeSecondaryHotKeys();
  appDelegate->removeSecondaryHotKeys();
  EXPECT_EQ(platform.hotKeys().registered(), atLaunch);
}

TEST_F(ActivationHotKeysTest, CombinationOfAnotherProgramIsLeftAndTheOthersStand) {
  settings().setApplicationActivatesOnOptionTab(false);
  platform.hotKeys().setOwnedByAnotherProgram(KeyCodeTab, option);
  settings().setApplicationActivatesOnOptionTab(true);
  EXPECT_FALSE(platform.hotKeys().isRegistered(KeyCodeTab, option));
  EXPECT_TRUE(platform.hotKeys().isRegistered(KeyCodeTab, option | shift));
  settings().setApplicationActivatesOnOptionTab(false);
  EXPECT_FALSE(platform.hotKeys().isRegistered(KeyCodeTab, option | shift));
}

TEST_F(ActivationHotKeysTest, EachIdHasItsAction) {
  const struct {
    std::int32_t id;
    const char* expected;
  } cases[] = {
      {1000, "item2"}, {1007, "item2"}, {1001, "item0"}, {1008, "item0"}, {1009, "item0"},
      {1002, "row 2"}, {1005, "row 2"}, {1003, "row 0"}, {1004, "row 0"}, {1010, "item1"},
      {1013, "item1"}, {999, "item1"},  {13, "item1"},
  };
  // The row in the middle of three is the default.
  host().createTabRowAtIndex(0, TestProvider::withItems(5), true);
  host().createTabRowAtIndex(2, TestProvider::withItems(5), true);
  for (const auto& each : cases) {
    open(ActivationMethodOptionTab);
    host().tabRows()[1]->setSelectedItem(provider->items().at(1), SelectionMethodProgram);
    appDelegate->processHotKeyActivation({each.id, ActivationMethodOptionTab});
    const TabRow& active = *host().activeTabRow();
    const std::string effect = active.index() == 1 ? active.selectedItem()->name()
                                                   : "row " + std::to_string(active.index());
    EXPECT_EQ(effect, each.expected) << each.id;
    close();
  }
}

TEST_F(ActivationHotKeysTest, SpacePreviewsTheSelectedItem) {
  open(ActivationMethodOptionTab);
  provider->item(0).isPreviewable = true;
  appDelegate->processHotKeyActivation({1011, ActivationMethodOptionTab});
  EXPECT_EQ(countOf(*provider->itemLog, "item0: preview"), 1);
}

TEST_F(ActivationHotKeysTest, OnlyIdsWithAnActionRaiseThePanel) {
  for (const std::int32_t id : {1006, 1010, 1012, 1013, 13, 999}) {
    appDelegate->processHotKeyActivation({id, ActivationMethodOptionTab});
    EXPECT_FALSE(isActive()) << id;
  }
  for (const std::int32_t id : {1000, 1001, 1002, 1003, 1004, 1005, 1007, 1008, 1009, 1011}) {
    appDelegate->processHotKeyActivation({id, ActivationMethodOptionTab});
    EXPECT_TRUE(isActive()) << id;
    close();
  }
}

TEST_F(ActivationHotKeysTest, HotKeysTravelAsOptionTabEvenWhenTheyCarryCommand) {
  removeTap();
  appDelegate->installSecondaryHotKeysForActivationMethod(ActivationMethodCommandTab);
  hold({KeyCodeLeftCommand, KeyCodeRight});
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodOptionTab);
}

TEST_F(ActivationHotKeysTest, HotKeysWithCommandStandStillWithoutOptionTab) {
  removeTap();
  settings().setApplicationActivatesOnOptionTab(false);
  open(ActivationMethodCommandTab);
  hold({KeyCodeLeftCommand, KeyCodeRight});
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(ActivationHotKeysTest, EscapeBringsThePreviousApplicationBackAfterAQuarterSecond) {
  removeTap();
  open(ActivationMethodOptionTab);
  hold({KeyCodeLeftOption, KeyCodeEscape});
  EXPECT_FALSE(isActive());
  platform.runFor(0.249);
  EXPECT_TRUE(frontProcessRequests().empty());
  platform.runFor(0.001);
  EXPECT_EQ(frontProcessRequests(), std::vector{editor});
}

TEST_F(ActivationHotKeysTest, OptionWDoesNothingHere) {
  removeTap();
  open(ActivationMethodOptionTab);
  hold({KeyCodeLeftOption, KeyCodeW});
  EXPECT_EQ(countOf(*provider->itemLog, "item0: close"), 0);
  EXPECT_TRUE(isActive());
}

TEST_F(ActivationHotKeysTest, EndOfTheProcessGivesCommandHBack) {
  appDelegate->applicationWillTerminate();
  EXPECT_FALSE(platform.hotKeys().isRegistered(KeyCodeH, command));
}

}  // namespace
}  // namespace test
}  // namespace qb
