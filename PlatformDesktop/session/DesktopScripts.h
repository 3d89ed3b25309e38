#pragma once

#include <string>

#include "Platform/Scripts.h"
#include "PlatformDesktop/session/DesktopApplicationControl.h"

namespace qb {

/// The scripts by which the system settings are opened. Access to this desktop's input is a matter
/// of the product's own preference program, so that is what they show; any other script fails, and
/// the log says so.
class DesktopScripts : public Scripts {
 public:
  /// It must outlive this.
  explicit DesktopScripts(const DesktopApplicationControl& application)
      : application_(application) {}

  ScriptOutcome executeScript(Script& script) override;

 private:
  const DesktopApplicationControl& application_;
};

}  // namespace qb
