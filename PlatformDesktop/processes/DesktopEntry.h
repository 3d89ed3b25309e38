#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

/// An installed application: one desktop entry file.
struct DesktopEntry {
  /// Its path below the folder it was found in, "/" as "-", without ".desktop".
  std::string id;
  std::string path;
  /// In the user's language where the file has it.
  std::string name;
  std::string exec, icon, startupWmClass, workingFolder;
  bool runsInTerminal = false;
  /// It is a terminal itself, by its categories.
  bool isTerminalEmulator = false;
  bool noDisplay = false;
  bool hidden = false;

  /// Reads an entry of the type "Application"; none for anything else. `locale` as in LANG.
  static std::optional<DesktopEntry> parse(std::string_view text, std::string id, std::string path,
                                           std::string_view locale);
  /// The program of `exec`, without folders; empty when there is none.
  std::string programName() const;
  /// The words to run: field codes filled in or dropped. `url`, unless empty, is what to open, at
  /// the end where the line has no place for it. Empty when the line is broken.
  std::vector<std::string> commandLine(const std::string& url = {}) const;
};

/// The values of one group of a key file (desktop entries, themes, mimeapps.list) in file order.
using KeyFileGroup = std::vector<std::pair<std::string, std::string>>;
KeyFileGroup keyFileGroup(std::string_view text, std::string_view group);
/// The value of `key`, or an empty one.
std::string_view keyFileValue(const KeyFileGroup& group, std::string_view key);
/// Parts between `separator`s, without empty ones.
std::vector<std::string> splitList(std::string_view text, char separator);

}  // namespace qb
