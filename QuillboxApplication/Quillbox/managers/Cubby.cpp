#include "Quillbox/managers/Cubby.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/managers/ImageManager.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"
#include "QuillboxCommon/Utf8.h"
#include "QuillboxCommon/richtext/RichText.h"
#include "QuillboxCommon/views/TextLayout.h"

namespace qb {

namespace {

constexpr const char* typeKey = "Type";
constexpr const char* dataKey = "Data";
constexpr const char* rtfdType = "com.apple.flat-rtfd";
constexpr const char* rtfType = "public.rtf";
constexpr const char* pngType = "public.png";
/// Text that says nothing of its size has this.
constexpr double plainTextSize = 12;
/// A page that is smaller shows nothing that could be read.
constexpr double leastPreviewSide = 10;

bool contains(const std::vector<std::string>& types, const std::string& type) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

PropertyList::Data dataOf(const std::string& bytes) { return {bytes.begin(), bytes.end()}; }

}  // namespace

std::shared_ptr<Cubby> Cubby::cubbyWithPasteboardItem(const PasteboardItem& item) {
  return cubbyWithPasteboardItem(item, allTypes());
}

std::shared_ptr<Cubby> Cubby::textCubbyWithPasteboardItem(const PasteboardItem& item) {
  return cubbyWithPasteboardItem(item, textTypes());
}

std::shared_ptr<Cubby> Cubby::imageCubbyWithPasteboardItem(const PasteboardItem& item) {
  return cubbyWithPasteboardItem(item, imageTypes());
}

std::shared_ptr<Cubby> Cubby::cubbyWithPasteboardItem(const PasteboardItem& item,
                                                      const std::vector<std::string>& withTypes) {
  for (const std::string& type : withTypes) {
    if (auto data = item.dataForType(type)) return std::make_shared<Cubby>(type, *std::move(data));
  }
  return nullptr;
}

Cubby::Cubby(std::string type, Data data) : type_(std::move(type)), data_(std::move(data)) {}

Cubby::Cubby(const PropertyList& savedState)
    : Cubby(savedState.objectForKey(typeKey).stringValue(),
            savedState.objectForKey(dataKey).dataValue()) {}

Cubby::Cubby(const Image& image)
    : Cubby(pngType, quillbox->platform().graphics().pngDataOfImage(image).value_or(Data())) {}

Cubby::Cubby(const AttributedString& text)
    : Cubby(rtfdType, dataOf(rtfdFromAttributedString(text))) {}

const std::vector<std::string>& Cubby::textTypes() {
  static const std::vector<std::string> types = {rtfdType, rtfType, "public.utf8-plain-text",
                                                 "public.utf16-external-plain-text",
                                                 "com.apple.traditional-mac-plain-text"};
  return types;
}

const std::vector<std::string>& Cubby::imageTypes() {
  static const std::vector<std::string> types = {"public.tiff", pngType, "public.jpg",
                                                 "public.jpeg"};
  return types;
}

std::vector<std::string> Cubby::allTypes() {
  std::vector<std::string> types = textTypes();
  types.insert(types.end(), imageTypes().begin(), imageTypes().end());
  return types;
}

PropertyList Cubby::state() const {
  return PropertyList::dictionary({{typeKey, type_}, {dataKey, data_}});
}

bool Cubby::isRTFD() const { return type_ == rtfdType; }
bool Cubby::isRTF() const { return type_ == rtfType; }
bool Cubby::isText() const { return contains(textTypes(), type_); }
bool Cubby::isImage() const { return contains(imageTypes(), type_); }

std::string_view Cubby::bytes() const {
  return {reinterpret_cast<const char*>(data_.data()), data_.size()};
}

std::optional<AttributedString> Cubby::textContentsWithMaximumLength(
    std::size_t maximumLength) const {
  if (!isText() || data_.empty()) return std::nullopt;
  std::optional<AttributedString> text;
  if (isRTFD()) {
    text = attributedStringWithRTFD(bytes());
  } else if (isRTF()) {
    text = attributedStringWithRTF(bytes());
  } else if (isUtf8(bytes())) {
    text.emplace().append(std::string(bytes()), Font::systemFontOfSize(plainTextSize));
  }
  if (text && text->length() > maximumLength) {
    text = text->attributedSubstringFromRange(0, maximumLength);
  }
  return text;
}

Image Cubby::imageContents() const { return quillbox->platform().graphics().imageWithData(data_); }

Image Cubby::popUpViewImageWithMaximumSize(Size maximumSize, std::size_t maximumLength,
                                           const Color& backgroundColor) const {
  Image image = textPreview(maximumSize, maximumLength, backgroundColor);
  if (!image && isImage()) {
    image = quillbox->platform().graphics().imageWithData(data_, maximumSize);
  }
  if (!image) image = quillbox->imageNamed("UnknownClipboardItem");
  ImageManager::scaleImage(image, maximumSize, false);
  return image;
}

Image Cubby::textPreview(Size maximumSize, std::size_t maximumLength,
                         const Color& backgroundColor) const {
  const auto text = textContentsWithMaximumLength(maximumLength);
  if (!text || text->length() == 0) return {};
  Graphics& graphics = quillbox->platform().graphics();
  const double width = std::trunc(maximumSize.width);
  const TextLayout layout(*text, width, graphics);
  const Size size{width, static_cast<double>(layout.naturalHeight())};
  if (size.width < leastPreviewSide || size.height < leastPreviewSide) return {};
  return graphics.imageWithSize(size, [layout, size, backgroundColor](Canvas& canvas) {
    canvas.fill({{0, 0}, size}, backgroundColor);
    layout.draw(canvas);
  });
}

void Cubby::log() const {
  std::string contents = "<<>>";
  if (isText()) contents = isUtf8(bytes()) ? std::string(bytes()) : "(null)";
  qb::log(stringWithFormat("Cubby type: %@, size: %ld - %@", type_, data_.size(), contents));
}

bool Cubby::copyToClipboard() const {
  return copyToPasteboard(*quillbox->platform().pasteboards().generalPasteboard());
}

bool Cubby::addToClipboard() const {
  return addToPasteboard(*quillbox->platform().pasteboards().generalPasteboard());
}

bool Cubby::copyToPasteboard(Pasteboard& pasteboard) const {
  pasteboard.clearContents();
  return addToPasteboard(pasteboard);
}

bool Cubby::addToPasteboard(Pasteboard& pasteboard) const {
  return pasteboard.writeObjects({this});
}

std::vector<std::string> Cubby::writableTypesForPasteboard(const Pasteboard& /*pasteboard*/) const {
  return {type_};
}

std::uint32_t Cubby::writingOptionsForType(const std::string& /*type*/,
                                           const Pasteboard& /*pasteboard*/) const {
  return 0;
}

PropertyList Cubby::pasteboardPropertyListForType(const std::string& /*type*/) const {
  return data_;
}

}  // namespace qb
