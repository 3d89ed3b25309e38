#include "PlatformSimulated/SimulatedFileEvents.h"

#include <utility>

#include "QuillboxCommon/Log.h"

namespace qb {

struct SimulatedFileEvents::Watcher {
  std::string folder;
  TimeInterval latency = 0;
  Block changed;
  bool isDue = false;
};

SimulatedFileEvents::SimulatedFileEvents(SimulatedFileSystem& files) {
  files.setEntryObserver([this](const std::string& path) { note(path); });
}

Subscription SimulatedFileEvents::watchFolder(const std::string& path, TimeInterval latency,
                                              Block changed) {
  if (unwatchable_.contains(path)) {
    log(path + " cannot be watched.");
    return {};
  }
  auto watcher = std::make_shared<Watcher>();
  watcher->folder = path;
  watcher->latency = latency;
  watcher->changed = std::move(changed);
  watchers_.push_back(watcher);
  return Subscription([this, watcher] {
    watcher->changed = {};
    std::erase(watchers_, watcher);
  });
}

std::vector<std::string> SimulatedFileEvents::watchedFolders() const {
  std::vector<std::string> folders;
  for (const auto& watcher : watchers_) folders.push_back(watcher->folder);
  return folders;
}

void SimulatedFileEvents::note(const std::string& path) {
  const std::string above = path.substr(0, path.rfind('/'));
  for (const auto& watcher : watchers_) {
    const bool isAbout = watcher->folder == above || watcher->folder == path ||
                         watcher->folder.starts_with(path + '/');
    if (!isAbout || std::exchange(watcher->isDue, true)) continue;
    RunLoop::main().performAfterDelay(watcher.get(), "tell", watcher->latency, [watcher] {
      watcher->isDue = false;
      const Block changed = watcher->changed;
      if (changed) changed();
    });
  }
}

}  // namespace qb
