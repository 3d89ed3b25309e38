#pragma once

#include <functional>
#include <memory>
#include <string>

#include "QuillboxCommon/Geometry.h"
#include "QuillboxCommon/PropertyList.h"

namespace qb {

class Item;

/// A class of items that can be restored from what it saved.
struct ItemInformation {
  /// As the user reads it.
  std::string name;
  /// As it is saved.
  std::string className;
  std::function<std::shared_ptr<Item>(const Rect& frame, const PropertyList& savedState)> create;
};

}  // namespace qb
