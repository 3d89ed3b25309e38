#include "ResidentProgram.h"

#include <QApplication>
#include <clocale>
#include <memory>
#include <variant>

#include "PlatformDesktop/DesktopPlatform.h"
#include "PlatformDesktop/StandardErrorLog.h"
#include "Quillbox/activation/AppDelegate.h"
#include "QuillboxCommon/Log.h"

namespace qb::test {

int runResidentProgram(int argc, char* argv[], const std::function<void(AppDelegate&)>& launched) {
  const StandardErrorLog sink;
  qputenv("QT_NO_GLIB", "1");
  const QApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("quillbox");
  auto created = DesktopPlatform::create();
  if (const auto* error = std::get_if<DesktopPlatformError>(&created)) {
    log(error->message);
    return 4;
  }
  auto& platform = *std::get<std::unique_ptr<DesktopPlatform>>(created);
  const auto delegate = AppDelegate::create(platform);
  delegate->applicationDidFinishLaunching();
  launched(*delegate);
  QApplication::exec();
  delegate->applicationWillTerminate();
  return 0;
}

}  // namespace qb::test
