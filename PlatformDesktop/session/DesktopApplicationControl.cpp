#include "PlatformDesktop/session/DesktopApplicationControl.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <utility>

#include "PlatformDesktop/processes/DesktopFolders.h"
#include "PlatformDesktop/processes/Launcher.h"
#include "PlatformDesktop/processes/ProgramFile.h"
#include "QuillboxCommon/Log.h"

/// A static library's resources have to be asked for, outside any namespace.
static void initializeTexts() { Q_INIT_RESOURCE(quillbox_texts); }

namespace qb {

namespace {

/// The product's tests of the system version know a scale of numbers that this system is not on.
/// The first version after "Mountain Lion" is where it stands: access is granted to one program at
/// a time, and files carry tags by name.
constexpr const char* systemVersion = "Version 10.9";

constexpr const char* relauncherIdentifier = "vorlane.Quillbox-Relauncher";
/// The preference program's place where every user has it; another one in the user's own folder
/// is opened only if there is such a program.
constexpr const char* preferencePane = "/Library/PreferencePanes/QuillboxPrefrences.prefPane";

bool isProgram(const std::string& path) {
  const QFileInfo file(QString::fromStdString(path));
  return file.isFile() && file.isExecutable();
}

std::vector<std::string> ownArguments() {
  std::vector<std::string> arguments;
  const QStringList all = QCoreApplication::arguments();
  for (int i = 1; i < all.size(); ++i) arguments.push_back(all.at(i).toStdString());
  return arguments;
}

}  // namespace

DesktopApplicationControl::DesktopApplicationControl(QtRunLoopHost& runLoopHost)
    : runLoopHost_(runLoopHost), bundlePath_(programFileOfProcess(getpid()).path) {}

std::string DesktopApplicationControl::shortVersionString() const { return QUILLBOX_VERSION; }

std::string DesktopApplicationControl::humanReadableCopyright() const {
  return "Copyright \u00A9 2026 Vorlane";
}

std::string DesktopApplicationControl::textResource(const std::string& name,
                                                    const std::string& type) const {
  initializeTexts();
  QFile file(QString::fromStdString(":/quillbox/texts/" + name + "." + type));
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "";
}

std::string DesktopApplicationControl::operatingSystemVersionString() const {
  return std::string(systemVersion) + " (" + QSysInfo::prettyProductName().toStdString() + ")";
}

std::string DesktopApplicationControl::programBeside(const std::string& name) const {
  return bundlePath_.substr(0, bundlePath_.rfind('/') + 1) + name;
}

bool DesktopApplicationControl::launchAppWithBundleIdentifier(const std::string& identifier,
                                                              std::uint32_t /*options*/) {
  const bool started = identifier == relauncherIdentifier && launchRelauncher();
  if (!started && !isTerminating_)
    log("There is no helper program " + identifier + " beside " + bundlePath_ + ".");
  return started;
}

bool DesktopApplicationControl::start(const std::vector<std::string>& words,
                                      const std::string& folder) const {
  return !isTerminating_ && startDetached(words, folder);
}

bool DesktopApplicationControl::launchRelauncher() const {
  // The helper gets hold of this very process, whose number may belong to another one later.
  const int process = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
  if (process < 0) return false;
  fcntl(process, F_SETFD, 0);
  std::vector<std::string> words{programBeside("quillbox-relauncher"), std::to_string(process),
                                 bundlePath_};
  for (std::string& argument : ownArguments()) words.push_back(std::move(argument));
  const std::string folder = QFileInfo(QStringLiteral(".")).absoluteFilePath().toStdString();
  const bool started = isProgram(words.front()) && start(words, folder);
  close(process);
  return started;
}

bool DesktopApplicationControl::openPreferences(const std::string& page) const {
  const std::string program = programBeside("quillbox-preferences");
  if (!isProgram(program)) return false;
  std::vector<std::string> words{program};
  if (!page.empty()) words.push_back("--page=" + page);
  return start(words, {});
}

bool DesktopApplicationControl::openFile(const std::string& path) {
  if (path == preferencePane) return openPreferences({});
  std::string file = path;
  if (file.starts_with("~/")) file = DesktopFolders::home() + file.substr(1);
  if (!QFileInfo::exists(QString::fromStdString(file))) return false;
  if (file.ends_with(".prefPane")) return isProgram(file) && start({file}, {});
  if (!isTerminating_ && openApplication_ && openApplication_(file)) return true;
  return openByDesktop(file);
}

bool DesktopApplicationControl::openFile(const std::string& path,
                                         const std::string& withApplication) {
  if (!QFileInfo::exists(QString::fromStdString(path))) return false;
  if (!isTerminating_ && openDocument_ && openDocument_(path, withApplication)) return true;
  return openByDesktop(path);
}

bool DesktopApplicationControl::openURL(const std::string& url) { return openByDesktop(url); }

bool DesktopApplicationControl::openByDesktop(const std::string& document) const {
  const bool started = start({"xdg-open", document}, {});
  if (!started && !isTerminating_) {
    log(document +
        " cannot be opened: there is no xdg-open, which belongs to the package xdg-utils.");
  }
  return started;
}

void DesktopApplicationControl::terminate() {
  isTerminating_ = true;
  runLoopHost_.endNestedRuns();
  // Asking the windows first, as `quit` does, would let any of them refuse.
  QCoreApplication::exit();
}

}  // namespace qb
