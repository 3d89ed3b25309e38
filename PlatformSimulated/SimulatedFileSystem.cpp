#include "PlatformSimulated/SimulatedFileSystem.h"

#include <string_view>
#include <utility>

namespace qb {

namespace {

constexpr std::string_view home = "/home/user";

std::string folderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return {};
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool isBelow(const std::string& path, const std::string& folder) {
  return path.starts_with(folder.ends_with('/') ? folder : folder + '/');
}

}  // namespace

std::string SimulatedFileSystem::stringByExpandingTildeInPath(const std::string& path) const {
  if (path == "~" || path.starts_with("~/")) return std::string(home) + path.substr(1);
  return path;
}

bool SimulatedFileSystem::fileExistsAtPath(const std::string& path) const {
  if (path.empty()) return false;
  if (files_.contains(path) || folders_.contains(path)) return true;
  for (const auto& [file, contents] : files_) {
    if (isBelow(file, path)) return true;
  }
  return false;
}

bool SimulatedFileSystem::removeItemAtPath(const std::string& path) {
  if (!fileExistsAtPath(path)) return false;
  std::erase_if(files_, [&path](const auto& file) {
    return file.first == path || isBelow(file.first, path);
  });
  std::erase_if(folders_, [&path](const std::string& folder) {
    return folder == path || isBelow(folder, path);
  });
  return true;
}

bool SimulatedFileSystem::createDirectoryAtPath(const std::string& path) {
  if (writesFail_ || path.empty()) return false;
  for (std::string folder = path; !folder.empty() && folder != "/"; folder = folderOf(folder)) {
    if (files_.contains(folder)) return false;
  }
  makeFolder(path);
  return true;
}

std::string SimulatedFileSystem::applicationSupportDirectory() {
  const std::string path = std::string(home) + "/.local/share";
  createDirectoryAtPath(path);
  return path;
}

std::optional<PropertyList> SimulatedFileSystem::dictionaryWithContentsOfFile(
    const std::string& path) const {
  auto contents = propertyList(path);
  if (!contents || !contents->isDictionary()) return std::nullopt;
  return contents;
}

bool SimulatedFileSystem::writeToFile(const PropertyList& dictionary, const std::string& path) {
  if (writesFail_ || !dictionary.isDictionary() || folders_.contains(path)) return false;
  for (std::string folder = folderOf(path); !folder.empty() && folder != "/";
       folder = folderOf(folder)) {
    if (files_.contains(folder)) return false;
  }
  const auto present = files_.find(path);
  if (present != files_.end() && !dictionaryWithContentsOfFile(path)) {
    std::string aside = path + ".unreadable";
    for (int number = 2; files_.contains(aside); ++number) {
      aside = path + ".unreadable." + std::to_string(number);
    }
    files_[aside] = present->second;
  }
  makeFolder(folderOf(path));
  files_[path] = dictionary;
  ++writes_[path];
  return true;
}

void SimulatedFileSystem::putPropertyList(const std::string& path, PropertyList contents) {
  files_[stringByExpandingTildeInPath(path)] = std::move(contents);
}

void SimulatedFileSystem::putRaw(const std::string& path, std::string contents) {
  files_[stringByExpandingTildeInPath(path)] = std::move(contents);
}

void SimulatedFileSystem::makeFolder(const std::string& path) {
  for (std::string folder = stringByExpandingTildeInPath(path); !folder.empty();
       folder = folderOf(folder)) {
    if (!folders_.insert(folder).second) return;
  }
}

std::optional<PropertyList> SimulatedFileSystem::propertyList(const std::string& path) const {
  const auto found = files_.find(stringByExpandingTildeInPath(path));
  if (found == files_.end()) return std::nullopt;
  const auto* contents = std::get_if<PropertyList>(&found->second);
  return contents == nullptr ? std::nullopt : std::optional(*contents);
}

std::optional<std::string> SimulatedFileSystem::raw(const std::string& path) const {
  const auto found = files_.find(stringByExpandingTildeInPath(path));
  if (found == files_.end()) return std::nullopt;
  const auto* contents = std::get_if<std::string>(&found->second);
  return contents == nullptr ? std::nullopt : std::optional(*contents);
}

std::vector<std::string> SimulatedFileSystem::paths() const {
  std::vector<std::string> all;
  for (const auto& [path, contents] : files_) all.push_back(path);
  return all;
}

int SimulatedFileSystem::numberOfWrites() const {
  int sum = 0;
  for (const auto& [path, count] : writes_) sum += count;
  return sum;
}

int SimulatedFileSystem::numberOfWrites(const std::string& path) const {
  const auto found = writes_.find(stringByExpandingTildeInPath(path));
  return found == writes_.end() ? 0 : found->second;
}

}  // namespace qb
