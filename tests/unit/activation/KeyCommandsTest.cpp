#include "Quillbox/activation/KeyCommands.h"

#include "support/ActivationFixture.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Three rows, of which the one in the middle opens; its second of five items gets selected.
class KeyCommandsTest : public ActivationFixture {
 protected:
  void SetUp() override {
    host().createTabRowAtIndex(0, TestProvider::withItems(5), true);
    host().createTabRowAtIndex(2, TestProvider::withItems(5), true);
  }
  void openWithSelection() {
    open(ActivationMethodCommandTab);
    for (const auto& item : provider->items()) {
      static_cast<TestItem&>(*item).isPreviewable = true;
      static_cast<TestItem&>(*item).removesQuickly = true;
      item->setRemovable(true);
    }
    middleRow().setSelectedItem(provider->items().at(1), SelectionMethodProgram);
    provider->itemLog->clear();
    provider->log.clear();
  }
  TabRow& middleRow() const { return *host().tabRows()[1]; }
  bool press(std::uint16_t keyCode, EventFlags flags = 0) {
    Event event;
    event.type = EventTypeKeyDown;
    event.keyCode = keyCode;
    event.flags = flags;
    return appDelegate->keyDown(event);
  }
  /// What the key has done, in a word.
  std::string effect() {
    const auto staying = [this] {
      platform.runFor(0.02);
      return isActive() ? " and stays" : "";
    };
    for (const auto& entry : *provider->itemLog) {
      const std::string operation = entry.substr(entry.find(": ") + 2);
      if (operation == "invoke" || operation == "preview") return operation + staying();
    }
    if (!isActive()) return "dismissed";
    for (const auto& entry : *provider->itemLog) {
      const std::string operation = entry.substr(entry.find(": ") + 2);
      if (operation != "wasSelected" && operation != "wasDeselected") return operation;
    }
    for (const auto& entry : provider->log) {
      if (entry.starts_with("keyDown")) return entry;
    }
    const TabRow& active = *host().activeTabRow();
    if (active.index() != 1) return "row " + std::to_string(active.index());
    return active.selectedItem()->name();
  }
};

TEST_F(KeyCommandsTest, EachKeyHasItsEffect) {
  constexpr EventFlags command = 0x100000, shift = 0x20000;
  const struct {
    std::uint16_t keyCode;
    EventFlags flags;
    const char* expected;
  } cases[] = {
      {48, 0, "item2"},
      {48, shift, "item2"},
      {124, 0, "item2"},
      {50, 0, "item0"},
      {123, 0, "item0"},
      {6, 0, "row 2"},
      {125, 0, "row 2"},
      {0, 0, "row 0"},
      {126, 0, "row 0"},
      {49, 0, "preview"},
      {36, 0, "invoke"},
      {76, 0, "invoke"},
      {31, 0, "invoke and stays"},
      {1, 0, "performDataCycling"},
      {2, 0, "performDataCycling"},
      {51, 0, "willBeRemovedFromTabBar"},
      {13, 0, "close"},
      {8, command, "performPasteboardCopy"},
      {9, command, "performPasteboardPaste"},
      {7, command, "performPasteboardCut"},
      {8, 0, "keyDown 8"},
      {9, shift, "keyDown 9"},
      {7, 0, "keyDown 7"},
      {53, 0, "dismissed"},
      {12, 0, "keyDown 12"},
      {4, 0, "keyDown 4"},
      {99, 0, "keyDown 99"},
  };
  for (const auto& each : cases) {
    provider->names = TestProvider::withItems(5)->names;
    openWithSelection();
    EXPECT_TRUE(press(each.keyCode, each.flags)) << each.keyCode;
    EXPECT_EQ(effect(), each.expected) << each.keyCode << " with " << each.flags;
    close();
    platform.runFor(1);
  }
}

TEST_F(KeyCommandsTest, EscapeWithoutItsBitFallsThroughToTheRow) {
  // Every method allows Esc; only before the first activation is there no mask.
  ASSERT_EQ(appDelegate->allowableDismissalMethods(), 0);
  host().setActiveTabRow(host().tabRows()[1], false);
  provider->log.clear();
  EXPECT_TRUE(press(KeyCodeEscape));
  EXPECT_THAT(provider->log, ElementsAre("keyDown 53"));
}

TEST_F(KeyCommandsTest, EscapeAsAKeyDoesNotBringThePreviousApplicationBack) {
  hold({KeyCodeLeftCommand, KeyCodeTab});
  ASSERT_TRUE(isActive());
  tap(KeyCodeEscape);
  EXPECT_FALSE(isActive());
  platform.runFor(1);
  EXPECT_THAT(frontProcessRequests(), IsEmpty());
  EXPECT_EQ(countOf(*provider->itemLog, "item0: invoke"), 0);
}

TEST_F(KeyCommandsTest, KeysGoToTheLastActiveRowWhenNoneIsActive) {
  openWithSelection();
  host().setActiveTabRow(nullptr, false);
  press(99);
  EXPECT_EQ(host().activeTabRow(), &middleRow());
  EXPECT_EQ(countOf(provider->log, "keyDown 99"), 1);
}

}  // namespace
}  // namespace qb::test
