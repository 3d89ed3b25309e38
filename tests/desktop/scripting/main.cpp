// Runs the tests on a display and with a home of their own.
#include <gmock/gmock.h>

#include <QApplication>

#include "TemporaryFolder.h"
#include "XServer.h"

namespace {

void installProgram(const qb::TemporaryFolder& home, const std::string& id, const std::string& name,
                    const std::string& command, const std::string& windowClass = "") {
  home.write(".local/share/applications/" + id + ".desktop",
             "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + command +
                 "\nStartupWMClass=" + (windowClass.empty() ? name : windowClass) + "\n");
}

void install(const qb::TemporaryFolder& home, const std::string& id, const std::string& name,
             const std::string& more = "") {
  installProgram(home, id, name, SCRIPT_TEST_CLIENT " " + name + " 90 90 200 100 404040" + more);
}

}  // namespace

int main(int argc, char* argv[]) {
  ::testing::InitGoogleMock(&argc, argv);
  const qb::TemporaryFolder home;
  install(home, "org.test.plain", "Plain");
  install(home, "org.test.term", "Term", "\nCategories=System;TerminalEmulator;");
  installProgram(home, "org.test.mute", "Mute", "true");
  installProgram(home, "org.test.qtmenus", "Qt Menus", QT_MENUS, "Qtmenus");
  installProgram(home, "org.test.gtkmenus", "GTK Menus", GTK_MENUS, "Gtkmenus");
  install(home, "org.test.files", "Files");
  install(home, "gnome-control-center", "Control");
  home.write(".config/mimeapps.list",
             "[Default Applications]\ninode/directory=org.test.files.desktop\n");
  qputenv("HOME", home.path().c_str());
  for (const char* name :
       {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "DBUS_SESSION_BUS_ADDRESS"}) {
    qunsetenv(name);
  }
  qputenv("XDG_RUNTIME_DIR", home.path().c_str());
  qputenv("QT_NO_GLIB", "1");
  const qb::test::XServer server({"-screen", "0", "1280x800x24"});
  qputenv("DISPLAY", server.display().c_str());
  const qb::test::Program windowManager =
      qb::test::startWindowManager(server.display(), qb::test::WindowManagerKeys::None);
  // The window manager has its themes there.
  qputenv("XDG_DATA_DIRS", "/nonexistent");
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
