#include <gmock/gmock.h>

#include <QApplication>

// Controls need Qt, but no display; and no test talks to the session of whoever runs it.
int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_NO_GLIB", "1");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  const QApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
