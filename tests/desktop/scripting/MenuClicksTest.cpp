// Menu entries of real programs, of two toolkits, chosen by scripts.
#include <signal.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <optional>
#include <ostream>

#include "Listener.h"
#include "PrivateBus.h"
#include "ScriptDesk.h"
#include "support/MenuScripts.h"

namespace qb::test {
namespace {

using ::testing::ElementsAre;

struct Toolkit {
  const char* program;
  /// What users call it.
  const char* name;
};

std::ostream& operator<<(std::ostream& out, const Toolkit& toolkit) { return out << toolkit.name; }

/// On a desktop whose switch for assistive technologies is on before the programs start: those of
/// Qt look at it then and never again.
class MenuClicksTest : public ScriptDesk {
 protected:
  static void SetUpTestSuite() {
    // Where the bus finds what it can start.
    const QByteArray folders = qgetenv("XDG_DATA_DIRS");
    qunsetenv("XDG_DATA_DIRS");
    bus.emplace();
    qputenv("XDG_DATA_DIRS", folders);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    turnAccessibilityOn();
  }
  static void TearDownTestSuite() {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    bus.reset();
  }
  static void turnAccessibilityOn() {
    auto session = QDBusConnection::connectToBus(bus->address(), "session");
    QDBusMessage set = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                      "org.freedesktop.DBus.Properties", "Set");
    set << "org.a11y.Status"
        << "IsEnabled" << QVariant::fromValue(QDBusVariant(true));
    EXPECT_EQ(session.call(set).type(), QDBusMessage::ReplyMessage);
    QDBusConnection::disconnectFromBus("session");
  }

  std::unique_ptr<ScriptClient> startMenus(const Toolkit& toolkit) {
    auto client = std::make_unique<ScriptClient>(toolkit.program, QStringList());
    waitUntilInFront(*client);
    return client;
  }
  /// What becomes of the entry at the end of the path.
  std::string errorOfChoosing(std::initializer_list<std::string> path) {
    return errorOf(menuScript(path));
  }
  static std::string inSystemEvents(const std::string& lines) {
    return "tell application \"System Events\"\r" + lines + "\rend tell\r";
  }

  static constexpr TimeInterval longest = 60;
  static inline std::optional<PrivateBus> bus;
};

class MenusOfToolkitsTest : public MenuClicksTest, public testing::WithParamInterface<Toolkit> {
 protected:
  MenusOfToolkitsTest() : name(GetParam().name), client(startMenus(GetParam())) {}
  /// The end of the description of all that is in its menu bar.
  std::string ofBar() const { return " of menu bar 1 of process \"" + std::string(name) + "\""; }
  std::string ofMenu(const std::string& menu) const {
    return " of menu \"" + menu + "\" of menu bar item \"" + menu + "\"" + ofBar();
  }

  const char* name;
  std::unique_ptr<ScriptClient> client;
};

TEST_P(MenusOfToolkitsTest, AnEntryOfASubmenuIsChosen) {
  EXPECT_EQ(errorOfChoosing({name, "View", "Zoom", "More", "200 %"}), "");
  EXPECT_TRUE(client->tells("chose 200 %"));
}

TEST_P(MenusOfToolkitsTest, EntriesHaveTheNamesThatUsersSee) {
  EXPECT_EQ(errorOfChoosing({name, "File", "Open\u2026"}), "");
  EXPECT_TRUE(client->tells("chose Open"));
  EXPECT_EQ(errorOfChoosing({name, "File", "save as\u2026"}), "");
  EXPECT_TRUE(client->tells("chose Save As"));
  EXPECT_EQ(errorOfChoosing({name, "View", "Full Screen"}), "");
  EXPECT_TRUE(client->tells("chose Full Screen"));
}

TEST_P(MenusOfToolkitsTest, AProgramInTheBackgroundComesForwardForIt) {
  const auto plain = startClient("Plain");
  EXPECT_EQ(errorOf("tell application \"" + std::string(name) + "\" to activate\r" +
                    menuScript({name, "View", "Full Screen"})),
            "");
  EXPECT_TRUE(client->tells("chose Full Screen"));
  EXPECT_EQ(nameOfFrontProgram(), name);
}

TEST_P(MenusOfToolkitsTest, AMenuThatIsFilledWhenItOpensIsOpened) {
  EXPECT_EQ(errorOfChoosing({name, "File", "Recent", "letter.txt"}), "");
  EXPECT_TRUE(client->tells("chose letter.txt"));
  EXPECT_TRUE(client->tells("closed Recent"));
}

TEST_P(MenusOfToolkitsTest, AnEntryThatIsNotThereFailsAfterWhatWasBeforeIt) {
  EXPECT_EQ(errorOf(menuScript({name, "View", "Full Screen"}) +
                    menuClick({name, "File", "Recent", "book.txt"})),
            "System Events got an error: Can\u2019t get menu item \"book.txt\" of menu \"Recent\" "
            "of menu item \"Recent\"" +
                ofMenu("File") + ".");
  EXPECT_TRUE(client->tells("chose Full Screen"));
  EXPECT_TRUE(client->tells("closed Recent"));
}

TEST_P(MenusOfToolkitsTest, ADisabledEntryIsNotChosen) {
  EXPECT_EQ(errorOfChoosing({name, "File", "Close"}),
            "System Events got an error: Can\u2019t click menu item \"Close\"" + ofMenu("File") +
                ": it is disabled.");
}

TEST_P(MenusOfToolkitsTest, AnEntryThatAsksIsNotWaitedFor) {
  EXPECT_EQ(errorOfChoosing({name, "File", "Ask"}), "");
  EXPECT_TRUE(client->tells("asks"));
}

TEST_P(MenusOfToolkitsTest, AScriptCanLookBeforeItClicks) {
  const ScriptOutcome outcome = run(inSystemEvents(
      "tell menu 1 of menu bar item \"File\"" + ofBar() +
      "\r{exists menu item \"Close\", menu item \"Quit\" exists, enabled of menu item \"Close\", "
      "enabled of menu item 1, name of every menu item}\rend tell"));
  ASSERT_TRUE(outcome.succeeded());
  const auto& items = outcome.descriptor->items;
  EXPECT_EQ(items[0].stringValue, "true");
  EXPECT_EQ(items[1].stringValue, "false");
  EXPECT_EQ(items[2].stringValue, "false");
  EXPECT_EQ(items[3].stringValue, "true");
  EXPECT_THAT(items[4].items,
              ElementsAre(ScriptDescriptor{"Open\u2026", {}}, ScriptDescriptor{"Save As...", {}},
                          ScriptDescriptor{"", {}}, ScriptDescriptor{"Close", {}},
                          ScriptDescriptor{"Recent", {}}, ScriptDescriptor{"Ask", {}}));
}

TEST_P(MenusOfToolkitsTest, AProgramThatHangsIsGivenUp) {
  scripts.setPatience({0.2, 0.2, 0.2});
  ASSERT_EQ(kill(client->pid(), SIGSTOP), 0);
  EXPECT_EQ(errorOfChoosing({name, "View", "Full Screen"}),
            "System Events got an error: AppleEvent timed out.");
  // However often a script tries.
  const ScriptOutcome outcome = run(
      "set failures to 0\rrepeat 3000 times\rtry\rtell application \"System Events\" to click menu "
      "item 1" +
      ofMenu("File") + "\ron error number n\rset failures to failures - n\rend try\rend repeat\r" +
      "failures");
  ASSERT_EQ(kill(client->pid(), SIGCONT), 0);
  EXPECT_EQ(outcome.descriptor, (ScriptDescriptor{"5136000", {}}));
  scripts.setPatience({longest, longest, longest});
  EXPECT_EQ(errorOfChoosing({name, "View", "Full Screen"}), "");
  EXPECT_TRUE(client->tells("chose Full Screen"));
}

INSTANTIATE_TEST_SUITE_P(Toolkits, MenusOfToolkitsTest,
                         testing::Values(Toolkit{QT_MENUS, "Qt Menus"},
                                         Toolkit{GTK_MENUS, "GTK Menus"}),
                         [](const auto& each) { return std::string(each.param.name, 2); });

TEST_F(MenuClicksTest, OfTwoProgramsOfANameTheOneInFrontIsMeant) {
  const auto first = startMenus({QT_MENUS, "Qt Menus"});
  const auto second = startMenus({QT_MENUS, "Qt Menus"});
  EXPECT_EQ(errorOfChoosing({"Qt Menus", "View", "Full Screen"}), "");
  EXPECT_TRUE(second->tells("chose Full Screen"));
}

TEST_F(MenuClicksTest, AProgramThatDoesNotRun) {
  EXPECT_EQ(errorOfChoosing({"Qt Menus", "View", "Full Screen"}),
            "System Events got an error: Can\u2019t get process \"Qt Menus\".");
}

TEST_F(MenuClicksTest, AProgramThatShowsNoMenus) {
  const auto plain = startClient("Plain");
  scripts.setPatience({longest, longest, 0.05});
  EXPECT_EQ(errorOfChoosing({"Plain", "File", "Open"}),
            "System Events got an error: Can\u2019t get menu bar 1 of process \"Plain\": it shows "
            "no menus to other programs.");
}

TEST_F(MenuClicksTest, WithoutABusNothingIsReached) {
  const auto plain = startClient("Plain");
  const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  EXPECT_EQ(errorOfChoosing({"Plain", "File", "Open"}),
            "System Events got an error: The menus of other programs cannot be reached: there is "
            "no session bus.");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  EXPECT_EQ(errorOfChoosing({"Plain", "File", "Open"}),
            "System Events got an error: The menus of other programs cannot be reached: the "
            "session bus does not answer.");
  qputenv("DBUS_SESSION_BUS_ADDRESS", address);
}

TEST_F(MenuClicksTest, ABusThatHangsIsGivenUp) {
  const auto plain = startClient("Plain");
  const Listener hanging(5);
  scripts.setPatience({0.2, 0.2, 0.2});
  const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  qputenv("DBUS_SESSION_BUS_ADDRESS", hanging.address().c_str());
  EXPECT_EQ(
      errorOf("repeat 3000 times\rtry\rtell application \"System Events\" to exists menu bar 1 "
              "of process \"Plain\"\rend try\rend repeat\r" +
              menuScript({"Plain", "File", "Open"})),
      "System Events got an error: The menus of other programs cannot be reached: the "
      "session bus does not answer.");
  qputenv("DBUS_SESSION_BUS_ADDRESS", address);
}

}  // namespace
}  // namespace qb::test
