#include "PlatformDesktop/files/DesktopSharedFileLists.h"

#include <algorithm>

namespace qb {

namespace {

constexpr TimeInterval timeBetweenLooks = 1;
/// What is further back is hardly recent.
constexpr std::size_t mostRecentApplications = 20;
constexpr const char* recentApplicationsKey = "RecentApplications";

std::string fileNameWithoutExtension(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

DesktopSharedFileLists::DesktopSharedFileLists(FileSystem& fileSystem, DesktopProcesses& processes,
                                               const ApplicationCatalogue& catalogue)
    : fileSystem_(fileSystem), processes_(processes), catalogue_(catalogue) {
  read();
  timer_ = RunLoop::main().scheduleTimer(
      timeBetweenLooks, true, [this](RunLoopTimer&) { noteStarts(); }, RunLoopModes::common());
}

DesktopSharedFileLists::~DesktopSharedFileLists() { timer_->invalidate(); }

std::string DesktopSharedFileLists::filePath() const {
  return fileSystem_.applicationSupportDirectory() + "/Quillbox/RecentApplications.plist";
}

void DesktopSharedFileLists::read() {
  const auto file = fileSystem_.dictionaryWithContentsOfFile(filePath());
  if (!file) return;
  for (const PropertyList& path : file->objectForKey(recentApplicationsKey).arrayValue()) {
    if (path.stringValue().starts_with("/")) recentApplicationPaths_.push_back(path.stringValue());
  }
}

void DesktopSharedFileLists::write() const {
  PropertyList paths = PropertyList::array();
  for (const std::string& path : recentApplicationPaths_) paths.append(path);
  PropertyList file = PropertyList::dictionary();
  file.setObject(paths, recentApplicationsKey);
  fileSystem_.writeToFile(file, filePath());
}

void DesktopSharedFileLists::noteStarts() {
  std::erase_if(seen_, [this](auto number) { return processes_.isTerminated(number); });
  const auto before = recentApplicationPaths_;
  for (const ProcessSerialNumber number : processes_.running()) {
    if (std::find(seen_.begin(), seen_.end(), number) != seen_.end()) continue;
    const auto information = processes_.processInformation(number);
    if (!information || information->isUIElement || information->isBackgroundOnly) continue;
    if (catalogue_.index().entryAtPath(information->bundlePath) == nullptr) continue;
    seen_.push_back(number);
    noteStart(information->bundlePath);
  }
  hasLooked_ = true;
  timer_->restUntilSignalled({&processes_.processesChanged()});
  if (recentApplicationPaths_ == before) return;
  write();
  const auto observers = observers_;
  for (const auto& [number, observer] : observers) observer();
}

void DesktopSharedFileLists::noteStart(const std::string& path) {
  auto& paths = recentApplicationPaths_;
  // What runs at the first look was started at any time before, and keeps its place.
  if (!hasLooked_ && std::find(paths.begin(), paths.end(), path) != paths.end()) return;
  std::erase(paths, path);
  paths.insert(paths.begin(), path);
  if (paths.size() > mostRecentApplications) paths.pop_back();
}

std::vector<SharedFileListItem> DesktopSharedFileLists::snapshot(SharedFileList /*list*/) const {
  std::vector<SharedFileListItem> items;
  for (const std::string& path : recentApplicationPaths_) {
    const DesktopEntry* const entry = catalogue_.index().entryAtPath(path);
    items.push_back({entry ? entry->name : fileNameWithoutExtension(path), path});
  }
  return items;
}

Subscription DesktopSharedFileLists::addObserver(SharedFileList /*list*/, Block changed) {
  const int number = ++lastObserver_;
  observers_.emplace(number, std::move(changed));
  return Subscription([this, number] { observers_.erase(number); });
}

}  // namespace qb
