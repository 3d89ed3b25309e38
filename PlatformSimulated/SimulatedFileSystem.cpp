#include "PlatformSimulated/SimulatedFileSystem.h"

#include <string_view>
#include <type_traits>
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

/// More links than that in a row lead round in a ring.
constexpr int mostLinks = 40;

struct NamedDirectory {
  SearchPathDirectory directory;
  const char* path;
};
constexpr NamedDirectory namedDirectories[] = {
    {ApplicationDirectory, "/usr/share/applications"},
    {DocumentDirectory, "/home/user/Documents"},
    {DesktopDirectory, "/home/user/Desktop"},
    {DownloadsDirectory, "/home/user/Downloads"},
    {MoviesDirectory, "/home/user/Videos"},
    {MusicDirectory, "/home/user/Music"},
    {PicturesDirectory, "/home/user/Pictures"},
    {SharedPublicDirectory, "/home/user/Public"},
    {AllApplicationsDirectory, "/usr/share/applications"},
};

}  // namespace

std::string SimulatedFileSystem::stringByExpandingTildeInPath(const std::string& path) const {
  if (path == "~" || path.starts_with("~/")) return std::string(home) + path.substr(1);
  return path;
}

std::string SimulatedFileSystem::followed(const std::string& path) const {
  std::string place = path;
  for (int count = 0; count < mostLinks; ++count) {
    const auto link = links_.find(place);
    if (link == links_.end()) return place;
    place = link->second;
  }
  return {};
}

bool SimulatedFileSystem::isThere(const std::string& path) const {
  if (path.empty()) return false;
  if (files_.contains(path) || folders_.contains(path) || links_.contains(path)) return true;
  for (const auto& [file, contents] : files_) {
    if (isBelow(file, path)) return true;
  }
  return false;
}

bool SimulatedFileSystem::fileExistsAtPath(const std::string& path) const {
  return isThere(followed(path));
}

bool SimulatedFileSystem::isDeletableFileAtPath(const std::string& path) const {
  return isThere(path) && !readOnly_.contains(folderOf(path));
}

bool SimulatedFileSystem::removeItemAtPath(const std::string& path) {
  if (!isDeletableFileAtPath(path)) return false;
  const auto goes = [&path](const std::string& each) {
    return each == path || isBelow(each, path);
  };
  std::erase_if(files_, [&goes](const auto& file) { return goes(file.first); });
  std::erase_if(links_, [&goes](const auto& link) { return goes(link.first); });
  std::erase_if(dates_, [&goes](const auto& dates) { return goes(dates.first); });
  std::erase_if(folders_, goes);
  std::erase_if(private_, goes);
  noteEntry(path);
  return true;
}

bool SimulatedFileSystem::createDirectoryAtPath(const std::string& path, FolderAccess access) {
  if (writesFail_ || path.empty()) return false;
  for (std::string folder = path; !folder.empty() && folder != "/"; folder = folderOf(folder)) {
    if (files_.contains(folder)) return false;
  }
  makeFolder(path);
  if (access == FolderAccess::Private) private_.insert(path);
  return true;
}

std::string SimulatedFileSystem::applicationSupportDirectory() {
  const std::string path = std::string(home) + "/.local/share";
  createDirectoryAtPath(path, FolderAccess::Usual);
  return path;
}

std::optional<std::string> SimulatedFileSystem::pathForDirectory(
    SearchPathDirectory directory) const {
  if (const auto set = directories_.find(directory); set != directories_.end()) return set->second;
  for (const NamedDirectory& named : namedDirectories) {
    if (named.directory == directory) return named.path;
  }
  return std::nullopt;
}

std::uint32_t SimulatedFileSystem::itemInfoFlagsAtPath(const std::string& path) const {
  if (!fileExistsAtPath(path)) return 0;
  std::uint32_t flags = files_.contains(followed(path)) ? ItemInfoIsPlainFile : ItemInfoIsContainer;
  if (path.substr(path.rfind('/') + 1).starts_with('.')) flags |= ItemInfoIsInvisible;
  if (volumes_.contains(path)) flags |= ItemInfoIsVolume;
  if (flags & ItemInfoIsPlainFile && path.ends_with(".desktop")) flags |= ItemInfoIsApplication;
  if (flags & ItemInfoIsContainer && path.ends_with(".rtfd")) flags |= ItemInfoIsPackage;
  return flags;
}

std::optional<FileAttributes> SimulatedFileSystem::attributesOfItemAtPath(
    const std::string& path) const {
  if (!isThere(path)) return std::nullopt;
  FileAttributes attributes;
  attributes.isDirectory = !files_.contains(path) && !links_.contains(path);
  if (const auto bytes = raw(path)) attributes.size = static_cast<std::int64_t>(bytes->size());
  if (const auto dates = dates_.find(path); dates != dates_.end()) {
    attributes.creationDate = dates->second.creation;
    attributes.modificationDate = dates->second.modification;
  }
  return attributes;
}

std::vector<std::string> SimulatedFileSystem::contentsOfDirectoryAtPath(
    const std::string& path) const {
  const std::string prefix = path.ends_with('/') ? path : path + '/';
  std::set<std::string> names;
  const auto add = [&](const std::string& each) {
    if (each.size() <= prefix.size() || !each.starts_with(prefix)) return;
    names.insert(each.substr(prefix.size(), each.find('/', prefix.size()) - prefix.size()));
  };
  for (const auto& [file, contents] : files_) add(file);
  for (const auto& [link, target] : links_) add(link);
  for (const std::string& folder : folders_) add(folder);
  return {names.begin(), names.end()};
}

std::string SimulatedFileSystem::volumeOf(const std::string& path) const {
  std::string folder = folderOf(path);
  while (!volumes_.contains(folder)) folder = folderOf(folder);
  return folder;
}

bool SimulatedFileSystem::canPlaceItem(const std::string& path, const std::string& toPath,
                                       PresentItem presentItem) const {
  const std::string folder = folderOf(toPath);
  if (!fileExistsAtPath(path) || !fileExistsAtPath(folder) || files_.contains(folder)) return false;
  if (readOnly_.contains(folder) || isBelow(toPath, path) || isBelow(path, toPath)) return false;
  return presentItem == PresentItem::IsReplaced || !fileExistsAtPath(toPath);
}

void SimulatedFileSystem::duplicate(const std::string& path, const std::string& toPath) {
  removeItemAtPath(toPath);
  const auto copyAll = [&](auto& entries) {
    std::remove_reference_t<decltype(entries)> copies;
    for (const auto& [each, contents] : entries) {
      if (each == path || isBelow(each, path)) copies[toPath + each.substr(path.size())] = contents;
    }
    entries.merge(copies);
  };
  copyAll(files_);
  copyAll(links_);
  copyAll(dates_);
  std::set<std::string> folders;
  for (const std::string& folder : folders_) {
    if (folder == path || isBelow(folder, path))
      folders.insert(toPath + folder.substr(path.size()));
  }
  folders_.merge(folders);
  noteEntry(toPath);
}

bool SimulatedFileSystem::moveItemAtPath(const std::string& path, const std::string& toPath,
                                         PresentItem presentItem) {
  if (path == toPath) return fileExistsAtPath(path);
  if (!canPlaceItem(path, toPath, presentItem) || readOnly_.contains(folderOf(path))) return false;
  if (writesFail_ && volumeOf(path) != volumeOf(toPath)) return false;
  duplicate(path, toPath);
  // A folder that becomes empty is still there.
  makeFolder(folderOf(path));
  return removeItemAtPath(path);
}

bool SimulatedFileSystem::copyItemAtPath(const std::string& path, const std::string& toPath,
                                         PresentItem presentItem) {
  if (path == toPath) return fileExistsAtPath(path);
  if (!canPlaceItem(path, toPath, presentItem) || writesFail_) return false;
  duplicate(path, toPath);
  return true;
}

std::optional<PropertyList> SimulatedFileSystem::dictionaryWithContentsOfFile(
    const std::string& path) const {
  auto contents = propertyList(path);
  if (!contents || !contents->isDictionary()) return std::nullopt;
  return contents;
}

std::optional<PropertyList> SimulatedFileSystem::arrayWithContentsOfFile(
    const std::string& path) const {
  auto contents = propertyList(path);
  if (!contents || !contents->isArray()) return std::nullopt;
  return contents;
}

bool SimulatedFileSystem::writeToFile(const PropertyList& list, const std::string& path) {
  if (!canWrite(path) || !(list.isDictionary() || list.isArray())) return false;
  const auto present = files_.find(path);
  const auto read = propertyList(path);
  if (present != files_.end() && !(read && read->kind() == list.kind())) {
    std::string aside = path + ".unreadable";
    for (int number = 2; files_.contains(aside); ++number) {
      aside = path + ".unreadable." + std::to_string(number);
    }
    files_[aside] = present->second;
  }
  replace(path, list);
  return true;
}

bool SimulatedFileSystem::writeDataToFile(const PropertyList::Data& data, const std::string& path) {
  if (!canWrite(path)) return false;
  replace(path, std::string(data.begin(), data.end()));
  return true;
}

bool SimulatedFileSystem::canWrite(const std::string& path) const {
  if (writesFail_ || folders_.contains(path)) return false;
  for (std::string folder = folderOf(path); !folder.empty() && folder != "/";
       folder = folderOf(folder)) {
    if (files_.contains(folder)) return false;
  }
  return true;
}

void SimulatedFileSystem::replace(const std::string& path, Contents contents) {
  makeFolder(folderOf(path));
  // The name goes to another file.
  dates_.erase(path);
  put(path, std::move(contents));
  noteEntry(path);
  ++writes_[path];
}

void SimulatedFileSystem::putPropertyList(const std::string& path, PropertyList contents) {
  put(stringByExpandingTildeInPath(path), std::move(contents));
}

void SimulatedFileSystem::putRaw(const std::string& path, std::string contents) {
  put(stringByExpandingTildeInPath(path), std::move(contents));
}

void SimulatedFileSystem::put(const std::string& path, Contents contents) {
  const bool isNew = !isThere(path);
  files_[path] = std::move(contents);
  const Date now = clock_.date();
  dates_.try_emplace(path, Dates{now, now}).first->second.modification = now;
  if (isNew) noteEntry(path);
}

void SimulatedFileSystem::putLink(const std::string& path, const std::string& toPath) {
  links_[path] = toPath;
  dates_[path] = {clock_.date(), clock_.date()};
  noteEntry(path);
}

void SimulatedFileSystem::noteEntry(const std::string& path) const {
  if (entryObserver_) entryObserver_(path);
}

void SimulatedFileSystem::makeFolder(const std::string& path) {
  for (std::string folder = stringByExpandingTildeInPath(path); !folder.empty();
       folder = folderOf(folder)) {
    if (!folders_.insert(folder).second) return;
    dates_[folder] = {clock_.date(), clock_.date()};
    noteEntry(folder);
  }
}

void SimulatedFileSystem::mountVolume(const std::string& path) {
  makeFolder(path);
  volumes_.insert(path);
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
