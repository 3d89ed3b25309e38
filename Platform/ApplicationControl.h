#pragma once

#include <cstdint>
#include <string>

namespace qb {

/// How a helper program is started.
enum LaunchOptions : std::uint32_t {
  LaunchWithoutActivation = 0x200,
  LaunchAndHide = 0x100000,
};

/// This program itself: what it is, what belongs to it, and its end. Main thread.
class ApplicationControl {
 public:
  virtual ~ApplicationControl() = default;
  /// The file that this program is started by. Absolute.
  virtual std::string bundlePath() const = 0;
  /// The version that users are told, such as "1.0.0" ("CFBundleShortVersionString").
  virtual std::string shortVersionString() const = 0;
  /// Whose work it is, as users are told ("NSHumanReadableCopyright").
  virtual std::string humanReadableCopyright() const = 0;
  /// A text that belongs to the program, such as "LICENSE" of type "txt"; empty when there is none.
  virtual std::string textResource(const std::string& name, const std::string& type) const = 0;
  /// Words with the version of the system in them, such as "Version 10.9 (Build 13A603)". Its
  /// numbers are on the scale that the product's tests of the system version are made for.
  virtual std::string operatingSystemVersionString() const = 0;

  /// Starts the helper program of that identifier. False when there is none or it cannot start.
  virtual bool launchAppWithBundleIdentifier(const std::string& identifier,
                                             std::uint32_t options) = 0;
  /// Opens a file with what it belongs to; a preference pane is a program and runs. False when
  /// there is no such file.
  virtual bool openFile(const std::string& path) = 0;
  /// Opens a file with the program that scripts know by that name, such as "TextEdit"; where there
  /// is none, with what it belongs to.
  virtual bool openFile(const std::string& path, const std::string& withApplication) = 0;
  /// Opens an address in the user's browser. False when there is none.
  virtual bool openURL(const std::string& url) = 0;
  /// Ends this program in order: the main loop ends, then `applicationWillTerminate` is due.
  /// Answers at once. Harmless when repeated.
  virtual void terminate() = 0;
};

}  // namespace qb
