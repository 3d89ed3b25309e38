#include "Quillbox/activation/utilities/FileNames.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <random>

#include "Platform/FileSystem.h"
#include "Quillbox/activation/utilities/SystemFolders.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

/// An opening of the panel makes an identity for each item; asking the system for every byte of
/// them was a sixth of its work.
std::mt19937_64 generatorOfIdentities() {
  std::random_device random;
  std::array<std::uint32_t, 8> words;
  std::generate(words.begin(), words.end(), std::ref(random));
  std::seed_seq seed(words.begin(), words.end());
  return std::mt19937_64(seed);
}

}  // namespace

std::string FileNames::availableFileNameInFolder(const std::string& folder,
                                                 const std::string& fileName,
                                                 const std::string& extension,
                                                 bool includePrecedingSlash,
                                                 const std::set<std::string>& taken) const {
  const std::string ending =
      extension.empty() || extension.starts_with('.') ? extension : '.' + extension;
  const auto isTaken = [&](const std::string& name) {
    const std::string path = stringWithFormat("%@/%@", folder, name);
    return taken.contains(path) || fileSystem_.fileExistsAtPath(path);
  };
  std::string name = stringWithFormat("%@%@", fileName, ending);
  for (std::int64_t number = 2; isTaken(name); ++number) {
    name = stringWithFormat("%@ %ld%@", fileName, number, ending);
  }
  return includePrecedingSlash ? '/' + name : name;
}

std::string FileNames::desktopPathWithName(const std::string& name,
                                           const std::string& extension) const {
  const std::string desktop = folders_.filePathForSystemFolderWithID(DesktopDirectory);
  if (desktop.empty()) return generateUUID();
  std::string suffix;
  std::string path;
  for (std::int64_t number = 2;; ++number) {
    path = stringWithFormat("%@/%@%@.%@", desktop, name, suffix, extension);
    if (!fileSystem_.fileExistsAtPath(path)) return path;
    suffix = stringWithFormat(" %ld", number);
  }
}

std::string FileNames::generateUUID() {
  thread_local std::mt19937_64 random = generatorOfIdentities();
  std::array<std::uint8_t, 16> bytes;
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    word = i % sizeof word == 0 ? random() : word >> 8;
    bytes[i] = static_cast<std::uint8_t>(word);
  }
  // The marks of a random identity: version 4, and the common variant.
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 0x0F];
  }
  return text;
}

}  // namespace qb
