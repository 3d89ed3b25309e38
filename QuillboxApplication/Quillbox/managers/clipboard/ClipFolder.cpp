#include "Quillbox/managers/clipboard/ClipFolder.h"

#include <algorithm>
#include <utility>

#include "Platform/FileSystem.h"
#include "Quillbox/Item/FilePaths.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/Cubby.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

struct TypeOfFile {
  ClipType type;
  const char* extension;
};
constexpr TypeOfFile typesOfFiles[] = {
    {ClipTypeText, "textclip"},
    {ClipTypeImage, "imageclip"},
    {ClipTypeUnknown, "unknownclip"},
};

const char* extensionOfType(ClipType type) {
  return std::find_if(std::begin(typesOfFiles), std::end(typesOfFiles),
                      [type](const TypeOfFile& each) { return each.type == type; })
      ->extension;
}

/// Whether the extension of one of these types has the property.
template <class Property>
bool anyExtensionOfTypes(std::uint32_t clipTypes, const Property& property) {
  return std::any_of(std::begin(typesOfFiles), std::end(typesOfFiles),
                     [clipTypes, &property](const TypeOfFile& each) {
                       return (clipTypes & each.type) != 0 && property(each.extension);
                     });
}

struct DatedFile {
  std::string path;
  Date date;
};

}  // namespace

ClipFolder::ClipFolder(FileSystem& fileSystem)
    : fileSystem_(fileSystem),
      clipboardHistoryFolderPath_(stringWithFormat("%@/Quillbox/Clipboard History",
                                                   fileSystem.applicationSupportDirectory())) {}

void ClipFolder::make() {
  fileSystem_.createDirectoryAtPath(clipboardHistoryFolderPath_, FolderAccess::Private);
}

ClipType ClipFolder::clipTypeFromFilePath(const std::string& path) {
  const std::string extension = pathExtension(path);
  for (const TypeOfFile& each : typesOfFiles) {
    if (extension == each.extension) return each.type;
  }
  return ClipTypeUnknown;
}

std::shared_ptr<Cubby> ClipFolder::createCubbyFromClipFileAtPath(const std::string& path) const {
  const auto state = fileSystem_.dictionaryWithContentsOfFile(path);
  if (!state || state->dictionaryValue().empty()) return nullptr;
  return std::make_shared<Cubby>(*state);
}

std::string ClipFolder::writeClip(const PropertyList& state, ClipType clipType) {
  // The user may have thrown it away, and it must not come back for everybody to see.
  make();
  std::string path = stringWithFormat("%@/%@.%@", clipboardHistoryFolderPath_,
                                      Quillbox::generateUUID(), extensionOfType(clipType));
  fileSystem_.writeToFile(state, path);
  return path;
}

bool ClipFolder::clipFileAtPathHas(const std::string& path, const PropertyList& state) const {
  return fileSystem_.dictionaryWithContentsOfFile(path) == state;
}

std::vector<std::string> ClipFolder::pathsToClipFilesOfTypes(std::uint32_t clipTypes,
                                                             std::int64_t maximum) const {
  std::vector<DatedFile> files;
  for (const std::string& name :
       fileSystem_.contentsOfDirectoryAtPath(clipboardHistoryFolderPath_)) {
    const std::string extension = pathExtension(name);
    if (!anyExtensionOfTypes(clipTypes, [&](const char* each) { return extension == each; })) {
      continue;
    }
    std::string path = stringWithFormat("%@/%@", clipboardHistoryFolderPath_, name);
    const auto attributes = fileSystem_.attributesOfItemAtPath(path);
    files.push_back({std::move(path), attributes ? attributes->creationDate : 0});
  }
  std::stable_sort(files.begin(), files.end(),
                   [](const DatedFile& a, const DatedFile& b) { return a.date > b.date; });
  std::vector<std::string> paths;
  for (DatedFile& file : files) {
    if (static_cast<std::int64_t>(paths.size()) >= maximum) break;
    paths.push_back(std::move(file.path));
  }
  return paths;
}

std::vector<std::string> ClipFolder::pathsWithEndingOfTypes(std::uint32_t clipTypes) const {
  std::vector<std::string> paths;
  for (const std::string& name :
       fileSystem_.contentsOfDirectoryAtPath(clipboardHistoryFolderPath_)) {
    if (anyExtensionOfTypes(clipTypes, [&](const char* each) { return name.ends_with(each); })) {
      paths.push_back(stringWithFormat("%@/%@", clipboardHistoryFolderPath_, name));
    }
  }
  return paths;
}

std::vector<std::string> ClipFolder::oldestPathsBeyond(std::int64_t kept, ClipType clipType,
                                                       std::size_t maximum) const {
  std::vector<DatedFile> files;
  const std::vector<std::string> all = pathsWithEndingOfTypes(clipType);
  const std::int64_t tooMany = static_cast<std::int64_t>(all.size()) - kept;
  if (tooMany <= 0) return {};
  // Backwards, so that of equals the one that is listed later comes first.
  for (auto path = all.rbegin(); path != all.rend(); ++path) {
    if (const auto attributes = fileSystem_.attributesOfItemAtPath(*path)) {
      files.push_back({*path, attributes->creationDate});
    }
  }
  std::stable_sort(files.begin(), files.end(),
                   [](const DatedFile& a, const DatedFile& b) { return a.date < b.date; });
  std::vector<std::string> oldest;
  for (DatedFile& file : files) {
    if (oldest.size() >= maximum || static_cast<std::int64_t>(oldest.size()) >= tooMany) break;
    oldest.push_back(std::move(file.path));
  }
  return oldest;
}

}  // namespace qb
