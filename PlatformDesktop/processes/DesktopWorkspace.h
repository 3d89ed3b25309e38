#pragma once

#include "Platform/Workspace.h"
#include "PlatformDesktop/processes/DesktopProcesses.h"

namespace qb {

/// Applications as desktop entries and the programs that run. Main thread.
class DesktopWorkspace : public Workspace {
 public:
  /// Both must outlive it and the running applications that it hands out.
  DesktopWorkspace(DesktopProcesses& processes, ApplicationCatalogue& catalogue)
      : processes_(processes), catalogue_(catalogue) {}

  std::vector<std::shared_ptr<RunningApplication>> runningApplications() const override;
  std::vector<std::shared_ptr<RunningApplication>> runningApplicationsWithBundleIdentifier(
      const std::string& identifier) const override;
  std::shared_ptr<RunningApplication> runningApplicationWithProcessIdentifier(
      std::int32_t processIdentifier) const override;
  std::shared_ptr<RunningApplication> menuBarOwningApplication() const override;
  std::string pathForApplicationWithBundleIdentifier(const std::string& identifier) const override;
  std::string bundleIdentifierOfApplicationAtPath(const std::string& path) const override;
  std::string localizedNameOfApplicationAtPath(const std::string& path) const override;
  bool launchApplicationAtPath(const std::string& path, std::uint32_t options,
                               const LaunchConfiguration& configuration) override;

 private:
  std::shared_ptr<RunningApplication> application(ProcessSerialNumber number) const;
  ProcessSerialNumber instanceToBringForward(const std::string& path,
                                             const LaunchConfiguration& configuration) const;

  DesktopProcesses& processes_;
  ApplicationCatalogue& catalogue_;
};

}  // namespace qb
