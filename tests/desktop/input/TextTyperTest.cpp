// Typing into another program by XTEST.

#include "PlatformDesktop/input/TextTyper.h"

#include <atomic>
#include <thread>

#include "../probe/TypedText.h"
#include "InputDesk.h"
#include "PlatformDesktop/input/KeyCodeTable.h"
#include "PlatformDesktop/input/XKeyboard.h"

namespace qb::test {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

class TextTyping : public InputDesk {
 protected:
  // The client of the tests may be kept waiting by a busy machine.
  TextTyping() { typer().setLookUpTime(2); }
  TextTyper& typer() { return input_->typer(); }
  /// Types while the client reads, as programs do.
  bool type(const std::string& text, EventFlags modifiers = 0) {
    std::atomic<bool> isDone = false;
    bool complete = false;
    std::thread typist([&] {
      complete = typer().typeText(text, modifiers);
      isDone = true;
    });
    EXPECT_TRUE(waitFor([&] { return isDone.load(); }));
    typist.join();
    return complete;
  }
  /// Loads a layout, as a settings program does.
  void setLayout(const std::string& layout) {
    const std::string command = "setxkbmap -display " + server_.display() + " -layout " + layout;
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  /// What the client has got as text once it has got as much.
  bool clientReads(const std::string& text) {
    const bool read = waitFor([&] { return client_.text.size() >= text.size(); });
    EXPECT_EQ(client_.text, text);
    return read && client_.text == text;
  }
  xcb_atom_t lentKeysProperty() {
    const std::string name = "_QUILLBOX_LENT_KEYS";
    const XcbPointer<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        client_.xcb(), xcb_intern_atom(client_.xcb(), 0, name.size(), name.data()), nullptr));
    return atom->atom;
  }
  bool lentKeysAreWrittenDown() {
    const XcbPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(client_.xcb(),
                               xcb_get_property(client_.xcb(), 0, client_.root(),
                                                lentKeysProperty(), XCB_ATOM_CARDINAL, 0, 1),
                               nullptr));
    return reply && reply->type != XCB_NONE;
  }
  /// The keysyms of all keys.
  std::vector<xcb_keysym_t> mapping() {
    const auto* setup = xcb_get_setup(client_.xcb());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const XcbPointer<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        client_.xcb(), xcb_get_keyboard_mapping(client_.xcb(), setup->min_keycode, count),
        nullptr));
    const xcb_keysym_t* const keysyms = xcb_get_keyboard_mapping_keysyms(reply.get());
    return {keysyms, keysyms + xcb_get_keyboard_mapping_keysyms_length(reply.get())};
  }
};

TEST_F(TextTyping, TheLayoutsOwnCharacters) {
  const auto before = mapping();
  const std::string text =
      "The quick brown fox, 42 + 0.5 = \"{[(<~#|\\^`'>)]}\"; JUMPS: $&*!? @/_-%";
  EXPECT_TRUE(type(text));
  clientReads(text);
  EXPECT_EQ(mapping(), before);
}

TEST_F(TextTyping, NothingIsLostOfAlot) {
  std::string text;
  for (int i = 0; i < 40; ++i) text += "Ab1! ";
  EXPECT_TRUE(type(text));
  clientReads(text);
}

TEST_F(TextTyping, WhatTheLayoutLacks) {
  const std::string text = "na\u00efve caf\u00e9 \u2014 \u65e5\u672c\u8a9e \U0001f600 \u00c9\u00e9";
  EXPECT_TRUE(type(text));
  clientReads(text);
}

TEST_F(TextTyping, MoreForeignCharactersThanSpareKeys) {
  std::string text;
  for (char32_t letter = 0x430; letter < 0x450; ++letter) {
    text += static_cast<char>(0xc0 | letter >> 6);
    text += static_cast<char>(0x80 | (letter & 0x3f));
  }
  // Some of the first ones once more, that have lost their keys by then.
  text += "\u0430\u0431 a \u0432";
  EXPECT_TRUE(type(text));
  clientReads(text);
}

TEST_F(TextTyping, LentKeysAreGivenBack) {
  const auto before = mapping();
  std::vector<Block> later;
  typer().setPerformLater([&](TimeInterval, Block block) { later.push_back(std::move(block)); });
  EXPECT_TRUE(type("\u00e9\u65e5"));
  clientReads("\u00e9\u65e5");
  EXPECT_NE(mapping(), before);
  EXPECT_TRUE(waitFor([&] {
    for (const Block& block : std::exchange(later, {})) block();
    return mapping() == before;
  }));
}

TEST_F(TextTyping, LentKeysThatALayoutUsesNowStay) {
  std::vector<Block> later;
  typer().setPerformLater([&](TimeInterval, Block block) { later.push_back(std::move(block)); });
  EXPECT_TRUE(type("\u00e9"));
  clientReads("\u00e9");
  const XcbPointer<xcb_get_property_reply_t> lent(
      xcb_get_property_reply(client_.xcb(),
                             xcb_get_property(client_.xcb(), 0, client_.root(), lentKeysProperty(),
                                              XCB_ATOM_CARDINAL, 0, 2),
                             nullptr));
  const auto key = *static_cast<const std::uint32_t*>(xcb_get_property_value(lent.get()));
  const xcb_keysym_t other[] = {0xdf, 0xdf};
  xcb_change_keyboard_mapping(client_.xcb(), 1, static_cast<std::uint8_t>(key), 2, other);
  client_.sync();
  const auto before = mapping();
  EXPECT_TRUE(waitFor([&] {
    for (const Block& block : std::exchange(later, {})) block();
    return !lentKeysAreWrittenDown();
  }));
  EXPECT_EQ(mapping(), before);
}

TEST_F(TextTyping, CharactersOfBeforeAreTypedAnew) {
  // The first has its key still when the others come and need all of them.
  EXPECT_TRUE(type("\u0430"));
  const std::string text =
      "\u0431\u0432\u0433\u0434\u0435\u0436\u0437\u0438\u0439\u043a\u043b\u043c\u043d\u043e"
      "\u043f\u0440\u0441\u0442\u0443\u0444\u0445\u0446\u0430";
  EXPECT_TRUE(type(text));
  clientReads("\u0430" + text);
}

TEST_F(TextTyping, KeysLeftLentByACrashAreGivenBackAtTheNextStart) {
  const auto before = mapping();
  constexpr std::uint8_t spare = 97;
  const xcb_keysym_t keysyms[] = {0xe9, 0xe9};
  const std::uint32_t words[] = {spare, keysyms[0]};
  xcb_change_keyboard_mapping(client_.xcb(), 1, spare, 2, keysyms);
  xcb_change_property(client_.xcb(), XCB_PROP_MODE_REPLACE, client_.root(), lentKeysProperty(),
                      XCB_ATOM_CARDINAL, 32, 2, words);
  client_.sync();
  ASSERT_NE(mapping(), before);
  const InputUnderTest next(server_.display());
  EXPECT_TRUE(waitFor([&] { return mapping() == before; }));
}

TEST_F(TextTyping, TheThirdLevel) {
  setLayout("de");
  const auto before = mapping();
  EXPECT_TRUE(type("\u00e4\u00d6 z@{[]}\\ \u20ac"));
  clientReads("\u00e4\u00d6 z@{[]}\\ \u20ac");
  EXPECT_EQ(mapping(), before);
}

TEST_F(TextTyping, AnotherGroup) {
  setLayout("us,ru");
  // Only who speaks of groups with the server is told them.
  ASSERT_TRUE(TypingLayout::read(client_.xcb()));
  EXPECT_TRUE(type("a\u044fb"));
  clientReads("a\u044fb");
  // While that group is in force letters of the first one are in another.
  client_.text.clear();
  const auto second = InputConnection::open(server_.display().c_str());
  const auto& own = std::get<InputConnection>(second);
  ASSERT_TRUE(TypingLayout::read(own.xcb.get()));
  lockKeyboardGroup(own.xcb.get(), 1);
  const XcbPointer<xcb_get_input_focus_reply_t> done(
      xcb_get_input_focus_reply(own.xcb.get(), xcb_get_input_focus(own.xcb.get()), nullptr));
  EXPECT_TRUE(type("x\u0451x"));
  clientReads("x\u0451x");
  EXPECT_EQ(TypingLayout::read(own.xcb.get())->group(), 1);
}

TEST_F(TextTyping, ControlCharactersAreKeys) {
  EXPECT_TRUE(type("a\r\t\x1b\x08\x1c\x1d\x1e\x1f"));
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() >= 18; }));
  std::vector<int> keyCodes;
  for (const XClient::Key& key : client_.keys) {
    if (key.down) keyCodes.push_back(KeyCodeTable::keyCodeFromX(key.code));
  }
  EXPECT_THAT(keyCodes, ElementsAre(0, 36, 48, 53, 51, 123, 124, 126, 125));
}

TEST_F(TextTyping, KeysWithModifiers) {
  EXPECT_TRUE(typer().pressKey(KeyCodeV, EventFlagControl | EventFlagShift));
  EXPECT_TRUE(type("c", EventFlagOption));
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() >= 4; }));
  const auto code = [](std::uint16_t keyCode) { return *KeyCodeTable::xCodeFromKeyCode(keyCode); };
  constexpr std::uint16_t controlShift = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
  EXPECT_THAT(client_.keys, ElementsAre(XClient::Key{true, code(KeyCodeV), controlShift},
                                        XClient::Key{false, code(KeyCodeV), controlShift},
                                        XClient::Key{true, code(KeyCodeC), XCB_MOD_MASK_1},
                                        XClient::Key{false, code(KeyCodeC), XCB_MOD_MASK_1}));
  EXPECT_FALSE(typer().pressKey(0x7f));
}

TEST_F(TextTyping, CapsLockIsPutOff) {
  client_.tap(KeyCodeCapsLock);
  client_.sync();
  EXPECT_TRUE(type("aBc"));
  clientReads("aBc");
  client_.tap(KeyCodeA);
  EXPECT_TRUE(clientReads("aBcA")) << "Caps Lock has to be on again";
}

TEST_F(TextTyping, HeldModifiersAreWaitedFor) {
  client_.press(KeyCodeLeftShift);
  client_.sync();
  std::thread hand([&] {
    XClient other(server_.display());
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    other.release(KeyCodeLeftShift);
    other.sync();
  });
  EXPECT_TRUE(type("abc"));
  hand.join();
  clientReads("abc");
}

TEST_F(TextTyping, ModifiersThatStayDownAreReleased) {
  client_.press(KeyCodeLeftShift);
  client_.press(KeyCodeLeftControl);
  client_.sync();
  EXPECT_TRUE(type("abc"));
  clientReads("abc");
  EXPECT_THAT(client_.keys, Each(Field(&XClient::Key::state, 0)));
}

TEST_F(TextTyping, OwnKeysDoNotComeBack) {
  const auto hotKey = input_->hotKeys().registerEventHotKey(KeyCodeTab, HotKeyModifierOption,
                                                            {fourCharacterCode("QBb1"), 1});
  ASSERT_TRUE(hotKey);
  int seen = 0;
  input_.createTap({{superTab}});
  const auto monitor = input_->eventTap().addGlobalKeyDownMonitor([&] { ++seen; });
  EXPECT_TRUE(typer().pressKey(KeyCodeTab, EventFlagOption));
  EXPECT_TRUE(typer().pressKey(KeyCodeTab, EventFlagCommand));
  ASSERT_TRUE(waitFor([&] { return client_.keys.size() >= 4; }));
  EXPECT_EQ(client_.keys[0].state, XCB_MOD_MASK_1);
  EXPECT_EQ(client_.keys[2].state, XCB_MOD_MASK_4);
  client_.keys.clear();
  typeProbe();
  EXPECT_EQ(seen, 1) << "the probe alone";
  EXPECT_THAT(input_.hotKeys, IsEmpty());
  EXPECT_THAT(input_.tapped, IsEmpty());

  // Those of the user still do.
  superTabTap();
  ASSERT_TRUE(waitFor([&] { return !input_.tapped.empty(); }));
  EXPECT_EQ(describe(input_.tapped.front()), "+48 command");
}

TEST_F(TextTyping, AKeyboardThatIsKeptIsLetGoMeanwhile) {
  input_.createTap({});
  input_.setEveryKeyDown(true);
  ASSERT_TRUE(waitFor([&] { return client_.keyboardIsTaken; }));
  EXPECT_TRUE(type("abc"));
  clientReads("abc");
  ASSERT_TRUE(waitFor([&] { return client_.keyboardIsTaken; })) << "it is kept again";
  client_.tap(KeyCodeX);
  ASSERT_TRUE(waitFor([&] { return !input_.tapped.empty(); }));
  EXPECT_EQ(client_.text, "abc");
}

}  // namespace
}  // namespace qb::test
