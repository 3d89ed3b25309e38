#pragma once

#include <optional>
#include <string_view>

#include "QuillboxCommon/PropertyList.h"

namespace qb {

/// Reads a property list in XML or binary form; none for anything else.
///
/// Made for files that anyone may have written: nesting, the number of values and the memory they
/// take are bounded, also where a binary file names one object many times. That, and numbers that
/// read alike in every locale, is why no library does it. Any thread.
std::optional<PropertyList> readPropertyList(std::string_view bytes);

/// The two forms, for `readPropertyList`.
std::optional<PropertyList> readXmlPropertyList(std::string_view bytes);
std::optional<PropertyList> readBinaryPropertyList(std::string_view bytes);

/// What one file may ask for.
class PropertyListBudget {
 public:
  static constexpr int deepestNesting = 128;

  /// Counts a value with so many bytes of its own; false when it is too much.
  bool take(std::size_t bytes) {
    ++values_;
    bytes_ += bytes;
    return values_ <= maximumValues && bytes_ <= maximumBytes;
  }

 private:
  static constexpr std::size_t maximumValues = 1'000'000;
  static constexpr std::size_t maximumBytes = 96 << 20;
  std::size_t values_ = 0, bytes_ = 0;
};

}  // namespace qb
