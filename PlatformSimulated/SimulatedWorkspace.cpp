#include "PlatformSimulated/SimulatedWorkspace.h"

#include <algorithm>
#include <utility>

namespace qb {

class SimulatedWorkspace::SimulatedRunningApplication : public RunningApplication {
 public:
  SimulatedRunningApplication(SimulatedWorkspace& workspace, ProcessSerialNumber number)
      : workspace_(workspace), number_(number) {}

  ProcessSerialNumber processNumber() const override { return information().processNumber; }
  std::int32_t processIdentifier() const override { return information().processIdentifier; }
  std::string bundleIdentifier() const override { return information().bundleIdentifier; }
  std::string localizedName() const override { return information().name; }
  bool isActive() const override {
    return !isTerminated() && workspace_.processes_.getFrontProcess() == number_;
  }
  bool isHidden() const override { return workspace_.processes_.isHidden(number_); }
  bool isTerminated() const override { return !workspace_.processes_.isRunning(number_); }

  bool activateWithOptions(std::uint32_t options) override {
    workspace_.activations_.push_back({number_, options});
    if (isTerminated()) return false;
    workspace_.processes_.bringToFront(number_);
    return true;
  }
  bool hide() override { return setHidden(true); }
  bool unhide() override { return setHidden(false); }
  bool terminate() override {
    if (isTerminated()) return false;
    workspace_.host_.schedule(0, [&processes = workspace_.processes_, number = number_] {
      const auto* process = processes.find(number);
      if (process != nullptr && !process->refusesToTerminate) processes.terminate(number);
    });
    return true;
  }
  bool forceTerminate() override {
    if (isTerminated()) return false;
    workspace_.host_.schedule(
        0, [&processes = workspace_.processes_, number = number_] { processes.terminate(number); });
    return true;
  }

 private:
  ProcessInformation information() const {
    const auto* process = workspace_.processes_.find(number_);
    return process == nullptr ? ProcessInformation{} : process->information;
  }
  bool setHidden(bool hidden) {
    if (isTerminated()) return false;
    workspace_.processes_.setHidden(number_, hidden);
    return true;
  }

  SimulatedWorkspace& workspace_;
  ProcessSerialNumber number_;
};

SimulatedWorkspace::SimulatedWorkspace(SimulatedProcesses& processes, SimulatedRunLoopHost& host)
    : processes_(processes), host_(host) {
  processes_.setRunningApplicationMaker([this](ProcessSerialNumber number) {
    return std::make_shared<SimulatedRunningApplication>(*this, number);
  });
}

std::vector<std::shared_ptr<RunningApplication>> SimulatedWorkspace::runningApplications() const {
  std::vector<std::shared_ptr<RunningApplication>> all;
  for (const auto& process : processes_.processes()) all.push_back(process.runningApplication);
  return all;
}

std::vector<std::shared_ptr<RunningApplication>>
SimulatedWorkspace::runningApplicationsWithBundleIdentifier(const std::string& identifier) const {
  std::vector<std::shared_ptr<RunningApplication>> matching;
  for (const auto& process : processes_.processes()) {
    if (process.information.bundleIdentifier == identifier) {
      matching.push_back(process.runningApplication);
    }
  }
  return matching;
}

std::shared_ptr<RunningApplication> SimulatedWorkspace::runningApplicationWithProcessIdentifier(
    std::int32_t processIdentifier) const {
  for (const auto& process : processes_.processes()) {
    if (process.information.processIdentifier == processIdentifier) {
      return process.runningApplication;
    }
  }
  return nullptr;
}

std::shared_ptr<RunningApplication> SimulatedWorkspace::menuBarOwningApplication() const {
  const auto* process = processes_.find(processes_.frontClient());
  return process == nullptr ? nullptr : process->runningApplication;
}

std::string SimulatedWorkspace::pathForApplicationWithBundleIdentifier(
    const std::string& identifier) const {
  const auto found = std::find_if(installed_.begin(), installed_.end(), [&](const auto& each) {
    return each.bundleIdentifier == identifier;
  });
  return found == installed_.end() ? std::string() : found->bundlePath;
}

std::string SimulatedWorkspace::bundleIdentifierOfApplicationAtPath(const std::string& path) const {
  const auto application = applicationAtPath(path);
  return application ? application->bundleIdentifier : std::string();
}

std::string SimulatedWorkspace::localizedNameOfApplicationAtPath(const std::string& path) const {
  const auto application = applicationAtPath(path);
  return application ? application->name : std::string();
}

bool SimulatedWorkspace::launchApplicationAtPath(const std::string& path, std::uint32_t options,
                                                 const LaunchConfiguration& configuration) {
  launches_.push_back({path, options, configuration.instance});
  const auto application = applicationAtPath(path);
  if (!application) return false;

  ProcessSerialNumber instance;
  for (const auto& process : processes_.processes()) {
    if (process.information.bundlePath != path) continue;
    instance = process.information.processNumber;
    if (instance == configuration.instance) break;
  }
  if (!instance.isNull()) {
    processes_.bringToFront(instance);
  } else {
    host_.schedule(0, [&processes = processes_, started = *application] {
      const ProcessSerialNumber number = processes.launch(started);
      if (!started.isBackgroundOnly) processes.bringToFront(number);
    });
  }
  return true;
}

void SimulatedWorkspace::install(SimulatedApplication application) {
  installed_.push_back(std::move(application));
}

void SimulatedWorkspace::uninstall(const std::string& bundlePath) {
  std::erase_if(installed_, [&](const auto& each) { return each.bundlePath == bundlePath; });
}

std::optional<SimulatedApplication> SimulatedWorkspace::applicationAtPath(
    const std::string& path) const {
  if (path.empty()) return std::nullopt;
  for (const SimulatedApplication& application : installed_) {
    if (application.bundlePath == path) return application;
  }
  for (const auto& process : processes_.processes()) {
    const ProcessInformation& information = process.information;
    if (information.bundlePath == path) {
      return SimulatedApplication{information.bundleIdentifier, information.name,
                                  information.bundlePath, information.isBackgroundOnly,
                                  information.isUIElement};
    }
  }
  return std::nullopt;
}

}  // namespace qb
