#include "PlatformDesktop/processes/DesktopWorkspace.h"

#include <unistd.h>

#include <filesystem>

#include "PlatformDesktop/processes/ApplicationFile.h"
#include "PlatformDesktop/processes/Launcher.h"

namespace qb {

namespace {

class DesktopRunningApplication : public RunningApplication {
 public:
  DesktopRunningApplication(DesktopProcesses& processes, ProcessSerialNumber number)
      : processes_(processes), number_(number) {}

  ProcessSerialNumber processNumber() const override {
    return isTerminated() ? ProcessSerialNumber{} : number_;
  }
  std::int32_t processIdentifier() const override { return information().processIdentifier; }
  std::string bundleIdentifier() const override { return information().bundleIdentifier; }
  std::string localizedName() const override { return information().name; }
  bool isActive() const override {
    return !isTerminated() && processes_.getFrontProcess() == number_;
  }
  bool isHidden() const override { return processes_.isHidden(number_); }
  bool isTerminated() const override { return processes_.isTerminated(number_); }
  bool activateWithOptions(std::uint32_t options) override {
    return processes_.bringForward(number_, (options & ApplicationActivateAllWindows) != 0);
  }
  bool hide() override { return processes_.hide(number_); }
  bool unhide() override { return processes_.unhide(number_); }
  bool terminate() override { return processes_.terminate(number_); }
  bool forceTerminate() override { return processes_.forceTerminate(number_); }

 private:
  ProcessInformation information() const {
    if (isTerminated()) return {};
    return processes_.lastInformation(number_).value_or(ProcessInformation{});
  }

  DesktopProcesses& processes_;
  ProcessSerialNumber number_;
};

bool isProgramFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::shared_ptr<RunningApplication> DesktopWorkspace::application(
    ProcessSerialNumber number) const {
  return std::make_shared<DesktopRunningApplication>(processes_, number);
}

std::vector<std::shared_ptr<RunningApplication>> DesktopWorkspace::runningApplications() const {
  std::vector<std::shared_ptr<RunningApplication>> result;
  for (const ProcessSerialNumber number : processes_.running())
    result.push_back(application(number));
  return result;
}

std::vector<std::shared_ptr<RunningApplication>>
DesktopWorkspace::runningApplicationsWithBundleIdentifier(const std::string& identifier) const {
  std::vector<std::shared_ptr<RunningApplication>> result;
  for (const ProcessSerialNumber number : processes_.running()) {
    const auto information = processes_.processInformation(number);
    if (information && information->bundleIdentifier == identifier) {
      result.push_back(application(number));
    }
  }
  return result;
}

std::shared_ptr<RunningApplication> DesktopWorkspace::runningApplicationWithProcessIdentifier(
    std::int32_t processIdentifier) const {
  for (const ProcessSerialNumber number : processes_.running()) {
    if (processIdentifier > 0 &&
        number.lowLongOfPSN == static_cast<std::uint32_t>(processIdentifier)) {
      return application(number);
    }
  }
  return nullptr;
}

std::shared_ptr<RunningApplication> DesktopWorkspace::menuBarOwningApplication() const {
  const ProcessSerialNumber number = processes_.activeProcess();
  if (number.isNull() || number == processes_.getCurrentProcess()) return nullptr;
  return application(number);
}

std::string DesktopWorkspace::pathForApplicationWithBundleIdentifier(
    const std::string& identifier) const {
  const DesktopEntry* const entry = catalogue_.index().entryWithIdentifier(identifier);
  return entry != nullptr ? entry->path : "";
}

std::string DesktopWorkspace::bundleIdentifierOfApplicationAtPath(const std::string& path) const {
  const ApplicationIndex& index = catalogue_.index();
  if (const DesktopEntry* const entry = index.entryAtPath(path)) return index.identifierOf(*entry);
  for (const ProcessSerialNumber number : processes_.running()) {
    const auto information = processes_.processInformation(number);
    if (information && information->bundlePath == path) return information->bundleIdentifier;
  }
  if (const auto entry = readDesktopEntry(path)) return entry->id;
  return isProgramFile(path) ? path.substr(path.rfind('/') + 1) : "";
}

std::string DesktopWorkspace::localizedNameOfApplicationAtPath(const std::string& path) const {
  if (const DesktopEntry* const entry = catalogue_.index().entryAtPath(path)) return entry->name;
  if (const auto entry = readDesktopEntry(path)) return entry->name;
  return isProgramFile(path) ? path.substr(path.rfind('/') + 1) : "";
}

ProcessSerialNumber DesktopWorkspace::instanceToBringForward(
    const std::string& path, const LaunchConfiguration& configuration) const {
  ProcessSerialNumber found;
  for (const ProcessSerialNumber number : processes_.running()) {
    const auto information = processes_.processInformation(number);
    if (!information || information->bundlePath != path) continue;
    if (configuration.instance == number) return number;
    if (found.isNull()) found = number;
  }
  return found;
}

bool DesktopWorkspace::launchApplicationAtPath(const std::string& path, std::uint32_t options,
                                               const LaunchConfiguration& configuration) {
  const ProcessSerialNumber instance = instanceToBringForward(path, configuration);
  if (!instance.isNull()) {
    return processes_.bringForward(instance, (options & ApplicationActivateAllWindows) != 0);
  }
  if (const DesktopEntry* const entry = catalogue_.index().entryAtPath(path)) {
    return startApplication(*entry);
  }
  if (const auto entry = readDesktopEntry(path)) return startApplication(*entry);
  return isProgramFile(path) && startDetached({path}, "");
}

}  // namespace qb
