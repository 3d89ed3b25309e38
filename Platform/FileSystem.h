#pragma once

#include <optional>
#include <string>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// Files by absolute path. Main thread, unless said otherwise.
class FileSystem {
 public:
  virtual ~FileSystem() = default;
  /// A leading "~" becomes the user's home folder.
  virtual std::string stringByExpandingTildeInPath(const std::string& path) const = 0;
  virtual bool fileExistsAtPath(const std::string& path) const = 0;
  virtual bool removeItemAtPath(const std::string& path) = 0;
  /// Makes the folder and those on the way to it. True when it is there afterwards.
  virtual bool createDirectoryAtPath(const std::string& path) = 0;
  /// The user's folder for what programs keep between their runs; made when it is missing. On this
  /// desktop the XDG data home.
  virtual std::string applicationSupportDirectory() = 0;

  /// All bytes of a file. None when it is missing, no plain file or larger than 32 MiB.
  virtual std::optional<std::string> stringWithContentsOfFile(const std::string& path) const = 0;

  /// Reads a property list, XML or binary, whose root is a dictionary. None when the file is
  /// missing or is anything else; the file is left as it is.
  virtual std::optional<PropertyList> dictionaryWithContentsOfFile(
      const std::string& path) const = 0;
  /// Writes XML with the keys in the dictionary's order, mode 0600, into a temporary file of the
  /// same folder that is flushed and then takes the name's place, so that a reader sees the old
  /// file or the new one, whole. Folders on the way are made. A present file that is no property
  /// list is first moved aside as "NAME.unreadable" (with a number when that is taken): nothing of
  /// the user's is lost. False, with the old file untouched, when anything fails.
  virtual bool writeToFile(const PropertyList& dictionary, const std::string& path) = 0;
};

}  // namespace qb
