#include "PlatformDesktop/processes/ApplicationCatalogue.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

/// A package manager writes many files one after the other.
constexpr TimeInterval settlingTime = 1;

std::string messageLocale() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value && *value) return value;
  }
  return "C";
}

/// Where entries lie, and where the user's default applications do.
std::vector<FolderWatch::Folder> watchedFolders() {
  std::vector<FolderWatch::Folder> folders{{DesktopFolders::configuration().front(), false}};
  for (const std::string& folder : DesktopFolders::data()) {
    folders.push_back({folder + "/applications", true});
  }
  return folders;
}

bool isRead(std::string_view file) {
  return file.ends_with(".desktop") || file.ends_with("mimeapps.list") ||
         file == "mimeinfo.cache" || file == "defaults.list";
}

std::shared_ptr<const ApplicationIndex> readIndex() {
  return std::make_shared<const ApplicationIndex>(ApplicationIndex::load(
      DesktopFolders::data(), DesktopFolders::configuration(), messageLocale()));
}

}  // namespace

ApplicationCatalogue::ApplicationCatalogue(RunLoopHost& host)
    : host_(host), watch_(watchedFolders(), isRead, [this] { readAgain(); }) {
  auto promise = std::make_shared<std::promise<std::shared_ptr<const ApplicationIndex>>>();
  first_ = promise->get_future().share();
  host_.runInBackground([promise] { promise->set_value(readIndex()); });
}

const ApplicationIndex& ApplicationCatalogue::index() const {
  if (!index_) index_ = first_.get();
  return *index_;
}

void ApplicationCatalogue::readAgain() {
  if (readingIsDue_) return;
  readingIsDue_ = true;
  const auto alive = std::weak_ptr<const bool>(lifeSign_);
  executeBlockAfterDelay(
      [this, alive] {
        if (!alive.lock()) return;
        readingIsDue_ = false;
        host_.runInBackground([this, alive] {
          executeBlockAfterDelay(
              [this, alive, index = readIndex()] {
                if (!alive.lock()) return;
                index_ = index;
                if (observer_) observer_();
              },
              0);
        });
      },
      settlingTime);
}

}  // namespace qb
