// The resident program, which at its start asks for the hot key of the identifier that it is given,
// and then goes on with it: "hotkeydialog IDENTIFIER NAME". Says "dialog closed" in between.
#include <QApplication>
#include <clocale>
#include <memory>
#include <variant>

#include "PlatformDesktop/DesktopPlatform.h"
#include "PlatformDesktop/StandardErrorLog.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/windows/SetHotKeyWindowController.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"

int main(int argc, char* argv[]) {
  const qb::StandardErrorLog log;
  if (argc < 3) return 64;
  qputenv("QT_NO_GLIB", "1");
  QApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("quillbox");
  auto created = qb::DesktopPlatform::create();
  if (const auto* error = std::get_if<qb::DesktopPlatformError>(&created)) {
    qb::log(error->message);
    return 4;
  }
  auto& platform = *std::get<std::unique_ptr<qb::DesktopPlatform>>(created);
  const auto delegate = qb::AppDelegate::create(platform);
  delegate->applicationDidFinishLaunching();
  qb::executeBlockAfterDelay(
      [&] {
        qb::SetHotKeyWindowController(
            *qb::quillbox,
            qb::stringWithFormat("Please define the Hot Key for %@:", std::string(argv[2])),
            argv[1])
            .runModal();
        qb::quillbox->maintainItemHotKeys();
        qb::log("dialog closed");
      },
      0);
  QApplication::exec();
  delegate->applicationWillTerminate();
  return 0;
}
