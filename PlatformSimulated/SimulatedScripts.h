#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Platform/Scripts.h"
#include "PlatformSimulated/SimulatedDialogs.h"
#include "PlatformSimulated/SimulatedKeyboard.h"
#include "PlatformSimulated/SimulatedProcesses.h"
#include "PlatformSimulated/SimulatedProgramMenus.h"
#include "PlatformSimulated/SimulatedRunLoopHost.h"
#include "PlatformSimulated/SimulatedWorkspace.h"
#include "QuillboxCommon/scripting/ScriptMenuElements.h"

namespace qb {

/// Scripts on the small desktop. What they type reaches the front program, whoever is in front; who
/// they activate has to run or to be installed, but for the system's settings, which are always
/// there. Alerts are answered by the user of `SimulatedDialogs`. Commands of the shell are written
/// down and answered as the test says.
class SimulatedScripts : public Scripts, private ScriptHost {
 public:
  struct Parts {
    SimulatedRunLoopHost& host;
    SimulatedDialogs& dialogs;
    SimulatedKeyboard& keyboard;
    SimulatedProcesses& processes;
    SimulatedWorkspace& workspace;
  };
  explicit SimulatedScripts(Parts parts) : parts_(parts), menus_(parts.processes) {}

  ScriptOutcome executeScript(Script& script) override;

  struct ShellResult {
    std::string output;
    std::int32_t status = 0;
    /// What it complains of; only when the status is not 0.
    std::string message;
  };
  /// From now on that command gives this. Any other one succeeds without output, "sleep" after its
  /// time.
  void setShellResult(const std::string& command, ShellResult result) {
    shellResults_[command] = std::move(result);
  }

  /// What the programs have in their menus, and what scripts have clicked there.
  SimulatedProgramMenus& menus() { return menus_; }

  /// The sources of all scripts that were to be run, failed ones too.
  const std::vector<std::string>& executed() const { return executed_; }
  const std::vector<std::string>& shellCommands() const { return shellCommands_; }
  /// The panes and places that were shown, as scripts write them.
  const std::vector<std::string>& revealed() const { return revealed_; }
  /// The names or identifiers of the applications in which new documents were made.
  const std::vector<std::string>& newDocuments() const { return newDocuments_; }

 private:
  void activate(const ScriptApplication& application) override;
  void quit(const ScriptApplication& application) override;
  void makeNewDocument(const ScriptApplication& application) override;
  void keystroke(const std::string& text, EventFlags modifiers) override;
  void keyCode(std::uint16_t keyCode, EventFlags modifiers) override;
  void click(const ScriptElement& element) override { elements_.click(element); }
  bool exists(const ScriptElement& element) override { return elements_.exists(element); }
  bool isEnabled(const ScriptElement& element) override { return elements_.isEnabled(element); }
  std::vector<std::string> namesOf(const ScriptElement& element) override {
    return elements_.namesOf(element);
  }
  void reveal(const ScriptElement& element) override;
  std::string doShellScript(const std::string& command) override;
  std::optional<std::size_t> displayAlert(const ScriptAlert& alert) override;
  void delay(TimeInterval seconds) override;

  Parts parts_;
  SimulatedProgramMenus menus_;
  ScriptMenuElements elements_{menus_};
  std::map<std::string, ShellResult> shellResults_;
  std::vector<std::string> executed_, shellCommands_, revealed_, newDocuments_;
};

}  // namespace qb
