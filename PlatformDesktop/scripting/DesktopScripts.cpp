#include "PlatformDesktop/scripting/DesktopScripts.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "Platform/KeyCodes.h"
#include "Platform/ScriptAlerts.h"
#include "PlatformDesktop/input/KeyCodeTable.h"
#include "PlatformDesktop/scripting/AccessibleMenus.h"
#include "PlatformDesktop/scripting/ShellCommand.h"
#include "QuillboxCommon/scripting/ScriptMenuElements.h"

namespace qb {

namespace {

constexpr std::string_view settingsIdentifier = "com.apple.systempreferences";

[[noreturn]] void fail(ScriptErrorNumber number, const std::string& message) {
  throw ScriptError{number, message, ""};
}

[[noreturn]] void failToGet(const ScriptElement& element) {
  fail(ScriptErrorNoSuchObject, "Can\u2019t get " + element.description() + ".");
}

/// Programs of this desktop have their commands on Control. In a terminal that is what the shell
/// listens to, and the terminal's own commands take Shift besides.
EventFlags flagsOfThisDesktop(EventFlags flags, bool frontIsTerminal) {
  if ((flags & EventFlagCommand) == 0) return flags;
  return (flags & ~EventFlagCommand) | EventFlagControl |
         (frontIsTerminal ? EventFlagShift : EventFlags{0});
}

/// The letter that a key types on the US layout; empty for other keys.
std::string letterOf(std::uint16_t keyCode) {
  const std::string_view name = KeyCodeTable::nameOf(keyCode);
  if (name.size() != 1 || name[0] < 'A' || name[0] > 'Z') return {};
  return {static_cast<char>(name[0] - 'A' + 'a')};
}

}  // namespace

/// The world of one run.
class DesktopScripts::Host : public ScriptHost {
 public:
  explicit Host(DesktopScripts& scripts)
      : scripts_(scripts), menus_(scripts.applications_, [this] { pressEscape(); }) {}

  /// The settings come up once it is known which pane of them is wanted: our own programs show
  /// some.
  void finish() {
    if (settingsAreWanted_) bringForward({std::string(settingsIdentifier), true});
  }

  void activate(const ScriptApplication& application) override {
    if (ScriptApplications::identifierOf(application) == settingsIdentifier) {
      settingsAreWanted_ = !paneIsShown_;
    } else {
      bringForward(application);
    }
  }
  void quit(const ScriptApplication& application) override {
    if (!scripts_.applications_.quit(application)) failToGet({application, {}});
  }
  void makeNewDocument(const ScriptApplication& application) override {
    expectInFront(scripts_.applications_.openAnew(application), application);
  }

  void keystroke(const std::string& text, EventFlags modifiers) override {
    const EventFlags flags =
        flagsOfThisDesktop(modifiers, scripts_.applications_.frontIsTerminal());
    if (!typer().typeText(text, flags)) {
      fail(ScriptErrorGeneral, "Not all of the text could be typed.");
    }
    const bool isPaste = (modifiers & EventFlagCommand) != 0 && text == "v";
    if (isPaste && scripts_.afterPaste_) scripts_.afterPaste_();
  }
  /// A command is known by its letter, wherever the layout has that.
  void keyCode(std::uint16_t keyCode, EventFlags modifiers) override {
    const std::string letter = letterOf(keyCode);
    if ((modifiers & EventFlagCommand) != 0 && !letter.empty()) return keystroke(letter, modifiers);
    const EventFlags flags =
        flagsOfThisDesktop(modifiers, scripts_.applications_.frontIsTerminal());
    if (!typer().pressKey(keyCode, flags)) {
      fail(ScriptErrorGeneral, "The keyboard has no key " + std::to_string(keyCode) + ".");
    }
  }
  void click(const ScriptElement& element) override { elements_.click(element); }
  bool exists(const ScriptElement& element) override { return elements_.exists(element); }
  bool isEnabled(const ScriptElement& element) override { return elements_.isEnabled(element); }
  std::vector<std::string> namesOf(const ScriptElement& element) override {
    return elements_.namesOf(element);
  }

  void reveal(const ScriptElement& element) override {
    const auto pane =
        std::find_if(element.path.begin(), element.path.end(),
                     [](const ScriptElement::Step& step) { return step.elementClass == "pane"; });
    const bool isOfSettings =
        ScriptApplications::identifierOf(element.application) == settingsIdentifier;
    if (!isOfSettings || pane == element.path.end() || !showPane(pane->selector)) {
      failToGet(element);
    }
    paneIsShown_ = true;
    settingsAreWanted_ = false;
  }

  std::string doShellScript(const std::string& command) override {
    ShellCommandResult result = runShellCommand(command);
    if (result.status == 0) return std::move(result.output);
    throw ScriptError{
        result.status,
        result.complaint.empty() ? "The command exited with a non-zero status." : result.complaint,
        ""};
  }
  std::optional<std::size_t> displayAlert(const ScriptAlert& alert) override {
    const Subscription interaction = scripts_.beginUserInteraction();
    return runScriptAlert(scripts_.dialogs_, alert);
  }
  void delay(TimeInterval seconds) override {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  }

 private:
  using Arrival = ScriptApplications::Arrival;

  TextTyper& typer() const {
    if (scripts_.typer_ == nullptr) fail(ScriptErrorGeneral, "There is no keyboard.");
    return *scripts_.typer_;
  }
  void pressEscape() {
    if (scripts_.typer_ != nullptr) scripts_.typer_->pressKey(KeyCodeEscape);
  }
  void bringForward(const ScriptApplication& application) {
    expectInFront(scripts_.applications_.activate(application), application);
  }
  /// A script that went on would type into another program.
  static void expectInFront(Arrival arrival, const ScriptApplication& application) {
    if (arrival == Arrival::None) failToGet({application, {}});
    if (arrival == Arrival::Late) fail(ScriptErrorTimeout, "AppleEvent timed out.");
  }
  /// Access to this desktop's input is a matter of the product's own preference program.
  bool showPane(const std::string& identifier) {
    if (identifier == "com.apple.preference.security" ||
        identifier == "com.apple.preference.universalaccess") {
      return scripts_.application_.openPreferences("access");
    }
    return scripts_.applications_.activate({identifier, true}) != Arrival::None ||
           scripts_.applications_.activate({std::string(settingsIdentifier), true}) !=
               Arrival::None;
  }

  DesktopScripts& scripts_;
  AccessibleMenus menus_;
  ScriptMenuElements elements_{menus_};
  bool settingsAreWanted_ = false;
  bool paneIsShown_ = false;
};

ScriptOutcome DesktopScripts::executeScript(Script& script) {
  if (application_.isTerminating()) {
    return {std::nullopt, errorDictionary({ScriptErrorUserCanceled, "User canceled.", ""})};
  }
  Host host(*this);
  ScriptOutcome outcome = script.executeAndReturnError(host);
  if (outcome.succeeded()) {
    try {
      host.finish();
    } catch (const ScriptError& error) {
      outcome.error = errorDictionary(error);
    }
  }
  return outcome;
}

}  // namespace qb
