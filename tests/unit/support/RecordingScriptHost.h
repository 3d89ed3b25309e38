#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/scripting/ScriptHost.h"

namespace qb::test {

/// A world in which everything can be done: it writes down what scripts ask of it.
class RecordingScriptHost : public ScriptHost {
 public:
  void activate(const ScriptApplication& application) override {
    note(stringWithFormat("activate %@", nameOf(application)));
  }
  void quit(const ScriptApplication& application) override {
    note(stringWithFormat("quit %@", nameOf(application)));
  }
  void makeNewDocument(const ScriptApplication& application) override {
    note(stringWithFormat("new document of %@", nameOf(application)));
  }
  void keystroke(const std::string& text, EventFlags modifiers) override {
    note(stringWithFormat("type '%@'%@", text, wordsOf(modifiers)));
  }
  void keyCode(std::uint16_t keyCode, EventFlags modifiers) override {
    note(stringWithFormat("key %i%@", keyCode, wordsOf(modifiers)));
  }
  void click(const ScriptElement& element) override {
    note(stringWithFormat("click %@", element.description()));
  }
  bool exists(const ScriptElement& element) override {
    note(stringWithFormat("exists %@", element.description()));
    return !missing.contains(element.description());
  }
  bool isEnabled(const ScriptElement& element) override {
    note(stringWithFormat("enabled %@", element.description()));
    return !disabled.contains(element.description());
  }
  std::vector<std::string> namesOf(const ScriptElement& element) override {
    note(stringWithFormat("name %@", element.description()));
    return names;
  }
  void reveal(const ScriptElement& element) override {
    note(stringWithFormat("reveal %@", element.description()));
  }
  std::string doShellScript(const std::string& command) override {
    note(stringWithFormat("shell %@", command));
    return outputs[command];
  }
  std::optional<std::size_t> displayAlert(const ScriptAlert& alert) override {
    alerts.push_back(alert);
    return answer;
  }
  void delay(TimeInterval seconds) override { note(stringWithFormat("delay %@", seconds)); }

  /// What was asked, in order.
  std::vector<std::string> calls;
  std::vector<ScriptAlert> alerts;
  /// The pressed button of every alert.
  std::optional<std::size_t> answer = 0;
  std::map<std::string, std::string> outputs;
  /// Elements by their descriptions; all others are there and enabled.
  std::set<std::string> missing, disabled;
  std::vector<std::string> names;
  /// The call that fails, as it is written down, and with what.
  std::string failingCall;
  ScriptError failure;

 private:
  void note(std::string call) {
    calls.push_back(std::move(call));
    if (calls.back() == failingCall) throw failure;
  }
  static std::string nameOf(const ScriptApplication& application) {
    return (application.byIdentifier ? "id " : "") + application.name;
  }
  static std::string wordsOf(EventFlags modifiers) {
    std::string words;
    if (modifiers & EventFlagShift) words += " shift";
    if (modifiers & EventFlagControl) words += " control";
    if (modifiers & EventFlagOption) words += " option";
    if (modifiers & EventFlagCommand) words += " command";
    return words;
  }
};

}  // namespace qb::test
