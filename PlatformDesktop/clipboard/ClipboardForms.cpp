#include "PlatformDesktop/clipboard/ClipboardForms.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "PlatformDesktop/clipboard/PasteboardItems.h"
#include "PlatformDesktop/clipboard/PasteboardTypes.h"
#include "PlatformDesktop/files/PropertyListReader.h"
#include "PlatformDesktop/files/PropertyListWriter.h"
#include "QuillboxCommon/Utf8.h"
#include "QuillboxCommon/richtext/RichText.h"

namespace qb {

namespace {

using Data = PropertyList::Data;
using Maker = std::function<Data(const Data&)>;

constexpr char32_t firstBeyondLatin = 0x100;

std::string_view textOf(const Data& data) {
  return {reinterpret_cast<const char*>(data.data()), data.size()};
}
Data dataOf(std::string_view text) { return {text.begin(), text.end()}; }

Data latinFromUtf8(const Data& utf8) {
  Data latin;
  for (std::string_view rest = textOf(utf8); !rest.empty();) {
    const char32_t character = takeCodePoint(rest).value_or(firstBeyondLatin);
    latin.push_back(character < firstBeyondLatin ? static_cast<std::uint8_t>(character) : '?');
  }
  return latin;
}

Data utf8FromLatin(const Data& latin) {
  std::string utf8;
  for (const std::uint8_t byte : latin) appendUtf8(utf8, byte);
  return dataOf(utf8);
}

Data textOfRTF(const Data& rtf) {
  return dataOf(attributedStringWithRTF(textOf(rtf)).value_or(AttributedString()).string());
}
Data textOfRTFD(const Data& rtfd) {
  return dataOf(attributedStringWithRTFD(textOf(rtfd)).value_or(AttributedString()).string());
}
Data rtfOfRTFD(const Data& rtfd) {
  return dataOf(
      rtfFromAttributedString(attributedStringWithRTFD(textOf(rtfd)).value_or(AttributedString())));
}

Data pngOfTIFF(const Data& tiff) {
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  QImage::fromData(tiff.data(), static_cast<int>(tiff.size()), "TIFF").save(&buffer, "PNG");
  return {png.begin(), png.end()};
}

/// That is the work of a plug-in.
bool canReadTIFF() {
  static const bool can = QImageReader::supportedImageFormats().contains("tiff");
  return can;
}

/// What can be made of a type that few programs know.
struct Conversion {
  std::string_view from, to;
  Data (*make)(const Data&);
};
constexpr Conversion conversions[] = {
    {"com.apple.flat-rtfd", "public.rtf", rtfOfRTFD},
    {"com.apple.flat-rtfd", "public.utf8-plain-text", textOfRTFD},
    {"public.rtf", "public.utf8-plain-text", textOfRTF},
    {"public.tiff", "public.png", pngOfTIFF},
};

class Forms {
 public:
  void add(std::string_view type, const std::shared_ptr<const Data>& data, const Maker& make) {
    for (const std::string& target : targetsOfType(type)) {
      if (has(target)) continue;
      const bool isLatin = target == latinTextTarget;
      forms_.push_back({target, [data, make, isLatin] {
                          const Data bytes = make ? make(*data) : *data;
                          return isLatin ? latinFromUtf8(bytes) : bytes;
                        }});
    }
  }
  void addForm(SelectionForm form) { forms_.push_back(std::move(form)); }
  std::vector<SelectionForm> take() { return std::move(forms_); }

 private:
  bool has(const std::string& target) const {
    return std::any_of(forms_.begin(), forms_.end(),
                       [&target](const SelectionForm& form) { return form.target == target; });
  }

  std::vector<SelectionForm> forms_;
};

}  // namespace

std::vector<SelectionForm> formsOfItems(const std::vector<PasteboardContents>& items) {
  if (items.empty()) return {};
  Forms forms;
  std::vector<std::pair<std::string_view, std::shared_ptr<const Data>>> contents;
  for (const auto& [type, data] : items.front()) {
    contents.emplace_back(type, std::make_shared<const Data>(data));
    forms.add(type, contents.back().second, nullptr);
  }
  for (const auto& [type, data] : contents) {
    for (const Conversion& conversion : conversions) {
      if (conversion.make == pngOfTIFF && !canReadTIFF()) continue;
      if (conversion.from == type) forms.add(conversion.to, data, conversion.make);
    }
  }
  if (items.size() > 1) {
    forms.addForm({std::string(severalItemsTarget), [items] {
                     PropertyList all = PropertyList::array();
                     for (const auto& each : items) all.append(propertyListOfItem(each));
                     return dataOf(xmlPropertyList(all));
                   }});
  }
  return forms.take();
}

std::vector<PasteboardContents> itemsOfSeveralItems(const PropertyList::Data& data) {
  std::vector<PasteboardContents> items;
  const auto list = readPropertyList(textOf(data));
  if (!list) return items;
  for (const PropertyList& item : list->arrayValue()) {
    if (item.isDictionary()) items.push_back(contentsOfPropertyList(item));
  }
  return items;
}

PropertyList::Data bytesOfTarget(std::string_view target, PropertyList::Data bytes) {
  return target == latinTextTarget ? utf8FromLatin(bytes) : std::move(bytes);
}

}  // namespace qb
