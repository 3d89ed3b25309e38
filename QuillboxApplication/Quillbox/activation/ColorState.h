#pragma once

#include "QuillboxCommon/Color.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// A colour as a dictionary of four numbers, for a property list. A gray colour gives its white
/// three times, so it comes back with the same looks and four components.
PropertyList state(const Color& color);
/// Components that are missing read as 0; all are rounded to single precision.
Color colorFromState(const PropertyList& state);

}  // namespace qb
