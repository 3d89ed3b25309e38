#include <QApplication>
#include <QPalette>
#include <QPushButton>
#include <stdexcept>

#include "DialogDesk.h"
#include "Platform/KeyCodes.h"
#include "PlatformDesktop/dialogs/DialogColors.h"
#include "PlatformDesktop/dialogs/KeyRecorderView.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint16_t keyCodeT = 17;

/// Notes what it hears, and leaves Return, Esc and Tab to the dialog.
class NotingRecorder : public DialogKeyRecorder {
 public:
  NotingRecorder() : DialogKeyRecorder({340, 62}) { present.text = "Click to set a hot key"; }

  Look look() const override { return present; }
  bool isListening() const override { return present.isListening; }
  void listen() override { setListening(true); }
  void stopListening() override { setListening(false); }
  void clear() override { ++clears; }
  bool keyDown(std::uint16_t keyCode, EventFlags flags) override {
    if (keyCode == KeyCodeReturn || keyCode == KeyCodeTab || keyCode == KeyCodeEscape) {
      stopListening();
      return false;
    }
    heard.push_back({keyCode, flags});
    return true;
  }
  void show(const Look& look) {
    present = look;
    changed();
  }

  Look present;
  std::vector<std::pair<std::uint16_t, EventFlags>> heard;
  int clears = 0;

 private:
  void setListening(bool listening) {
    present.isListening = listening;
    changed();
  }
};

class KeyRecorderTest : public DialogDesk {
 protected:
  KeyRecorderTest() {
    alert.style = AlertStyleInformational;
    alert.icon = graphics.imageNamed("QuillboxLogo");
    alert.messageText = "Set Hot Key";
    alert.informativeText = "Please define the Hot Key for Notes:";
    alert.addButtonWithTitle("OK");
    alert.addButtonWithTitle("Cancel");
    alert.accessoryView = recorder;
  }
  static KeyRecorderView& view() {
    for (QWidget* const each : dialog()->findChildren<QWidget*>()) {
      if (auto* const found = dynamic_cast<KeyRecorderView*>(each)) return *found;
    }
    throw std::logic_error("no recorder");
  }
  void deliver(std::uint16_t keyCode, EventFlags flags = 0, bool isRepeat = false) {
    dialogs.deliverKey({.type = EventTypeKeyDown,
                        .flags = flags,
                        .keyCode = keyCode,
                        .isRepeat = isRepeat,
                        .location = {},
                        .unflippedLocation = {}});
  }

  const std::shared_ptr<NotingRecorder> recorder = std::make_shared<NotingRecorder>();
  Alert alert;
};

TEST_F(KeyRecorderTest, ItListensFromTheStartToTheEnd) {
  EXPECT_FALSE(dialogs.listens());
  std::vector<bool> heard;
  dialogs.setObserver([&] { heard.push_back(dialogs.listens()); });
  when("shown", shown(), [&] {
    EXPECT_TRUE(dialogs.listens());
    EXPECT_EQ(heard.back(), true);
    dialogs.abortModal();
  });
  run(alert);
  EXPECT_FALSE(recorder->isListening());
  EXPECT_FALSE(dialogs.listens());
  EXPECT_EQ(heard.back(), false);
}

TEST_F(KeyRecorderTest, ItHearsTheKeysThatAreKept) {
  when("shown", shown(), [&] {
    deliver(keyCodeT, EventFlagControl);
    deliver(keyCodeT, EventFlagControl, true);
    dialogs.deliverKey({.type = EventTypeKeyUp,
                        .flags = 0,
                        .keyCode = keyCodeT,
                        .isRepeat = false,
                        .location = {},
                        .unflippedLocation = {}});
    EXPECT_THAT(recorder->heard, ElementsAre(std::pair(keyCodeT, EventFlagControl)));
    recorder->stopListening();
    deliver(keyCodeT, EventFlagControl);
    EXPECT_EQ(recorder->heard.size(), 1U);
    dialogs.abortModal();
  });
  run(alert);
}

TEST_F(KeyRecorderTest, ReturnThatItLeavesConfirms) {
  when("shown", shown(), [&] { deliver(KeyCodeReturn); });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn);
}

TEST_F(KeyRecorderTest, EscThatItLeavesCancels) {
  when("shown", shown(), [&] { deliver(KeyCodeEscape); });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn + 1);
}

TEST_F(KeyRecorderTest, TabThatItLeavesGoesOnToTheButtons) {
  when("shown", shown(), [&] {
    EXPECT_EQ(dialog()->focusWidget(), &view());
    deliver(KeyCodeTab);
    EXPECT_TRUE(dynamic_cast<QPushButton*>(dialog()->focusWidget()));
    deliver(KeyCodeSpace);
  });
  EXPECT_NE(run(alert), ModalResponseAbort);
}

TEST_F(KeyRecorderTest, APressMakesItListenOrStop) {
  when("shown", shown(), [&] { clickAt(pixelOf(view())); });
  when(
      "stopped", [&] { return !recorder->isListening(); }, [&] { clickAt(pixelOf(view())); });
  when(
      "listens again", [&] { return recorder->isListening(); }, [&] { dialogs.abortModal(); });
  run(alert);
}

TEST_F(KeyRecorderTest, SpaceMakesItListen) {
  when("shown", shown(), [&] {
    recorder->stopListening();
    type({KeyCodeSpace});
  });
  when(
      "listens again", [&] { return recorder->isListening(); }, [&] { dialogs.abortModal(); });
  run(alert);
}

TEST_F(KeyRecorderTest, ItsBoxClears) {
  when("shown", shown(), [&] {
    EXPECT_TRUE(view().clearBox().isEmpty());
    recorder->show({.keyCaps = {"Ctrl", "T"}, .text = "", .hint = "", .canClear = true});
    const QRect box = view().clearBox();
    clickAt(view().mapToGlobal(box.center()) * view().devicePixelRatioF());
  });
  when(
      "cleared", [&] { return recorder->clears == 1; },
      [&] {
        EXPECT_FALSE(recorder->isListening());
        dialogs.abortModal();
      });
  run(alert);
}

TEST_F(KeyRecorderTest, AUserWhoMovesOnStopsIt) {
  when("shown", shown(), [&] {
    EXPECT_TRUE(recorder->isListening());
    client.takeFocus();
  });
  when(
      "stopped", [&] { return !recorder->isListening(); }, [&] { dialogs.abortModal(); });
  run(alert);
}

TEST_F(KeyRecorderTest, AKeyboardThatIsKeptDoesNotStopIt) {
  when("shown", shown(), [&] {
    // As this program does it by its other connection.
    ASSERT_TRUE(client.grabKeyboard());
    client.ungrabKeyboard();
    // It comes after what the grab has brought.
    type({KeyCodeTab});
  });
  when(
      "Tab has come", [&] { return dialog()->focusWidget() != &view(); },
      [&] {
        EXPECT_TRUE(recorder->isListening());
        dialogs.abortModal();
      });
  run(alert);
}

TEST_F(KeyRecorderTest, UnderAnotherDialogItHearsNothing) {
  when("shown", shown(), [&] {
    executeBlockAfterDelay(
        [&] {
          Alert taken = Alert::withMessageText("Hot Key Taken", "OK", "", "",
                                               "That Hot Key is already in use.");
          EXPECT_EQ(dialogs.runModal(taken), AlertDefaultReturn);
        },
        0);
  });
  when("second shown", shown(2), [&] {
    EXPECT_FALSE(dialogs.listens());
    shoot("hot-key-taken");
    type({KeyCodeReturn});
  });
  when("first alone", shown(1), [&] {
    EXPECT_TRUE(recorder->isListening());
    EXPECT_TRUE(dialogs.listens());
    EXPECT_THAT(recorder->heard, IsEmpty());
    dialogs.abortModal();
  });
  run(alert);
}

TEST_F(KeyRecorderTest, ItTellsWhatItShows) {
  when("shown", shown(), [&] {
    EXPECT_EQ(view().accessibleName(), "Click to set a hot key");
    recorder->show({.keyCaps = {"Ctrl", "Alt", "T"}, .text = "", .hint = "Click to change"});
    EXPECT_EQ(view().accessibleName(), "Ctrl+Alt+T");
    EXPECT_EQ(view().accessibleDescription(), "Click to change");
    dialogs.abortModal();
  });
  run(alert);
}

/// Shows each look and takes a picture of it.
class KeyRecorderLooks : public KeyRecorderTest {
 protected:
  void shootAll(const std::string& suffix) {
    using Look = DialogKeyRecorder::Look;
    const std::pair<const char*, Look> looks[] = {
        {"listening",
         {.keyCaps = {}, .text = "Press the keys", .hint = "Esc cancels", .isListening = true}},
        {"held",
         {.keyCaps = {"Ctrl", "Alt"},
          .text = "",
          .hint = "Esc keeps the hot key, Backspace clears it",
          .isListening = true}},
        {"warning",
         {.keyCaps = {},
          .text = "Press the keys",
          .hint = "Another program or the desktop uses it already.",
          .isListening = true,
          .warns = true}},
        {"set",
         {.keyCaps = {"Ctrl", "Alt", "Shift", "Super", "Volume Down"},
          .text = "",
          .hint = "Click to change",
          .canClear = true}},
        {"empty", {.keyCaps = {}, .text = "Click to set a hot key", .hint = ""}},
    };
    for (const auto& [name, look] : looks) {
      when(name, shown(), [this, name = name, look = look, suffix] {
        recorder->show(look);
        const QImage picture = view().grab().toImage();
        EXPECT_EQ(picture.pixelColor(picture.width() / 20, picture.height() / 4),
                  DialogColors::current().field);
        view().repaint();
        shoot("recorder-" + std::string(name) + suffix);
      });
    }
    when("all shown", shown(), [&] { dialogs.abortModal(); });
    run(alert);
  }
};

TEST_F(KeyRecorderLooks, OnALightDesktop) { shootAll(""); }

TEST_F(KeyRecorderLooks, OnADarkDesktop) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(DialogColors::dark().palette());
  shootAll("-dark");
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace qb::test
