#include "PlatformSimulated/SimulatedPlatform.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace qb {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr RunLoopMode allModes[] = {RunLoopMode::Default, RunLoopMode::EventTracking,
                                    RunLoopMode::Graphics, RunLoopMode::ModalPanel,
                                    RunLoopMode::EventOnly};

class RecordingClient : public WindowPeerClient {
 public:
  void paint(Canvas& canvas, const Rect& dirty) override {
    painted.push_back(dirty);
    canvas.fill(Rect::make(0, 0, 10, 10), Color::white());
  }
  void deliver(const Event& event) override { events.push_back(event); }
  std::vector<Event> events;
  std::vector<Rect> painted;
};

class SimulatedPlatformTest : public ::testing::Test {
 protected:
  void createTap(bool answer) {
    ASSERT_TRUE(platform_.eventTap().create([answer](const TappedEvent&) { return answer; }));
    for (const RunLoopMode mode : allModes) platform_.eventTap().addToRunLoop(mode);
  }

  SimulatedPlatform platform_;
  const ProcessSerialNumber editor_ =
      platform_.processes().launchInFront({"org.editor", "Editor", "/apps/editor.desktop"});
};

// Time.

TEST_F(SimulatedPlatformTest, RunForMovesTheClockToEachDeadlineAndThenToTheEnd) {
  const Moment start = platform_.runLoop().now();
  std::vector<double> fired;
  platform_.runLoop().scheduleTimer(
      0.1, true, [&](RunLoopTimer&) { fired.push_back(platform_.runLoop().now() - start); });
  platform_.runFor(0.35);
  EXPECT_THAT(fired, ElementsAre(::testing::DoubleNear(0.1, 1e-6), ::testing::DoubleNear(0.2, 1e-6),
                                 ::testing::DoubleNear(0.3, 1e-6)));
  EXPECT_NEAR(platform_.runLoop().now() - start, 0.35, 1e-6);
}

TEST_F(SimulatedPlatformTest, SpansThatAddUpToADeadlineMeetIt) {
  bool fired = false;
  platform_.runLoop().performAfterDelay(this, "fire", 0.3, [&] { fired = true; });
  for (int step = 0; step < 3; ++step) platform_.runFor(0.1);
  EXPECT_TRUE(fired);
}

TEST_F(SimulatedPlatformTest, RunPendingPassesUntilNothingIsDueAndNoTimeGoesBy) {
  const Moment start = platform_.runLoop().now();
  int depth = 0;
  std::function<void()> next = [&] {
    if (++depth < 5) platform_.runLoop().performAfterDelay(this, "next", 0, next);
  };
  platform_.runLoop().performAfterDelay(this, "next", 0, next);
  platform_.runPending();
  EXPECT_EQ(depth, 5);
  EXPECT_EQ(platform_.runLoop().now(), start);
}

TEST_F(SimulatedPlatformTest, WhatHappensOutsideHappensInNestedRunsToo) {
  bool done = false;
  const Moment start = platform_.runLoop().now();
  platform_.schedule(0.5, [&] { done = true; });
  platform_.runLoop().runInMode(RunLoopMode::ModalPanel, [&] { return done; });
  EXPECT_NEAR(platform_.runLoop().now() - start, 0.5, 1e-6);
}

TEST_F(SimulatedPlatformTest, ANestedRunThatWaitsForNothingThrows) {
  EXPECT_THROW(platform_.runLoopHost().runUntil([] { return false; }), std::logic_error);
}

TEST_F(SimulatedPlatformTest, ANestedRunThatWaitsTooLongThrows) {
  platform_.runLoop().scheduleTimer(60, true, [](RunLoopTimer&) {});
  EXPECT_THROW(platform_.runLoopHost().runUntil([] { return false; }), std::logic_error);
}

TEST_F(SimulatedPlatformTest, TheWallClockIsSetAndGoesOn) {
  platform_.runLoopHost().setDate(1000);
  EXPECT_EQ(platform_.runLoop().date(), 1000);
  platform_.runFor(2);
  EXPECT_NEAR(platform_.runLoop().date(), 1002, 1e-6);
}

TEST_F(SimulatedPlatformTest, HeldBackgroundBlocksWait) {
  platform_.runLoopHost().holdBackgroundBlocks(true);
  bool ran = false;
  executeBlockInBackground([&] { ran = true; });
  platform_.runFor(1);
  EXPECT_FALSE(ran);
  EXPECT_EQ(platform_.runLoopHost().numberOfBackgroundBlocks(), 1U);
  platform_.runLoopHost().runBackgroundBlocks();
  EXPECT_TRUE(ran);
}

// The road of a key.

TEST_F(SimulatedPlatformTest, AKeyReachesTheFrontApplicationWithItsFlags) {
  platform_.keyboard().type(KeyCodeS, {KeyCodeLeftCommand, KeyCodeRightShift});
  constexpr EventFlags flags = EventFlagCommand | EventFlagShift;
  EXPECT_THAT(platform_.keyboard().frontApplicationReceived(),
              ElementsAre(SimulatedKeyboard::Received{editor_, EventTypeKeyDown, KeyCodeS, flags},
                          SimulatedKeyboard::Received{editor_, EventTypeKeyUp, KeyCodeS, flags}));
}

TEST_F(SimulatedPlatformTest, TheRulesDecideOnAKeyAndAnotherAnswerIsABreach) {
  createTap(false);
  platform_.keyboard().press(KeyCodeS);
  EXPECT_THAT(platform_.keyboard().frontApplicationReceived(), SizeIs(1));
  EXPECT_THAT(
      platform_.contractBreaches(),
      ElementsAre("key code 1, down, flags 0: the rules pass it, the callback swallowed it"));

  createTap(true);
  platform_.eventTap().setRules({{}, true});
  platform_.keyboard().press(KeyCodeD);
  EXPECT_THAT(platform_.keyboard().frontApplicationReceived(), SizeIs(1));
  ASSERT_THAT(platform_.contractBreaches(), SizeIs(2));
  EXPECT_EQ(platform_.contractBreaches().back(),
            "key code 2, down, flags 0: the rules swallow it, the callback passed it");
}

TEST_F(SimulatedPlatformTest, AKeyUpMayBeClaimedAgainstTheRules) {
  createTap(false);
  platform_.eventTap().setRules({{}, true});
  platform_.keyboard().type(KeyCodeS);
  EXPECT_THAT(platform_.contractBreaches(), IsEmpty());
}

TEST_F(SimulatedPlatformTest, ATapThatIsNotServedInTheModeSeesNothing) {
  ASSERT_TRUE(platform_.eventTap().create([](const TappedEvent&) { return true; }));
  platform_.eventTap().addToRunLoop(RunLoopMode::Default);
  const RunLoop::ModeScope scope(platform_.runLoop(), RunLoopMode::EventTracking);
  platform_.keyboard().press(KeyCodeS);
  EXPECT_THAT(platform_.eventTap().answers(), IsEmpty());
  EXPECT_THAT(platform_.keyboard().frontApplicationReceived(), SizeIs(1));
}

TEST_F(SimulatedPlatformTest, WithoutTrustThereIsNoTapAndNoRules) {
  platform_.accessibility().setTrusted(false);
  EXPECT_FALSE(platform_.eventTap().create([](const TappedEvent&) { return true; }));
  EXPECT_FALSE(platform_.eventTap().exists());
  platform_.eventTap().setRules({{}, true});
  platform_.keyboard().press(KeyCodeS);
  EXPECT_THAT(platform_.keyboard().frontApplicationReceived(), SizeIs(1));
}

TEST_F(SimulatedPlatformTest, ARevokedTrustDisablesTheTapForGood) {
  createTap(true);
  platform_.accessibility().setTrusted(false);
  EXPECT_TRUE(platform_.eventTap().exists());
  EXPECT_FALSE(platform_.eventTap().isEnabled());
  platform_.eventTap().enable(true);
  EXPECT_FALSE(platform_.eventTap().isEnabled());
  platform_.accessibility().setTrusted(true);
  EXPECT_FALSE(platform_.eventTap().isEnabled());
  platform_.eventTap().enable(true);
  EXPECT_TRUE(platform_.eventTap().isEnabled());
}

TEST_F(SimulatedPlatformTest, TheSystemCanDisableTheTap) {
  createTap(true);
  platform_.eventTap().disableBySystem();
  EXPECT_TRUE(platform_.eventTap().exists());
  EXPECT_FALSE(platform_.eventTap().isEnabled());
}

TEST_F(SimulatedPlatformTest, KeyUpsStayAwayFromAClientToo_WhileEveryKeyDownIsTaken) {
  ASSERT_TRUE(platform_.eventTap().create(
      [](const TappedEvent& event) { return event.type != EventTypeKeyDown; }));
  platform_.eventTap().addToRunLoop(RunLoopMode::Default);
  platform_.eventTap().setRules({{}, true});
  platform_.keyboard().type(KeyCodeS);
  EXPECT_THAT(platform_.keyboard().frontApplicationReceived(), IsEmpty());
  EXPECT_THAT(platform_.contractBreaches(), IsEmpty());
}

// Hot keys.

TEST_F(SimulatedPlatformTest, ACombinationOfAnotherProgramIsRefusedAndLogged) {
  platform_.hotKeys().setOwnedByAnotherProgram(KeyCodeTab,
                                               HotKeyModifierOption | HotKeyModifierShift);
  EXPECT_FALSE(platform_.hotKeys().registerEventHotKey(
      KeyCodeTab, HotKeyModifierOption | HotKeyModifierShift, {1, 1}));
  EXPECT_THAT(platform_.log(),
              ElementsAre("Hot key refused: another program has Option-Shift-key code 48"));
  EXPECT_THAT(platform_.hotKeys().registered(), IsEmpty());
}

TEST_F(SimulatedPlatformTest, RegisteredHotKeysAreListedInOrder) {
  const auto first =
      platform_.hotKeys().registerEventHotKey(KeyCodeH, HotKeyModifierCommand, {7, 1});
  auto second = platform_.hotKeys().registerEventHotKey(KeyCodeTab, HotKeyModifierOption, {8, 2});
  EXPECT_THAT(platform_.hotKeys().registered(),
              ElementsAre(SimulatedHotKeys::Entry{KeyCodeH, HotKeyModifierCommand, {7, 1}},
                          SimulatedHotKeys::Entry{KeyCodeTab, HotKeyModifierOption, {8, 2}}));
  second.reset();
  EXPECT_THAT(platform_.hotKeys().registered(), SizeIs(1));
  EXPECT_FALSE(platform_.hotKeys().isRegistered(KeyCodeTab, HotKeyModifierOption));
}

// Processes.

TEST_F(SimulatedPlatformTest, WhoWasInFrontBeforeComesWhenTheFrontOneGoesOrHides) {
  auto& processes = platform_.processes();
  const auto mail = processes.launchInFront({"org.mail", "Mail"});
  const auto chat = processes.launchInFront({"org.chat", "Chat"});
  processes.setHidden(chat, true);
  EXPECT_EQ(processes.getFrontProcess(), mail);
  processes.terminate(mail);
  EXPECT_EQ(processes.getFrontProcess(), editor_);
  processes.terminate(editor_);
  EXPECT_TRUE(processes.getFrontProcess().isNull());
}

TEST_F(SimulatedPlatformTest, ALaunchBehindDoesNotComeToTheFront) {
  platform_.processes().launch({"org.mail", "Mail"});
  EXPECT_EQ(platform_.processes().getFrontProcess(), editor_);
}

TEST_F(SimulatedPlatformTest, AProcessCanKeepItsInformationForAWhile) {
  platform_.processes().setInformationAvailable(editor_, false);
  EXPECT_FALSE(platform_.processes().processInformation(editor_));
  EXPECT_EQ(platform_.processes().getNextProcess(platform_.processes().getCurrentProcess()),
            editor_);
  platform_.processes().setInformationAvailable(editor_, true);
  EXPECT_TRUE(platform_.processes().processInformation(editor_));
}

TEST_F(SimulatedPlatformTest, ABroughtForwardOwnProcessMakesItsTopmostWindowKey) {
  RecordingClient client;
  const auto window = platform_.windowServer().createWindowPeer(client);
  const auto own = platform_.processes().getCurrentProcess();
  platform_.processes().setFrontProcess(own);
  EXPECT_EQ(platform_.processes().getFrontProcess(), editor_) << "there is no window to bring";
  window->orderFront();
  platform_.processes().setFrontProcess(own);
  EXPECT_EQ(platform_.processes().getFrontProcess(), own);
  EXPECT_THAT(platform_.processes().frontProcessRequests(), ElementsAre(own, own));
}

TEST_F(SimulatedPlatformTest, CommandsToApplicationsAreWrittenDown) {
  const auto running = platform_.workspace().runningApplicationsWithBundleIdentifier("org.editor");
  ASSERT_THAT(running, SizeIs(1));
  running[0]->activateWithOptions(3);
  platform_.workspace().launchApplicationAtPath("/apps/editor.desktop", 2, {editor_});
  platform_.workspace().launchApplicationAtPath("/none", 0, {});
  EXPECT_THAT(platform_.workspace().activations(),
              ElementsAre(SimulatedWorkspace::Activation{editor_, 3}));
  EXPECT_THAT(platform_.workspace().launches(),
              ElementsAre(SimulatedWorkspace::Launch{"/apps/editor.desktop", 2, editor_},
                          SimulatedWorkspace::Launch{"/none", 0, {}}));
}

TEST_F(SimulatedPlatformTest, OneThatRefusesToQuitCanBeForced) {
  platform_.processes().setRefusesToTerminate(editor_, true);
  const auto running = platform_.workspace().runningApplicationsWithBundleIdentifier("org.editor");
  ASSERT_THAT(running, SizeIs(1));
  EXPECT_TRUE(running[0]->terminate());
  platform_.runPending();
  EXPECT_FALSE(running[0]->isTerminated());
  EXPECT_TRUE(running[0]->forceTerminate());
  platform_.runPending();
  EXPECT_TRUE(running[0]->isTerminated());
}

TEST_F(SimulatedPlatformTest, OfSeveralInstancesTheLastLaunchedComesForward) {
  const auto second =
      platform_.processes().launch({"org.editor", "Editor", "/apps/editor.desktop"});
  platform_.workspace().launchApplicationAtPath("/apps/editor.desktop", 0, {});
  EXPECT_EQ(platform_.processes().getFrontProcess(), second);
}

// Windows, pointer and pictures.

TEST_F(SimulatedPlatformTest, AWindowKeepsItsHistory) {
  RecordingClient client;
  const auto window = platform_.windowServer().createWindowPeer(client);
  window->setLevel(5);
  window->setFrame(Rect::make(0, 0, 1440, 900));
  window->setContentAlphaValue(0.5);
  window->setOpaque(false);
  window->orderOut();
  EXPECT_THAT(platform_.windowServer().windows().front()->history(),
              ElementsAre("setLevel 5", "setFrame 0 0 1440 900", "setContentAlphaValue 0.5",
                          "setOpaque false", "orderOut"));
}

TEST_F(SimulatedPlatformTest, TheWindowThatWasKeyBeforeIsKeyAgain) {
  RecordingClient client;
  auto panel = platform_.windowServer().createWindowPeer(client);
  auto dialog = platform_.windowServer().createWindowPeer(client);
  panel->makeKeyAndOrderFront();
  dialog->makeKeyAndOrderFront();
  EXPECT_EQ(platform_.windowServer().keyWindow(), dialog.get());
  dialog.reset();
  EXPECT_EQ(platform_.windowServer().keyWindow(), panel.get());
  panel.reset();
  EXPECT_EQ(platform_.windowServer().keyWindow(), nullptr);
  EXPECT_EQ(platform_.processes().getFrontProcess(), editor_);
}

TEST_F(SimulatedPlatformTest, APressInAClientsWindowBringsItToTheFront) {
  const auto mail = platform_.processes().launchInFront({"org.mail", "Mail"});
  platform_.processes().setWindowFrame(mail, Rect::make(0, 0, 300, 300));
  platform_.processes().setWindowFrame(editor_, Rect::make(100, 100, 300, 300));
  platform_.pointer().moveTo({350, 350});
  platform_.pointer().click();
  EXPECT_EQ(platform_.processes().getFrontProcess(), editor_);
  platform_.pointer().moveTo({150, 150});
  platform_.pointer().press();
  EXPECT_EQ(platform_.pointer().clientReceived().back().process, editor_);
}

TEST_F(SimulatedPlatformTest, ADoubleClickIsTwoQuickPressesInOnePlace) {
  RecordingClient client;
  const auto window = platform_.windowServer().createWindowPeer(client);
  window->setFrame(Rect::make(0, 0, 500, 500));
  window->orderFront();
  platform_.pointer().moveTo({100, 100});
  platform_.pointer().click();
  platform_.runFor(0.4);
  platform_.pointer().press();
  EXPECT_EQ(client.events.back().clickCount, 2);
  platform_.pointer().release();
  platform_.runFor(0.6);
  platform_.pointer().press();
  EXPECT_EQ(client.events.back().clickCount, 1);
}

TEST_F(SimulatedPlatformTest, AWindowMayGoWhileAButtonIsDownInIt) {
  RecordingClient client;
  auto window = platform_.windowServer().createWindowPeer(client);
  window->setFrame(Rect::make(0, 0, 500, 500));
  window->orderFront();
  platform_.pointer().moveTo({100, 100});
  platform_.pointer().press();
  client.events.clear();
  window.reset();
  platform_.pointer().moveTo({110, 100});
  platform_.pointer().release();
  EXPECT_THAT(client.events, IsEmpty());
}

TEST_F(SimulatedPlatformTest, PaintingShowsTheContentsOpacity) {
  RecordingClient client;
  const auto window = platform_.windowServer().createWindowPeer(client);
  window->setFrame(Rect::make(0, 0, 100, 50));
  window->setContentAlphaValue(0.25);
  window->setNeedsDisplay(Rect::make(20, 20, 500, 10));
  auto& peer = *platform_.windowServer().windows().front();
  EXPECT_EQ(peer.dirtyRect(), Rect::make(20, 20, 80, 10));
  EXPECT_THAT(platform_.windowServer().paintDirty(peer).operations(), IsEmpty())
      << "what is drawn lies outside";
  EXPECT_EQ(peer.dirtyRect(), Rect{});
  const auto operations = platform_.windowServer().paint(peer).operations();
  ASSERT_THAT(operations, SizeIs(1));
  EXPECT_EQ(operations[0].alpha, 0.25);
  EXPECT_EQ(operations[0].rect, Rect::make(0, 0, 10, 10));
}

TEST_F(SimulatedPlatformTest, ARecordingIsInPlacesOfTheWindow) {
  RecordingCanvas canvas(Rect::make(0, 0, 100, 100));
  canvas.save();
  canvas.translate(10, 20);
  canvas.multiplyAlpha(0.5);
  canvas.translate(1, 2);
  canvas.multiplyAlpha(0.5);
  Path path;
  path.moveTo({1, 1});
  path.lineTo({2, 2});
  canvas.stroke(path, Color::black(), 3);
  canvas.clip(Rect::make(0, 0, 5, 5));
  EXPECT_FALSE(canvas.needsDrawing(Rect::make(6, 6, 5, 5)));
  canvas.fill(Rect::make(6, 6, 5, 5), Color::white());
  EXPECT_FALSE(canvas.isBalanced());
  canvas.restore();
  canvas.drawText("text", Rect::make(1, 1, 50, 20), {}, Color::black(), TextAlignmentCenter);
  EXPECT_TRUE(canvas.isBalanced());

  ASSERT_THAT(canvas.operations(), SizeIs(2));
  EXPECT_EQ(canvas.operations()[0].alpha, 0.25);
  EXPECT_EQ(canvas.operations()[0].path.elements()[0].point, (Point{12, 23}));
  EXPECT_EQ(canvas.operations()[1].rect, Rect::make(1, 1, 50, 20));
  EXPECT_EQ(canvas.operations()[1].alpha, 1);
  EXPECT_THAT(canvas.texts(), ElementsAre("text"));
}

TEST_F(SimulatedPlatformTest, TextHasFixedMeasures) {
  const Font font = Font::systemFontOfSize(10);
  EXPECT_EQ(platform_.graphics().measureText("four", font), (Size{20, 12}));
  EXPECT_EQ(platform_.graphics().measureText("\xe2\x82\xac\xc3\xa9", font), (Size{10, 12}));
  EXPECT_EQ(platform_.graphics().measureText("a\rbcd\nef", font), (Size{15, 12}));
}

TEST_F(SimulatedPlatformTest, ImagesAreKnownByName) {
  platform_.graphics().setImageMissing("none");
  platform_.graphics().setImageSize("wide", {40, 10});
  EXPECT_FALSE(platform_.graphics().imageNamed("none"));
  EXPECT_EQ(platform_.graphics().imageNamed("wide").size(), (Size{40, 10}));
  EXPECT_EQ(platform_.graphics().imageNamed("star"), platform_.graphics().imageNamed("star"));
  EXPECT_EQ(simulatedImageName(platform_.graphics().imageNamed("star")), "star");
  EXPECT_EQ(simulatedImageName({}), "");
}

TEST_F(SimulatedPlatformTest, HeldIconsWaitForTheirDelivery) {
  platform_.graphics().holdIcons(true);
  std::string name;
  const Image first = platform_.graphics().iconForFile(
      "/a", [&](const Image& image) { name = simulatedImageName(image); });
  EXPECT_EQ(simulatedImageName(first), "generic icon");
  platform_.runFor(1);
  EXPECT_EQ(name, "");
  platform_.graphics().deliverIcons();
  EXPECT_EQ(name, "icon:/a");
  EXPECT_EQ(simulatedImageName(platform_.graphics().iconForFile("/a", nullptr)), "icon:/a");
  EXPECT_EQ(platform_.graphics().numberOfIconRequests("/a"), 2);
}

TEST_F(SimulatedPlatformTest, DisplaysTellOfTheirChange) {
  int changes = 0;
  Subscription subscription =
      platform_.displays().registerReconfigurationCallback([&] { ++changes; });
  platform_.displays().setScreens({});
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(platform_.displays().primaryScreenFrame(), Rect{});
  subscription.cancel();
  platform_.displays().setScreens({{Rect::make(0, 0, 800, 600), Rect::make(0, 0, 800, 600), 1}});
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(platform_.displays().flipped({1, 2}), (Point{1, 598}));
}

// Files and the log.

TEST_F(SimulatedPlatformTest, WritesAreCountedAndCanFail) {
  auto& files = platform_.fileSystem();
  const PropertyList dictionary = PropertyList::dictionary({{"key", 1}});
  EXPECT_TRUE(files.writeToFile(dictionary, "/home/user/a.plist"));
  EXPECT_EQ(files.numberOfWrites("~/a.plist"), 1);
  files.setWritesFail(true);
  EXPECT_FALSE(files.writeToFile(PropertyList::dictionary(), "/home/user/a.plist"));
  EXPECT_EQ(files.numberOfWrites(), 1);
  EXPECT_EQ(files.propertyList("~/a.plist"), dictionary);
}

TEST_F(SimulatedPlatformTest, ARootThatIsNoDictionaryIsNone) {
  platform_.fileSystem().putPropertyList("~/a.plist", PropertyList::array());
  EXPECT_FALSE(platform_.fileSystem().dictionaryWithContentsOfFile("/home/user/a.plist"));
}

TEST_F(SimulatedPlatformTest, TheLogIsAList) {
  log("one\ntwo");
  log("three");
  EXPECT_THAT(platform_.log(), ElementsAre("one\ntwo", "three"));
  EXPECT_FALSE(logSink()->standardErrorIsTerminal());
  platform_.logSink().setStandardErrorIsTerminal(true);
  EXPECT_TRUE(logSink()->standardErrorIsTerminal());
}

}  // namespace
}  // namespace qb
