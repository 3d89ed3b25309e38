#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "InputDesk.h"
#include "PlatformDesktop/input/KeyCodeTable.h"

namespace qb::test {
namespace {

using ::testing::IsEmpty;

class Survival : public InputDesk {
 protected:
  bool superTabWorks() {
    const std::size_t before = input_.tapped.size();
    superTabTap();
    return waitFor([&] { return input_.tapped.size() == before + 2; }) && keyboardComesBack();
  }
};

TEST_F(Survival, MappingOfKeysChanges) {
  input_.createTap({{superTab}});
  const std::uint8_t unused = 93;
  for (const xcb_keysym_t keysym : {0x1000041u, 0u}) {
    const int before = client_.mappingChanges;
    xcb_change_keyboard_mapping(client_.xcb(), 1, unused, 1, &keysym);
    ASSERT_TRUE(waitFor([&] { return client_.mappingChanges > before; }));
    EXPECT_TRUE(superTabWorks());
  }
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Survival, NumLockMovesToAnotherModifier) {
  input_.createTap({{superTab}});
  const auto numLock = *KeyCodeTable::xCodeFromKeyCode(KeyCodeNumLock);
  const XcbPointer<xcb_get_modifier_mapping_reply_t> reply(xcb_get_modifier_mapping_reply(
      client_.xcb(), xcb_get_modifier_mapping(client_.xcb()), nullptr));
  ASSERT_TRUE(reply);
  const int width = reply->keycodes_per_modifier;
  xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(reply.get());
  for (int i = 0; i < 8 * width; ++i) {
    if (keys[i] == numLock) keys[i] = 0;
  }
  keys[XCB_MAP_INDEX_3 * width] = numLock;
  const XcbPointer<xcb_set_modifier_mapping_reply_t> set(xcb_set_modifier_mapping_reply(
      client_.xcb(),
      xcb_set_modifier_mapping(client_.xcb(), static_cast<std::uint8_t>(width), keys), nullptr));
  ASSERT_TRUE(set);
  ASSERT_EQ(set->status, XCB_MAPPING_STATUS_SUCCESS);
  client_.tap(KeyCodeNumLock);
  EXPECT_TRUE(waitFor([&] { return chordIsTaken({KeyCodeLeftCommand}, KeyCodeTab); }));
}

TEST_F(Survival, SuperAndAltChangePlaces) {
  input_.createTap({{superTab}});
  const xcb_keysym_t super = 0xffeb, alt = 0xffe9;
  const auto superCode = *KeyCodeTable::xCodeFromKeyCode(KeyCodeLeftCommand);
  const auto altCode = *KeyCodeTable::xCodeFromKeyCode(KeyCodeLeftOption);
  xcb_change_keyboard_mapping(client_.xcb(), 1, superCode, 1, &alt);
  xcb_change_keyboard_mapping(client_.xcb(), 1, altCode, 1, &super);
  const XcbPointer<xcb_get_modifier_mapping_reply_t> reply(xcb_get_modifier_mapping_reply(
      client_.xcb(), xcb_get_modifier_mapping(client_.xcb()), nullptr));
  ASSERT_TRUE(reply);
  xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(reply.get());
  for (int i = 0; i < 8 * reply->keycodes_per_modifier; ++i) {
    if (keys[i] == superCode) {
      keys[i] = altCode;
    } else if (keys[i] == altCode) {
      keys[i] = superCode;
    }
  }
  const XcbPointer<xcb_set_modifier_mapping_reply_t> set(xcb_set_modifier_mapping_reply(
      client_.xcb(), xcb_set_modifier_mapping(client_.xcb(), reply->keycodes_per_modifier, keys),
      nullptr));
  ASSERT_TRUE(set);
  client_.press(KeyCodeLeftOption);
  ASSERT_TRUE(waitFor([&] { return input_->keyboard().getKeys().isDown(KeyCodeLeftCommand); }));
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeLeftOption);
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_THAT(describe(input_.tapped), ::testing::ElementsAre("+48 command", "-48 command"));
}

TEST_F(Survival, WindowManagerRestartsAndWantsTheSameKeys) {
  input_.createTap({{superTab, altShiftTab}});
  const auto registration =
      input_->hotKeys().registerEventHotKey(KeyCodeTab, HotKeyModifierOption, {1, 1007});
  ASSERT_TRUE(registration);
  restartWindowManager(WindowManagerKeys::AltTab);
  input_.tapped.clear();
  EXPECT_TRUE(superTabWorks());
  client_.press(KeyCodeLeftOption);
  client_.tap(KeyCodeTab);
  client_.release(KeyCodeLeftOption);
  ASSERT_TRUE(waitFor([&] { return input_.hotKeys.size() == 1; }));
}

TEST_F(Survival, AnotherProgramHoldsTheKeyboardForAWhile) {
  input_.createTap({{superTab}});
  XClient menu(server_.display());
  menu.openBypassWindow(0, 0, 10, 10);
  ASSERT_TRUE(menu.grabKeyboard());
  superTabTap();
  ASSERT_TRUE(waitFor([&] {
    return log_.count("Super+Tab did not arrive, another program may hold the keyboard") == 1;
  }));
  EXPECT_THAT(input_.tapped, IsEmpty());
  menu.ungrabKeyboard();
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_TRUE(superTabWorks());
  EXPECT_THAT(client_.keys, IsEmpty());
}

TEST_F(Survival, KeyboardIsTakenOnceTheOtherProgramLetsGo) {
  input_.createTap({{superTab}});
  ASSERT_TRUE(client_.grabKeyboard());
  input_.setEveryKeyDown(true);
  ASSERT_TRUE(waitFor([&] { return log_.count("The keyboard is held by another program") == 1; }));
  // Until then the tap at least sees what is typed.
  client_.tap(KeyCodeEscape);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 2; }));
  client_.ungrabKeyboard();
  ASSERT_TRUE(waitFor([&] { return client_.keyboardIsTaken; }));
  client_.keys.clear();
  client_.tap(KeyCodeA);
  ASSERT_TRUE(waitFor([&] { return input_.tapped.size() == 4; }));
  EXPECT_THAT(client_.keys, IsEmpty());
  EXPECT_EQ(log_.count("The keyboard is held by another program"), 1);
}

TEST_F(Survival, EndOfTheRulesEndsTheWaitForTheKeyboard) {
  input_.createTap({{superTab}});
  ASSERT_TRUE(client_.grabKeyboard());
  input_.setEveryKeyDown(true);
  input_.setEveryKeyDown(false);
  client_.ungrabKeyboard();
  typeProbe();
  EXPECT_FALSE(client_.keyboardIsTaken);
}

TEST_F(Survival, EndOfTheInputFreesKeysAndKeyboard) {
  {
    InputUnderTest second(server_.display());
    second.createTap({{superTab}, true});
    ASSERT_TRUE(waitUntil({&client_, &second}, [&] { return client_.keyboardIsTaken; }));
    EXPECT_FALSE(client_.grabKeyboard());
  }
  ASSERT_TRUE(keyboardComesBack());
  EXPECT_TRUE(client_.grabKey(KeyCodeTab, XCB_MOD_MASK_4));
}

TEST_F(Survival, ServerEnds) {
  auto second = std::make_unique<XServer>();
  InputUnderTest input(second->display());
  second.reset();
  ASSERT_TRUE(waitUntil({&client_}, [&] {
    // Asked on the thread that ends: no hang, and none is granted.
    return !input->hotKeys().registerEventHotKey(KeyCodeTab, HotKeyModifierOption, {1, 1});
  }));
}

/// The input of another process, which holds the keyboard from the chord on.
class KilledProcess : public ::testing::Test {
 protected:
  KilledProcess() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    child_ = fork();
    if (child_ == 0) holdKeyboard(ends[1]);
    close(ends[1]);
    news_ = ends[0];
  }
  ~KilledProcess() override {
    killChild();
    close(news_);
  }

  /// Waits for a letter from the child.
  char hear() const {
    char letter = 0;
    return read(news_, &letter, 1) == 1 ? letter : '\0';
  }

  void killChild() {
    if (child_ <= 0) return;
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
    child_ = 0;
  }

  [[noreturn]] void holdKeyboard(int pipe) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    InputUnderTest input(server_.display());
    input.createTap({{superTab}});
    input.onTapped = [&](const TappedEvent&) {
      input.setEveryKeyDown(true);
      if (write(pipe, "h", 1) != 1) _exit(1);
    };
    if (write(pipe, "r", 1) != 1) _exit(1);
    waitUntil({&input}, [] { return false; });
    _exit(1);
  }

  XServer server_;
  pid_t child_ = 0;
  int news_ = -1;
};

TEST_F(KilledProcess, LeavesTheKeyboardFree) {
  ASSERT_EQ(hear(), 'r');
  const Program windowManager = startWindowManager(server_.display(), WindowManagerKeys::None);
  XClient client(server_.display());
  client.openWindow();
  client.takeFocus();
  client.press(KeyCodeLeftCommand);
  client.tap(KeyCodeTab);
  ASSERT_EQ(hear(), 'h');
  ASSERT_TRUE(waitUntil({&client}, [&] { return client.keyboardIsTaken; }));
  EXPECT_FALSE(client.grabKeyboard());
  const int returns = client.keyboardReturns;
  killChild();
  ASSERT_TRUE(waitUntil({&client}, [&] { return client.keyboardReturns > returns; }));
  client.release(KeyCodeLeftCommand);
  EXPECT_THAT(client.keys, IsEmpty());
  client.tap(KeyCodeA);
  ASSERT_TRUE(waitUntil({&client}, [&] { return client.keys.size() == 2; }));
  EXPECT_TRUE(client.grabKeyboard());
  EXPECT_TRUE(client.grabKey(KeyCodeTab, XCB_MOD_MASK_4));
}

TEST(InputConnection, SaysThatThereIsNoDisplay) {
  const auto connection = InputConnection::open(":987654");
  const auto* error = std::get_if<InputError>(&connection);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->kind, InputError::Kind::NoDisplay);
  EXPECT_EQ(error->message, "The X display cannot be opened.");
}

TEST(InputConnection, SaysThatTheServerLacksXTest) {
  const XServer server({"-extension", "XTEST"});
  const auto connection = InputConnection::open(server.display().c_str());
  const auto* error = std::get_if<InputError>(&connection);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->kind, InputError::Kind::NoXTest);
  EXPECT_EQ(error->message, "The X server lacks the XTEST extension.");
}

}  // namespace
}  // namespace qb::test
