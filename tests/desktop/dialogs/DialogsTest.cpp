#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>

#include "DialogDesk.h"
#include "Platform/KeyCodes.h"
#include "PlatformDesktop/dialogs/DialogColors.h"
#include "XServer.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

constexpr std::uint16_t keyCodeA = 0, keyCodeB = 11;

class DialogsTest : public DialogDesk {
 protected:
  static Alert nameAlert(const std::shared_ptr<DialogTextField>& field) {
    Alert alert;
    alert.style = AlertStyleInformational;
    alert.messageText = "Change Tab Row Name";
    alert.informativeText = "Please enter the new name for this Tab Row:";
    alert.addButtonWithTitle("OK");
    alert.addButtonWithTitle("Cancel");
    alert.accessoryView = field;
    return alert;
  }
  static Alert question() {
    return Alert::withMessageText("Delete Tab Row", "Cancel", "Delete", "",
                                  "Really delete it?\rThis cannot be undone.");
  }
  static QPushButton* button(const QString& title) {
    for (auto* const each : dialog()->findChildren<QPushButton*>()) {
      if (each->text() == title) return each;
    }
    return nullptr;
  }
  const std::shared_ptr<DialogTextField> field =
      std::make_shared<DialogTextField>(Size{240, 22}, "old");
};

TEST_F(DialogsTest, ItTakesTypingAndReturnPressesTheDefaultButton) {
  Alert alert = nameAlert(field);
  when("shown", shown(), [&] {
    EXPECT_EQ(loop.currentMode(), RunLoopMode::ModalPanel);
    shoot("name");
    type({keyCodeA, keyCodeB});
  });
  when(
      "typed", [&] { return field->stringValue() == "ab"; }, [&] { type({KeyCodeReturn}); });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn);
  EXPECT_EQ(field->stringValue(), "ab");
}

TEST_F(DialogsTest, EscapePressesTheSafeButton) {
  Alert alert = nameAlert(field);
  when("shown", shown(), [&] { type({KeyCodeEscape}); });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn + 1);
  Alert choice = Alert::withMessageText("Replace", "Replace", "Stop", "", "There is one.");
  choice.escapeButtonIndex = 1;
  when("shown", shown(), [&] { type({KeyCodeEscape}); });
  EXPECT_EQ(run(choice), AlertAlternateReturn);
}

TEST_F(DialogsTest, AClickPressesAButton) {
  Alert alert = question();
  when("shown", shown(), [&] {
    shoot("question");
    ASSERT_TRUE(button("Delete"));
    clickAt(pixelOf(*button("Delete")));
  });
  EXPECT_EQ(run(alert), AlertAlternateReturn);
}

TEST_F(DialogsTest, TheDefaultButtonStandsAtTheRight) {
  Alert alert = Alert::withMessageText("Three", "First", "Second", "Third", "text");
  when("shown", shown(), [&] {
    EXPECT_GT(button("First")->x(), button("Second")->x());
    EXPECT_GT(button("Second")->x(), button("Third")->x());
    type({KeyCodeReturn});
  });
  EXPECT_EQ(run(alert), AlertDefaultReturn);
}

TEST_F(DialogsTest, TheCloseBoxIsEscape) {
  Alert alert = question();
  when("shown", shown(), [&] { clickAt(pixelOf(*dialog()->findChild<QToolButton*>())); });
  EXPECT_EQ(run(alert), AlertDefaultReturn);
}

TEST_F(DialogsTest, TheEndOfTheProgramIsEscape) {
  Alert alert = nameAlert(field);
  when("shown", shown(), [&] { QApplication::closeAllWindows(); });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn + 1);
}

TEST_F(DialogsTest, ItCanBeClosedByTheProgram) {
  Alert alert = question();
  when("shown", shown(), [&] { dialogs.abortModal(); });
  EXPECT_EQ(run(alert), ModalResponseAbort);
  EXPECT_FALSE(dialogs.isUp());
}

TEST_F(DialogsTest, ItStandsAboveThePanelAndStaysThere) {
  const auto panel = makePanel();
  Window floating(windowServer, Rect::make(0, 0, 400, 300));
  floating.setLevel(windowServer.windowLevelForKey(WindowLevelKeyFloating));
  Alert alert = nameAlert(field);
  QPoint middle;
  when("shown", shown(), [&] {
    middle = pixelOf(dialog()->rect().center());
    EXPECT_EQ(topmostAt(middle), idOf(*dialog()));
    shoot("above-panel");
    floating.setFrame(displays.screens().front().frame);
    floating.orderFront();
    type({keyCodeA});
  });
  when(
      "typed", [&] { return field->stringValue() == "a"; },
      [&] {
        EXPECT_EQ(topmostAt(middle), idOf(*dialog()));
        type({KeyCodeReturn});
      });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn);
}

TEST_F(DialogsTest, PressesOnThePanelBesideItDoNothing) {
  const auto panel = makePanel();
  int presses = 0;
  Window::setEventFilter([&](Window&, const Event&) {
    ++presses;
    return true;
  });
  Alert alert = question();
  when("shown", shown(), [&] {
    clickAt({20, 20});
    client.sync();
    clickAt(pixelOf(*button("Delete")));
  });
  EXPECT_EQ(run(alert), AlertAlternateReturn);
  Window::setEventFilter({});
  EXPECT_EQ(presses, 0);
}

TEST_F(DialogsTest, TheFocusGoesBackToWhoHadIt) {
  ASSERT_TRUE(clientGetsKeys());
  Alert alert = question();
  when("shown", shown(), [&] { type({KeyCodeReturn}); });
  run(alert);
  EXPECT_TRUE(waitFor([&] { return focusOwner() == client.window(); }));
  EXPECT_TRUE(clientGetsKeys());
}

TEST_F(DialogsTest, AUserWhoHasMovedOnKeepsTheFocusThere) {
  XClient other(qEnvironmentVariable("DISPLAY").toStdString());
  Alert alert = question();
  when("shown", shown(), [&] {
    other.openWindow();
    other.takeFocus();
  });
  when(
      "other has the focus", [&] { return focusOwner() == other.window(); },
      [&] { dialogs.abortModal(); });
  run(alert);
  EXPECT_EQ(focusOwner(), other.window());
}

TEST_F(DialogsTest, APressInItTakesTheKeyboardBack) {
  Alert alert = nameAlert(field);
  when("shown", shown(), [&] { client.takeFocus(); });
  when(
      "client has the focus", [&] { return focusOwner() == client.window(); },
      [&] { clickAt(pixelOf(*dialog()->findChild<QLineEdit*>())); });
  when("has the focus", shown(), [&] { type({keyCodeB}); });
  when(
      "typed", [&] { return field->stringValue().find('b') != std::string::npos; },
      [&] { type({KeyCodeReturn}); });
  EXPECT_EQ(run(alert), AlertFirstButtonReturn);
}

TEST_F(DialogsTest, AnOwnerThatHasGoneIsNoHarm) {
  auto other = std::make_unique<XClient>(qEnvironmentVariable("DISPLAY").toStdString());
  other->openWindow();
  other->takeFocus();
  ASSERT_TRUE(waitFor([&] { return focusOwner() == other->window(); }));
  Alert alert = question();
  when("shown", shown(), [&] {
    other.reset();
    type({KeyCodeReturn});
  });
  EXPECT_EQ(run(alert), AlertDefaultReturn);
}

TEST_F(DialogsTest, NothingIsGrabbed) {
  Alert alert = question();
  when("shown", shown(), [&] {
    EXPECT_TRUE(client.grabKeyboard());
    client.ungrabKeyboard();
    EXPECT_TRUE(client.grabPointer());
    client.ungrabPointer();
    dialogs.abortModal();
  });
  run(alert);
  EXPECT_TRUE(client.grabKeyboard());
  client.ungrabKeyboard();
  EXPECT_TRUE(client.grabPointer());
  client.ungrabPointer();
}

TEST_F(DialogsTest, AKilledProgramLeavesNothingGrabbedAndTheKeysGoOn) {
  ASSERT_TRUE(waitFor([&] { return focusOwner() == client.window(); }));
  Program program({QApplication::applicationFilePath().toStdString(), "--hold-alert"},
                  qEnvironmentVariable("DISPLAY").toStdString());
  ASSERT_TRUE(waitFor([&] { return focusOwner() != client.window(); }));
  program.end();
  EXPECT_TRUE(client.grabKeyboard());
  client.ungrabKeyboard();
  EXPECT_TRUE(client.grabPointer());
  client.ungrabPointer();
  EXPECT_TRUE(waitFor([&] { return focusOwner() == client.window(); }));
  EXPECT_TRUE(clientGetsKeys());
}

TEST_F(DialogsTest, ItIsMovedByItsTitleBar) {
  Alert alert = question();
  QPoint before;
  when("shown", shown(), [&] {
    before = dialog()->pos();
    const QPoint grip = pixelOf({60, 12});
    client.movePointer(grip.x(), grip.y());
    client.button(1, true);
    client.movePointer(grip.x() + 40, grip.y() + 60);
    client.button(1, false);
  });
  const auto letGo = shown();
  when(
      "moved and let go",
      [&] {
        return letGo() && dialog()->pos() != before &&
               QGuiApplication::mouseButtons() == Qt::NoButton;
      },
      [&] {
        const double scale = dialog()->devicePixelRatioF();
        EXPECT_EQ(dialog()->pos() - before, QPoint(40, 60) / scale);
        type({KeyCodeReturn});
      });
  run(alert);
}

TEST_F(DialogsTest, DialogsNest) {
  Alert outer = nameAlert(field);
  std::int32_t innerAnswer = 0;
  when("outer shown", shown(), [&] {
    executeBlockAfterDelay(
        [&] {
          Alert inner = question();
          innerAnswer = dialogs.runModal(inner);
        },
        0);
  });
  when("inner shown", shown(2), [&] { clickAt(pixelOf(*button("Delete"))); });
  when("outer has the focus again", shown(1), [&] { type({keyCodeA, KeyCodeReturn}); });
  EXPECT_EQ(run(outer), AlertFirstButtonReturn);
  EXPECT_EQ(innerAnswer, AlertAlternateReturn);
  EXPECT_EQ(field->stringValue(), "a");
}

TEST_F(DialogsTest, TheObserverHearsOfItsComingAndGoing) {
  std::vector<bool> heard;
  dialogs.setObserver([&] { heard.push_back(dialogs.isUp()); });
  Alert alert = question();
  when("shown", shown(), [&] { dialogs.abortModal(); });
  run(alert);
  EXPECT_THAT(heard, ElementsAre(true, false));
}

TEST_F(DialogsTest, ASpacerMakesItWideAndAPictureHasItsSize) {
  Alert alert = Alert::withMessageText("Wide", "OK", "Grant Quillbox Access", "", "text");
  alert.accessoryView = std::make_shared<DialogSpacer>(Size{600, 20});
  when("shown", shown(), [&] {
    EXPECT_GT(dialog()->width(), 600);
    dialogs.abortModal();
  });
  run(alert);
  const Image image = graphics.imageNamed("QuillboxLogo");
  ASSERT_TRUE(image);
  alert.accessoryView =
      std::make_shared<DialogImage>(Size{image.size().width + 80, image.size().height}, image);
  alert.style = AlertStyleCritical;
  when("shown", shown(), [&] {
    shoot("picture");
    dialogs.abortModal();
  });
  run(alert);
}

TEST_F(DialogsTest, AVeryLongTextStaysOnTheScreen) {
  std::string text;
  for (int line = 0; line < 200; ++line) text += "One of many lines\r";
  Alert alert = Alert::withMessageText(std::string(300, 'W'), "OK", "", "", text);
  when("shown", shown(), [&] {
    shoot("long");
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_TRUE(screen.contains(dialog()->geometry()));
    EXPECT_TRUE(
        screen.contains(QRect(button("OK")->mapToGlobal(QPoint(0, 0)), button("OK")->size())));
    type({KeyCodeReturn});
  });
  EXPECT_EQ(run(alert), AlertDefaultReturn);
}

TEST_F(DialogsTest, ADarkDesktopHasDarkDialogs) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(DialogColors::dark().palette());
  Alert alert = nameAlert(field);
  when("shown", shown(), [&] {
    shoot("name-dark");
    const QImage picture = dialog()->grab().toImage();
    EXPECT_EQ(picture.pixelColor(picture.width() / 2, picture.height() - 6),
              DialogColors::dark().background);
    dialogs.abortModal();
  });
  run(alert);
  alert = question();
  when("shown", shown(), [&] {
    shoot("question-dark");
    dialogs.abortModal();
  });
  run(alert);
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace qb::test
