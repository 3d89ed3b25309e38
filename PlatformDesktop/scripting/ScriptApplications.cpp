#include "PlatformDesktop/scripting/ScriptApplications.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <thread>
#include <utility>

#include "PlatformDesktop/processes/Launcher.h"

namespace qb {

namespace {

constexpr std::chrono::milliseconds lookInterval{10};
constexpr int looksForARunningOne = 200;
constexpr int looksForAStartedOne = 1000;

/// What the roles are called by scripts.
constexpr std::pair<std::string_view, std::string_view> roles[] = {
    {"finder", "com.apple.finder"},
    {"mail", "com.apple.mail"},
    {"calendar", "com.apple.iCal"},
    {"ical", "com.apple.iCal"},
    {"preview", "com.apple.Preview"},
    {"textedit", "com.apple.TextEdit"},
    {"system preferences", "com.apple.systempreferences"},
    {"google chrome", "com.google.Chrome"},
    {"firefox", "org.mozilla.firefox"},
};

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

/// 2 for what the script names, 1 for what merely plays the role of that name, 0 for others.
int fit(const ScriptApplication& application, const std::string& name,
        const std::string& identifier) {
  if (!application.byIdentifier && lowerCase(application.name) == lowerCase(name)) return 2;
  const std::string wanted = ScriptApplications::identifierOf(application);
  return !wanted.empty() && wanted == identifier ? 1 : 0;
}

}  // namespace

std::string ScriptApplications::identifierOf(const ScriptApplication& application) {
  if (application.byIdentifier) return application.name;
  const std::string name = lowerCase(application.name);
  for (const auto& [role, identifier] : roles) {
    if (role == name) return std::string(identifier);
  }
  return {};
}

ProcessSerialNumber ScriptApplications::running(const ScriptApplication& application) const {
  processes_.update();
  ProcessSerialNumber best;
  int bestFit = 0;
  for (const ProcessSerialNumber number : processes_.running()) {
    const auto information = processes_.processInformation(number);
    if (!information) continue;
    const int own = fit(application, information->name, information->bundleIdentifier);
    if (own > bestFit) {
      bestFit = own;
      best = number;
    }
  }
  return best;
}

const DesktopEntry* ScriptApplications::installed(const ScriptApplication& application) const {
  const ApplicationIndex& index = catalogue_.index();
  const DesktopEntry* best = nullptr;
  int bestFit = 0;
  for (const DesktopEntry& entry : index.entries()) {
    if (entry.hidden) continue;
    // Those that menus show go before others that claim the same.
    const int own = 2 * fit(application, entry.name, index.identifierOf(entry));
    const int shown = own == 0 || entry.noDisplay ? own : own + 1;
    if (shown > bestFit) {
      bestFit = shown;
      best = &entry;
    }
  }
  return best;
}

bool ScriptApplications::activate(const ScriptApplication& application) {
  const ProcessSerialNumber number = running(application);
  if (number.isNull()) {
    const DesktopEntry* const entry = installed(application);
    return entry != nullptr && start(*entry);
  }
  if (!processes_.bringForward(number, true)) return false;
  waitForFront([number](ProcessSerialNumber front) { return front == number; },
               looksForARunningOne);
  return true;
}

bool ScriptApplications::quit(const ScriptApplication& application) {
  const ProcessSerialNumber number = running(application);
  return !number.isNull() && processes_.terminate(number);
}

bool ScriptApplications::openAnew(const ScriptApplication& application) {
  const DesktopEntry* const entry = installed(application);
  return entry != nullptr && start(*entry);
}

bool ScriptApplications::start(const DesktopEntry& entry) {
  if (!startApplication(entry)) return false;
  const auto known = processes_.running();
  waitForFront(
      [&](ProcessSerialNumber front) {
        if (std::find(known.begin(), known.end(), front) != known.end()) return false;
        const auto information = processes_.processInformation(front);
        return information && information->bundlePath == entry.path;
      },
      looksForAStartedOne);
  return true;
}

void ScriptApplications::waitForFront(const std::function<bool(ProcessSerialNumber)>& isThere,
                                      int looks) const {
  for (int i = 0; i < looks; ++i) {
    const ProcessSerialNumber front = processes_.activeProcess();
    if (!front.isNull() && isThere(front)) return;
    std::this_thread::sleep_for(lookInterval);
  }
}

bool ScriptApplications::frontIsTerminal() const {
  const auto information = processes_.processInformation(processes_.activeProcess());
  if (!information) return false;
  const DesktopEntry* const entry = catalogue_.index().entryAtPath(information->bundlePath);
  return entry != nullptr && entry->isTerminalEmulator;
}

}  // namespace qb
