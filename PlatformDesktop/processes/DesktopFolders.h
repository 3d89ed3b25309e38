#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qb {

/// Where the desktop keeps its files, by the environment variables that say so and their defaults.
/// None of the paths ends in a slash; they need not exist. Any thread, as long as nobody changes
/// the environment.
struct DesktopFolders {
  /// The user's home.
  static std::string home();
  /// The user's folder first, the system's after it.
  static std::vector<std::string> data();
  static std::vector<std::string> configuration();
  /// The user's folder for what can be made anew.
  static std::string cache();
};

/// The whole content of a file; an empty one when it cannot be read or is larger than `limit`.
std::string contentsOfFile(const std::string& path, std::size_t limit = 1 << 20);

}  // namespace qb
