#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PlatformSimulated/SimulatedProcesses.h"
#include "QuillboxCommon/scripting/ScriptMenus.h"

namespace qb {

/// An entry in the menus of a program on the small desktop. One without a name is a line.
struct SimulatedMenuEntry {
  std::string name;
  std::vector<SimulatedMenuEntry> entries = {};
  bool isEnabled = true;
  /// Its menu is empty until it is opened.
  bool fillsWhenOpened = false;
  /// The program does nothing when it is clicked.
  bool refuses = false;
};

/// The menus of the programs on the small desktop, by which scripts reach them. A program without
/// any shows none to others.
class SimulatedProgramMenus : public ScriptMenus {
 public:
  /// `processes` must outlive this.
  explicit SimulatedProgramMenus(const SimulatedProcesses& processes) : processes_(processes) {}

  /// The menu bar of a process from now on.
  void setMenuBar(ProcessSerialNumber process, std::vector<SimulatedMenuEntry> entries) {
    menuBars_[process.lowLongOfPSN] = std::move(entries);
  }
  struct Click {
    ProcessSerialNumber process;
    /// The names from the menu bar inwards, joined by ":".
    std::string path;
    friend bool operator==(const Click&, const Click&) = default;
  };
  /// What has been clicked, in order.
  const std::vector<Click>& clicks() const { return clicks_; }
  /// The menus that had to be opened for that.
  const std::vector<Click>& openings() const { return openings_; }

  bool isRunning(const ScriptApplication& process) override { return find(process).has_value(); }
  std::optional<ScriptMenuEntries> menuBarOf(const ScriptApplication& process) override;

 private:
  class Entry;

  /// Of several of that name the one in front.
  std::optional<ProcessSerialNumber> find(const ScriptApplication& application) const;
  ScriptMenuEntries entriesOf(const std::vector<SimulatedMenuEntry>& entries, const Click& menu);

  const SimulatedProcesses& processes_;
  std::map<std::uint32_t, std::vector<SimulatedMenuEntry>> menuBars_;
  std::vector<Click> clicks_, openings_;
};

}  // namespace qb
