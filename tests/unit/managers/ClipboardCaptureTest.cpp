#include <gmock/gmock.h>

#include "QuillboxCommon/richtext/RichText.h"
#include "support/ClipboardFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

class ClipboardCaptureTest : public ClipboardFixture {
 protected:
  std::shared_ptr<RecordingClipboardClient> addClient(std::uint32_t wanted = 0,
                                                      std::int64_t maximum = 0) {
    auto client = std::make_shared<RecordingClipboardClient>(wanted, maximum);
    manager().addClient(client);
    return client;
  }
};

// What is recorded.

TEST_F(ClipboardCaptureTest, TheTypesAndModesHaveTheseValues) {
  EXPECT_EQ(ClipTypeText, 1);
  EXPECT_EQ(ClipTypeImage, 2);
  EXPECT_EQ(ClipTypeUnknown, 4);
  EXPECT_EQ(everyClipType, 0xFFFFFFFF);
  EXPECT_EQ(ClipboardCaptureForClients, 0);
  EXPECT_EQ(ClipboardCaptureAlways, 1);
}

TEST_F(ClipboardCaptureTest, ATextBecomesAFileOfItsTypeAndBytes) {
  copy(text("caf\xc3\xa9"));
  const auto all = names();
  ASSERT_THAT(all, SizeIs(1));
  EXPECT_THAT(
      all[0],
      MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\.textclip"));
  EXPECT_EQ(files().propertyList(path(all[0])),
            PropertyList::dictionary(
                {{"Type", "public.utf8-plain-text"}, {"Data", dataOf("caf\xc3\xa9")}}));
}

TEST_F(ClipboardCaptureTest, EachTypeIsATextOrAnImage) {
  const struct {
    const char* type;
    const char* extension;
  } cases[] = {
      {"com.apple.flat-rtfd", ".textclip"},
      {"public.rtf", ".textclip"},
      {"public.utf8-plain-text", ".textclip"},
      {"public.utf16-external-plain-text", ".textclip"},
      {"com.apple.traditional-mac-plain-text", ".textclip"},
      {"public.tiff", ".imageclip"},
      {"public.png", ".imageclip"},
      {"public.jpg", ".imageclip"},
      {"public.jpeg", ".imageclip"},
  };
  for (const auto& each : cases) {
    manager().removeFromClipboardHistoryAllClippingsWithTypes(everyClipType);
    copy({{each.type, {1, 2}}});
    ASSERT_THAT(names(), SizeIs(1)) << each.type;
    EXPECT_TRUE(names()[0].ends_with(each.extension)) << each.type;
    EXPECT_EQ(files().propertyList(path(names()[0]))->objectForKey("Type"), each.type);
  }
}

TEST_F(ClipboardCaptureTest, WhatIsThereAtTheStartIsNotRecorded) {
  SimulatedPasteboard& general = clipboard();
  general.putByAnotherProgram({text("before")});
  const auto later = ClipboardManager::create(files(), platform.pasteboards());
  manager().synchronizeWithClipboard();
  later->setHistoryCaptureMode(ClipboardCaptureAlways);
  platform.runFor(5);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ClipboardCaptureTest, AnUnknownFlavourAloneLeavesNoTrace) {
  const auto client = addClient();
  copy({{"public.html", dataOf("<p>")}});
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(client->added, IsEmpty());
  copy(text("after it"));
  EXPECT_THAT(history(), ElementsAre("after it"));
}

TEST_F(ClipboardCaptureTest, TextWithNoBytesIsRecorded) {
  copy(text(""));
  EXPECT_THAT(history(), ElementsAre(""));
}

TEST_F(ClipboardCaptureTest, EachItemIsAClippingOfItsOwn) {
  const auto client = addClient();
  copy({text("one"), {{"public.html", {1}}}, picture("two"), text("three")});
  EXPECT_EQ(numberOf(".textclip"), 2);
  EXPECT_EQ(numberOf(".imageclip"), 1);
  EXPECT_THAT(client->added, ElementsAre(ClipTypeText | ClipTypeImage));
}

TEST_F(ClipboardCaptureTest, WhatTheProgramItselfCopiesIsRecordedToo) {
  Cubby("public.utf8-plain-text", dataOf("ours")).copyToClipboard();
  platform.runFor(1);
  EXPECT_THAT(history(), ElementsAre("ours"));
}

// Repeats.

TEST_F(ClipboardCaptureTest, ARepeatIsNeitherWrittenNorTold) {
  const auto client = addClient();
  copy(text("same"));
  copy(text("same"));
  EXPECT_THAT(history(), ElementsAre("same"));
  EXPECT_THAT(client->added, ElementsAre(ClipTypeText));
}

TEST_F(ClipboardCaptureTest, OnlyTheLastIsCompared) {
  for (const char* each : {"A", "A", "B", "A"}) copy(text(each));
  EXPECT_THAT(history(), ElementsAre("A", "B", "A"));
}

TEST_F(ClipboardCaptureTest, AnotherTypeInBetweenMakesItNew) {
  copy(text("same"));
  copy(picture("one"));
  copy(text("same"));
  EXPECT_THAT(history(), ElementsAre("same", "image one", "same"));
}

TEST_F(ClipboardCaptureTest, TheSameBytesOfAnotherFlavourAreNoRepeat) {
  copy({{"public.png", {1}}});
  copy({{"public.jpeg", {1}}});
  EXPECT_EQ(numberOf(".imageclip"), 2);
}

TEST_F(ClipboardCaptureTest, RepeatsBesideSomethingNewAreToldOf) {
  const auto client = addClient();
  copy(text("same"));
  copy({text("same"), picture("new")});
  EXPECT_THAT(history(), ElementsAre("image new", "same"));
  EXPECT_THAT(client->added, ElementsAre(ClipTypeText, ClipTypeText | ClipTypeImage));
}

TEST_F(ClipboardCaptureTest, AfterItsRemovalTheSameIsNew) {
  copy(text("same"));
  manager().removeClipFileAtPathFromClipboardHistory(
      manager().pathsToClipFilesOfTypes(ClipTypeText, 1).front());
  EXPECT_THAT(names(), IsEmpty());
  copy(text("same"));
  EXPECT_THAT(history(), ElementsAre("same"));
}

TEST_F(ClipboardCaptureTest, AfterItsFileHasGoneTheSameIsNew) {
  copy(text("same"));
  files().removeItemAtPath(path(names()[0]));
  copy(text("same"));
  EXPECT_THAT(history(), ElementsAre("same"));
}

TEST_F(ClipboardCaptureTest, TheFirstOfARunIsNoRepeat) {
  copy(text("same"));
  const auto relaunched = ClipboardManager::create(files(), platform.pasteboards());
  manager().suppressClipboardHistoryCapture();
  relaunched->setHistoryCaptureMode(ClipboardCaptureAlways);
  copy(text("same"));
  EXPECT_THAT(history(), ElementsAre("same", "same"));
}

TEST_F(ClipboardCaptureTest, WhatCouldNotBeWrittenIsNewTheNextTime) {
  const auto client = addClient();
  files().setWritesFail(true);
  copy(text("same"));
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(client->added, ElementsAre(ClipTypeText)) << "nobody looks whether it worked";
  files().setWritesFail(false);
  copy(text("same"));
  EXPECT_THAT(history(), ElementsAre("same"));
}

// When it looks.

TEST_F(ClipboardCaptureTest, ItLooksOnceASecond) {
  platform.runFor(0.5);
  clipboard().putByAnotherProgram({text("first")});
  clipboard().putByAnotherProgram({text("second")});
  const Moment copied = platform.runLoop().now();
  while (names().empty()) {
    ASSERT_LT(platform.runLoop().now(), copied + 1);
    platform.runFor(0.01);
  }
  EXPECT_THAT(history(), ElementsAre("second")) << "nobody saw the first";
}

TEST_F(ClipboardCaptureTest, ItLooksWhileAMenuTracks) {
  for (const RunLoopMode mode : {RunLoopMode::EventTracking, RunLoopMode::ModalPanel}) {
    const std::size_t before = names().size();
    clipboard().putByAnotherProgram({text("in mode " + std::to_string(static_cast<int>(mode)))});
    const Moment end = platform.runLoop().now() + 1;
    platform.schedule(1, [] {});
    platform.runLoop().runInMode(mode, [&] { return platform.runLoop().now() >= end; });
    EXPECT_EQ(names().size(), before + 1);
  }
}

TEST_F(ClipboardCaptureTest, ItRestsWhileTheClipboardStays) {
  platform.runFor(2);
  const Moment quiet = platform.runLoop().nextDeadline();
  manager().setHistoryCaptureMode(ClipboardCaptureAlways);
  EXPECT_LT(platform.runLoop().nextDeadline(), quiet);
  platform.runFor(1);
  EXPECT_EQ(platform.runLoop().nextDeadline(), quiet);
  clipboard().putByAnotherProgram({text("new")});
  EXPECT_LE(platform.runLoop().nextDeadline(), platform.runLoop().now() + 1);
  platform.runFor(1);
  EXPECT_THAT(history(), ElementsAre("new"));
  EXPECT_EQ(platform.runLoop().nextDeadline(), quiet);
}

TEST_F(ClipboardCaptureTest, ItRestsWhileItIsSuppressed) {
  platform.runFor(2);
  const Moment quiet = platform.runLoop().nextDeadline();
  manager().suppressClipboardHistoryCapture();
  copy(text("suppressed"));
  EXPECT_EQ(platform.runLoop().nextDeadline(), quiet);
  manager().permitClipboardHistoryCapture();
  EXPECT_LE(platform.runLoop().nextDeadline(), platform.runLoop().now() + 1);
}

TEST_F(ClipboardCaptureTest, WhatIsCopiedDuringACaptureComesNext) {
  struct Copier : RecordingClipboardClient {
    explicit Copier(SimulatedPasteboard& place) : clipboard(place) {}
    void clipboardDidChangeWithTypesAdded(std::uint32_t types) override {
      RecordingClipboardClient::clipboardDidChangeWithTypesAdded(types);
      if (added.size() == 1) clipboard.putByAnotherProgram({text("during")});
    }
    SimulatedPasteboard& clipboard;
  };
  manager().addClient(std::make_shared<Copier>(clipboard()));
  copy(text("first"));
  platform.runFor(1);
  EXPECT_THAT(history(), ElementsAre("during", "first"));
}

// Suppression and synchronizing.

TEST_F(ClipboardCaptureTest, SuppressionNestsAndPutsOff) {
  manager().suppressClipboardHistoryCapture();
  manager().suppressClipboardHistoryCapture();
  copy(text("new"));
  manager().permitClipboardHistoryCapture();
  platform.runFor(3);
  EXPECT_THAT(names(), IsEmpty());
  manager().permitClipboardHistoryCapture();
  platform.runFor(1);
  EXPECT_THAT(history(), ElementsAre("new"));
}

TEST_F(ClipboardCaptureTest, SynchronizingForgetsTheChange) {
  clipboard().putByAnotherProgram({text("ours")});
  manager().synchronizeWithClipboard();
  platform.runFor(3);
  EXPECT_THAT(names(), IsEmpty());
  manager().suppressClipboardHistoryCapture();
  copy(text("temporary"));
  manager().synchronizeWithClipboard();
  manager().permitClipboardHistoryCapture();
  platform.runFor(3);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ClipboardCaptureTest, SavedContentsComeBackAsOftenAsWanted) {
  copy({text("one"), {{"public.html", {1}}}, {{"public.rtf", {2}}, {"public.png", {3}}}});
  manager().saveClipboardContents();
  const std::vector<PasteboardContents> saved = {text("one"), {{"public.rtf", {2}}}};
  const std::size_t before = names().size();
  for (int time = 0; time < 2; ++time) {
    clipboard().clearContents();
    Cubby("public.utf8-plain-text", dataOf("pasted")).addToClipboard();
    manager().restoreClipboardContents();
    EXPECT_EQ(clipboard().items(), saved);
    platform.runFor(2);
    EXPECT_EQ(names().size(), before);
  }
}

TEST_F(ClipboardCaptureTest, WithNothingSavedRestoringEmptiesTheClipboard) {
  copy(text("one"));
  const std::size_t before = names().size();
  manager().restoreClipboardContents();
  platform.runFor(2);
  EXPECT_THAT(clipboard().items(), IsEmpty());
  EXPECT_EQ(names().size(), before);
}

TEST_F(ClipboardCaptureTest, CubbiesOfTheClipboardComeInTheOrderOfItsItems) {
  copy({picture("one"), {{"public.html", {1}}}, text("two")});
  const auto cubbies = manager().createCubbiesFromClipboard();
  ASSERT_THAT(cubbies, SizeIs(2));
  EXPECT_EQ(cubbies[0]->data(), dataOf("image one"));
  EXPECT_EQ(cubbies[1]->data(), dataOf("two"));
  clipboard().clearContents();
  EXPECT_THAT(manager().createCubbiesFromClipboard(), IsEmpty());
}

// Modes and clients.

TEST_F(ClipboardCaptureTest, ForClientsRecordsNothingWithoutOne) {
  manager().setHistoryCaptureMode(ClipboardCaptureForClients);
  platform.runFor(1);
  copy(text("unwanted"));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ClipboardCaptureTest, ForClientsRecordsWhatOneOfThemWants) {
  manager().setHistoryCaptureMode(ClipboardCaptureForClients);
  const auto none = addClient(0), images = addClient(ClipTypeImage), all = addClient(3);
  copy(text("text"));
  copy(picture("image"));
  EXPECT_THAT(history(), ElementsAre("image image", "text"));
  // In their order, until one says yes.
  EXPECT_THAT(none->asked, ElementsAre("public.utf8-plain-text", "public.png"));
  EXPECT_THAT(images->asked, ElementsAre("public.utf8-plain-text", "public.png"));
  EXPECT_THAT(all->asked, ElementsAre("public.utf8-plain-text"));
  for (const auto& client : {none, images, all}) {
    EXPECT_THAT(client->added, ElementsAre(ClipTypeText, ClipTypeImage));
  }
}

TEST_F(ClipboardCaptureTest, WhatNobodyWantsIsNotRecordedBesideWhatSomebodyWants) {
  manager().setHistoryCaptureMode(ClipboardCaptureForClients);
  const auto client = addClient(ClipTypeImage);
  copy({text("text"), picture("image")});
  EXPECT_THAT(history(), ElementsAre("image image"));
  EXPECT_THAT(client->added, ElementsAre(ClipTypeImage));
}

TEST_F(ClipboardCaptureTest, AlwaysAsksNobody) {
  const auto client = addClient();
  for (const std::int32_t mode : {1, 2, -1}) {
    manager().setHistoryCaptureMode(mode);
    copy(text("mode " + std::to_string(mode)));
  }
  EXPECT_THAT(names(), SizeIs(3));
  EXPECT_THAT(client->asked, IsEmpty());
}

TEST_F(ClipboardCaptureTest, OnceTheLastClientHasGoneForClientsRecordsNothing) {
  manager().setHistoryCaptureMode(ClipboardCaptureForClients);
  const auto client = addClient(3);
  copy(text("wanted"));
  manager().removeClient(client);
  copy(text("unwanted"));
  EXPECT_THAT(history(), ElementsAre("wanted"));
  EXPECT_THAT(client->added, ElementsAre(ClipTypeText));
}

// The clipboard has been taken note of before the looks ended.
TEST_F(ClipboardCaptureTest, WhatWasCopiedWhileItDidNotLookIsRecordedWhenItLooksAgain) {
  const auto lone = ClipboardManager::create(files(), platform.pasteboards());
  manager().suppressClipboardHistoryCapture();
  lone->setHistoryCaptureMode(ClipboardCaptureForClients);
  copy(text("meanwhile"));
  EXPECT_THAT(names(), IsEmpty());
  lone->setHistoryCaptureMode(ClipboardCaptureAlways);
  platform.runFor(1);
  EXPECT_THAT(history(), ElementsAre("meanwhile"));
}

TEST_F(ClipboardCaptureTest, AClientMayLeaveWhenItIsTold) {
  struct Leaver : RecordingClipboardClient, std::enable_shared_from_this<Leaver> {
    void clipboardDidChangeWithTypesAdded(std::uint32_t types) override {
      RecordingClipboardClient::clipboardDidChangeWithTypesAdded(types);
      quillbox->clipboardManager().removeClient(shared_from_this());
    }
  };
  const auto leaver = std::make_shared<Leaver>();
  manager().addClient(leaver);
  const auto stayer = addClient();
  copy(text("one"));
  copy(text("two"));
  EXPECT_THAT(leaver->added, SizeIs(1));
  EXPECT_THAT(stayer->added, SizeIs(2));
}

TEST_F(ClipboardCaptureTest, TheSettingIsTheMode) {
  settings().setClipboardManagerHistoryCaptureMode(ClipboardCaptureForClients);
  appDelegate->settingsChanged();
  platform.runFor(1);
  copy(text("unwanted"));
  EXPECT_THAT(names(), IsEmpty());
  settings().setClipboardManagerHistoryCaptureMode(ClipboardCaptureAlways);
  appDelegate->settingsChanged();
  copy(text("wanted"));
  EXPECT_THAT(history(), ElementsAre("wanted"));
}

TEST_F(ClipboardCaptureTest, AManagerThatHasGoneRecordsNothing) {
  auto gone = ClipboardManager::create(files(), platform.pasteboards());
  manager().suppressClipboardHistoryCapture();
  gone->setHistoryCaptureMode(ClipboardCaptureAlways);
  gone->setHistoryCaptureMode(ClipboardCaptureAlways);
  gone.reset();
  copy(text("late"));
  EXPECT_THAT(names(), IsEmpty());
}

}  // namespace
}  // namespace qb::test
