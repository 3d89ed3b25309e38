#include "PlatformDesktop/session/DesktopPasteboards.h"

#include <cstdlib>
#include <utility>

#include "PlatformDesktop/clipboard/DesktopClipboard.h"
#include "PlatformDesktop/clipboard/PasteboardItems.h"
#include "PlatformDesktop/processes/DesktopFolders.h"

namespace qb {

namespace {

constexpr const char* changeCountKey = "ChangeCount";
constexpr const char* itemsKey = "Items";

class FilePasteboard : public Pasteboard {
 public:
  FilePasteboard(FileSystem& fileSystem, std::string path)
      : fileSystem_(fileSystem), path_(std::move(path)) {}

  std::int64_t clearContents() override {
    const std::int64_t count = changeCount() + 1;
    PropertyList file = PropertyList::dictionary();
    file.setLong(count, changeCountKey);
    file.setObject(PropertyList::array(), itemsKey);
    fileSystem_.writeToFile(file, path_);
    return count;
  }

  bool setData(const PropertyList::Data& data, const std::string& type) override {
    PropertyList::Array items = read().objectForKey(itemsKey).arrayValue();
    if (items.empty()) items.push_back(PropertyList::dictionary());
    items.front().setObject(data, type);
    return write(std::move(items));
  }

  std::optional<PropertyList::Data> dataForType(const std::string& type) const override {
    for (const auto& item : pasteboardItems()) {
      if (auto data = item->dataForType(type)) return data;
    }
    return std::nullopt;
  }

  bool writeObjects(const std::vector<const PasteboardWriting*>& objects) override {
    PropertyList::Array items = read().objectForKey(itemsKey).arrayValue();
    for (const PasteboardWriting* object : objects) {
      const auto contents = contentsOfObject(*object, *this);
      if (!contents) return false;
      items.push_back(propertyListOfItem(*contents));
    }
    return write(std::move(items));
  }

  std::vector<std::shared_ptr<const PasteboardItem>> pasteboardItems() const override {
    return itemsOfPropertyList(read().objectForKey(itemsKey));
  }

  std::int64_t changeCount() const override { return read().longForKey(changeCountKey); }

 private:
  PropertyList read() const {
    return fileSystem_.dictionaryWithContentsOfFile(path_).value_or(PropertyList::dictionary());
  }
  bool write(PropertyList::Array items) const {
    PropertyList file = read();
    file.setObject(std::move(items), itemsKey);
    return fileSystem_.writeToFile(file, path_);
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

DesktopPasteboards::~DesktopPasteboards() = default;

std::shared_ptr<Pasteboard> DesktopPasteboards::generalPasteboard() { return clipboard(); }

ChangeNotice& DesktopPasteboards::generalPasteboardChanged() { return clipboard()->changed(); }

const std::shared_ptr<DesktopClipboard>& DesktopPasteboards::clipboard() {
  if (!general_) general_ = std::make_shared<DesktopClipboard>();
  return general_;
}

void DesktopPasteboards::finishPaste() {
  if (general_) general_->waitUntilTaken();
}

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
