#pragma once

#include <set>
#include <string>

namespace qb {

class FileSystem;
class SystemFolders;

/// Names that nothing has yet. Main thread.
class FileNames {
 public:
  FileNames(const FileSystem& fileSystem, const SystemFolders& folders)
      : fileSystem_(fileSystem), folders_(folders) {}

  /// The name with the extension, or with the first number from 2 on that makes it free in the
  /// folder: "a.txt", "a 2.txt". The extension may come with its dot or without; an empty one adds
  /// nothing. Paths of `taken` count as names that are there.
  std::string availableFileNameInFolder(const std::string& folder, const std::string& fileName,
                                        const std::string& extension, bool includePrecedingSlash,
                                        const std::set<std::string>& taken = {}) const;
  /// A free path of that kind on the user's desktop. Without a desktop, an identity that is no
  /// path.
  std::string desktopPathWithName(const std::string& name, const std::string& extension) const;
  /// A new identity, unlike any other.
  static std::string generateUUID();

 private:
  const FileSystem& fileSystem_;
  const SystemFolders& folders_;
};

}  // namespace qb
