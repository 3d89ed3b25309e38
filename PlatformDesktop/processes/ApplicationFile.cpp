#include "PlatformDesktop/processes/ApplicationFile.h"

#include <unistd.h>

#include <algorithm>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

constexpr std::string_view extension = ".desktop";

bool isInstalled(const std::string& path) {
  const auto folders = DesktopFolders::data();
  return std::any_of(folders.begin(), folders.end(), [&path](const std::string& folder) {
    return path.starts_with(folder + "/applications/");
  });
}

}  // namespace

std::optional<DesktopEntry> readDesktopEntry(const std::string& path) {
  if (!path.ends_with(extension)) return std::nullopt;
  std::string id = path.substr(path.rfind('/') + 1);
  id.resize(id.size() - extension.size());
  return DesktopEntry::parse(contentsOfFile(path), id, path, "C");
}

bool isApplicationFile(const std::string& path) {
  if (!path.ends_with(extension)) return false;
  if (!isInstalled(path) && access(path.c_str(), X_OK) != 0) return false;
  const auto entry = readDesktopEntry(path);
  return entry && !entry->hidden;
}

}  // namespace qb
