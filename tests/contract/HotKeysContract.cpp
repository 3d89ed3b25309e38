#include <vector>

#include "ContractTest.h"
#include "Platform/HotKeys.h"
#include "QuillboxCommon/Log.h"

namespace qb {
namespace {

using ::testing::ElementsAre;

class HotKeysContract : public ContractTest {
 protected:
  HotKeysContract() {
    platform_.hotKeys().installEventHandler([this](const HotKeyPress& press) {
      pressed_.push_back(press.id);
      repeats_ += press.isRepeat ? 1 : 0;
      return true;
    });
  }
  std::unique_ptr<HotKeys::Registration> registerTab(std::uint32_t modifiers, HotKeyID id) {
    return platform_.hotKeys().registerEventHotKey(KeyCodeTab, modifiers, id);
  }

  const HotKeyID first_{fourCharacterCode("QBt1"), 1};
  const HotKeyID second_{fourCharacterCode("QBt2"), 2};
  std::vector<HotKeyID> pressed_;
  int repeats_ = 0;
};

TEST_F(HotKeysContract, APressComesHereAndNotToTheClient) {
  const ProcessSerialNumber client = desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
  ASSERT_TRUE(typeMarker(client));
  EXPECT_THAT(pressed_, ElementsAre(first_));
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeTab).keyDowns, 0);
  EXPECT_EQ(desktop_->keysReceived(client, KeyCodeTab).keyUps, 0);
}

TEST_F(HotKeysContract, TheModifiersMustBeExactlyThose) {
  const ProcessSerialNumber client = desktop_->startClient();
  const auto plain = registerTab(HotKeyModifierOption, first_);
  const auto shifted = registerTab(HotKeyModifierOption | HotKeyModifierShift, second_);
  ASSERT_TRUE(plain && shifted);
  typeKey(KeyCodeTab, {KeyCodeLeftOption, KeyCodeLeftShift});
  typeKey(KeyCodeTab, {KeyCodeLeftOption, KeyCodeLeftControl});
  typeKey(KeyCodeTab);
  ASSERT_TRUE(typeMarker(client));
  EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
  EXPECT_THAT(pressed_, ElementsAre(second_));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 2);
}

TEST_F(HotKeysContract, TheRightHandModifiersServeAsWell) {
  desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierCommand, first_);
  ASSERT_TRUE(registration);
  typeKey(KeyCodeTab, {KeyCodeRightCommand});
  EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
}

TEST_F(HotKeysContract, CapsLockDoesNotMatter) {
  desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  typeKey(KeyCodeCapsLock);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
  typeKey(KeyCodeCapsLock);
}

TEST_F(HotKeysContract, AnAutoRepeatComesToo) {
  desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  desktop_->pressKey(KeyCodeLeftOption);
  desktop_->pressKey(KeyCodeTab);
  desktop_->repeatKey(KeyCodeTab);
  EXPECT_TRUE(waitUntil([&] { return pressed_.size() >= 2; }));
  EXPECT_EQ(repeats_, static_cast<int>(pressed_.size()) - 1);
  desktop_->releaseKey(KeyCodeTab);
  desktop_->releaseKey(KeyCodeLeftOption);
}

TEST_F(HotKeysContract, WhatAnotherProgramHoldsIsFoundOut) {
  HotKeys& hotKeys = platform_.hotKeys();
  EXPECT_FALSE(hotKeys.isHeldByAnotherProgram(KeyCodeTab, HotKeyModifierOption));
  desktop_->takeHotKeyElsewhere(KeyCodeTab, HotKeyModifierOption);
  EXPECT_TRUE(hotKeys.isHeldByAnotherProgram(KeyCodeTab, HotKeyModifierOption));
  EXPECT_FALSE(
      hotKeys.isHeldByAnotherProgram(KeyCodeTab, HotKeyModifierOption | HotKeyModifierShift));
  EXPECT_FALSE(hotKeys.isHeldByAnotherProgram(KeyCodeTab, HotKeyModifierCommand));
  EXPECT_FALSE(hotKeys.isHeldByAnotherProgram(KeyCodeX, HotKeyModifierOption));
}

TEST_F(HotKeysContract, WhatThisProcessHoldsIsNotAnothers) {
  desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  EXPECT_FALSE(platform_.hotKeys().isHeldByAnotherProgram(KeyCodeTab, HotKeyModifierOption));
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
}

TEST_F(HotKeysContract, AKeyThatTheKeyboardLacksIsNobodys) {
  EXPECT_FALSE(platform_.hotKeys().isHeldByAnotherProgram(0xff, HotKeyModifierCommand));
}

TEST_F(HotKeysContract, FindingOutLeavesNothingHeld) {
  const ProcessSerialNumber client = desktop_->startClient();
  EXPECT_FALSE(platform_.hotKeys().isHeldByAnotherProgram(KeyCodeTab, HotKeyModifierOption));
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
  EXPECT_TRUE(pressed_.empty());
}

TEST_F(HotKeysContract, OfTwoRegistrationsOfOneCombinationTheFirstStays) {
  desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  EXPECT_FALSE(registerTab(HotKeyModifierOption, second_));
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  EXPECT_TRUE(waitUntil([&] { return !pressed_.empty(); }));
  EXPECT_THAT(pressed_, ElementsAre(first_));
}

TEST_F(HotKeysContract, ADroppedRegistrationGivesTheKeyBack) {
  const ProcessSerialNumber client = desktop_->startClient();
  auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  registration.reset();
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_EQ(keyDowns(client, KeyCodeTab), 1);
  EXPECT_TRUE(pressed_.empty());
  EXPECT_TRUE(registerTab(HotKeyModifierOption, second_));
}

TEST_F(HotKeysContract, ACombinationOfAnotherProgramIsRefusedAndLogged) {
  struct CountingSink : LogSink {
    CountingSink() : previous(logSink()) { setLogSink(this); }
    ~CountingSink() override { setLogSink(previous); }
    void write(std::string_view) override { ++entries; }
    bool standardErrorIsTerminal() const override { return false; }
    LogSink* previous;
    int entries = 0;
  };
  desktop_->takeHotKeyElsewhere(KeyCodeTab, HotKeyModifierOption);
  const CountingSink sink;
  EXPECT_FALSE(registerTab(HotKeyModifierOption, first_));
  EXPECT_EQ(sink.entries, 1);
  const auto other = registerTab(HotKeyModifierOption | HotKeyModifierShift, second_);
  EXPECT_TRUE(other);
  EXPECT_EQ(sink.entries, 1);
}

TEST_F(HotKeysContract, AKeyThatTheTapSwallowsIsNoHotKeyPress) {
  const ProcessSerialNumber client = desktop_->startClient();
  const auto registration = registerTab(HotKeyModifierOption, first_);
  ASSERT_TRUE(registration);
  TapRules rules{{{KeyCodeTab, EventFlagOption, 0}}, false};
  ASSERT_TRUE(platform_.eventTap().create([&rules](const TappedEvent& event) {
    return !rules.swallows(event.type, event.keyCode, event.flags);
  }));
  platform_.eventTap().addToRunLoop(RunLoopMode::Default);
  platform_.eventTap().setRules(rules);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  ASSERT_TRUE(typeMarker(client));
  EXPECT_TRUE(pressed_.empty());
  rules = {};
  platform_.eventTap().setRules(rules);
  typeKey(KeyCodeTab, {KeyCodeLeftOption});
  EXPECT_TRUE(waitUntil([&] { return pressed_.size() == 1; }));
}

TEST_F(HotKeysContract, FourCharactersMakeOneValue) {
  EXPECT_EQ(fourCharacterCode("QB11"), 0x51423131U);
}

}  // namespace
}  // namespace qb
