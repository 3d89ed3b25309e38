// Runs the tests on a display of their own. With "--hold-alert" it is the program that shows an
// alert and waits for an answer, for the test of what is left when such a program dies.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <string_view>

#include "PlatformDesktop/dialogs/DesktopDialogs.h"
#include "PlatformDesktop/graphics/DesktopGraphics.h"
#include "PlatformDesktop/runloop/QtRunLoopHost.h"
#include "XServer.h"

namespace {

int holdAlert() {
  qb::QtRunLoopHost host;
  qb::RunLoop loop(host);
  host.setRunLoop(&loop);
  qb::DesktopDisplays displays;
  qb::DesktopGraphics graphics(host, nullptr, 1);
  const auto* const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  qb::DesktopWindowServer server(qb::ScreenFormats::query(x11->connection(), 0).value(), displays,
                                 host);
  qb::DesktopDialogs dialogs(server, graphics);
  qb::Alert alert = qb::Alert::withMessageText("Held", "OK", "", "", "It stays.");
  return dialogs.runModal(alert);
}

}  // namespace

int main(int argc, char* argv[]) {
  qputenv("QT_NO_GLIB", "1");
  if (argc > 1 && std::string_view(argv[1]) == "--hold-alert") {
    const QApplication application(argc, argv);
    return holdAlert();
  }
  ::testing::InitGoogleTest(&argc, argv);
  const qb::test::XServer server({"-screen", "0", "1600x1200x24"});
  qputenv("DISPLAY", server.display().c_str());
  const qb::test::Program windowManager =
      qb::test::startWindowManager(server.display(), qb::test::WindowManagerKeys::None);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
