#include <gmock/gmock.h>

#include <QApplication>

// Palettes need Qt, but no display.
int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_NO_GLIB", "1");
  const QApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
