#include "PlatformDesktop/session/DesktopPasteboards.h"

#include <cstdlib>
#include <utility>

#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

constexpr const char* changeCountKey = "ChangeCount";
constexpr const char* contentsKey = "Contents";

class FilePasteboard : public Pasteboard {
 public:
  FilePasteboard(FileSystem& fileSystem, std::string path)
      : fileSystem_(fileSystem), path_(std::move(path)) {}

  std::int64_t clearContents() override {
    const std::int64_t count = changeCount() + 1;
    PropertyList file = PropertyList::dictionary();
    file.setLong(count, changeCountKey);
    file.setObject(PropertyList::dictionary(), contentsKey);
    fileSystem_.writeToFile(file, path_);
    return count;
  }

  bool setData(const PropertyList::Data& data, const std::string& type) override {
    PropertyList file = read();
    PropertyList contents = file.objectForKey(contentsKey);
    contents.setObject(data, type);
    file.setObject(std::move(contents), contentsKey);
    return fileSystem_.writeToFile(file, path_);
  }

  std::optional<PropertyList::Data> dataForType(const std::string& type) const override {
    const PropertyList file = read();
    const PropertyList& data = file.objectForKey(contentsKey).objectForKey(type);
    if (data.kind() != PropertyList::Kind::Data) return std::nullopt;
    return data.dataValue();
  }

  std::int64_t changeCount() const override { return read().longForKey(changeCountKey); }

 private:
  PropertyList read() const {
    return fileSystem_.dictionaryWithContentsOfFile(path_).value_or(PropertyList::dictionary());
  }

  FileSystem& fileSystem_;
  std::string path_;
};

/// One file name for each name, whatever is in it.
std::string fileNameOfName(const std::string& name) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string fileName;
  for (const char character : name) {
    const auto byte = static_cast<unsigned char>(character);
    const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                         (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '_';
    if (isPlain) {
      fileName += character;
    } else {
      fileName += '%';
      fileName += digits[byte >> 4];
      fileName += digits[byte & 0x0F];
    }
  }
  return fileName + ".pasteboard";
}

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value == '/' ? value : std::string();
}

}  // namespace

DesktopPasteboards::DesktopPasteboards(FileSystem& fileSystem, std::string folder)
    : fileSystem_(fileSystem), folder_(std::move(folder)) {}

std::shared_ptr<Pasteboard> DesktopPasteboards::pasteboardWithName(const std::string& name) {
  auto& pasteboard = pasteboards_[name];
  if (!pasteboard) {
    pasteboard = std::make_shared<FilePasteboard>(fileSystem_, pathOfPasteboardWithName(name));
  }
  return pasteboard;
}

std::string DesktopPasteboards::pathOfPasteboardWithName(const std::string& name) const {
  return folder_ + "/" + fileNameOfName(name);
}

std::string DesktopPasteboards::folderOfSession() {
  std::string folder = variable("XDG_RUNTIME_DIR");
  if (folder.empty()) folder = variable("XDG_CACHE_HOME");
  if (folder.empty()) folder = DesktopFolders::home() + "/.cache";
  return folder + "/quillbox/pasteboards";
}

}  // namespace qb
