#include "PlatformSimulated/SimulatedScripts.h"

#include <cstdlib>

#include "Platform/ScriptAlerts.h"

namespace qb {

namespace {

constexpr std::string_view sleepCommand = "sleep ";

[[noreturn]] void failToGetApplication(const ScriptApplication& application) {
  throw ScriptError{ScriptErrorNoSuchObject,
                    "Can\u2019t get " + ScriptElement{application, {}}.description() + ".", ""};
}

bool isSettings(const ScriptApplication& application) {
  return application.name ==
         (application.byIdentifier ? "com.apple.systempreferences" : "System Preferences");
}

bool isNamed(const ScriptApplication& application, const std::string& name,
             const std::string& identifier) {
  return application.name == (application.byIdentifier ? identifier : name);
}

}  // namespace

ScriptOutcome SimulatedScripts::executeScript(Script& script) {
  executed_.push_back(script.source());
  return script.executeAndReturnError(*this);
}

void SimulatedScripts::activate(const ScriptApplication& application) {
  for (const auto& process : parts_.processes.processes()) {
    const ProcessInformation& information = process.information;
    if (isNamed(application, information.name, information.bundleIdentifier)) {
      return parts_.processes.bringToFront(information.processNumber);
    }
  }
  for (const SimulatedApplication& installed : parts_.workspace.installed()) {
    if (isNamed(application, installed.name, installed.bundleIdentifier)) {
      parts_.workspace.launchApplicationAtPath(installed.bundlePath, 0, {});
      return;
    }
  }
  if (!isSettings(application)) failToGetApplication(application);
}

void SimulatedScripts::quit(const ScriptApplication& application) {
  for (const auto& process : parts_.processes.processes()) {
    const ProcessInformation& information = process.information;
    if (!isNamed(application, information.name, information.bundleIdentifier)) continue;
    process.runningApplication->terminate();
    return;
  }
  failToGetApplication(application);
}

void SimulatedScripts::makeNewDocument(const ScriptApplication& application) {
  newDocuments_.push_back(application.name);
}

void SimulatedScripts::keystroke(const std::string& text, EventFlags modifiers) {
  parts_.keyboard.receiveText(text, modifiers);
}

void SimulatedScripts::keyCode(std::uint16_t keyCode, EventFlags modifiers) {
  parts_.keyboard.receiveKey(keyCode, modifiers);
}

void SimulatedScripts::reveal(const ScriptElement& element) {
  revealed_.push_back(element.description());
}

std::string SimulatedScripts::doShellScript(const std::string& command) {
  shellCommands_.push_back(command);
  const auto known = shellResults_.find(command);
  if (known == shellResults_.end()) {
    if (command.starts_with(sleepCommand)) {
      delay(std::strtod(command.c_str() + sleepCommand.size(), nullptr));
    }
    return {};
  }
  const ShellResult& result = known->second;
  if (result.status != 0) throw ScriptError{result.status, result.message, ""};
  return result.output;
}

std::optional<std::size_t> SimulatedScripts::displayAlert(const ScriptAlert& alert) {
  const Subscription interaction = beginUserInteraction();
  return runScriptAlert(parts_.dialogs, alert);
}

void SimulatedScripts::delay(TimeInterval seconds) { parts_.host.block(seconds); }

}  // namespace qb
