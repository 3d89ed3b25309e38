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

/// What the roles are called by scripts.
constexpr std::pair<std::string_view, std::string_view> roles[] = {
    {"finder", "com.apple.finder"},
    {"mail", "com.apple.mail"},
    {"calendar", "com.apple.iCal"},
    {"ical", "com.apple.iCal"},
    {"preview", "com.apple.Preview"},
    {"textedit", "com.apple.TextEdit"},
    // Scripts are plain text here.
    {"applescript editor", "com.apple.TextEdit"},
    {"system preferences", "com.apple.systempreferences"},
    {"google chrome", "com.google.Chrome"},
    {"firefox", "org.mozilla.firefox"},
};

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

/// Answers whether it came to hold; looks at least once.
template <class Condition>
bool waitUntil(const Condition& holds, TimeInterval longest) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + std::chrono::duration<double>(longest);
  while (!holds()) {
    if (steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(lookInterval);
  }
  return true;
}

template <class List, class Value>
bool contains(const List& list, const Value& value) {
  return std::find(list.begin(), list.end(), value) != list.end();
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
  const ProcessSerialNumber front = processes_.activeProcess();
  ProcessSerialNumber best;
  int bestFit = 0;
  for (const ProcessSerialNumber number : processes_.running()) {
    const auto information = processes_.processInformation(number);
    if (!information) continue;
    const int own = fit(application, information->name, information->bundleIdentifier);
    if (own > bestFit || (own != 0 && own == bestFit && number == front)) {
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

ScriptApplications::Arrival ScriptApplications::activate(const ScriptApplication& application) {
  const ProcessSerialNumber number = running(application);
  if (number.isNull()) return openAnew(application);
  if (!processes_.bringForward(number, true)) return Arrival::None;
  const bool isThere =
      waitUntil([&] { return processes_.activeProcess() == number; }, patience_.withRunning);
  return isThere ? Arrival::InFront : Arrival::Late;
}

bool ScriptApplications::quit(const ScriptApplication& application) {
  const ProcessSerialNumber number = running(application);
  return !number.isNull() && processes_.terminate(number);
}

ScriptApplications::Arrival ScriptApplications::openAnew(const ScriptApplication& application) {
  const DesktopEntry* const entry = installed(application);
  return entry != nullptr ? start(*entry) : Arrival::None;
}

bool ScriptApplications::openDocument(const std::string& path,
                                      const ScriptApplication& application) const {
  const DesktopEntry* const entry = installed(application);
  return entry != nullptr && startApplication(*entry, path);
}

/// A program that keeps to one process shows a new window from that one, and one that keeps to one
/// window just comes forward: it is given some time for a new window nevertheless. What cannot be
/// told by its window is known by having come with it.
ScriptApplications::Arrival ScriptApplications::start(const DesktopEntry& entry) {
  const auto knownWindows = processes_.windows();
  const auto knownPrograms = processes_.running();
  if (!startApplication(entry)) return Arrival::None;
  const auto showsNewWindow = [&] {
    return !contains(knownWindows, processes_.activeWindow()) && frontIsOf(entry);
  };
  const auto isInFront = [&] {
    const ProcessSerialNumber front = processes_.activeProcess();
    return !front.isNull() && (!contains(knownPrograms, front) || frontIsOf(entry));
  };
  const bool isThere =
      waitUntil(showsNewWindow, std::min(patience_.withRunning, patience_.withStarted)) ||
      waitUntil(isInFront, patience_.withStarted - patience_.withRunning);
  return isThere ? Arrival::InFront : Arrival::Late;
}

bool ScriptApplications::frontIsOf(const DesktopEntry& entry) const {
  const auto information = processes_.processInformation(processes_.activeProcess());
  return information && information->bundlePath == entry.path;
}

bool ScriptApplications::frontIsTerminal() const {
  const auto information = processes_.processInformation(processes_.activeProcess());
  if (!information) return false;
  const DesktopEntry* const entry = catalogue_.index().entryAtPath(information->bundlePath);
  return entry != nullptr && entry->isTerminalEmulator;
}

}  // namespace qb
