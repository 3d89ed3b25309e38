#pragma once

#include <string_view>
#include <system_error>

#include "Platform/FileSystem.h"
#include "PlatformDesktop/files/WriteFailures.h"

namespace qb {

/// The files of this machine. Any thread. The log tells once of a file that cannot be written.
class DesktopFileSystem : public FileSystem {
 public:
  std::string stringByExpandingTildeInPath(const std::string& path) const override;
  bool fileExistsAtPath(const std::string& path) const override;
  bool removeItemAtPath(const std::string& path) override;
  bool isDeletableFileAtPath(const std::string& path) const override;
  bool createDirectoryAtPath(const std::string& path,
                             FolderAccess access = FolderAccess::Usual) override;
  std::string applicationSupportDirectory() override;
  std::optional<std::string> stringWithContentsOfFile(const std::string& path) const override;
  std::optional<std::string> stringWithBeginningOfFile(const std::string& path,
                                                       std::size_t length) const override;
  std::optional<std::string> pathForDirectory(SearchPathDirectory directory) const override;
  std::uint32_t itemInfoFlagsAtPath(const std::string& path) const override;
  std::optional<FileAttributes> attributesOfItemAtPath(const std::string& path) const override;
  std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const override;
  bool moveItemAtPath(const std::string& path, const std::string& toPath,
                      PresentItem presentItem) override;
  bool copyItemAtPath(const std::string& path, const std::string& toPath,
                      PresentItem presentItem) override;
  std::optional<PropertyList> dictionaryWithContentsOfFile(const std::string& path) const override;
  std::optional<PropertyList> arrayWithContentsOfFile(const std::string& path) const override;
  /// A link stays: the file that it leads to is replaced.
  bool writeToFile(const PropertyList& list, const std::string& path) override;
  /// The same.
  bool writeDataToFile(const PropertyList::Data& data, const std::string& path) override;

 private:
  /// `kind` is that of the list in the file; none: any file will do.
  bool replaceFile(const std::string& path, std::string_view bytes, PropertyList::Kind kind);

  WriteFailures writeFailures_;
};

}  // namespace qb
