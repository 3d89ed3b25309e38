#include "Quillbox/windows/ItemChooserWindowController.h"

#include "Platform/KeyCodes.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/views/Window.h"
#include "support/QuillboxFixture.h"
#include "support/TestEvents.h"
#include "support/TestItems.h"

namespace qb::test {
namespace {

constexpr Size itemSize{96, 96};

class ItemChooserWindowControllerTest : public QuillboxFixture {
 protected:
  ItemChooserWindowControllerTest() {
    editor = platform.processes().launchInFront({"org.editor", "Editor", "/apps/Editor.desktop"});
  }
  std::vector<std::shared_ptr<Item>> makeItems(int count) {
    std::vector<std::shared_ptr<Item>> made;
    for (int number = 0; number < count; ++number) {
      made.push_back(TestItem::create({{0, 0}, itemSize}, "item" + std::to_string(number), log));
    }
    return made;
  }
  /// Before it is shown.
  std::unique_ptr<ItemChooserWindowController> makeChooser(int count) {
    items = makeItems(count);
    return std::make_unique<ItemChooserWindowController>(
        "Choose One", items, itemSize, [this](const std::shared_ptr<Item>& item) { note(item); });
  }
  void note(const std::shared_ptr<Item>& item) { choices.push_back(item ? item->name() : "none"); }
  /// Has the user do something once the chooser is up.
  void whenUp(std::function<void()> act) {
    // The second pass of the modal run: nothing else is due then.
    executeBlockAfterDelay(std::move(act), 0.01);
  }
  void choose(int count) {
    items = makeItems(count);
    quillbox->presentItemChooserWithTitle(
        "Choose One", items, itemSize, [this](const std::shared_ptr<Item>& item) { note(item); });
  }
  void type(std::initializer_list<std::uint16_t> keyCodes) {
    for (const auto keyCode : keyCodes) platform.keyboard().type(keyCode);
  }
  /// A point of the window's content, from its top left, on the screen.
  Point onScreen(Point point) {
    const Rect& frame = platform.windowServer().keyWindow()->frame();
    return {frame.x() + point.x, frame.maxY() - point.y};
  }
  static std::string selectedName(const ItemChooserWindowController& chooser) {
    return chooser.selectedItem() ? chooser.selectedItem()->name() : "none";
  }

  ProcessSerialNumber editor, mail;
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::vector<std::shared_ptr<Item>> items;
  std::vector<std::string> choices;
};

TEST_F(ItemChooserWindowControllerTest, LooksLikeARow) {
  const auto chooser = makeChooser(3);
  EXPECT_EQ(chooser->window().frame().size, (Size{3 * 96 + 48, 96 + 60}));
  EXPECT_FALSE(chooser->window().hasShadow());
  EXPECT_FALSE(chooser->window().isOpaque());
  EXPECT_EQ(chooser->window().backgroundColor(), Color::clear());
  EXPECT_EQ(chooser->window().styleMask(), 0U);
  const auto& background = chooser->backgroundView();
  EXPECT_EQ(background.frame(), Rect::make(0, 0, 336, 156));
  EXPECT_EQ(background.cornerRadius(), 25);
  EXPECT_EQ(background.backgroundColor(), settings().tabRowColor());
  EXPECT_FALSE(background.renderBorder());
  // 10 characters of 7 points.
  EXPECT_EQ(chooser->titleView().text(), "Choose One");
  EXPECT_EQ(chooser->titleView().frame(), Rect::make(168 - 50, 3, 100, 20));
  EXPECT_TRUE(chooser->titleView().isShadowed());
  EXPECT_FALSE(chooser->titleView().renderBackground());
}

TEST_F(ItemChooserWindowControllerTest, ItemsStandSideBySide) {
  const auto chooser = makeChooser(3);
  for (std::size_t index = 0; index < 3; ++index) {
    EXPECT_EQ(items[index]->index(), static_cast<std::int64_t>(index));
    EXPECT_EQ(items[index]->view()->frame(),
              Rect::make(24 + 96 * static_cast<double>(index), 30, 96, 96));
    EXPECT_EQ(items[index]->view()->superview(), &chooser->backgroundView());
  }
}

TEST_F(ItemChooserWindowControllerTest, SelectionHasAHaloAndALabel) {
  const auto chooser = makeChooser(3);
  auto& halo = chooser->selectionHalo().halo();
  auto& label = chooser->selectionHalo().label();
  EXPECT_TRUE(halo.isHidden());
  EXPECT_TRUE(label.isHidden());
  EXPECT_EQ(halo.frame().size, (Size{50, 50}));
  EXPECT_EQ(halo.cornerRadius(), 10);
  EXPECT_EQ(halo.borderWidth(), 3);
  EXPECT_EQ(halo.borderColor(), Color::white());
  EXPECT_EQ(halo.backgroundColor(), Color::colorWithCalibratedWhite(0, 0.5));
  chooser->setSelectedItem(items[1], SelectionMethodKeyboard);
  EXPECT_EQ(halo.frame(), Rect::make(116, 26, 104, 104));
  EXPECT_FALSE(halo.isHidden());
  EXPECT_EQ(label.text(), "item1");
  // 5 characters of 7 points and 20 besides, under the middle of the item at 168.
  EXPECT_EQ(label.frame(), Rect::make(140.5, 134, 55, 19));
  chooser->setSelectedItem(nullptr, SelectionMethodProgram);
  EXPECT_TRUE(halo.isHidden());
  EXPECT_TRUE(label.isHidden());
}

TEST_F(ItemChooserWindowControllerTest, KeysWalkRound) {
  const auto chooser = makeChooser(3);
  struct Case {
    std::uint16_t keyCode;
    EventFlags flags;
    const char* selected;
  };
  const Case cases[] = {
      {KeyCodeRight, 0, "item0"}, {KeyCodeTab, 0, "item1"},
      {KeyCodeRight, 0, "item2"}, {KeyCodeTab, 0, "item0"},
      {KeyCodeLeft, 0, "item2"},  {KeyCodeTab, EventFlagShift, "item1"},
      {KeyCodeLeft, 0, "item0"},  {KeyCodeTab, EventFlagShift, "item2"},
      {KeyCodeO, 0, "item2"},
  };
  for (const Case& one : cases) {
    chooser->keyDown(keyEvent(one.keyCode, one.flags));
    EXPECT_EQ(selectedName(*chooser), one.selected);
  }
}

TEST_F(ItemChooserWindowControllerTest, GoingBackFromNothingSelectsTheLast) {
  const auto chooser = makeChooser(3);
  chooser->selectPreviousItem();
  EXPECT_EQ(selectedName(*chooser), "item2");
}

TEST_F(ItemChooserWindowControllerTest, ThePointerSelectsInWideCells) {
  const auto chooser = makeChooser(3);
  struct Case {
    Point point;
    const char* selected;
  };
  // Item n's view begins at 24 + 96 n; its cell is 144 wide, from 12 to the left of that.
  const Case cases[] = {
      {{12, 60}, "item0"},    {{11.9, 60}, "none"}, {{107.9, 60}, "item0"}, {{108, 60}, "item1"},
      {{347.9, 60}, "item2"}, {{348, 60}, "none"},  {{60, 30}, "item0"},    {{60, 29.9}, "none"},
      {{60, 125.9}, "item0"}, {{60, 126}, "none"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(testing::Message() << one.point.x << " " << one.point.y);
    chooser->mouseMoved(one.point);
    EXPECT_EQ(selectedName(*chooser), one.selected);
  }
}

TEST_F(ItemChooserWindowControllerTest, NoItemsMeanNoChoice) {
  choose(0);
  EXPECT_EQ(choices, std::vector<std::string>{"none"});
}

TEST_F(ItemChooserWindowControllerTest, ASingleItemIsChosenWithoutAWindow) {
  const auto windows = platform.windowServer().windows().size();
  choose(1);
  EXPECT_EQ(choices, std::vector<std::string>{"item0"});
  EXPECT_EQ(platform.windowServer().windows().size(), windows);
}

TEST_F(ItemChooserWindowControllerTest, ReturnChooses) {
  for (const std::uint16_t key : {KeyCodeReturn, KeyCodeEnter}) {
    choices.clear();
    whenUp([&] { type({KeyCodeRight, KeyCodeRight, key}); });
    choose(3);
    EXPECT_EQ(choices, std::vector<std::string>{"item1"});
  }
}

TEST_F(ItemChooserWindowControllerTest, ReturnWithoutASelectionChoosesNothing) {
  whenUp([&] { type({KeyCodeReturn}); });
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"none"});
}

TEST_F(ItemChooserWindowControllerTest, EscapeCancels) {
  whenUp([&] { type({KeyCodeRight, KeyCodeEscape}); });
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"none"});
}

TEST_F(ItemChooserWindowControllerTest, AClickChoosesWhatThePointerIsOn) {
  whenUp([&] {
    platform.pointer().moveTo(onScreen({24 + 2 * 96 + 50, 70}));
    executeBlockAfterDelay([&] { platform.pointer().click(); }, 0.1);
  });
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"item2"});
}

TEST_F(ItemChooserWindowControllerTest, AClickBesideTheItemsDoesNothing) {
  whenUp([&] {
    platform.pointer().moveTo(onScreen({5, 5}));
    platform.pointer().click();
    executeBlockAfterDelay([&] { type({KeyCodeRight, KeyCodeReturn}); }, 0.1);
  });
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"item0"});
}

TEST_F(ItemChooserWindowControllerTest, ARestingPointerLeavesTheSelectionToTheKeys) {
  platform.pointer().moveTo({720, 500});
  whenUp([&] {
    type({KeyCodeRight});
    executeBlockAfterDelay([&] { type({KeyCodeReturn}); }, 0.3);
  });
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"item0"});
}

TEST_F(ItemChooserWindowControllerTest, AnotherApplicationInFrontCancels) {
  whenUp([&] { platform.processes().bringToFront(mail); });
  mail = platform.processes().launch({"org.mail", "Mail", "/apps/Mail.desktop"});
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"none"});
}

TEST_F(ItemChooserWindowControllerTest, IsUpInTheMiddleAsAUserInteraction) {
  settings().setBackdropBlurPercent(7);
  bool interacts = false;
  Rect frame;
  std::int64_t blur = 0;
  whenUp([&] {
    interacts = appDelegate->userInteractionLevel() == 1;
    frame = platform.windowServer().keyWindow()->frame();
    blur = platform.windowServer().keyWindow()->backgroundBlurRadius();
    type({KeyCodeEscape});
  });
  choose(3);
  EXPECT_TRUE(interacts);
  EXPECT_EQ(frame.center().x, 720);
  EXPECT_EQ(blur, 7);
  EXPECT_EQ(appDelegate->userInteractionLevel(), 0);
}

TEST_F(ItemChooserWindowControllerTest, ReturnsToTheApplicationOfBefore) {
  whenUp([&] { type({KeyCodeEscape}); });
  choose(3);
  platform.runFor(0.1);
  EXPECT_EQ(platform.processes().getFrontProcess(), editor);
}

TEST_F(ItemChooserWindowControllerTest, EndedFromOutsideNobodyHasChosen) {
  whenUp([&] { ModalSession::abortModal(); });
  choose(3);
  EXPECT_EQ(choices, std::vector<std::string>{"none"});
}

}  // namespace
}  // namespace qb::test
