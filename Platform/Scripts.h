#pragma once

#include <functional>
#include <string>
#include <utility>

#include "QuillboxCommon/Subscription.h"
#include "QuillboxCommon/scripting/Script.h"

namespace qb {

/// Runs scripts against this desktop. A run blocks until the script has ended, its pauses and its
/// commands of the shell included; only while an alert of its own is up does the main loop go on.
/// Main thread.
class Scripts {
 public:
  virtual ~Scripts() = default;
  virtual ScriptOutcome executeScript(Script& script) = 0;
  /// The same for a script that is run once.
  ScriptOutcome executeAndReturnError(const std::string& source) {
    Script script(source);
    return executeScript(script);
  }

  /// What has to last while a script asks the user something, since the keyboard is then wanted.
  /// May be empty.
  void setBeginUserInteraction(std::function<Subscription()> begin) {
    beginUserInteraction_ = std::move(begin);
  }

 protected:
  Subscription beginUserInteraction() const {
    return beginUserInteraction_ ? beginUserInteraction_() : Subscription();
  }

 private:
  std::function<Subscription()> beginUserInteraction_;
};

}  // namespace qb
