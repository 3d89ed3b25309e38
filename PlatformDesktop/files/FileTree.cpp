#include "PlatformDesktop/files/FileTree.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <vector>

#include "PlatformDesktop/files/Descriptor.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr mode_t permissions = 0777;
constexpr mode_t allModes = 07777;
constexpr std::size_t largestStep = 64 << 20;

/// Bytes through this program, where the kernel cannot copy by itself.
bool pump(int from, int to) {
  std::vector<char> block(1 << 20);
  for (;;) {
    const ssize_t got = read(from, block.data(), block.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0;
    for (ssize_t done = 0; done < got;) {
      const ssize_t written = write(to, block.data() + done, static_cast<std::size_t>(got - done));
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      done += written;
    }
  }
}

bool copyBytes(int from, int to) {
  for (bool begun = false;; begun = true) {
    const ssize_t copied = copy_file_range(from, nullptr, to, nullptr, largestStep, 0);
    if (copied > 0) continue;
    if (copied == 0 && begun) return true;
    // It knows not every pair of file systems, and files that are made up as they are read look
    // empty to it. What it has copied so far stays copied.
    return pump(from, to);
  }
}

bool isKeptAttribute(std::string_view name) {
  return name.starts_with("user.") || name.starts_with("system.posix_acl_");
}

/// Not every file system can hold them, so nothing depends on it.
void copyAttributes(const std::string& from, const std::string& to) {
  const ssize_t size = listxattr(from.c_str(), nullptr, 0);
  if (size <= 0) return;
  std::string names(static_cast<std::size_t>(size), '\0');
  const ssize_t got = listxattr(from.c_str(), names.data(), names.size());
  if (got <= 0) return;
  names.resize(static_cast<std::size_t>(got));
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const char* const name = names.c_str() + at;
    const ssize_t length = isKeptAttribute(name) ? getxattr(from.c_str(), name, nullptr, 0) : -1;
    if (length < 0) continue;
    std::vector<char> value(static_cast<std::size_t>(length));
    if (getxattr(from.c_str(), name, value.data(), value.size()) == length) {
      setxattr(to.c_str(), name, value.data(), value.size(), 0);
    }
  }
}

/// Last of all: what is put into a folder changes its date, and its mode may forbid it.
bool copyStatus(const std::string& from, const std::string& to, const struct stat& status) {
  const bool isLink = S_ISLNK(status.st_mode);
  const bool isOwned = lchown(to.c_str(), status.st_uid, status.st_gid) == 0;
  if (!isLink) {
    copyAttributes(from, to);
    // Rights that go with an owner do not go to another one.
    if (chmod(to.c_str(), status.st_mode & (isOwned ? allModes : permissions)) != 0) return false;
  }
  const std::array<timespec, 2> dates{status.st_atim, status.st_mtim};
  utimensat(AT_FDCWD, to.c_str(), dates.data(), AT_SYMLINK_NOFOLLOW);
  return true;
}

bool copyFile(const std::string& from, const std::string& to, Durability durability) {
  const Descriptor source(open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
  if (!source) return false;
  const Descriptor copy(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!copy || !copyBytes(source.get(), copy.get())) return false;
  return durability == Durability::Visible || fsync(copy.get()) == 0;
}

bool copyLink(const std::string& from, const std::string& to) {
  std::error_code error;
  const fs::path target = fs::read_symlink(from, error);
  return !error && symlink(target.c_str(), to.c_str()) == 0;
}

bool copyFolder(const std::string& from, const std::string& to, Durability durability,
                const struct stat& excluded) {
  if (mkdir(to.c_str(), 0700) != 0) return false;
  std::error_code error;
  fs::directory_iterator each(from, error);
  for (; !error && each != fs::directory_iterator(); each.increment(error)) {
    const std::string name = each->path().filename().string();
    if (!copyTree(from + '/' + name, to + '/' + name, durability, excluded)) return false;
  }
  if (durability == Durability::Flushed) flushFolder(to);
  return !error;
}

bool isWritableFolder(const std::string& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

/// In a folder such as "/tmp" everyone may remove only what is theirs.
bool isKeptBySticky(const struct stat& folder, const struct stat& item) {
  const uid_t user = geteuid();
  return (folder.st_mode & S_ISVTX) && user != 0 && folder.st_uid != user && item.st_uid != user;
}

bool canRemoveContents(const std::string& folder, const struct stat& folderStatus) {
  std::error_code error;
  fs::directory_iterator each(folder, error);
  if (error) return false;
  if (each != fs::directory_iterator() && !isWritableFolder(folder)) return false;
  for (; !error && each != fs::directory_iterator(); each.increment(error)) {
    const std::string path = each->path().string();
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || isKeptBySticky(folderStatus, status)) return false;
    // What is mounted in there is not meant.
    if (status.st_dev != folderStatus.st_dev) return false;
    if (S_ISDIR(status.st_mode) && !canRemoveContents(path, status)) return false;
  }
  return !error;
}

}  // namespace

bool copyTree(const std::string& from, const std::string& to, Durability durability,
              const struct stat& excluded) {
  struct stat status {};
  if (lstat(from.c_str(), &status) != 0 || isSame(status, excluded)) return false;
  bool copied = false;
  switch (status.st_mode & S_IFMT) {
    case S_IFREG:
      copied = copyFile(from, to, durability);
      break;
    case S_IFLNK:
      copied = copyLink(from, to);
      break;
    case S_IFDIR:
      copied = copyFolder(from, to, durability, excluded);
      break;
    case S_IFIFO:
      copied = mkfifo(to.c_str(), 0600) == 0;
      break;
    default:
      // Devices and sockets are tied to where they are.
      break;
  }
  return copied && copyStatus(from, to, status);
}

bool canRemoveTree(const std::string& path) {
  const std::string folder = fs::path(path).parent_path().string();
  struct stat folderStatus {};
  struct stat status {};
  if (stat(folder.c_str(), &folderStatus) != 0 || lstat(path.c_str(), &status) != 0) return false;
  if (!isWritableFolder(folder) || isKeptBySticky(folderStatus, status)) return false;
  return !S_ISDIR(status.st_mode) || canRemoveContents(path, status);
}

bool removeTree(const std::string& path) {
  std::error_code error;
  return fs::remove_all(path, error) > 0 && !error;
}

bool removeUnfinishedTree(const std::string& path) {
  std::error_code error;
  fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, error);
  fs::recursive_directory_iterator each(path, error);
  for (; !error && each != fs::recursive_directory_iterator(); each.increment(error)) {
    if (!each->is_symlink() && each->is_directory()) {
      fs::permissions(each->path(), fs::perms::owner_all, fs::perm_options::add, error);
    }
  }
  return removeTree(path);
}

void flushFolder(const std::string& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor) fsync(descriptor.get());
}

}  // namespace qb
