#include <gmock/gmock.h>

#include <QCoreApplication>

// Only the notice of what the X server tells needs Qt.
int main(int argc, char* argv[]) {
  qputenv("QT_NO_GLIB", "1");
  const QCoreApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
