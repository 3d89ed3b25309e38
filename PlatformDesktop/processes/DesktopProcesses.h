#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Platform/Processes.h"
#include "PlatformDesktop/processes/ApplicationCatalogue.h"
#include "PlatformDesktop/processes/ProgramWindows.h"
#include "PlatformDesktop/processes/WindowTracker.h"

namespace qb {

/// The programs that have windows. Windows belong together by process id or, where a program does
/// not tell it, by their group leader. Main thread.
class DesktopProcesses : public QObject, public Processes {
 public:
  /// `catalogue` must outlive it. `windowsOfPrograms` is told which window stands for a path.
  DesktopProcesses(ApplicationCatalogue& catalogue,
                   std::shared_ptr<ProgramWindows> windowsOfPrograms);

  ProcessSerialNumber getCurrentProcess() const override;
  ProcessSerialNumber getFrontProcess() const override;
  std::optional<ProcessSerialNumber> getNextProcess(ProcessSerialNumber number) const override;
  std::optional<ProcessInformation> processInformation(ProcessSerialNumber number) const override;
  void setFrontProcess(ProcessSerialNumber number) override;
  ChangeNotice& processesChanged() override { return changed_; }

  /// While true, this process is the front one: its panel takes the keys.
  void setOwnWindowIsKey(bool isKey);
  /// Says the server's time of the user's last key or button.
  void setUserTime(std::function<std::uint32_t()> time) { userTime_ = std::move(time); }
  /// Takes in what the X server has told; before the thread sleeps.
  void update() const;
  /// To be called when the catalogue has changed. A program that turns out to belong to another
  /// application becomes another process: what it was before is over.
  void catalogueHasChanged();

  // For the workspace.
  /// In order of the first window, this process not among them.
  std::vector<ProcessSerialNumber> running() const;
  /// The process that the X server gives the keyboard to; none: the null number.
  ProcessSerialNumber activeProcess() const;
  /// Its window; 0 when there is none.
  xcb_window_t activeWindow() const;
  /// All windows that the window manager knows, this process's too.
  std::vector<xcb_window_t> windows() const;
  /// Of running ones and of those that have lost their windows.
  bool isTerminated(ProcessSerialNumber number) const;
  std::optional<ProcessInformation> lastInformation(ProcessSerialNumber number) const;
  bool isHidden(ProcessSerialNumber number) const;
  /// These answer whether there was a window, or a process, to send anything to.
  bool bringForward(ProcessSerialNumber number, bool allWindows);
  bool hide(ProcessSerialNumber number);
  bool unhide(ProcessSerialNumber number);
  bool terminate(ProcessSerialNumber number);
  bool forceTerminate(ProcessSerialNumber number);

 private:
  struct Program {
    ProcessSerialNumber number;
    /// Known when it was first asked for; only a change of the catalogue changes it.
    std::optional<ProcessInformation> information;
    std::string startMark;
    std::vector<xcb_window_t> windows;
  };

  void regroup() const;
  Program* program(ProcessSerialNumber number) const;
  ProcessSerialNumber numberOfWindow(xcb_window_t window) const;
  void describe(Program& program) const;
  /// From front to back.
  std::vector<xcb_window_t> windowsFromFront(const Program& program) const;
  std::uint32_t userTime() const { return userTime_ ? userTime_() : XCB_CURRENT_TIME; }

  ApplicationCatalogue& catalogue_;
  std::shared_ptr<ProgramWindows> windowsOfPrograms_;
  mutable WindowTracker tracker_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<std::uint32_t()> userTime_;
  bool ownWindowIsKey_ = false;
  mutable ChangeNotice changed_;
  /// By what holds the windows together. One that has lost all its windows stays while its process
  /// lives, since it is still the same when it shows another.
  mutable std::map<std::string, Program> programs_;
  mutable std::vector<ProcessSerialNumber> order_;
  mutable std::uint32_t lastGeneration_ = 1;
};

}  // namespace qb
