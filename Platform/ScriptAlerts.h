#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Platform/Dialogs.h"
#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb {

/// A script's question as an alert. Buttons stand as the script lists them, whose last one is
/// usually the default; an alert has its default first. Escape presses what the script says, or a
/// button that takes back by its title.
inline Alert alertOfScript(const ScriptAlert& question) {
  Alert alert;
  alert.style = question.style == ScriptAlert::Style::Critical  ? AlertStyleCritical
                : question.style == ScriptAlert::Style::Warning ? AlertStyleWarning
                                                                : AlertStyleInformational;
  alert.messageText = question.messageText;
  alert.informativeText = question.informativeText;
  const auto add = [&](std::size_t index) {
    const std::string& title = question.buttons[index];
    const bool takesBack = question.cancelButton ? index == *question.cancelButton
                                                 : title == "Cancel" || title == "Stop";
    if (takesBack) alert.escapeButtonIndex = alert.buttons.size();
    alert.buttons.push_back({title, AlertFirstButtonReturn + static_cast<std::int32_t>(index)});
  };
  add(question.defaultButton);
  for (std::size_t index = question.buttons.size(); index-- > 0;) {
    if (index != question.defaultButton) add(index);
  }
  return alert;
}

/// Asks it. Answers the index of the pressed button in `question`, none when the run was aborted.
inline std::optional<std::size_t> runScriptAlert(Dialogs& dialogs, const ScriptAlert& question) {
  Alert alert = alertOfScript(question);
  const std::int32_t response = dialogs.runModal(alert);
  if (response < AlertFirstButtonReturn) return std::nullopt;
  const auto index = static_cast<std::size_t>(response - AlertFirstButtonReturn);
  return index < question.buttons.size() ? std::optional(index) : std::nullopt;
}

}  // namespace qb
