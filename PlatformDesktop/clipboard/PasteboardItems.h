#pragma once

#include <memory>
#include <vector>

#include "Platform/Pasteboards.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// An item as a dictionary of its data by type.
PropertyList propertyListOfItem(const PasteboardContents& contents);
PasteboardContents contentsOfPropertyList(const PropertyList& item);

/// The items of an array of such; whatever is none is left out.
std::vector<std::shared_ptr<const PasteboardItem>> itemsOfPropertyList(const PropertyList& items);

}  // namespace qb
