#include "PlatformDesktop/files/UserDirectories.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

struct UserDirectory {
  SearchPathDirectory directory;
  std::string_view key, defaultName;
};
constexpr std::array userDirectories = {
    UserDirectory{DesktopDirectory, "XDG_DESKTOP_DIR", "Desktop"},
    UserDirectory{DocumentDirectory, "XDG_DOCUMENTS_DIR", "Documents"},
    UserDirectory{DownloadsDirectory, "XDG_DOWNLOAD_DIR", "Downloads"},
    UserDirectory{MoviesDirectory, "XDG_VIDEOS_DIR", "Videos"},
    UserDirectory{MusicDirectory, "XDG_MUSIC_DIR", "Music"},
    UserDirectory{PicturesDirectory, "XDG_PICTURES_DIR", "Pictures"},
    UserDirectory{SharedPublicDirectory, "XDG_PUBLICSHARE_DIR", "Public"},
};

std::string_view trimmed(std::string_view text) {
  constexpr const char* blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// `"$HOME/name"` or `"/name"` as a path; none for anything else, which does not count.
std::optional<std::string> pathOfValue(std::string_view value, const std::string& home) {
  if (value.size() < 2 || value.front() != '"' || value.back() != '"') return std::nullopt;
  value = value.substr(1, value.size() - 2);
  constexpr std::string_view homeVariable = "$HOME";
  std::string path;
  if (value.starts_with(homeVariable)) {
    path = home;
    value.remove_prefix(homeVariable.size());
  }
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\' && i + 1 < value.size()) ++i;
    path += value[i];
  }
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path.starts_with('/') ? std::optional(path) : std::nullopt;
}

/// The last line counts, as it would in a shell.
std::optional<std::string> configuredPath(std::string_view configuration, std::string_view key,
                                          const std::string& home) {
  std::optional<std::string> path;
  while (!configuration.empty()) {
    const std::size_t end = configuration.find('\n');
    const std::string_view line = trimmed(configuration.substr(0, end));
    configuration.remove_prefix(end == std::string_view::npos ? configuration.size() : end + 1);
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || trimmed(line.substr(0, equals)) != key) continue;
    if (const auto value = pathOfValue(trimmed(line.substr(equals + 1)), home)) path = value;
  }
  return path;
}

/// Where the desktop entries of all users lie: the system's own folder is the last of the list.
std::string applicationsFolder() {
  std::vector<std::string> folders = DesktopFolders::data();
  folders.erase(folders.begin());
  std::reverse(folders.begin(), folders.end());
  std::error_code error;
  for (const std::string& folder : folders) {
    const std::string applications = folder + "/applications";
    if (std::filesystem::is_directory(applications, error)) return applications;
  }
  return "/usr/share/applications";
}

}  // namespace

std::optional<std::string> userDirectory(SearchPathDirectory directory,
                                         std::string_view configuration, const std::string& home) {
  for (const UserDirectory& each : userDirectories) {
    if (each.directory != directory) continue;
    const auto configured = configuredPath(configuration, each.key, home);
    if (!configured) return home + '/' + std::string(each.defaultName);
    return *configured == home ? std::nullopt : configured;
  }
  return std::nullopt;
}

std::optional<std::string> userDirectory(SearchPathDirectory directory) {
  if (directory == ApplicationDirectory || directory == AllApplicationsDirectory) {
    return applicationsFolder();
  }
  return userDirectory(directory,
                       contentsOfFile(DesktopFolders::configuration().front() + "/user-dirs.dirs"),
                       DesktopFolders::home());
}

}  // namespace qb
