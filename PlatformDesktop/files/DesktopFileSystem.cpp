#include "PlatformDesktop/files/DesktopFileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "PlatformDesktop/files/Descriptor.h"
#include "PlatformDesktop/files/FileTree.h"
#include "PlatformDesktop/files/ItemPlacement.h"
#include "PlatformDesktop/files/MountedVolumes.h"
#include "PlatformDesktop/files/PropertyListReader.h"
#include "PlatformDesktop/files/PropertyListWriter.h"
#include "PlatformDesktop/files/UserDirectories.h"
#include "PlatformDesktop/processes/ApplicationFile.h"
#include "PlatformDesktop/processes/DesktopFolders.h"
#include "QuillboxCommon/Log.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestFile = 32 << 20;
/// As text they take more than what they hold, which is as much as a clipboard does.
constexpr std::size_t largestPropertyList = 96 << 20;
/// Folders that came from a system where users take them for one file.
constexpr std::array packageExtensions = {".app", ".rtfd"};

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Writes a new file beside `path`; its name, or an empty one when that failed.
std::string writeBeside(const std::string& path, std::string_view bytes) {
  std::string temporary = path + ".XXXXXX";
  const Descriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
  if (!descriptor) return {};
  if (writeAll(descriptor.get(), bytes) && fsync(descriptor.get()) == 0) return temporary;
  const int reason = errno;
  unlink(temporary.c_str());
  errno = reason;
  return {};
}

/// Gives the file a name that nothing has; the name, or an empty one when that failed.
std::string moveAside(const std::string& path) {
  constexpr int mostNames = 1000;
  for (int number = 1; number < mostNames; ++number) {
    const std::string aside =
        path + ".unreadable" + (number == 1 ? "" : '.' + std::to_string(number));
    if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
      return aside;
    }
    if (errno != EEXIST) return {};
  }
  return {};
}

std::error_code lastError() { return {errno, std::generic_category()}; }

std::error_code takePlace(const std::string& temporary, const std::string& path,
                          bool oldIsUnreadable) {
  std::string aside;
  if (oldIsUnreadable) {
    aside = moveAside(path);
    if (aside.empty()) return lastError();
  }
  if (std::rename(temporary.c_str(), path.c_str()) == 0) {
    if (!aside.empty()) log(path + " could not be read and is kept as " + aside + ".");
    return {};
  }
  const std::error_code error = lastError();
  if (!aside.empty()) std::rename(aside.c_str(), path.c_str());
  return error;
}

/// None for a file that cannot be read, or whose root is of another kind.
std::optional<PropertyList> listWithContentsOfFile(const std::string& path,
                                                   PropertyList::Kind kind) {
  std::error_code error;
  // A pipe would never end.
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  auto contents = readPropertyList(contentsOfFile(path, largestPropertyList));
  if (!contents || contents->kind() != kind) return std::nullopt;
  return contents;
}

std::error_code replaceTarget(const std::string& target, std::string_view bytes,
                              PropertyList::Kind kind) {
  std::error_code error;
  if (fs::is_directory(target, error)) return std::make_error_code(std::errc::is_a_directory);
  const std::string folder = target.substr(0, target.rfind('/') + 1);
  fs::create_directories(folder, error);
  // Said of a file that has the folder's name.
  if (error == std::errc::file_exists) return std::make_error_code(std::errc::not_a_directory);
  if (error) return error;
  const std::string temporary = writeBeside(target, bytes);
  if (temporary.empty()) return lastError();
  const bool oldIsUnreadable = kind != PropertyList::Kind::None && fs::exists(target, error) &&
                               !listWithContentsOfFile(target, kind);
  error = takePlace(temporary, target, oldIsUnreadable);
  if (error) {
    unlink(temporary.c_str());
    return error;
  }
  flushFolder(folder);
  return {};
}

Date dateOf(const struct statx_timestamp& time) {
  constexpr double secondsBeforeReferenceDate = 978307200;
  constexpr double nanosecond = 1e-9;
  return static_cast<double>(time.tv_sec) - secondsBeforeReferenceDate + time.tv_nsec * nanosecond;
}

}  // namespace

std::string DesktopFileSystem::stringByExpandingTildeInPath(const std::string& path) const {
  if (path == "~" || path.starts_with("~/")) return DesktopFolders::home() + path.substr(1);
  return path;
}

bool DesktopFileSystem::fileExistsAtPath(const std::string& path) const {
  std::error_code error;
  return !path.empty() && fs::exists(path, error);
}

bool DesktopFileSystem::removeItemAtPath(const std::string& path) {
  return !path.empty() && removeTree(path);
}

bool DesktopFileSystem::isDeletableFileAtPath(const std::string& path) const {
  return !path.empty() && canRemoveTree(path);
}

bool DesktopFileSystem::createDirectoryAtPath(const std::string& path, FolderAccess access) {
  std::error_code error;
  if (access == FolderAccess::Usual) {
    fs::create_directories(path, error);
    return fs::is_directory(path, error);
  }
  fs::create_directories(fs::path(path).parent_path(), error);
  mkdir(path.c_str(), S_IRWXU);
  if (!fs::is_directory(path, error)) return false;
  fs::permissions(path, fs::perms::owner_all, error);
  return true;
}

std::string DesktopFileSystem::applicationSupportDirectory() {
  const std::string folder = DesktopFolders::data().front();
  createDirectoryAtPath(folder);
  return folder;
}

std::optional<std::string> DesktopFileSystem::stringWithContentsOfFile(
    const std::string& path) const {
  std::error_code error;
  // A pipe would never end.
  if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > largestFile || error) {
    return std::nullopt;
  }
  if (access(path.c_str(), R_OK) != 0) return std::nullopt;
  return contentsOfFile(path, largestFile);
}

std::optional<std::string> DesktopFileSystem::stringWithBeginningOfFile(const std::string& path,
                                                                        std::size_t length) const {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string contents(length, '\0');
  std::size_t got = 0;
  while (got < length) {
    const ssize_t some = read(file.get(), contents.data() + got, length - got);
    if (some < 0 && errno == EINTR) continue;
    if (some < 0) return std::nullopt;
    if (some == 0) break;
    got += static_cast<std::size_t>(some);
  }
  contents.resize(got);
  return contents;
}

std::optional<std::string> DesktopFileSystem::pathForDirectory(
    SearchPathDirectory directory) const {
  return userDirectory(directory);
}

std::uint32_t DesktopFileSystem::itemInfoFlagsAtPath(const std::string& path) const {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) return 0;
  const fs::path name = fs::path(path).filename();
  std::uint32_t flags = 0;
  if (name.string().starts_with('.')) flags |= ItemInfoIsInvisible;
  if (!fs::is_directory(status)) {
    flags |= ItemInfoIsPlainFile;
    if (fs::is_regular_file(status) && isApplicationFile(path)) flags |= ItemInfoIsApplication;
    return flags;
  }
  flags |= ItemInfoIsContainer;
  if (std::find(packageExtensions.begin(), packageExtensions.end(), name.extension()) !=
      packageExtensions.end()) {
    flags |= ItemInfoIsPackage;
  }
  if (isMountedVolume(path)) flags |= ItemInfoIsVolume;
  return flags;
}

std::optional<FileAttributes> DesktopFileSystem::attributesOfItemAtPath(
    const std::string& path) const {
  struct statx found {};
  constexpr unsigned wanted = STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME;
  if (statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, wanted, &found) != 0) return std::nullopt;
  const bool hasBirth = (found.stx_mask & STATX_BTIME) != 0;
  FileAttributes attributes;
  attributes.isDirectory = S_ISDIR(found.stx_mode);
  attributes.size = static_cast<std::int64_t>(found.stx_size);
  attributes.modificationDate = dateOf(found.stx_mtime);
  attributes.creationDate = hasBirth ? dateOf(found.stx_btime) : attributes.modificationDate;
  return attributes;
}

std::vector<std::string> DesktopFileSystem::contentsOfDirectoryAtPath(
    const std::string& path) const {
  std::vector<std::string> names;
  std::error_code error;
  fs::directory_iterator each(path, error);
  for (; !error && each != fs::directory_iterator(); each.increment(error)) {
    names.push_back(each->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool DesktopFileSystem::moveItemAtPath(const std::string& path, const std::string& toPath,
                                       PresentItem presentItem) {
  return placeByMoving(path, toPath, presentItem);
}

bool DesktopFileSystem::copyItemAtPath(const std::string& path, const std::string& toPath,
                                       PresentItem presentItem) {
  return placeByCopying(path, toPath, presentItem);
}

std::optional<PropertyList> DesktopFileSystem::dictionaryWithContentsOfFile(
    const std::string& path) const {
  return listWithContentsOfFile(path, PropertyList::Kind::Dictionary);
}

std::optional<PropertyList> DesktopFileSystem::arrayWithContentsOfFile(
    const std::string& path) const {
  return listWithContentsOfFile(path, PropertyList::Kind::Array);
}

bool DesktopFileSystem::writeToFile(const PropertyList& list, const std::string& path) {
  if (!(list.isDictionary() || list.isArray())) return false;
  return replaceFile(path, xmlPropertyList(list), list.kind());
}

bool DesktopFileSystem::writeDataToFile(const PropertyList::Data& data, const std::string& path) {
  const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
  return replaceFile(path, bytes, PropertyList::Kind::None);
}

bool DesktopFileSystem::replaceFile(const std::string& path, std::string_view bytes,
                                    PropertyList::Kind kind) {
  if (!path.starts_with('/')) return false;
  std::error_code error;
  const std::string target =
      fs::is_symlink(path, error) ? fs::weakly_canonical(path, error).string() : path;
  error = replaceTarget(target, bytes, kind);
  if (error) {
    writeFailures_.note(target, error);
  } else {
    writeFailures_.end(target);
  }
  return !error;
}

}  // namespace qb
