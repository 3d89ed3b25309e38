#include "Quillbox/activation/SavedDictionaries.h"

#include "Platform/FileSystem.h"
#include "QuillboxCommon/Format.h"

namespace qb {

std::string SavedDictionaries::pathWithKey(const std::string& key) {
  if (folder_.empty()) {
    folder_ = stringWithFormat("%@/Quillbox/Data", fileSystem_.applicationSupportDirectory());
    // Whether it worked shows when something is written there.
    fileSystem_.createDirectoryAtPath(folder_);
  }
  return stringWithFormat("%@/%@", folder_, key);
}

std::string SavedDictionaries::legacyPathWithKey(const std::string& key) const {
  return fileSystem_.stringByExpandingTildeInPath(
      stringWithFormat("~/Library/Preferences/com.vorlane.quillbox.%@", key));
}

bool SavedDictionaries::save(const PropertyList& dictionary, const std::string& key) {
  return fileSystem_.writeToFile(dictionary, pathWithKey(key));
}

std::optional<PropertyList> SavedDictionaries::loadForKey(const std::string& key) {
  auto dictionary = fileSystem_.dictionaryWithContentsOfFile(pathWithKey(key));
  if (dictionary) return dictionary;
  return fileSystem_.dictionaryWithContentsOfFile(legacyPathWithKey(key));
}

void SavedDictionaries::deleteForKey(const std::string& key) {
  fileSystem_.removeItemAtPath(legacyPathWithKey(key));
  fileSystem_.removeItemAtPath(pathWithKey(key));
}

}  // namespace qb
