#include "Quillbox/Item/folder/RecentlyAccessedItems.h"

#include <algorithm>
#include <unordered_set>

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/Item/folder/FolderContents.h"
#include "Quillbox/activation/Quillbox.h"

namespace qb {

namespace {

constexpr std::size_t mostPaths = 8;
constexpr const char* kRecentlyAccessedItemsKey = "RecentlyAccessedItems";
constexpr const char* fileOfDownloads = "~/Library/Preferences/com.vorlane.quillbox.downloads";

std::string keyOfFolder(const std::string& folder) {
  std::string key = folder;
  std::replace(key.begin(), key.end(), '/', '.');
  return key.starts_with('.') ? key.substr(1) : key;
}

std::string pathOfDownloadsFile() {
  return quillbox->platform().fileSystem().stringByExpandingTildeInPath(fileOfDownloads);
}

PropertyList namesOf(const std::vector<std::string>& paths) {
  PropertyList names = PropertyList::array();
  for (const std::string& path : paths) names.append(lastPathComponent(path));
  return names;
}

}  // namespace

void RecentlyAccessedItems::load(const std::string& folder) {
  paths_.clear();
  const auto saved = quillbox->loadDictionaryForKey(keyOfFolder(folder));
  if (!saved) return;
  for (const PropertyList& path : saved->objectForKey(kRecentlyAccessedItemsKey).arrayValue()) {
    if (path.isString() && paths_.size() < mostPaths) paths_.push_back(path.stringValue());
  }
}

void RecentlyAccessedItems::putFirst(const std::string& path) {
  remove(path);
  paths_.insert(paths_.begin(), path);
  if (paths_.size() > mostPaths) paths_.pop_back();
}

void RecentlyAccessedItems::add(const std::string& path, const std::string& folder) {
  putFirst(path);
  save(folder);
}

void RecentlyAccessedItems::remove(const std::string& path) {
  const auto found = std::find(paths_.begin(), paths_.end(), path);
  if (found != paths_.end()) paths_.erase(found);
}

void RecentlyAccessedItems::addNewlyDownloaded(const std::vector<std::string>& visibleContents,
                                               const std::string& folder) {
  FileSystem& files = quillbox->platform().fileSystem();
  const std::string file = pathOfDownloadsFile();
  const auto known = files.arrayWithContentsOfFile(file);
  std::unordered_set<std::string> knownNames;
  if (known) {
    for (const PropertyList& name : known->arrayValue()) knownNames.insert(name.stringValue());
  }
  bool anyNew = false;
  for (const std::string& path : visibleContents) {
    if (knownNames.contains(lastPathComponent(path)) || isFileBeingDownloaded(path)) continue;
    putFirst(path);
    anyNew = true;
  }
  // Once for all: each time waits for the disk.
  if (anyNew) save(folder);
  const PropertyList names = namesOf(visibleContents);
  if (known != names) files.writeToFile(names, file);
}

void RecentlyAccessedItems::save(const std::string& folder) const {
  PropertyList paths = PropertyList::array();
  for (const std::string& path : paths_) paths.append(path);
  quillbox->saveDictionary(PropertyList::dictionary({{kRecentlyAccessedItemsKey, paths}}),
                           keyOfFolder(folder));
}

}  // namespace qb
