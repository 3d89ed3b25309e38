#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Processes.h"

namespace qb {

/// How an application is brought forward.
enum ApplicationActivationOptions : std::uint32_t {
  ApplicationActivateAllWindows = 1,
  ApplicationActivateIgnoringOtherApps = 2,
};

/// One running instance of an application. Results of commands are whether they could be sent. An
/// instance that has terminated answers none to everything. Main thread.
class RunningApplication {
 public:
  virtual ~RunningApplication() = default;
  virtual ProcessSerialNumber processNumber() const = 0;
  virtual std::int32_t processIdentifier() const = 0;
  virtual std::string bundleIdentifier() const = 0;
  virtual std::string localizedName() const = 0;
  /// It has the keyboard.
  virtual bool isActive() const = 0;
  virtual bool isHidden() const = 0;
  virtual bool isTerminated() const = 0;
  virtual bool activateWithOptions(std::uint32_t options) = 0;
  virtual bool hide() = 0;
  virtual bool unhide() = 0;
  /// Asks it to quit, as its user would.
  virtual bool terminate() = 0;
  virtual bool forceTerminate() = 0;
};

/// What a launch may be told.
struct LaunchConfiguration {
  /// Of several running instances, the one to bring forward. On this desktop many programs run one
  /// process a window, and switching to an item must reach just the one that it stands for.
  std::optional<ProcessSerialNumber> instance;
};

/// Applications, running and installed. A bundle path is the file that an application is known by:
/// its desktop entry, or the program file of one that has none. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// In order of launch.
  virtual std::vector<std::shared_ptr<RunningApplication>> runningApplications() const = 0;
  virtual std::vector<std::shared_ptr<RunningApplication>> runningApplicationsWithBundleIdentifier(
      const std::string& identifier) const = 0;
  virtual std::shared_ptr<RunningApplication> runningApplicationWithProcessIdentifier(
      std::int32_t processIdentifier) const = 0;
  /// The application that the user is in, this process aside; none when there is none.
  virtual std::shared_ptr<RunningApplication> menuBarOwningApplication() const = 0;
  /// The installed application that goes by an identifier; empty when there is none. One that is
  /// installed or removed while this process runs may count a moment later.
  virtual std::string pathForApplicationWithBundleIdentifier(
      const std::string& identifier) const = 0;
  /// Empty when `path` is no application.
  virtual std::string bundleIdentifierOfApplicationAtPath(const std::string& path) const = 0;
  /// What its users call it. Empty when `path` is no application.
  virtual std::string localizedNameOfApplicationAtPath(const std::string& path) const = 0;
  /// Brings a running application forward, or starts it. False when it can be neither.
  virtual bool launchApplicationAtPath(const std::string& path, std::uint32_t options,
                                       const LaunchConfiguration& configuration) = 0;
};

}  // namespace qb
