#include "PlatformDesktop/processes/ProgramFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "PlatformDesktop/processes/DesktopEntry.h"
#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view deletedSuffix = " (deleted)";

std::string procFile(std::int32_t pid, std::string_view name) {
  return "/proc/" + std::to_string(pid) + '/' + std::string(name);
}

std::string baseName(const std::string& path) { return path.substr(path.rfind('/') + 1); }

bool isInterpreter(const std::string& name) {
  constexpr std::array<std::string_view, 11> stems = {
      "python", "perl", "ruby", "bash", "dash", "sh", "gjs", "node", "java", "tclsh", "wish"};
  return std::any_of(stems.begin(), stems.end(), [&name](std::string_view stem) {
    return name.starts_with(stem) &&
           name.find_first_not_of("0123456789.", stem.size()) == std::string::npos;
  });
}

std::string foundInPath(const std::string& program) {
  std::error_code error;
  if (program.find('/') != std::string::npos) {
    return program.starts_with('/') && fs::exists(program, error) ? program : "";
  }
  const char* const path = std::getenv("PATH");
  for (const std::string& folder : splitList(path ? path : "/usr/local/bin:/usr/bin:/bin", ':')) {
    const std::string candidate = folder + '/' + program;
    if (fs::exists(candidate, error)) return candidate;
  }
  return {};
}

}  // namespace

ProgramFile programFileOfProcess(std::int32_t pid) {
  ProgramFile program;
  std::error_code error;
  program.path = fs::read_symlink(procFile(pid, "exe"), error).string();
  if (program.path.ends_with(deletedSuffix)) {
    program.path.resize(program.path.size() - deletedSuffix.size());
  }
  const std::vector<std::string> words = splitList(contentsOfFile(procFile(pid, "cmdline")), '\0');
  // Of a program with privileges of its own the link cannot be read.
  if (program.path.empty() && !words.empty()) program.path = foundInPath(words[0]);
  const auto addName = [&program](const std::string& name) {
    if (name.empty()) return;
    if (std::find(program.names.begin(), program.names.end(), name) == program.names.end()) {
      program.names.push_back(name);
    }
  };
  if (isInterpreter(baseName(program.path))) {
    const auto script = std::find_if(words.begin() + (words.empty() ? 0 : 1), words.end(),
                                     [](const std::string& word) { return word[0] != '-'; });
    if (script != words.end()) {
      addName(baseName(*script));
      if (const std::string path = foundInPath(*script); !path.empty()) program.path = path;
    }
  }
  addName(baseName(program.path));
  if (!words.empty()) addName(baseName(words[0]));
  return program;
}

std::string startMarkOfProcess(std::int32_t pid) {
  const std::string status = contentsOfFile(procFile(pid, "stat"));
  // The name, in brackets, may hold anything.
  const std::size_t end = status.rfind(')');
  if (end == std::string::npos) return {};
  const std::vector<std::string> fields = splitList(std::string_view(status).substr(end + 1), ' ');
  constexpr std::size_t state = 0, startTime = 19;
  if (fields.size() <= startTime || fields[state] == "Z") return {};
  return fields[startTime];
}

}  // namespace qb
