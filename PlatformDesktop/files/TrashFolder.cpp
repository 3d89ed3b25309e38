#include "PlatformDesktop/files/TrashFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "PlatformDesktop/processes/DesktopFolders.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view noteExtension = ".trashinfo";
/// File systems end at 255; the note's extension and a number come on top.
constexpr std::size_t longestName = 235;
constexpr int mostNamesakes = 10'000;

struct TrashFolder {
  std::string path;
  /// Notes tell places from here: a volume may come back elsewhere. Empty for places from the root.
  std::string top;
};

/// The mount that a path is on: no change of name leads from one to another, not even between two
/// mounts of one file system. Older systems tell the file system only.
std::optional<std::uint64_t> mountOf(const std::string& path) {
  struct statx status = {};
  if (statx(AT_FDCWD, path.c_str(), 0, STATX_MNT_ID, &status) != 0) return std::nullopt;
  if ((status.stx_mask & STATX_MNT_ID) != 0) return status.stx_mnt_id;
  return makedev(status.stx_dev_major, status.stx_dev_minor);
}

std::string topFolderOfMount(const std::string& folder) {
  const auto mount = mountOf(folder);
  fs::path top = folder;
  while (top.has_relative_path() && mountOf(top.parent_path()) == mount) top = top.parent_path();
  return top;
}

/// A folder of this user that is no link, made when there is nothing. Anything else could be a trap
/// laid on a volume that others write to.
bool ensureOwnFolder(const std::string& path) {
  struct stat status = {};
  if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) return false;
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

bool ensureTrash(const std::string& path) {
  return ensureOwnFolder(path) && ensureOwnFolder(path + "/files") &&
         ensureOwnFolder(path + "/info");
}

/// A folder for everybody's trash counts only when nobody can take away what is another's.
bool isSharedTrash(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         (status.st_mode & S_ISVTX) != 0;
}

std::optional<TrashFolder> trashForFolder(const std::string& folder) {
  const std::string data = DesktopFolders::data().front();
  std::error_code error;
  fs::create_directories(data, error);
  const std::string home = data + "/Trash";
  if (mountOf(data) == mountOf(folder) && ensureTrash(home)) return TrashFolder{home, ""};

  std::string top = topFolderOfMount(folder);
  if (!top.ends_with('/')) top += '/';
  const std::string user = std::to_string(geteuid());
  if (isSharedTrash(top + ".Trash") && ensureTrash(top + ".Trash/" + user)) {
    return TrashFolder{top + ".Trash/" + user, top};
  }
  if (ensureTrash(top + ".Trash-" + user)) return TrashFolder{top + ".Trash-" + user, top};
  return std::nullopt;
}

std::string percentEncoded(const std::string& path) {
  static constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string text;
  for (const char character : path) {
    if (plain.find(character) != std::string_view::npos) {
      text += character;
    } else {
      static constexpr char digits[] = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(character);
      text += {'%', digits[byte >> 4], digits[byte & 0x0F]};
    }
  }
  return text;
}

std::string noteText(const std::string& place) {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  localtime_r(&now, &local);
  char date[32];
  std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &local);
  return "[Trash Info]\nPath=" + percentEncoded(place) + "\nDeletionDate=" + date + '\n';
}

/// 0, or what errno says. EEXIST when there is one of that name.
int writeNote(const std::string& path, const std::string& text) {
  std::FILE* const file = std::fopen(path.c_str(), "wxe");
  if (file == nullptr) return errno;
  const bool written = std::fputs(text.c_str(), file) >= 0;
  // What was kept back until now may still find the disk full.
  const bool closed = std::fclose(file) == 0;
  if (written && closed) return 0;
  const int error = errno;
  unlink(path.c_str());
  return error;
}

/// 0, or what errno says. EEXIST when the name is taken.
int renameToNewName(const std::string& path, const std::string& toPath) {
  if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, toPath.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // A file system that cannot promise it. The note keeps the name for us.
  struct stat status = {};
  if (lstat(toPath.c_str(), &status) == 0) return EEXIST;
  return std::rename(path.c_str(), toPath.c_str()) == 0 ? 0 : errno;
}

std::string shortened(std::string name) {
  if (name.size() <= longestName) return name;
  std::size_t length = longestName;
  const auto isContinuation = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
  };
  while (length > 0 && isContinuation(name[length])) --length;
  name.resize(length);
  return name;
}

/// 0, or what errno says.
int put(const std::string& path, const std::string& name, const TrashFolder& trash) {
  const std::string text = noteText(path.substr(trash.top.size()));
  for (int number = 1; number < mostNamesakes; ++number) {
    const std::string kept = shortened(name) + (number == 1 ? "" : '.' + std::to_string(number));
    const std::string note = trash.path + "/info/" + kept + std::string(noteExtension);
    int error = writeNote(note, text);
    if (error == 0) {
      error = renameToNewName(path, trash.path + "/files/" + kept);
      if (error == 0) return 0;
      unlink(note.c_str());
    }
    if (error != EEXIST) return error;
  }
  return EEXIST;
}

std::string sentence(const std::string& name, const std::string& reason) {
  return stringWithFormat("\"%@\" could not be moved to the Trash: %@.", name, reason);
}

}  // namespace

std::optional<std::string> moveToTrash(const std::string& path) {
  fs::path whole = fs::path(path).lexically_normal();
  if (!whole.has_filename()) whole = whole.parent_path();
  const std::string name = whole.filename();
  struct stat status = {};
  if (!whole.is_absolute() || name.empty() || lstat(whole.c_str(), &status) != 0) {
    return sentence(name.empty() ? path : name, "it is not there");
  }
  std::error_code error;
  // Links on the way may lead to another volume.
  const fs::path folder = fs::canonical(whole.parent_path(), error);
  if (error) return sentence(name, error.message());
  const auto trash = trashForFolder(folder);
  if (!trash) return sentence(name, "its volume has no trash");
  const int number = put(folder / name, name, *trash);
  if (number == 0) return std::nullopt;
  return sentence(name, std::error_code(number, std::generic_category()).message());
}

}  // namespace qb
