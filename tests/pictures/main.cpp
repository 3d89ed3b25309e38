#include <gmock/gmock.h>

#include <QGuiApplication>
#include <string>

#include "Studio.h"

int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Neither the user's font nor the user's scale counts.
  qunsetenv("QT_SCALE_FACTOR");
  qunsetenv("QT_FONT_DPI");
  const QGuiApplication application(argc, argv);
  if (argc == 3 && std::string(argv[1]) == "--contact-sheet") {
    return qb::pictures::writeContactSheet(argv[2]) ? 0 : 1;
  }
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
