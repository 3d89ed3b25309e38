#include "PlatformDesktop/processes/FolderWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <utility>

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t events = IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO |
                                 IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF;
/// After these the folders are not what they were.
constexpr std::uint32_t folderEvents = IN_ISDIR | IN_DELETE_SELF | IN_MOVE_SELF | IN_Q_OVERFLOW;

}  // namespace

FolderWatch::FolderWatch(std::vector<Folder> folders,
                         std::function<bool(std::string_view)> isOfInterest,
                         std::function<void()> changed)
    : folders_(std::move(folders)),
      isOfInterest_(std::move(isOfInterest)),
      changed_(std::move(changed)),
      descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (descriptor_ < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { read(); });
  watchAll();
}

FolderWatch::~FolderWatch() {
  notifier_.reset();
  if (descriptor_ >= 0) close(descriptor_);
}

/// Answers whether other folders are watched than before.
bool FolderWatch::watchAll() {
  wanted_.clear();
  for (const Folder& folder : folders_) watch(folder);
  for (const int old : watches_) {
    if (!wanted_.contains(old)) inotify_rm_watch(descriptor_, old);
  }
  return std::exchange(watches_, wanted_) != wanted_;
}

void FolderWatch::watch(const Folder& folder) {
  // A second time for a folder that has come before its parent was watched.
  if (!watchNearest(folder.path) && !watchNearest(folder.path)) return;
  if (!folder.isDeep) return;
  std::error_code error;
  fs::recursive_directory_iterator walk(folder.path, fs::directory_options::skip_permission_denied,
                                        error);
  for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
    if (walk->is_directory(error)) add(walk->path().string());
  }
}

/// False when it is an ancestor that is watched.
bool FolderWatch::watchNearest(const std::string& folder) {
  fs::path place = folder;
  while (!add(place.string()) && place.has_relative_path()) place = place.parent_path();
  return place == fs::path(folder);
}

bool FolderWatch::add(const std::string& folder) {
  const int number = inotify_add_watch(descriptor_, folder.c_str(), events | IN_ONLYDIR);
  if (number >= 0) wanted_.insert(number);
  return number >= 0;
}

void FolderWatch::read() {
  alignas(inotify_event) std::array<char, 16384> buffer;
  bool hasChanged = false, foldersMayHave = false;
  for (;;) {
    const ssize_t length = ::read(descriptor_, buffer.data(), buffer.size());
    if (length <= 0) break;
    for (const char* at = buffer.data(); at < buffer.data() + length;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(at);
      at += sizeof(inotify_event) + event.len;
      if ((event.mask & folderEvents) != 0) {
        foldersMayHave = true;
      } else if (event.len != 0 && isOfInterest_(event.name)) {
        hasChanged = true;
      }
    }
  }
  if (foldersMayHave && watchAll()) hasChanged = true;
  if (hasChanged) changed_();
}

}  // namespace qb
