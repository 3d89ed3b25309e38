#pragma once

#include <sys/inotify.h>

#include <QSocketNotifier>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Platform/FileEvents.h"
#include "PlatformDesktop/files/Descriptor.h"

namespace qb {

/// News of folders by inotify, with one descriptor for all of them; there is none before the first
/// is watched. Mounts are told by the kernel's table. While nothing happens it costs no wake-up.
class DesktopFileEvents : public FileEvents {
 public:
  DesktopFileEvents() = default;
  ~DesktopFileEvents() override;
  DesktopFileEvents(const DesktopFileEvents&) = delete;
  DesktopFileEvents& operator=(const DesktopFileEvents&) = delete;

  Subscription watchFolder(const std::string& path, TimeInterval latency, Block changed) override;

 private:
  struct Watcher;

  void open();
  void watchAll();
  void watch(Watcher& watcher);
  /// The kernel's number; -1, with `errno` set, when that folder cannot be watched.
  int add(const std::string& folder, std::uint32_t events);
  /// Watches what is there now in the folders' places, and notes those where that is another thing.
  void lookAgain();
  void read();
  /// Answers whether folders may have come or gone.
  bool take(const inotify_event& event);
  void mountsHaveChanged();
  void note(const std::shared_ptr<Watcher>& watcher);

  std::vector<std::shared_ptr<Watcher>> watchers_;
  std::optional<Descriptor> descriptor_, mounts_;
  std::unique_ptr<QSocketNotifier> notifier_, mountNotifier_;
  /// By the kernel's numbers. `wanted_` is where the next ones are gathered.
  std::set<int> watches_, wanted_;
  std::set<std::string> volumes_;
};

}  // namespace qb
