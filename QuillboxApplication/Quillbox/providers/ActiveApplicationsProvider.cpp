#include "Quillbox/providers/ActiveApplicationsProvider.h"

#include <algorithm>
#include <set>

#include "Platform/KeyCodes.h"
#include "Platform/Workspace.h"
#include "Quillbox/Item/ApplicationItem.h"
#include "Quillbox/activation/Environment.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/Settings.h"
#include "Quillbox/rows/TabRow.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

constexpr TimeInterval monitorInterval = 1.0;
constexpr const char* quitKeyPressed = "quitKeyPressed";
constexpr const char* hideKeyPressed = "hideKeyPressed";
constexpr const char* backgroundHiddenTitle = "Keep Background Applications Hidden";
constexpr const char* backgroundHiddenMessage =
    "While this option is in effect, any Application-specific Auto-Hide settings are ignored and "
    "all Applications will be hidden when in the background.\r\rIf you turn this option off, the "
    "Application-specific Auto-Hide settings will again become effective.\r\rAlso, note that you "
    "can temporarily keep background Applications visible by holding down any modifier key.";

Processes& sessionProcesses() { return quillbox->platform().processes(); }

}  // namespace

std::shared_ptr<TabRowProviderInformation> ActiveApplicationsProvider::information() {
  return std::make_shared<TabRowProviderInformation>(
      "Active Applications", "ActiveApplicationsProvider",
      [] { return std::make_shared<ActiveApplicationsProvider>(); });
}

ActiveApplicationsProvider::ActiveApplicationsProvider() {
  monitor_ = RunLoop::main().scheduleTimer(
      monitorInterval, true, [this](RunLoopTimer& timer) { monitorApplications(timer); });
  setCanBeConfigured(true);
}

ActiveApplicationsProvider::~ActiveApplicationsProvider() {
  if (monitor_) monitor_->invalidate();
}

void ActiveApplicationsProvider::prepareForDeallocation() {
  if (monitor_) monitor_->invalidate();
  monitor_.reset();
  TabRowProvider::prepareForDeallocation();
}

void ActiveApplicationsProvider::noteEnvironment(const PropertyList& environment) {
  frontProcessNumber_ = frontProcessOfEnvironment(environment);
  environmentNoted_.signal();
}

std::int64_t ActiveApplicationsProvider::numberOfItems() {
  updateProcesses();
  return static_cast<std::int64_t>(processes_.size());
}

void ActiveApplicationsProvider::createItemsWithSize(Size size) {
  for (const auto& process : processes_) {
    if (process->bundlePath.empty()) continue;
    auto item = ApplicationItem::create({{0, 0}, size}, process->bundleIdentifier, process->name,
                                        process->bundlePath);
    if (process->itemUniqueID.empty()) process->itemUniqueID = item->uniqueID();
    item->setUniqueID(process->itemUniqueID);
    item->setRepresentedObject(process);
    item->setDragability(0);
    addItem(std::move(item));
  }
}

void ActiveApplicationsProvider::gainActiveStatus() {
  TabRowProvider::gainActiveStatus();
  quillbox->installKeyCodeHandler(KeyCodeQ, asKeyHandlerTarget(), quitKeyPressed);
  quillbox->installKeyCodeHandler(KeyCodeH, asKeyHandlerTarget(), hideKeyPressed);
}

void ActiveApplicationsProvider::relinquishActiveStatus() {
  TabRowProvider::relinquishActiveStatus();
  quillbox->removeKeyCodeHandler(KeyCodeQ, asKeyHandlerTarget());
  quillbox->removeKeyCodeHandler(KeyCodeH, asKeyHandlerTarget());
}

void ActiveApplicationsProvider::performKeyAction(const std::string& action,
                                                  const PropertyList& /*information*/) {
  const auto item = selectedItem();
  if (!item) return;
  if (action == quitKeyPressed) item->quit();
  if (action == hideKeyPressed) item->hide();
}

TabRowProvider::MenuItems ActiveApplicationsProvider::menuItemsForConfigure() {
  const auto front = quillbox->platform().workspace().menuBarOwningApplication();
  const std::string hideTitle =
      front ? stringWithFormat("Hide All Applications Except %@", front->localizedName())
            : "Hide All Applications";
  auto items = TabRowProvider::menuItemsForConfigure();
  items.push_back(
      menuItem(hideTitle, "hideAllApplications", [this](MenuItem&) { hideAllApplications(); }));
  items.push_back(menuItem("Quit All Applications Except Finder", "quitAllApplications",
                           [this](MenuItem&) { quitAllApplications(); }));
  items.push_back(MenuItem::separatorItem());
  items.push_back(menuItem(backgroundHiddenTitle, "hideBackgroundApplications",
                           [this](MenuItem&) { hideBackgroundApplications(); }));
  items.back()->setState(
      quillbox->settings().activeApplicationsProviderHidesAllBackgroundApplications());
  return items;
}

std::vector<std::shared_ptr<RunningApplication>> ActiveApplicationsProvider::runningApplications()
    const {
  std::set<std::string> identifiers;
  std::vector<std::shared_ptr<RunningApplication>> applications;
  for (const auto& process : processes_) {
    const std::string& identifier = process->bundleIdentifier;
    if (identifier.empty() || !identifiers.insert(identifier).second) continue;
    for (auto& instance :
         quillbox->platform().workspace().runningApplicationsWithBundleIdentifier(identifier)) {
      applications.push_back(std::move(instance));
    }
  }
  return applications;
}

void ActiveApplicationsProvider::hideAllApplications() {
  quillbox->dismissQuillbox();
  // As long as the panel has the keyboard no other application is active. The one that will be is
  // the one that the user is in.
  const auto front = quillbox->platform().workspace().menuBarOwningApplication();
  for (const auto& application : runningApplications()) {
    const bool isFront = front && application->processNumber() == front->processNumber();
    if (!application->isActive() && !isFront) application->hide();
  }
}

void ActiveApplicationsProvider::quitAllApplications() {
  quillbox->dismissQuillbox();
  for (const auto& application : runningApplications()) {
    if (application->bundleIdentifier() != kFinderBundleIdentifier) application->terminate();
  }
}

void ActiveApplicationsProvider::hideBackgroundApplications() {
  Settings& settings = quillbox->settings();
  const bool hides = !settings.activeApplicationsProviderHidesAllBackgroundApplications();
  settings.setActiveApplicationsProviderHidesAllBackgroundApplications(hides);
  if (hides) quillbox->displayMessage(backgroundHiddenMessage, backgroundHiddenTitle);
  settings.save();
}

void ActiveApplicationsProvider::monitorApplications(RunLoopTimer& timer) {
  frontProcessNumber_ = sessionProcesses().getFrontProcess();
  const bool changed = updateProcesses();
  if (!informationIsMissing_) {
    timer.restUntilSignalled({&sessionProcesses().processesChanged(), &environmentNoted_});
  }
  if (!changed || !itemsAreDisplayed()) return;
  if (const auto row = tabRow()) row->itemsHaveChangedWithMaintainSelection(true, false);
}

bool ActiveApplicationsProvider::updateProcesses() {
  auto& session = sessionProcesses();
  const ProcessSerialNumber own = session.getCurrentProcess();
  for (const auto& process : processes_) process->running = false;
  informationIsMissing_ = false;
  bool changed = false;
  for (auto next = session.getNextProcess({}); next; next = session.getNextProcess(*next)) {
    if (*next == own) continue;
    if (markOrAddProcess(*next)) changed = true;
  }
  if (removeProcessesThatHaveGone()) changed = true;
  moveFrontProcessToHead();
  return changed;
}

bool ActiveApplicationsProvider::markOrAddProcess(ProcessSerialNumber number) {
  const auto known = std::find_if(processes_.begin(), processes_.end(), [&](const auto& process) {
    return process->processNumber == number;
  });
  if (known != processes_.end()) {
    (*known)->running = true;
    return false;
  }
  const auto information = sessionProcesses().processInformation(number);
  if (!information) {
    informationIsMissing_ = true;
    return false;
  }
  if (information->isBackgroundOnly || information->isUIElement) return false;
  auto process = std::make_shared<Process>();
  process->processNumber = information->processNumber;
  process->running = true;
  process->name = information->name;
  process->bundlePath = information->bundlePath;
  process->bundleIdentifier = information->bundleIdentifier;
  processes_.push_back(std::move(process));
  return true;
}

bool ActiveApplicationsProvider::removeProcessesThatHaveGone() {
  return std::erase_if(processes_, [](const auto& process) { return !process->running; }) > 0;
}

void ActiveApplicationsProvider::moveFrontProcessToHead() {
  const auto front = std::find_if(processes_.begin(), processes_.end(), [&](const auto& process) {
    return process->processNumber == frontProcessNumber_;
  });
  if (front != processes_.end()) std::rotate(processes_.begin(), front, front + 1);
}

std::shared_ptr<KeyHandlerTarget> ActiveApplicationsProvider::asKeyHandlerTarget() {
  return std::static_pointer_cast<ActiveApplicationsProvider>(shared_from_this());
}

}  // namespace qb
