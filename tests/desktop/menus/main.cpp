// Runs the tests on a display of their own. With "--hold-menu" it is the program that opens a menu
// and keeps it open, for the test of what is left when such a program dies.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <string_view>

#include "PlatformDesktop/displays/DesktopDisplays.h"
#include "PlatformDesktop/menus/DesktopMenuPresenter.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "XServer.h"

namespace {

int holdMenu() {
  qb::QtRunLoopHost host;
  qb::RunLoop loop(host);
  host.setRunLoop(&loop);
  qb::DesktopDisplays displays;
  const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  qb::DesktopWindowServer server(qb::ScreenFormats::query(x11->connection(), 0).value(), displays,
                                 host);
  qb::DesktopMenuPresenter presenter(server);
  const auto menu = qb::Menu::create("Held");
  menu->addItem(qb::MenuItem::create("Entry"));
  presenter.popUpMenu(menu, nullptr, {300, 300});
  return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
  qputenv("QT_NO_GLIB", "1");
  if (argc > 1 && std::string_view(argv[1]) == "--hold-menu") {
    const QApplication application(argc, argv);
    return holdMenu();
  }
  ::testing::InitGoogleTest(&argc, argv);
  const qb::test::XServer server({"-screen", "0", "1200x900x24"});
  qputenv("DISPLAY", server.display().c_str());
  const qb::test::Program windowManager =
      qb::test::startWindowManager(server.display(), qb::test::WindowManagerKeys::None);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
