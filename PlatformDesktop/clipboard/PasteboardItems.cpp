#include "PlatformDesktop/clipboard/PasteboardItems.h"

namespace qb {

PropertyList propertyListOfItem(const PasteboardContents& contents) {
  PropertyList item = PropertyList::dictionary();
  for (const auto& [type, data] : contents) item.setObject(data, type);
  return item;
}

PasteboardContents contentsOfPropertyList(const PropertyList& item) {
  PasteboardContents contents;
  for (const auto& [type, data] : item.dictionaryValue()) {
    if (data.kind() == PropertyList::Kind::Data) contents.emplace_back(type, data.dataValue());
  }
  return contents;
}

std::vector<std::shared_ptr<const PasteboardItem>> itemsOfPropertyList(const PropertyList& items) {
  std::vector<std::shared_ptr<const PasteboardItem>> all;
  for (const PropertyList& item : items.arrayValue()) {
    if (!item.isDictionary()) continue;
    all.push_back(std::make_shared<KeptPasteboardItem>(contentsOfPropertyList(item)));
  }
  return all;
}

}  // namespace qb
