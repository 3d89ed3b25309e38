#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "PlatformDesktop/DesktopPlatform.h"
#include "PlatformDesktop/InstanceLock.h"
#include "PlatformDesktop/StandardErrorLog.h"
#include "PlatformDesktop/session/SilentBus.h"
#include "Quillbox/activation/AppDelegate.h"
#include "QuillboxCommon/Log.h"

namespace {

/// With what the program ends.
enum ExitStatus : int {
  ExitStatusOrderly = 0,
  ExitStatusNoDisplay = 2,
  ExitStatusOtherInstanceSilent = 3,
  ExitStatusDisplayLacksExtension = 4,
  ExitStatusUsage = 64,
};

int fail(ExitStatus status, std::string_view message) {
  qb::log(message);
  return status;
}

int stopEvent = -1;

extern "C" void requestStop(int) {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(stopEvent, &one, sizeof one);
}

/// The signals by which a session or a terminal ends its programs make the main loop end.
void endLoopOnSignals() {
  stopEvent = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  struct sigaction action {};
  action.sa_handler = requestStop;
  action.sa_flags = SA_RESTART;
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
  signal(SIGPIPE, SIG_IGN);
}

/// Asked before Qt starts, which such a server may well satisfy.
std::string whatInputLacks() {
  const auto connection = qb::InputConnection::open(nullptr);
  const auto* const error = std::get_if<qb::InputError>(&connection);
  return error ? error->message : "";
}

int runOnDisplay(char* name, qb::InstanceLock& lock) {
  // Qt's own event loop wakes less and takes less memory than the one of GLib.
  qputenv("QT_NO_GLIB", "1");
  // Whatever Qt's programs use in this session. Not by the environment, which others inherit.
  char option[] = "-platform", platformName[] = "xcb";
  char* arguments[] = {name, option, platformName, nullptr};
  int count = 3;
  QApplication application(count, arguments);
  // What is written to files and read from them must not depend on the user's language.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setApplicationName("quillbox");
  QApplication::setApplicationDisplayName("Quillbox");
  auto created = qb::DesktopPlatform::create();
  if (const auto* error = std::get_if<qb::DesktopPlatformError>(&created)) {
    return fail(ExitStatusDisplayLacksExtension, error->message);
  }
  auto& platform = *std::get<std::unique_ptr<qb::DesktopPlatform>>(created);
  const QSocketNotifier stop(stopEvent, QSocketNotifier::Read);
  QObject::connect(&stop, &QSocketNotifier::activated, &application, [&platform] {
    std::uint64_t signals = 0;
    [[maybe_unused]] const ssize_t taken = read(stopEvent, &signals, sizeof signals);
    platform.applicationControl().terminate();
  });

  const QSocketNotifier starts(lock.descriptor(), QSocketNotifier::Read);
  const auto answerStarts = [&lock] {
    if (lock.answerOtherStarts() > 0) qb::log("Quillbox was started again, and goes on.");
  };
  QObject::connect(&starts, &QSocketNotifier::activated, &application, answerStarts);
  answerStarts();

  const auto delegate = qb::AppDelegate::create(platform);
  delegate->applicationDidFinishLaunching();
  // From here on the keys are taken. Whoever has started the program may wait for this line.
  qb::log("Quillbox is ready");
  // A dialog of the launch may have been up when the program was told to end.
  if (!platform.applicationControl().isTerminating()) QApplication::exec();
  delegate->applicationWillTerminate();
  platform.finishBackgroundWork();
  return ExitStatusOrderly;
}

int endWithoutLock(qb::InstanceLock::Failure failure) {
  switch (failure) {
    case qb::InstanceLock::Failure::HandedOver:
      std::puts("Quillbox is already running on this display, and goes on.");
      return ExitStatusOrderly;
    case qb::InstanceLock::Failure::NoAnswer:
      return fail(ExitStatusOtherInstanceSilent,
                  "Quillbox is already running on this display, but does not answer.");
    case qb::InstanceLock::Failure::NoDisplay:
      break;
  }
  return fail(ExitStatusNoDisplay,
              "Quillbox found no X server. Is DISPLAY set, and may you use that display?");
}

}  // namespace

int main(int argc, char* argv[]) {
  const qb::StandardErrorLog log;
  if (argc > 1) return fail(ExitStatusUsage, "Quillbox takes no arguments.");
  qb::InstanceLock::Failure failure{};
  const auto lock = qb::InstanceLock::acquire(failure);
  if (!lock) return endWithoutLock(failure);
  endLoopOnSignals();
  qb::turnSilentSessionBusOff();
  if (const std::string missing = whatInputLacks(); !missing.empty()) {
    return fail(ExitStatusDisplayLacksExtension, missing);
  }
  return runOnDisplay(argv[0], *lock);
}
