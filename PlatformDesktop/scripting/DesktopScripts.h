#pragma once

#include <functional>

#include "Platform/Dialogs.h"
#include "Platform/Scripts.h"
#include "PlatformDesktop/input/TextTyper.h"
#include "PlatformDesktop/scripting/ScriptApplications.h"
#include "PlatformDesktop/session/DesktopApplicationControl.h"

namespace qb {

/// Scripts against the programs, the keyboard, the shell and the settings of this desktop. Once the
/// program is about to end no more of them run.
class DesktopScripts : public Scripts {
 public:
  struct Parts {
    const DesktopApplicationControl& application;
    ApplicationCatalogue& catalogue;
    DesktopProcesses& processes;
    Dialogs& dialogs;
  };
  /// All of them must outlive this.
  explicit DesktopScripts(const Parts& parts)
      : application_(parts.application),
        dialogs_(parts.dialogs),
        applications_(parts.catalogue, parts.processes) {}

  /// What types; without one nothing can be typed. Null before it goes.
  void setTyper(TextTyper* typer) { typer_ = typer; }
  /// Called when a script has typed the command to paste, before it goes on.
  void setAfterPaste(std::function<void()> afterPaste) { afterPaste_ = std::move(afterPaste); }
  void setPatience(const ScriptPatience& patience) { applications_.setPatience(patience); }

  ScriptOutcome executeScript(Script& script) override;

 private:
  class Host;

  const DesktopApplicationControl& application_;
  Dialogs& dialogs_;
  ScriptApplications applications_;
  TextTyper* typer_ = nullptr;
  std::function<void()> afterPaste_;
};

}  // namespace qb
