#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Platform/FileSystem.h"

namespace qb {

/// Files in memory. A file holds a property list, or raw bytes that are none; one whose name ends
/// in
/// ".desktop" is an application. The user's home is "/home/user". A folder is there when it has
/// been made or when a file lies below it. The root is a volume. Links are followed by the last
/// component of a path only.
class SimulatedFileSystem : public FileSystem {
 public:
  /// By the clock, which must outlive it, files get their dates.
  explicit SimulatedFileSystem(const Clock& clock) : clock_(clock) {}

  std::string stringByExpandingTildeInPath(const std::string& path) const override;
  bool fileExistsAtPath(const std::string& path) const override;
  /// Takes a folder with all that is in it.
  bool removeItemAtPath(const std::string& path) override;
  bool isDeletableFileAtPath(const std::string& path) const override;
  bool createDirectoryAtPath(const std::string& path, FolderAccess access) override;
  /// "/home/user/.local/share".
  std::string applicationSupportDirectory() override;
  /// Raw files only.
  std::optional<std::string> stringWithContentsOfFile(const std::string& path) const override {
    return raw(path);
  }
  std::optional<std::string> stringWithBeginningOfFile(const std::string& path,
                                                       std::size_t length) const override {
    const auto contents = raw(path);
    return contents ? std::optional(contents->substr(0, length)) : std::nullopt;
  }
  /// The English names below the home; applications are in "/usr/share/applications".
  std::optional<std::string> pathForDirectory(SearchPathDirectory directory) const override;
  std::uint32_t itemInfoFlagsAtPath(const std::string& path) const override;
  /// A raw file has its bytes for size, anything else 0. What comes by itself with a file below it
  /// has no dates.
  std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) const override;
  std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const override;
  bool moveItemAtPath(const std::string& path, const std::string& toPath,
                      PresentItem presentItem) override;
  bool copyItemAtPath(const std::string& path, const std::string& toPath,
                      PresentItem presentItem) override;
  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) const override;
  std::optional<PropertyList> arrayWithContentsOfFile(const std::string& path) const override;
  bool writeToFile(const PropertyList& list, const std::string& path) override;
  bool writeDataToFile(const PropertyList::Data& data, const std::string& path) override;

  /// Paths may begin with "~" here. These work on a full disk too and are not counted as writes.
  void putPropertyList(const std::string& path, PropertyList contents);
  void putRaw(const std::string& path, std::string contents);
  void makeFolder(const std::string& path);
  /// A link to a path, at which there need not be anything.
  void putLink(const std::string& path, const std::string& toPath);
  void setCreationDate(const std::string& path, Date date) { dates_[path].creation = date; }
  void setModificationDate(const std::string& path, Date date) { dates_[path].modification = date; }
  /// The property list of a file; none when it is missing or raw.
  std::optional<PropertyList> propertyList(const std::string& path) const;
  /// The bytes of a raw file; none when it is missing or a property list.
  std::optional<std::string> raw(const std::string& path) const;
  /// The paths of all files, sorted.
  std::vector<std::string> paths() const;

  /// It has been made private.
  bool isPrivate(const std::string& folder) const { return private_.contains(folder); }

  /// Told of each path at which something has come, gone or been replaced.
  using EntryObserver = std::function<void(const std::string& path)>;
  void setEntryObserver(EntryObserver observer) { entryObserver_ = std::move(observer); }

  /// Mounts a volume on a folder.
  void mountVolume(const std::string& path);
  /// Nothing can be put into a folder, or taken out of it.
  void setReadOnly(const std::string& folder) { readOnly_.insert(folder); }
  /// The user's folder of that kind from now on; none: the user has none.
  void setPathForDirectory(SearchPathDirectory directory, std::optional<std::string> path) {
    directories_[directory] = std::move(path);
  }

  /// While set, every write fails as on a full disk.
  void setWritesFail(bool fail) { writesFail_ = fail; }
  /// The writes that were made, all of them or those of one path.
  int numberOfWrites() const;
  int numberOfWrites(const std::string& path) const;

 private:
  using Contents = std::variant<PropertyList, std::string>;
  bool canWrite(const std::string& path) const;
  void replace(const std::string& path, Contents contents);
  struct Dates {
    Date creation = 0, modification = 0;
  };

  /// Where a link leads to in the end; any other path as it is.
  std::string followed(const std::string& path) const;
  bool isThere(const std::string& path) const;
  void put(const std::string& path, Contents contents);
  void noteEntry(const std::string& path) const;
  bool canPlaceItem(const std::string& path, const std::string& toPath,
                    PresentItem presentItem) const;
  std::string volumeOf(const std::string& path) const;
  void duplicate(const std::string& path, const std::string& toPath);

  const Clock& clock_;
  EntryObserver entryObserver_;
  std::map<std::string, Contents> files_;
  std::map<std::string, std::string> links_;
  std::map<std::string, Dates> dates_;
  std::set<std::string> folders_{"/", "/home", "/home/user"};
  std::set<std::string> volumes_{"/"};
  std::set<std::string> readOnly_, private_;
  std::map<SearchPathDirectory, std::optional<std::string>> directories_;
  std::map<std::string, int> writes_;
  bool writesFail_ = false;
};

}  // namespace qb
