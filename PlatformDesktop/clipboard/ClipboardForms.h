#pragma once

#include <string_view>
#include <vector>

#include "Platform/Pasteboards.h"
#include "PlatformDesktop/clipboard/SelectionOwner.h"

namespace qb {

/// Names the form in which several items travel between programs of this product.
inline constexpr std::string_view severalItemsTarget = "application/x-quillbox-pasteboard-items";

/// The forms in which other programs can have these items: all of the first one's types, the best
/// first, and what more can be made of it, since few programs here know what it may be of: text of
/// rich text, RTF of RTF with pictures, PNG of TIFF. Made when it is asked for.
std::vector<SelectionForm> formsOfItems(const std::vector<PasteboardContents>& items);

/// The items in such a form; none when it is none.
std::vector<PasteboardContents> itemsOfSeveralItems(const PropertyList::Data& data);

/// The bytes that a type has, of those that a program has given under the name of a target.
PropertyList::Data bytesOfTarget(std::string_view target, PropertyList::Data bytes);

}  // namespace qb
