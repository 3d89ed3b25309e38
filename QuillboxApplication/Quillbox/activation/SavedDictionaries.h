#pragma once

#include <optional>
#include <string>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

class FileSystem;

/// Dictionaries that are kept between runs, one file a key. What an older version left in its
/// place is still read, and moves to the new one when it is next saved. Main thread.
class SavedDictionaries {
 public:
  explicit SavedDictionaries(FileSystem& fileSystem) : fileSystem_(fileSystem) {}

  /// Makes the folder when it is first asked.
  std::string pathWithKey(const std::string& key);
  /// Where older versions kept it; nothing is written there.
  std::string legacyPathWithKey(const std::string& key) const;
  bool save(const PropertyList& dictionary, const std::string& key);
  /// None when there is none that can be read.
  std::optional<PropertyList> loadForKey(const std::string& key);
  /// In both places.
  void deleteForKey(const std::string& key);

 private:
  FileSystem& fileSystem_;
  /// Empty until it has been found.
  std::string folder_;
};

}  // namespace qb
