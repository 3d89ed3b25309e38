#include "PlatformDesktop/processes/DesktopProcesses.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>

#include "PlatformDesktop/processes/ProgramFile.h"

namespace qb {

namespace {

constexpr const char* ownName = "Quillbox";
constexpr const char* ownIdentifier = "com.vorlane.quillbox";

}  // namespace

DesktopProcesses::DesktopProcesses(ApplicationCatalogue& catalogue,
                                   std::shared_ptr<ProgramWindows> windowsOfPrograms)
    : catalogue_(catalogue), windowsOfPrograms_(std::move(windowsOfPrograms)) {
  notifier_ = std::make_unique<QSocketNotifier>(
      xcb_get_file_descriptor(tracker_.connection().get()), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { update(); });
  regroup();
}

void DesktopProcesses::update() const {
  if (!tracker_.update()) return;
  regroup();
  changed_.signal();
}

void DesktopProcesses::regroup() const {
  for (auto& [key, each] : programs_) each.windows.clear();
  order_.clear();
  for (const ManagedWindow& window : tracker_.windows()) {
    const bool hasProcess = window.pid != 0;
    const std::string mark = hasProcess ? startMarkOfProcess(window.pid) : "";
    if (hasProcess && window.pid == getpid()) continue;
    const std::string key = hasProcess ? "process " + std::to_string(window.pid) + ' ' + mark
                                       : "group " + std::to_string(window.leader);
    Program& found = programs_[key];
    if (found.number.isNull()) {
      found.number = {++lastGeneration_, static_cast<std::uint32_t>(window.pid)};
      found.startMark = mark;
    }
    if (found.windows.empty()) order_.push_back(found.number);
    found.windows.push_back(window.id);
  }
  std::erase_if(programs_, [](const auto& entry) {
    const Program& each = entry.second;
    return each.windows.empty() &&
           (each.number.lowLongOfPSN == 0 || startMarkOfProcess(static_cast<std::int32_t>(
                                                 each.number.lowLongOfPSN)) != each.startMark);
  });
}

DesktopProcesses::Program* DesktopProcesses::program(ProcessSerialNumber number) const {
  for (auto& [key, each] : programs_) {
    if (each.number == number) return &each;
  }
  return nullptr;
}

ProcessSerialNumber DesktopProcesses::getCurrentProcess() const {
  return {1, static_cast<std::uint32_t>(getpid())};
}

ProcessSerialNumber DesktopProcesses::getFrontProcess() const {
  return ownWindowIsKey_ ? getCurrentProcess() : activeProcess();
}

ProcessSerialNumber DesktopProcesses::activeProcess() const {
  update();
  return numberOfWindow(tracker_.activeWindow());
}

xcb_window_t DesktopProcesses::activeWindow() const {
  update();
  return tracker_.activeWindow();
}

std::vector<xcb_window_t> DesktopProcesses::windows() const {
  update();
  std::vector<xcb_window_t> windows;
  for (const ManagedWindow& window : tracker_.windows()) windows.push_back(window.id);
  return windows;
}

ProcessSerialNumber DesktopProcesses::numberOfWindow(xcb_window_t window) const {
  if (window == 0) return {};
  for (const auto& [key, each] : programs_) {
    if (std::find(each.windows.begin(), each.windows.end(), window) != each.windows.end()) {
      return each.number;
    }
  }
  const ManagedWindow* const known = tracker_.window(window);
  return known && known->pid == getpid() ? getCurrentProcess() : ProcessSerialNumber{};
}

std::vector<ProcessSerialNumber> DesktopProcesses::running() const {
  update();
  return order_;
}

std::optional<ProcessSerialNumber> DesktopProcesses::getNextProcess(
    ProcessSerialNumber number) const {
  if (number.isNull()) {
    update();
    return getCurrentProcess();
  }
  auto next = order_.begin();
  if (number != getCurrentProcess()) {
    next = std::find(order_.begin(), order_.end(), number);
    if (next == order_.end()) return std::nullopt;
    ++next;
  }
  if (next == order_.end()) return std::nullopt;
  return *next;
}

std::optional<ProcessInformation> DesktopProcesses::processInformation(
    ProcessSerialNumber number) const {
  if (number == getCurrentProcess()) {
    return ProcessInformation{.processNumber = number,
                              .processIdentifier = getpid(),
                              .name = ownName,
                              .bundlePath = programFileOfProcess(getpid()).path,
                              .bundleIdentifier = ownIdentifier,
                              .isBackgroundOnly = false,
                              .isUIElement = true};
  }
  const Program* const found = program(number);
  if (!found || found->windows.empty()) return std::nullopt;
  return lastInformation(number);
}

std::optional<ProcessInformation> DesktopProcesses::lastInformation(
    ProcessSerialNumber number) const {
  Program* const found = program(number);
  if (!found) return std::nullopt;
  if (!found->information) describe(*found);
  ProcessInformation information = *found->information;
  information.isUIElement =
      std::none_of(found->windows.begin(), found->windows.end(), [this](xcb_window_t id) {
        const ManagedWindow* const window = tracker_.window(id);
        return window && window->isOrdinary;
      });
  return information;
}

void DesktopProcesses::describe(Program& program) const {
  const ManagedWindow* shown = nullptr;
  for (const xcb_window_t id : program.windows) {
    const ManagedWindow* const window = tracker_.window(id);
    if (window && (!shown || (!shown->isOrdinary && window->isOrdinary))) shown = window;
  }
  ProcessInformation information;
  information.processNumber = program.number;
  information.processIdentifier = static_cast<std::int32_t>(program.number.lowLongOfPSN);
  ProgramFile file;
  if (information.processIdentifier != 0)
    file = programFileOfProcess(information.processIdentifier);
  const std::string className = shown ? shown->className : "";
  const ApplicationIndex& index = catalogue_.index();
  const DesktopEntry* const entry = index.match({.className = className,
                                                 .instanceName = shown ? shown->instanceName : "",
                                                 .programNames = file.names});
  if (entry) {
    information.name = entry->name;
    information.bundlePath = entry->path;
    information.bundleIdentifier = index.identifierOf(*entry);
  } else {
    const std::string fallback = file.names.empty() ? "" : file.names.front();
    information.name = className.empty() ? fallback : className;
    information.bundleIdentifier = ApplicationIndex::identifierOfProgram(information.name);
    // A program on another machine has no file here; its windows can still be switched to.
    information.bundlePath = file.path.empty() ? "x-window:" + information.name : file.path;
  }
  if (shown) windowsOfPrograms_->set(information.bundlePath, shown->id);
  program.information = std::move(information);
}

void DesktopProcesses::catalogueHasChanged() {
  bool haveChanged = false;
  for (auto& [key, each] : programs_) {
    if (!each.information || each.windows.empty()) continue;
    const ProcessInformation before = *each.information;
    describe(each);
    if (each.information->bundlePath == before.bundlePath &&
        each.information->bundleIdentifier == before.bundleIdentifier &&
        each.information->name == before.name) {
      continue;
    }
    each.number.highLongOfPSN = ++lastGeneration_;
    each.information->processNumber = each.number;
    haveChanged = true;
  }
  if (!haveChanged) return;
  regroup();
  changed_.signal();
}

void DesktopProcesses::setOwnWindowIsKey(bool isKey) {
  if (isKey == ownWindowIsKey_) return;
  ownWindowIsKey_ = isKey;
  changed_.signal();
}

void DesktopProcesses::setFrontProcess(ProcessSerialNumber number) { bringForward(number, false); }

std::vector<xcb_window_t> DesktopProcesses::windowsFromFront(const Program& program) const {
  std::vector<xcb_window_t> windows;
  const std::vector<xcb_window_t>& stacking = tracker_.stacking();
  for (auto each = stacking.rbegin(); each != stacking.rend(); ++each) {
    const auto& own = program.windows;
    if (std::find(own.begin(), own.end(), *each) != own.end()) windows.push_back(*each);
  }
  std::stable_partition(windows.begin(), windows.end(), [this](xcb_window_t id) {
    const ManagedWindow* const window = tracker_.window(id);
    return window && window->isOrdinary;
  });
  return windows;
}

bool DesktopProcesses::bringForward(ProcessSerialNumber number, bool allWindows) {
  update();
  const Program* const found = program(number);
  if (!found) return false;
  const std::vector<xcb_window_t> windows = windowsFromFront(*found);
  if (windows.empty()) return false;
  std::vector<xcb_window_t> visible, here;
  for (const xcb_window_t window : windows) {
    if (tracker_.isIconic(window)) continue;
    visible.push_back(window);
    if (tracker_.isOnCurrentDesktop(window)) here.push_back(window);
  }
  const xcb_window_t chosen = !here.empty()      ? here.front()
                              : !visible.empty() ? visible.front()
                                                 : windows.front();
  tracker_.activate(chosen, userTime());
  if (allWindows) {
    xcb_window_t above = chosen;
    for (const xcb_window_t window : here) {
      if (window == chosen) continue;
      tracker_.raiseBelow(window, above);
      above = window;
    }
    tracker_.connection().flush();
  }
  update();
  return true;
}

bool DesktopProcesses::isTerminated(ProcessSerialNumber number) const {
  const Program* const found = program(number);
  if (!found) return true;
  return found->windows.empty() &&
         startMarkOfProcess(static_cast<std::int32_t>(number.lowLongOfPSN)) != found->startMark;
}

bool DesktopProcesses::isHidden(ProcessSerialNumber number) const {
  const Program* const found = program(number);
  if (!found || found->windows.empty()) return false;
  return std::all_of(found->windows.begin(), found->windows.end(),
                     [this](xcb_window_t window) { return tracker_.isIconic(window); });
}

bool DesktopProcesses::hide(ProcessSerialNumber number) {
  const Program* const found = program(number);
  if (!found || found->windows.empty()) return false;
  for (const xcb_window_t window : found->windows) tracker_.iconify(window);
  return true;
}

bool DesktopProcesses::unhide(ProcessSerialNumber number) {
  const Program* const found = program(number);
  if (!found || found->windows.empty()) return false;
  const std::vector<xcb_window_t> windows = windowsFromFront(*found);
  // The last one mapped ends up in front.
  for (auto each = windows.rbegin(); each != windows.rend(); ++each) {
    if (tracker_.isIconic(*each)) tracker_.deiconify(*each);
  }
  return true;
}

bool DesktopProcesses::terminate(ProcessSerialNumber number) {
  const Program* const found = program(number);
  if (!found) return false;
  bool asked = false;
  for (const xcb_window_t window : found->windows) {
    if (!tracker_.canBeClosed(window)) continue;
    tracker_.close(window, userTime());
    asked = true;
  }
  if (asked) return true;
  const auto pid = static_cast<pid_t>(number.lowLongOfPSN);
  return pid > 0 && kill(pid, SIGTERM) == 0;
}

bool DesktopProcesses::forceTerminate(ProcessSerialNumber number) {
  const Program* const found = program(number);
  if (!found) return false;
  const auto pid = static_cast<pid_t>(number.lowLongOfPSN);
  if (pid > 0) return kill(pid, SIGKILL) == 0;
  if (found->windows.empty()) return false;
  xcb_kill_client(tracker_.connection().get(), found->windows.front());
  tracker_.connection().flush();
  return true;
}

}  // namespace qb
