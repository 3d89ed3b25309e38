#include "PlatformDesktop/files/DesktopFileEvents.h"

#include <fcntl.h>
#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <utility>

#include "PlatformDesktop/files/MountedVolumes.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t membership = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
/// A folder leaves its place. The places above it are watched for no more than this, so that what
/// is written in a home does not wake anybody.
constexpr std::uint32_t departure = IN_DELETE_SELF | IN_MOVE_SELF;

std::string parentOf(const std::string& path) { return fs::path(path).parent_path().string(); }

std::string withoutSlashAtEnd(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

}  // namespace

struct DesktopFileEvents::Watcher {
  std::string folder;
  TimeInterval latency = 0;
  Block changed;
  /// The kernel's number of the folder or, while that is not there, of the nearest place above it;
  /// -1 when it cannot be watched.
  int number = -1;
  bool folderIsThere = false, isDue = false, hasComplained = false;
};

DesktopFileEvents::~DesktopFileEvents() = default;

Subscription DesktopFileEvents::watchFolder(const std::string& path, TimeInterval latency,
                                            Block changed) {
  if (!descriptor_) open();
  auto watcher = std::make_shared<Watcher>();
  watcher->folder = withoutSlashAtEnd(path);
  watcher->latency = latency;
  watcher->changed = std::move(changed);
  watchers_.push_back(watcher);
  watchAll();
  return Subscription([this, watcher] {
    watcher->changed = {};
    std::erase(watchers_, watcher);
    watchAll();
  });
}

void DesktopFileEvents::open() {
  descriptor_.emplace(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (*descriptor_) {
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_->get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { read(); });
  }
  mounts_.emplace(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
  if (*mounts_) {
    volumes_ = mountedVolumes();
    mountNotifier_ = std::make_unique<QSocketNotifier>(mounts_->get(), QSocketNotifier::Exception);
    QObject::connect(mountNotifier_.get(), &QSocketNotifier::activated, mountNotifier_.get(),
                     [this] { mountsHaveChanged(); });
  }
}

void DesktopFileEvents::watchAll() {
  wanted_.clear();
  // The places above first: a folder's own events are more, and the last word counts.
  for (const auto& watcher : watchers_) {
    for (std::string place = watcher->folder; place.size() > 1;) {
      place = parentOf(place);
      add(place, departure);
    }
  }
  for (const auto& watcher : watchers_) watch(*watcher);
  for (const int old : watches_) {
    if (!wanted_.contains(old)) inotify_rm_watch(descriptor_->get(), old);
  }
  watches_ = wanted_;
}

void DesktopFileEvents::watch(Watcher& watcher) {
  watcher.folderIsThere = false;
  // A second time for a folder that has come before the place above it was watched.
  for (int attempt = 0; attempt < 2 && !watcher.folderIsThere; ++attempt) {
    std::string place = watcher.folder;
    while ((watcher.number = add(place, membership | departure)) < 0) {
      if ((errno != ENOENT && errno != ENOTDIR) || place.size() <= 1) {
        if (std::exchange(watcher.hasComplained, true)) return;
        log(watcher.folder + " cannot be watched, so what it shows is looked up at each opening: " +
            std::strerror(errno));
        return;
      }
      place = parentOf(place);
    }
    watcher.folderIsThere = place == watcher.folder;
  }
  watcher.hasComplained = false;
}

int DesktopFileEvents::add(const std::string& folder, std::uint32_t events) {
  const int number = inotify_add_watch(descriptor_->get(), folder.c_str(), events | IN_ONLYDIR);
  if (number >= 0) wanted_.insert(number);
  return number;
}

void DesktopFileEvents::lookAgain() {
  std::vector<std::pair<int, bool>> before;
  for (const auto& watcher : watchers_)
    before.emplace_back(watcher->number, watcher->folderIsThere);
  watchAll();
  for (std::size_t i = 0; i < watchers_.size(); ++i) {
    const auto& [number, folderWasThere] = before[i];
    const bool isThere = watchers_[i]->folderIsThere;
    if (isThere != folderWasThere || (isThere && watchers_[i]->number != number)) {
      note(watchers_[i]);
    }
  }
}

void DesktopFileEvents::read() {
  alignas(inotify_event) std::array<char, 16384> buffer;
  bool foldersMayHaveChanged = false;
  for (;;) {
    const ssize_t length = ::read(descriptor_->get(), buffer.data(), buffer.size());
    if (length <= 0) break;
    for (const char* at = buffer.data(); at < buffer.data() + length;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(at);
      at += sizeof(inotify_event) + event.len;
      if (take(event)) foldersMayHaveChanged = true;
    }
  }
  if (foldersMayHaveChanged) lookAgain();
}

bool DesktopFileEvents::take(const inotify_event& event) {
  const bool eventsWereLost = (event.mask & IN_Q_OVERFLOW) != 0;
  bool foldersMayHaveChanged = eventsWereLost || (event.mask & (departure | IN_UNMOUNT)) != 0;
  for (const auto& watcher : watchers_) {
    if (eventsWereLost) note(watcher);
    if (watcher->number != event.wd || (event.mask & membership) == 0) continue;
    if (watcher->folderIsThere) {
      note(watcher);
    } else {
      foldersMayHaveChanged = true;
    }
  }
  return foldersMayHaveChanged;
}

void DesktopFileEvents::mountsHaveChanged() {
  const std::set<std::string> before = std::exchange(volumes_, mountedVolumes());
  std::vector<std::string> changed;
  std::set_symmetric_difference(before.begin(), before.end(), volumes_.begin(), volumes_.end(),
                                std::back_inserter(changed));
  for (const std::string& volume : changed) {
    for (const auto& watcher : watchers_) {
      if (watcher->folder == parentOf(volume)) note(watcher);
    }
  }
  lookAgain();
}

void DesktopFileEvents::note(const std::shared_ptr<Watcher>& watcher) {
  if (std::exchange(watcher->isDue, true)) return;
  RunLoop::main().performAfterDelay(watcher.get(), "tell", watcher->latency, [this, watcher] {
    watcher->isDue = false;
    if (!watcher->changed) return;
    // A folder that some program is still in has gone without a word of its own.
    lookAgain();
    const Block changed = watcher->changed;
    changed();
  });
}

}  // namespace qb
