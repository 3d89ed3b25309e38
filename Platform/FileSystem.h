#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuillboxCommon/PropertyList.h"
#include "QuillboxCommon/RunLoop.h"

namespace qb {

/// What a path is, as bits. A link counts as what it leads to.
enum ItemInfoFlags : std::uint32_t {
  ItemInfoIsPlainFile = 1,
  /// A folder that users take for one file.
  ItemInfoIsPackage = 2,
  /// On this desktop, a desktop entry that starts a program.
  ItemInfoIsApplication = 4,
  ItemInfoIsContainer = 8,
  ItemInfoIsInvisible = 64,
  /// The place where a file system that users know of is mounted.
  ItemInfoIsVolume = 0x1000,
};

/// What is known of a file without a look inside. A link is a file of its own, whatever it leads
/// to.
struct FileAttributes {
  bool isDirectory = false;
  /// In bytes; of a folder, whatever the file system says.
  std::int64_t size = 0;
  /// When it was made. On a file system that does not note that, its last change.
  Date creationDate = 0;
  Date modificationDate = 0;
};

/// Folders that every user has.
enum SearchPathDirectory : std::int32_t {
  ApplicationDirectory = 1,
  DocumentDirectory = 9,
  DesktopDirectory = 12,
  DownloadsDirectory = 15,
  MoviesDirectory = 17,
  MusicDirectory = 18,
  PicturesDirectory = 19,
  SharedPublicDirectory = 21,
  AllApplicationsDirectory = 100,
};

/// Who can look into a folder: those whom the user lets see new files, or nobody but the user.
enum class FolderAccess { Usual, Private };

/// What becomes of something that has the name which something else is to take.
enum class PresentItem { Stays, IsReplaced };

/// Files by absolute path. Main thread, unless said otherwise.
class FileSystem {
 public:
  virtual ~FileSystem() = default;
  /// A leading "~" becomes the user's home folder.
  virtual std::string stringByExpandingTildeInPath(const std::string& path) const = 0;
  virtual bool fileExistsAtPath(const std::string& path) const = 0;
  virtual bool removeItemAtPath(const std::string& path) = 0;
  /// Whether an item, a folder with all that is in it, could be removed as far as permissions tell.
  virtual bool isDeletableFileAtPath(const std::string& path) const = 0;
  /// Makes the folder and those on the way to it. True when it is there afterwards. One that is to
  /// be private is so from its beginning, and becomes so when it was there before; those on the way
  /// to it stay or get what is usual.
  virtual bool createDirectoryAtPath(const std::string& path,
                                     FolderAccess access = FolderAccess::Usual) = 0;
  /// The user's folder for what programs keep between their runs; made when it is missing. On this
  /// desktop the XDG data home.
  virtual std::string applicationSupportDirectory() = 0;
  /// The user's folder of that kind, which need not be there; none for a kind that the user has
  /// none of.
  virtual std::optional<std::string> pathForDirectory(SearchPathDirectory directory) const = 0;

  /// `ItemInfoFlags`; 0 when there is nothing at `path`.
  virtual std::uint32_t itemInfoFlagsAtPath(const std::string& path) const = 0;
  /// None when there is nothing at `path`.
  virtual std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) const = 0;
  /// The names in a folder, hidden ones too, sorted by their bytes. Empty when it cannot be read.
  virtual std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const = 0;

  /// Moves a file, a folder or a link to a new path, onto another volume too. It has its new name
  /// when it is there as a whole, and what had that name before goes only then: whatever fails,
  /// both are where they were. False when it fails, also when the one lies in the other, or when
  /// something has the name and is to stay. Onto itself it succeeds and does nothing.
  virtual bool moveItemAtPath(const std::string& path, const std::string& toPath,
                              PresentItem presentItem = PresentItem::Stays) = 0;
  /// The same for a copy, which has the dates, modes and tags of what it is a copy of.
  virtual bool copyItemAtPath(const std::string& path, const std::string& toPath,
                              PresentItem presentItem = PresentItem::Stays) = 0;

  /// All bytes of a file. None when it is missing, no plain file or larger than 32 MiB.
  virtual std::optional<std::string> stringWithContentsOfFile(const std::string& path) const = 0;
  /// No more than the first `length` bytes of a plain file, however large that is.
  virtual std::optional<std::string> stringWithBeginningOfFile(const std::string& path,
                                                               std::size_t length) const = 0;

  /// Reads a property list, XML or binary, whose root is a dictionary. None when the file is
  /// missing, larger than 96 MiB or is anything else; the file is left as it is.
  virtual std::optional<PropertyList> dictionaryWithContentsOfFile(
      const std::string& path) const = 0;
  /// The same for a root that is an array.
  virtual std::optional<PropertyList> arrayWithContentsOfFile(const std::string& path) const = 0;
  /// Writes a dictionary or an array as XML, with keys in the dictionary's order, mode 0600, into a
  /// temporary file of the same folder that is flushed and then takes the name's place, so that a
  /// reader sees the old file or the new one, whole. Folders on the way are made. A present file
  /// that is no property list with such a root is first moved aside as "NAME.unreadable" (with a
  /// number when that is taken): nothing of the user's is lost. False, with the old file untouched,
  /// when anything fails.
  virtual bool writeToFile(const PropertyList& list, const std::string& path) = 0;
  /// The same for any bytes, which take the place of whatever file has the name.
  virtual bool writeDataToFile(const PropertyList::Data& data, const std::string& path) = 0;
};

}  // namespace qb
