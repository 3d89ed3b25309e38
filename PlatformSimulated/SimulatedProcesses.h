#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Processes.h"
#include "Platform/Workspace.h"
#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/views/Event.h"

namespace qb {

/// An application as it is started or installed.
struct SimulatedApplication {
  std::string bundleIdentifier;
  std::string name;
  /// Empty for a process without a bundle.
  std::string bundlePath = {};
  bool isBackgroundOnly = false;
  bool isUIElement = false;
  friend bool operator==(const SimulatedApplication&, const SimulatedApplication&) = default;
};

/// The process table, and what the other programs of the small desktop do.
///
/// Processes are enumerated in order of launch, this process first. Who is in front of the other
/// programs follows a stack of recency: when the front one goes or hides, the one before it comes.
/// This process is the front one exactly while a window of its own is key; whoever is brought
/// forward meanwhile is in front when that window goes.
class SimulatedProcesses : public Processes {
 public:
  SimulatedProcesses();

  ProcessSerialNumber getCurrentProcess() const override { return ownProcess_; }
  ProcessSerialNumber getFrontProcess() const override;
  std::optional<ProcessSerialNumber> getNextProcess(ProcessSerialNumber number) const override;
  std::optional<ProcessInformation> processInformation(ProcessSerialNumber number) const override;
  void setFrontProcess(ProcessSerialNumber number) override;
  ChangeNotice& processesChanged() override { return processesChanged_; }

  // What happens on the desktop.
  /// Starts a process, with a number that no process ever had. It does not come to the front.
  ProcessSerialNumber launch(const SimulatedApplication& application);
  /// Starts a process that comes to the front, as when its user starts it.
  ProcessSerialNumber launchInFront(const SimulatedApplication& application);
  /// The process ends.
  void terminate(ProcessSerialNumber number);
  /// Its user switches to it; it is no longer hidden then. The null number leaves no program in
  /// front.
  void bringToFront(ProcessSerialNumber number);
  void setHidden(ProcessSerialNumber number, bool hidden);
  /// While false, nothing can be learned of the process; it goes on all the same.
  void setInformationAvailable(ProcessSerialNumber number, bool available);
  /// Keeps it from quitting when asked to (an alert of its own asks back). It can be forced.
  void setRefusesToTerminate(ProcessSerialNumber number, bool refuses);
  /// The window of another program, in points from the lower left of the primary display.
  void setWindowFrame(ProcessSerialNumber number, const Rect& frame);

  // What tests look at.
  bool isRunning(ProcessSerialNumber number) const { return find(number) != nullptr; }
  bool isHidden(ProcessSerialNumber number) const;
  /// The front process of the others, whether or not a window of this one is key; null for none.
  ProcessSerialNumber frontClient() const;
  /// Every call of `setFrontProcess`.
  const std::vector<ProcessSerialNumber>& frontProcessRequests() const {
    return frontProcessRequests_;
  }

  // For the other parts of the desktop.
  struct Process {
    ProcessInformation information;
    std::shared_ptr<RunningApplication> runningApplication;
    std::optional<Rect> windowFrame;
    bool isHidden = false;
    bool informationIsAvailable = true;
    bool refusesToTerminate = false;
  };
  const std::vector<Process>& processes() const { return processes_; }
  const Process* find(ProcessSerialNumber number) const;
  /// The program whose window is topmost at `point`; null for none.
  ProcessSerialNumber clientAt(Point point) const;
  /// A window of this process is key now, or none is any more.
  void setOwnWindowIsKey(bool isKey);
  /// Makes the running application of each process.
  void setRunningApplicationMaker(
      std::function<std::shared_ptr<RunningApplication>(ProcessSerialNumber)> maker);
  /// Called for every application that is started.
  void setOnLaunch(std::function<void(const SimulatedApplication&)> onLaunch) {
    onLaunch_ = std::move(onLaunch);
  }
  /// Called when the own process is to come forward.
  void setOnOwnProcessBroughtForward(Block block) {
    onOwnProcessBroughtForward_ = std::move(block);
  }

 private:
  Process* entry(ProcessSerialNumber number);
  void noteFrontMayHaveChanged(ProcessSerialNumber before);

  ProcessSerialNumber ownProcess_;
  /// In order of launch.
  std::vector<Process> processes_;
  /// From the least to the most recently front one.
  std::vector<ProcessSerialNumber> recency_;
  bool nothingInFront_ = false;
  bool ownWindowIsKey_ = false;
  std::uint32_t lastNumber_ = 0;
  std::function<std::shared_ptr<RunningApplication>(ProcessSerialNumber)> maker_;
  std::function<void(const SimulatedApplication&)> onLaunch_;
  Block onOwnProcessBroughtForward_;
  std::vector<ProcessSerialNumber> frontProcessRequests_;
  ChangeNotice processesChanged_;
};

}  // namespace qb
