#include "PlatformDesktop/processes/DesktopFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>

#include "PlatformDesktop/processes/DesktopEntry.h"

namespace qb {

namespace {

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

std::vector<std::string> folders(const char* own, const std::string& ownDefault, const char* shared,
                                 std::string_view sharedDefault) {
  std::string user = variable(own);
  // Relative paths are to be taken as unset.
  if (!user.starts_with('/')) user = DesktopFolders::home() + ownDefault;
  std::string system = variable(shared);
  if (system.empty()) system = sharedDefault;
  std::vector<std::string> result = {user};
  for (std::string& folder : splitList(system, ':')) {
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    if (folder.starts_with('/')) result.push_back(std::move(folder));
  }
  return result;
}

}  // namespace

std::string DesktopFolders::home() {
  const std::string home = variable("HOME");
  if (!home.empty()) return home;
  std::array<char, 4096> buffer{};
  passwd record{};
  passwd* found = nullptr;
  getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found);
  return found ? found->pw_dir : "/";
}

std::vector<std::string> DesktopFolders::data() {
  return folders("XDG_DATA_HOME", "/.local/share", "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

std::vector<std::string> DesktopFolders::configuration() {
  return folders("XDG_CONFIG_HOME", "/.config", "XDG_CONFIG_DIRS", "/etc/xdg");
}

std::string DesktopFolders::cache() {
  const std::string folder = variable("XDG_CACHE_HOME");
  return folder.starts_with('/') ? folder : home() + "/.cache";
}

std::string contentsOfFile(const std::string& path, std::size_t limit) {
  std::ifstream file(path, std::ios::binary);
  std::string contents;
  std::array<char, 16384> block;
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    contents.append(block.data(), static_cast<std::size_t>(file.gcount()));
    if (contents.size() > limit) return {};
  }
  return contents;
}

}  // namespace qb
