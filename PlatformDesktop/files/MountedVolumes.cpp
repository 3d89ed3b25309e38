#include "PlatformDesktop/files/MountedVolumes.h"

#include <sys/stat.h>

#include <array>
#include <vector>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

constexpr std::array mediaFolders = {"/media/", "/run/media/", "/mnt/"};
/// Of the fields of a line.
constexpr std::size_t mountPointField = 4;

/// Blanks and the like stand as three octal digits.
std::string unescaped(std::string_view text) {
  const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) && isOctal(text[i + 2]) &&
        isOctal(text[i + 3])) {
      result += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 +
                                  (text[i + 3] - '0'));
      i += 3;
    } else {
      result += text[i];
    }
  }
  return result;
}

bool isForUsers(const std::string& place, const std::string& home) {
  if (place == "/") return true;
  if (place.find("/.") != std::string::npos) return false;
  for (const std::string folder : mediaFolders) {
    if (place.starts_with(folder)) return true;
  }
  return place.starts_with(home + '/');
}

}  // namespace

std::set<std::string> volumesOfMountTable(std::string_view table, const std::string& home) {
  std::set<std::string> volumes;
  while (!table.empty()) {
    const std::size_t end = table.find('\n');
    std::string_view line = table.substr(0, end);
    table.remove_prefix(end == std::string_view::npos ? table.size() : end + 1);
    for (std::size_t field = 0; field < mountPointField && !line.empty(); ++field) {
      const std::size_t blank = line.find(' ');
      line.remove_prefix(blank == std::string_view::npos ? line.size() : blank + 1);
    }
    const std::string place = unescaped(line.substr(0, line.find(' ')));
    if (place.starts_with('/') && isForUsers(place, home)) volumes.insert(place);
  }
  return volumes;
}

std::set<std::string> mountedVolumes() {
  return volumesOfMountTable(contentsOfFile("/proc/self/mountinfo"), DesktopFolders::home());
}

bool isMountedVolume(const std::string& path) {
  struct stat status {};
  struct stat above {};
  if (stat(path.c_str(), &status) != 0 || stat((path + "/..").c_str(), &above) != 0) return false;
  // Nothing is mounted on most folders, which this tells without reading the table. Only the root
  // lies in itself.
  if (status.st_dev == above.st_dev && status.st_ino != above.st_ino) return false;
  std::array<char, 4096> resolved{};
  if (realpath(path.c_str(), resolved.data()) == nullptr) return false;
  return mountedVolumes().contains(resolved.data());
}

}  // namespace qb
