#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Workspace.h"
#include "PlatformSimulated/SimulatedProcesses.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"

namespace qb {

/// Applications over the process table. This process is one of the running ones. What takes its
/// time on a real desktop, a start and a quit, happens in the next `runPending`.
class SimulatedWorkspace : public Workspace {
 public:
  SimulatedWorkspace(SimulatedProcesses& processes, SimulatedRunLoopHost& host);

  std::vector<std::shared_ptr<RunningApplication>> runningApplications() const override;
  std::vector<std::shared_ptr<RunningApplication>> runningApplicationsWithBundleIdentifier(
      const std::string& identifier) const override;
  std::shared_ptr<RunningApplication> runningApplicationWithProcessIdentifier(
      std::int32_t processIdentifier) const override;
  std::shared_ptr<RunningApplication> menuBarOwningApplication() const override;
  std::string pathForApplicationWithBundleIdentifier(const std::string& identifier) const override;
  std::string bundleIdentifierOfApplicationAtPath(const std::string& path) const override;
  std::string localizedNameOfApplicationAtPath(const std::string& path) const override;
  /// Of several running instances without a choice among them, the most recently launched one comes
  /// forward.
  bool launchApplicationAtPath(const std::string& path, std::uint32_t options,
                               const LaunchConfiguration& configuration) override;

  /// Known by its bundle path from now on, running or not. Whatever runs with a bundle path counts
  /// as installed too.
  void install(SimulatedApplication application);
  void uninstall(const std::string& bundlePath);
  /// Those, without what merely runs.
  const std::vector<SimulatedApplication>& installed() const { return installed_; }

  struct Activation {
    ProcessSerialNumber process;
    std::uint32_t options = 0;
    friend bool operator==(const Activation&, const Activation&) = default;
  };
  /// Every `activateWithOptions`.
  const std::vector<Activation>& activations() const { return activations_; }

  struct Launch {
    std::string path;
    std::uint32_t options = 0;
    std::optional<ProcessSerialNumber> instance;
    friend bool operator==(const Launch&, const Launch&) = default;
  };
  /// Every `launchApplicationAtPath`, those that failed too.
  const std::vector<Launch>& launches() const { return launches_; }

 private:
  class SimulatedRunningApplication;
  std::optional<SimulatedApplication> applicationAtPath(const std::string& path) const;

  SimulatedProcesses& processes_;
  SimulatedRunLoopHost& host_;
  std::vector<SimulatedApplication> installed_;
  std::vector<Activation> activations_;
  std::vector<Launch> launches_;
};

}  // namespace qb
