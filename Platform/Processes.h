#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// Names one process for as long as the session lasts: a number is never given again, so a program
/// that is started anew is another process.
struct ProcessSerialNumber {
  std::uint32_t highLongOfPSN = 0;
  std::uint32_t lowLongOfPSN = 0;

  /// The null number stands before all processes.
  bool isNull() const { return highLongOfPSN == 0 && lowLongOfPSN == 0; }
  friend bool operator==(const ProcessSerialNumber&, const ProcessSerialNumber&) = default;
};

/// What is known of a process (`ProcessInformationCopyDictionary`).
struct ProcessInformation {
  ProcessSerialNumber processNumber;
  std::int32_t processIdentifier = 0;
  std::string name;
  /// Empty for a process without a bundle.
  std::string bundlePath;
  std::string bundleIdentifier;
  /// "LSBackgroundOnly": it has nothing to show.
  bool isBackgroundOnly = false;
  /// "LSUIElement": it has windows but is no application to switch to.
  bool isUIElement = false;
};

/// The processes of the session that can show windows, this one among them. Main thread.
class Processes {
 public:
  virtual ~Processes() = default;
  virtual ProcessSerialNumber getCurrentProcess() const = 0;
  /// The process that has the keyboard; this one while its panel or a dialog of its own is key. The
  /// null number when there is none.
  virtual ProcessSerialNumber getFrontProcess() const = 0;
  /// The process after `number` in a fixed enumeration order, the first one after the null number;
  /// none at the end or when `number` has gone.
  virtual std::optional<ProcessSerialNumber> getNextProcess(ProcessSerialNumber number) const = 0;
  virtual std::optional<ProcessInformation> processInformation(
      ProcessSerialNumber number) const = 0;
  /// Brings the process's windows forward and gives it the keyboard. Nothing when it has gone.
  virtual void setFrontProcess(ProcessSerialNumber number) = 0;
  /// Signalled when a process comes or goes or another one gets to the front.
  virtual ChangeNotice& processesChanged() = 0;
};

}  // namespace qb
