// What becomes of keys at the tap.

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TappedKeysTest : public ActivationFixture {
 protected:
  /// The answers of the tap for one key, press before release: true for passed on.
  std::vector<bool> answersFor(std::uint16_t keyCode) {
    std::vector<bool> passed;
    for (const auto& answer : platform.eventTap().answers()) {
      if (answer.event.keyCode == keyCode) passed.push_back(answer.passedOn);
    }
    return passed;
  }
};

TEST_F(TappedKeysTest, CommandTabRaisesThePanelAndNeverReachesAClient) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCommandTab);
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
}

TEST_F(TappedKeysTest, CommandTabWithItsSettingOffIsNeitherSwallowedNorActedOn) {
  settings().setApplicationActivatesOnCommandTab(false);
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_FALSE(isActive());
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeTab));
}

TEST_F(TappedKeysTest, CommandTabWithAThirdModifierPassesWhileInactive) {
  for (const std::uint16_t third : {KeyCodeLeftControl, KeyCodeLeftOption}) {
    keyboard().clearReceived();
    keyboard().type(KeyCodeTab, {KeyCodeLeftCommand, third});
    platform.runPending();
    EXPECT_FALSE(isActive()) << third;
    EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeTab)) << third;
  }
}

TEST_F(TappedKeysTest, CommandTabWithAThirdModifierIsPlainTabWhileActive) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  ASSERT_EQ(selectedName(), "item0");
  keyboard().release(KeyCodeTab);
  for (const std::uint16_t third : {KeyCodeLeftControl, KeyCodeLeftOption}) {
    keyboard().press(third);
    tap(KeyCodeTab);
    keyboard().release(third);
  }
  EXPECT_EQ(selectedName(), "item2");
  // On this road a shift does not turn the step around.
  hold({KeyCodeLeftControl, KeyCodeLeftShift, KeyCodeTab});
  EXPECT_EQ(selectedName(), "item3");
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
}

TEST_F(TappedKeysTest, KeyUpOfASwallowedCommandTabIsSwallowedAndThatOfAnotherKeyIsNot) {
  keyboard().press(KeyCodeO);
  hold({KeyCodeLeftCommand, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  keyboard().release(KeyCodeO);
  EXPECT_THAT(answersFor(KeyCodeTab), ElementsAre(false, false));
  EXPECT_THAT(answersFor(KeyCodeO), ElementsAre(true, true));
}

TEST_F(TappedKeysTest, AutoRepeatOfTabStepsOnEachRepeat) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  ASSERT_EQ(selectedName(), "item0");
  for (const char* const expected : {"item1", "item2", "item3"}) {
    keyboard().repeat(KeyCodeTab);
    platform.runPending();
    EXPECT_EQ(selectedName(), expected);
  }
}

TEST_F(TappedKeysTest, FirstCommandTabStepsAtOnceWhenTheProviderWantsIt) {
  provider->takesInvocationTab = true;
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TappedKeysTest, FirstCommandTabLeavesTheInitialSelectionWhenTheProviderDoesNotWantIt) {
  provider->takesInvocationTab = false;
  hold({KeyCodeLeftCommand, KeyCodeTab});
  EXPECT_EQ(selectedName(), "item0");
}

TEST_F(TappedKeysTest, CommandShiftTabStepsBack) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  hold({KeyCodeLeftShift, KeyCodeTab});
  EXPECT_EQ(selectedName(), "item4");
}

TEST_F(TappedKeysTest, CommandShiftTabRaisesThePanelToo) {
  provider->takesInvocationTab = true;
  hold({KeyCodeLeftCommand, KeyCodeLeftShift, KeyCodeTab});
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodCommandTab);
  EXPECT_EQ(selectedName(), "item4");
}

TEST_F(TappedKeysTest, OptionTabComesByItsHotKeyAndIsNotTakenAtTheTap) {
  hold({KeyCodeLeftOption, KeyCodeTab});
  EXPECT_THAT(answersFor(KeyCodeTab), ElementsAre(true));
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodOptionTab);
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
}

TEST_F(TappedKeysTest, OptionShiftTabIsTakenAtTheTapAndStepsBack) {
  provider->takesInvocationTab = true;
  hold({KeyCodeLeftOption, KeyCodeLeftShift, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  EXPECT_THAT(answersFor(KeyCodeTab), ElementsAre(false, false));
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodOptionTab);
  EXPECT_EQ(selectedName(), "item4");
}

TEST_F(TappedKeysTest, OptionShiftTabComesByItsHotKeyWithoutATapAndStepsBackToo) {
  removeTap();
  provider->takesInvocationTab = true;
  hold({KeyCodeLeftOption, KeyCodeLeftShift, KeyCodeTab});
  EXPECT_TRUE(isActive());
  EXPECT_EQ(appDelegate->activationMethod(), ActivationMethodOptionTab);
  EXPECT_EQ(selectedName(), "item4");
}

TEST_F(TappedKeysTest, OptionShiftTabWithItsSettingOffPasses) {
  settings().setApplicationActivatesOnOptionTab(false);
  hold({KeyCodeLeftOption, KeyCodeLeftShift, KeyCodeTab});
  EXPECT_FALSE(isActive());
  EXPECT_THAT(keysReceivedByOthers(), ElementsAre(KeyCodeTab));
}

TEST_F(TappedKeysTest, NoKeyDownReachesAClientWhileThePanelIsUp) {
  open(ActivationMethodCorner);
  for (const std::uint16_t keyCode : {KeyCodeQ, KeyCodeH, KeyCodeReturn, KeyCodeLeft}) {
    keyboard().press(keyCode);
  }
  EXPECT_THAT(keysReceivedByOthers(), IsEmpty());
}

TEST_F(TappedKeysTest, WorkForAKeyWaitsForTheNextPass) {
  open(ActivationMethodCommandTab);
  keyboard().press(KeyCodeRight);
  EXPECT_EQ(selectedName(), "item0");
  platform.runPending();
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TappedKeysTest, AKeyDoesNotOvertakeATabThatWasPressedBefore) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  ASSERT_EQ(selectedName(), "item0");
  keyboard().release(KeyCodeTab);
  provider->itemLog->clear();
  keyboard().press(KeyCodeTab);
  keyboard().press(KeyCodeReturn);
  platform.runPending();
  EXPECT_THAT(*provider->itemLog, testing::Contains("item1: invoke"));
  platform.runFor(0.02);
  EXPECT_FALSE(isActive());
}

TEST_F(TappedKeysTest, AKeyDoesNotWaitForATabThatIsPressedAfterIt) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  keyboard().release(KeyCodeTab);
  provider->itemLog->clear();
  keyboard().press(KeyCodeReturn);
  keyboard().press(KeyCodeTab);
  platform.runPending();
  EXPECT_THAT(*provider->itemLog, testing::Contains("item0: invoke"));
}

TEST_F(TappedKeysTest, WorkForAKeyWaitsUntilAMenuHasClosed) {
  keyboard().press(KeyCodeLeftCommand);
  open(ActivationMethodCommandTab);
  {
    const RunLoop::ModeScope menu(platform.runLoop(), RunLoopMode::EventTracking);
    keyboard().press(KeyCodeRight);
    platform.runFor(1);
    EXPECT_EQ(selectedName(), "item0");
  }
  platform.runPending();
  EXPECT_EQ(selectedName(), "item1");
}

TEST_F(TappedKeysTest, OtherEventsPass) {
  open(ActivationMethodCommandTab);
  for (const EventType type : {EventTypeMouseMoved, EventTypeFlagsChanged, EventTypeScrollWheel,
                               EventTypeLeftMouseUp, EventTypeRightMouseUp}) {
    TappedEvent event;
    event.type = type;
    EXPECT_TRUE(appDelegate->tappedEventOccured(event)) << type;
  }
  platform.runFor(1);
}

// The rules.

TEST_F(TappedKeysTest, RulesFollowTheSettings) {
  const TapRules::Chord optionShiftTab{48, 0xa0000, 0x140000};
  const TapRules::Chord commandTab{48, 0x100000, 0xe0000};
  const TapRules::Chord commandShiftTab{48, 0x120000, 0xc0000};
  const struct {
    bool command, option;
    std::vector<TapRules::Chord> expected;
  } cases[] = {
      {true, true, {optionShiftTab, commandTab, commandShiftTab}},
      {true, false, {commandTab, commandShiftTab}},
      {false, true, {optionShiftTab}},
      {false, false, {}},
  };
  for (const auto& each : cases) {
    settings().setApplicationActivatesOnCommandTab(each.command);
    settings().setApplicationActivatesOnOptionTab(each.option);
    EXPECT_EQ(platform.eventTap().rules().chords, each.expected);
    EXPECT_FALSE(platform.eventTap().rules().everyKeyDown);
  }
}

TEST_F(TappedKeysTest, RulesTakeEveryKeyDownExactlyWhileThePanelIsUp) {
  EXPECT_FALSE(platform.eventTap().rules().everyKeyDown);
  open(ActivationMethodCommandDoubleTap);
  EXPECT_TRUE(platform.eventTap().rules().everyKeyDown);
  close();
  EXPECT_FALSE(platform.eventTap().rules().everyKeyDown);
}

TEST_F(TappedKeysTest, ThereAreNoRulesDuringUserInteraction) {
  open(ActivationMethodCommandDoubleTap);
  const TapRules before = platform.eventTap().rules();
  appDelegate->beginUserInteraction();
  EXPECT_EQ(platform.eventTap().rules(), TapRules{});
  appDelegate->endUserInteraction();
  EXPECT_EQ(platform.eventTap().rules(), before);
}

TEST_F(TappedKeysTest, ATapMadeAnewGetsTheRules) {
  open(ActivationMethodCommandDoubleTap);
  const TapRules before = platform.eventTap().rules();
  appDelegate->removeEventTaps();
  EXPECT_EQ(platform.eventTap().rules(), TapRules{});
  appDelegate->installEventTaps();
  EXPECT_EQ(platform.eventTap().rules(), before);
}

}  // namespace
}  // namespace qb::test
