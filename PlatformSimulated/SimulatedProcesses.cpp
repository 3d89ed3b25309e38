#include "PlatformSimulated/SimulatedProcesses.h"

#include <algorithm>
#include <utility>

namespace qb {

namespace {

/// Process identifiers are unlike process numbers, so that a mix-up shows.
constexpr std::int32_t identifierOffset = 4000;

}  // namespace

SimulatedProcesses::SimulatedProcesses() {
  ownProcess_ =
      launch({"quillbox", "Quillbox", "/usr/share/applications/quillbox.desktop", false, true});
}

ProcessSerialNumber SimulatedProcesses::getFrontProcess() const {
  return ownWindowIsKey_ ? ownProcess_ : frontClient();
}

std::optional<ProcessSerialNumber> SimulatedProcesses::getNextProcess(
    ProcessSerialNumber number) const {
  if (number.isNull()) return processes_.front().information.processNumber;
  const Process* process = find(number);
  if (process == nullptr || process == &processes_.back()) return std::nullopt;
  return (process + 1)->information.processNumber;
}

std::optional<ProcessInformation> SimulatedProcesses::processInformation(
    ProcessSerialNumber number) const {
  const Process* process = find(number);
  if (process == nullptr || !process->informationIsAvailable) return std::nullopt;
  return process->information;
}

void SimulatedProcesses::setFrontProcess(ProcessSerialNumber number) {
  frontProcessRequests_.push_back(number);
  if (number != ownProcess_) {
    if (find(number) != nullptr) bringToFront(number);
  } else if (onOwnProcessBroughtForward_) {
    const Block broughtForward = onOwnProcessBroughtForward_;
    broughtForward();
  }
}

ProcessSerialNumber SimulatedProcesses::launch(const SimulatedApplication& application) {
  ++lastNumber_;
  Process process;
  process.information = {
      .processNumber = {0, lastNumber_},
      .processIdentifier = identifierOffset + static_cast<std::int32_t>(lastNumber_),
      .name = application.name,
      .bundlePath = application.bundlePath,
      .bundleIdentifier = application.bundleIdentifier,
      .isBackgroundOnly = application.isBackgroundOnly,
      .isUIElement = application.isUIElement};
  const ProcessSerialNumber number = process.information.processNumber;
  if (maker_) process.runningApplication = maker_(number);
  processes_.push_back(std::move(process));
  processesChanged_.signal();
  if (onLaunch_) onLaunch_(application);
  return number;
}

ProcessSerialNumber SimulatedProcesses::launchInFront(const SimulatedApplication& application) {
  const ProcessSerialNumber number = launch(application);
  bringToFront(number);
  return number;
}

void SimulatedProcesses::terminate(ProcessSerialNumber number) {
  if (number == ownProcess_ || find(number) == nullptr) return;
  std::erase_if(processes_, [number](const Process& process) {
    return process.information.processNumber == number;
  });
  std::erase(recency_, number);
  processesChanged_.signal();
}

void SimulatedProcesses::bringToFront(ProcessSerialNumber number) {
  if (number == ownProcess_) return;
  const ProcessSerialNumber before = getFrontProcess();
  nothingInFront_ = number.isNull();
  if (Process* process = entry(number)) {
    process->isHidden = false;
    std::erase(recency_, number);
    recency_.push_back(number);
  }
  noteFrontMayHaveChanged(before);
}

void SimulatedProcesses::setHidden(ProcessSerialNumber number, bool hidden) {
  Process* process = entry(number);
  if (process == nullptr) return;
  const ProcessSerialNumber before = getFrontProcess();
  process->isHidden = hidden;
  noteFrontMayHaveChanged(before);
}

void SimulatedProcesses::setInformationAvailable(ProcessSerialNumber number, bool available) {
  if (Process* process = entry(number)) process->informationIsAvailable = available;
}

void SimulatedProcesses::setRefusesToTerminate(ProcessSerialNumber number, bool refuses) {
  if (Process* process = entry(number)) process->refusesToTerminate = refuses;
}

void SimulatedProcesses::setWindowFrame(ProcessSerialNumber number, const Rect& frame) {
  if (Process* process = entry(number)) process->windowFrame = frame;
}

bool SimulatedProcesses::isHidden(ProcessSerialNumber number) const {
  const Process* process = find(number);
  return process != nullptr && process->isHidden;
}

ProcessSerialNumber SimulatedProcesses::frontClient() const {
  if (nothingInFront_) return {};
  for (auto each = recency_.rbegin(); each != recency_.rend(); ++each) {
    if (!isHidden(*each)) return *each;
  }
  return {};
}

const SimulatedProcesses::Process* SimulatedProcesses::find(ProcessSerialNumber number) const {
  const auto found = std::find_if(
      processes_.begin(), processes_.end(),
      [number](const Process& process) { return process.information.processNumber == number; });
  return found == processes_.end() ? nullptr : &*found;
}

SimulatedProcesses::Process* SimulatedProcesses::entry(ProcessSerialNumber number) {
  const auto found = std::find_if(
      processes_.begin(), processes_.end(),
      [number](const Process& process) { return process.information.processNumber == number; });
  return found == processes_.end() ? nullptr : &*found;
}

ProcessSerialNumber SimulatedProcesses::clientAt(Point point) const {
  const auto isThere = [point](const Process& process) {
    return process.windowFrame && !process.isHidden && contains(*process.windowFrame, point);
  };
  for (auto each = recency_.rbegin(); each != recency_.rend(); ++each) {
    if (const Process* process = find(*each); process != nullptr && isThere(*process)) {
      return *each;
    }
  }
  // Windows of programs that never were in front lie below the others.
  for (auto process = processes_.rbegin(); process != processes_.rend(); ++process) {
    if (isThere(*process)) return process->information.processNumber;
  }
  return {};
}

void SimulatedProcesses::setOwnWindowIsKey(bool isKey) {
  const ProcessSerialNumber before = getFrontProcess();
  ownWindowIsKey_ = isKey;
  noteFrontMayHaveChanged(before);
}

void SimulatedProcesses::setRunningApplicationMaker(
    std::function<std::shared_ptr<RunningApplication>(ProcessSerialNumber)> maker) {
  maker_ = std::move(maker);
  for (Process& process : processes_) {
    process.runningApplication = maker_(process.information.processNumber);
  }
}

void SimulatedProcesses::noteFrontMayHaveChanged(ProcessSerialNumber before) {
  if (getFrontProcess() != before) processesChanged_.signal();
}

}  // namespace qb
