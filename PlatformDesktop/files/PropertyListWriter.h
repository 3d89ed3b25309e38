#pragma once

#include <string>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// The XML form, keys in their order. Reals read back exactly; dates lose parts of a second;
/// characters that XML cannot hold are left out. Any thread.
std::string xmlPropertyList(const PropertyList& value);

}  // namespace qb
